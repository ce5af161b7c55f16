#include "updater/SignedRelease.h"

#include "files/PlainName.h"
#include "texts/Cutting.h"
#include "updater/UpdateOffer.h"

#include <algorithm>
#include <array>
#include <optional>

namespace vardenix {

namespace {

constexpr size_t OwnLines = 2;
constexpr size_t MostDigits = 9;

// Major, minor, revision.
using Numbers = std::array<int, 3>;

std::optional<int> NumberOf(std::string_view digits) {
    if (digits.empty() || digits.size() > MostDigits)
        return std::nullopt;
    int number = 0;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9')
            return std::nullopt;
        number = number * 10 + (digit - '0');
    }
    return number;
}

std::optional<Numbers> NumbersOf(std::string_view version) {
    Numbers numbers{};
    for (int& number : numbers) {
        const size_t dot = version.find('.');
        const auto read = NumberOf(version.substr(0, dot));
        if (!read)
            return std::nullopt;
        number = *read;
        if (dot == std::string_view::npos)
            return numbers;
        version.remove_prefix(dot + 1);
    }
    return std::nullopt; // a fourth number
}

bool IsOwnLine(const UpdateListEntry& entry) {
    return entry.Command == "VERSION" || entry.Command == "KIND";
}

bool EndsWithOwnLines(const std::vector<UpdateListEntry>& entries) {
    return entries.size() > OwnLines &&
           entries[entries.size() - 2].Command == "VERSION" &&
           entries.back().Command == "KIND" &&
           std::none_of(entries.begin(), entries.end() - OwnLines, IsOwnLine);
}

std::string WhyVersionRefused(const std::string& version,
                              const std::string& programVersion) {
    const auto offered = NumbersOf(version);
    if (!offered)
        return "\"" + ShownName(version) + "\" in update.lst is no version.";
    const auto there = NumbersOf(programVersion);
    if (offered == there)
        return "It is version " + version + ", which the program has already.";
    if (offered < there)
        return "It is version " + version + ", older than the program's " +
               programVersion + ".";
    return {};
}

std::string WhyKindRefused(const std::string& kind, int updateType) {
    const bool major = kind == "UPDATE";
    if (!major && kind != "PATCH")
        return "\"" + ShownName(kind) + "\" in update.lst is no kind of an update.";
    if (updateType == (major ? UpdateMajor : UpdateMinor))
        return {};
    return major ? "It is a large update, and another one was offered."
                 : "It is a small update, and another one was offered.";
}

} // namespace

std::string WhyReleaseRefused(const std::vector<UpdateListEntry>& entries, int updateType,
                              const std::string& programVersion) {
    if (!EndsWithOwnLines(entries))
        return "Its list does not end with its version and its kind.";
    if (entries[entries.size() - OwnLines - 1].Command == "MSGYN")
        return "A question in its list could pass over its version.";
    const std::string why = WhyVersionRefused(
        std::string(TrimBlanks(entries[entries.size() - 2].Param)), programVersion);
    return why.empty()
               ? WhyKindRefused(UpperCase(TrimBlanks(entries.back().Param)), updateType)
               : why;
}

} // namespace vardenix
