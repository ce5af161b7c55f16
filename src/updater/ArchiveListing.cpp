#include "updater/ArchiveListing.h"

#include "texts/TextLines.h"

#include <algorithm>
#include <limits>

namespace vardenix {

namespace {

constexpr uint64_t Unknown = std::numeric_limits<uint64_t>::max();

// A number that is no number counts as more than any bound.
uint64_t SizeOf(std::string_view text) {
    uint64_t size = 0;
    for (const char letter : text) {
        if (letter < '0' || letter > '9' || size > Unknown / 10 - 10)
            return Unknown;
        size = size * 10 + static_cast<uint64_t>(letter - '0');
    }
    return text.empty() ? Unknown : size;
}

// "A -rw-r--r--": letters of the one system, then rights of the other, or one of the two.
bool ArePlain(std::string_view attributes) {
    const size_t blank = attributes.find(' ');
    const std::string_view letters = attributes.substr(0, blank);
    const std::string_view rights = blank == std::string_view::npos
                                        ? std::string_view()
                                        : attributes.substr(blank + 1);
    if (letters.size() == 10)
        return blank == std::string_view::npos && letters[0] == '-';
    // D is a folder, L and O (a reparse point) lead elsewhere, V is a device.
    return letters.find_first_of("DdLlOoVv") == std::string_view::npos &&
           (rights.empty() || rights[0] == '-');
}

// Of one file: what its lines have said so far.
struct Told {
    ArchivedFile File{{}, Unknown, true};
    bool HasAttributes = false;

    void Take(std::string_view key, std::string_view value) {
        if (key == "Path")
            File.Name = value;
        else if (key == "Size")
            File.Size = SizeOf(value);
        else if (key == "Attributes" || key == "Mode")
            TakeAttributes(value);
        else if (IsFolderOrLink(key, value))
            File.IsPlain = false;
    }
    static bool IsFolderOrLink(std::string_view key, std::string_view value) {
        const bool isLink = key == "Symbolic Link" || key == "Hard Link";
        return (key == "Folder" && value == "+") || (isLink && !value.empty());
    }
    void TakeAttributes(std::string_view value) {
        HasAttributes = true;
        File.IsPlain = File.IsPlain && ArePlain(value);
    }
};

} // namespace

ArchiveListing ParseArchiveListing(std::string_view text) {
    ArchiveListing listing;
    std::string_view rest = text;
    std::string_view line;
    bool files = false;
    std::vector<Told> told;
    while (NextLine(rest, line)) {
        if (line == "----------") {
            files = true;
            continue;
        }
        const size_t equals = line.find(" = ");
        const std::string_view key =
            equals != std::string_view::npos
                ? line.substr(0, equals)
                : line.substr(0, line.find(" =")); // an empty value
        const std::string_view value = equals != std::string_view::npos
                                           ? line.substr(equals + 3)
                                           : std::string_view();
        if (!files && key == "Type" && listing.Type.empty())
            listing.Type = value;
        if (files && key == "Path")
            told.emplace_back();
        if (files && !told.empty())
            told.back().Take(key, value);
    }
    for (Told& one : told) {
        one.File.IsPlain = one.File.IsPlain && one.HasAttributes;
        listing.Files.push_back(std::move(one.File));
    }
    return listing;
}

} // namespace vardenix
