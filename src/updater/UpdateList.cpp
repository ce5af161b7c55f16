#include "updater/UpdateList.h"

#include "files/PlainName.h"
#include "loader/LoaderList.h"
#include "texts/Cutting.h"
#include "texts/TextLines.h"
#include "texts/Windows1252.h"

namespace vardenix {

namespace {

std::vector<std::string_view> FieldsOf(std::string_view line) {
    std::vector<std::string_view> fields;
    while (true) {
        const size_t star = line.find('*');
        fields.push_back(line.substr(0, star));
        if (star == std::string_view::npos)
            return fields;
        line.remove_prefix(star + 1);
    }
}

// The file that a command touches or shows.
std::string NameIn(const UpdateListEntry& entry) {
    return entry.Command == "COPY" ? entry.FileName : entry.Param;
}

bool HasName(const UpdateListEntry& entry) {
    return entry.Command == "COPY" || entry.Command == "README" ||
           entry.Command == "DELETE";
}

} // namespace

std::vector<UpdateListEntry> ReadUpdateList(std::string_view text) {
    std::vector<UpdateListEntry> entries;
    std::string_view rest = text;
    std::string_view line;
    while (NextLine(rest, line)) {
        const std::vector<std::string_view> fields = FieldsOf(TrimBlanks(line));
        if (fields.size() < 2)
            continue;
        UpdateListEntry entry;
        entry.Command = UpperCase(TrimBlanks(fields[0]));
        if (entry.Command == "COPY") {
            entry.FileName = Utf8FromBytes(TrimBlanks(fields[1]));
            entry.Hash = fields.size() > 2 ? fields[2] : "";
        } else {
            entry.Param = Utf8FromBytes(fields[1]);
        }
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::string WhyListRefused(const std::vector<UpdateListEntry>& entries) {
    for (const UpdateListEntry& entry : entries) {
        if (!HasName(entry))
            continue;
        std::string why = WhyNotPlain(NameIn(entry));
        if (why.empty() && UpperCase(NameIn(entry)) == UpperCase(LoaderListName))
            why = "is that of the loader's own list";
        if (!why.empty())
            return "The name \"" + ShownName(NameIn(entry)) + "\" in update.lst " + why +
                   ".";
    }
    return {};
}

} // namespace vardenix
