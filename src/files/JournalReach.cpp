#include "files/JournalReach.h"

#include "files/FileStatus.h"
#include "files/FolderLock.h"
#include "files/ReadableFile.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <string_view>
#include <system_error>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

// None for a folder that is not there.
std::optional<fs::path> RealFolder(const fs::path& folder) {
    std::error_code error;
    fs::path real = fs::canonical(folder, error);
    if (!error)
        return real;
    if (error.value() != ENOENT && error.value() != ENOTDIR)
        ThrowSystemError(error.value(), "looking at the folder", folder.string());
    return std::nullopt;
}

bool IsCalled(const fs::path& folder, std::string_view name) {
    return UpperCase(folder.filename().string()) == name;
}

// The folder that holds terrain and texture; empty for a folder that is none of theirs.
fs::path TheaterOf(const fs::path& folder) {
    if (IsCalled(folder, "TERRAIN"))
        return folder.parent_path();
    if (!IsCalled(folder, "TEXTURE"))
        return {};
    const fs::path above = folder.parent_path();
    return IsCalled(above, "TEXTURE") ? above.parent_path() : above;
}

// A save over several folders leaves its journal in each of them before the first file
// takes its place: one that is in the middle of it is found in the other folder too.
bool HasCounterpart(const fs::path& folder, const std::string& name,
                    const JournalEntry& entry) {
    const fs::path journal = JournalOf(folder);
    if (!IsFile(StatusOfLink(journal)))
        return false;
    const auto entries =
        ParseJournal(ReadWholeFile(journal.string(), LargestJournal).Span());
    return entries &&
           std::any_of(entries->begin(), entries->end(), [&](const JournalEntry& other) {
               return other.Name == name && other.Size == entry.Size &&
                      other.Checksum == entry.Checksum;
           });
}

} // namespace

ToldFiles::ToldFiles(const std::set<fs::path>& folders,
                     const std::vector<fs::path>& files) {
    for (const fs::path& folder : folders)
        if (const auto real = RealFolder(folder))
            folders_.insert(*real);
    for (const fs::path& file : files)
        if (const auto real = RealFolder(FolderOf(file)))
            files_.insert(*real / file.filename());
}

JournalReach ToldFiles::ReachOf(const fs::path& folder,
                                const std::vector<JournalEntry>& entries) const {
    JournalReach reach = JournalReach::Told;
    for (const JournalEntry& entry : entries)
        reach = std::max(reach, ReachOf(folder, entry));
    return reach;
}

JournalReach ToldFiles::ReachOf(const fs::path& folder, const JournalEntry& entry) const {
    const fs::path named(entry.Name);
    const std::string name = named.filename().string();
    if (named.is_absolute() || name.empty() || name == "." || name == "..")
        return JournalReach::Foreign;
    const auto own = RealFolder(folder);
    const auto there = RealFolder(folder / named.parent_path());
    if (!own || !there)
        return JournalReach::Foreign;
    if (files_.contains(*there / name))
        return JournalReach::Told;
    if (!IsNameOfOurs(name))
        return JournalReach::Foreign;
    if (folders_.contains(*there))
        return JournalReach::Told;
    const fs::path theater = TheaterOf(*own);
    if ((!theater.empty() && theater == TheaterOf(*there)) ||
        HasCounterpart(*there, name, entry))
        return JournalReach::Wider;
    return JournalReach::Foreign;
}

bool IsNameOfOurs(const std::string& name) {
    const std::string upper = UpperCase(name);
    if (upper == "VXUNDO.TMP" || upper == "VXUNDO.TXT" || upper == "FARTILES.INDEX")
        return true;
    const size_t dot = upper.rfind('.');
    const std::string extension = dot == std::string::npos ? "" : upper.substr(dot + 1);
    const bool level = extension.size() == 2 &&
                       (extension[0] == 'L' || extension[0] == 'O') &&
                       extension[1] >= '0' && extension[1] <= '5';
    constexpr std::array<std::string_view, 5> kinds{"ELV", "BIN", "MAP", "DDS", "TDF"};
    return level || std::find(kinds.begin(), kinds.end(), extension) != kinds.end();
}

} // namespace vardenix
