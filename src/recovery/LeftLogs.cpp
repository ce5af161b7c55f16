#include "recovery/LeftLogs.h"

#include "files/FileNames.h"
#include "files/FileStatus.h"
#include "files/OwnFolders.h"
#include "recovery/ChangeBytes.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <utility>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

// More than a log ever has, so that one of another hand takes no more memory.
constexpr uint64_t LargestLog = uint64_t{2} << 30;
constexpr std::array<std::pair<LogFate, std::string_view>, 3> Endings{
    {{LogFate::Left, ".log"},
     {LogFate::NotWanted, ".aside"},
     {LogFate::Unfit, ".unfit"}}};

std::string_view EndingOf(LogFate fate) {
    return std::ranges::find(Endings, fate, &std::pair<LogFate, std::string_view>::first)
        ->second;
}

bool IsNumber(std::string_view text) {
    return !text.empty() &&
           text.find_first_not_of("0123456789") == std::string_view::npos;
}

struct NamedLog {
    std::string Name;
    LogFate Fate = LogFate::Left;
};

std::optional<NamedLog> NamedLogOf(std::string_view file) {
    for (const auto& [fate, ending] : Endings)
        if (file.ends_with(ending) &&
            IsNumber(file.substr(0, file.size() - ending.size())))
            return NamedLog{std::string(file.substr(0, file.size() - ending.size())),
                            fate};
    return std::nullopt;
}

bool IsTaken(const fs::path& folder, const std::string& number) {
    return std::ranges::any_of(Endings, [&](const auto& each) {
        return StatusOfLink(folder / (number + std::string(each.second))).has_value();
    });
}

void ReadLog(const fs::path& path, const NamedLog& named,
             const std::optional<std::string>& l2File, LeftLogs& found) {
    const std::string text = TextOfPath(path);
    try {
        auto file = HeldFile::Take(path);
        if (!file)
            return found.Others.push_back({named.Name, "a program is writing it"});
        FileBytes bytes = ReadWholeFile(text, LargestLog);
        LogStory story = ReadStory(bytes.Span(), text);
        if (l2File && story.Files.L2.Path != *l2File)
            return;
        if (story.Steps.empty())
            return file->Delete();
        found.Logs.push_back({named.Name, named.Fate, std::move(*file), std::move(bytes),
                              std::move(story)});
    } catch (const RuntimeError& error) {
        found.Others.push_back(
            {named.Name, error.Detail().empty() ? error.Description() : error.Detail()});
    }
}

} // namespace

std::string LogFolder() {
    const std::string data = UsersDataFolder();
    return data.empty() ? data : data + "/recovery";
}

HeldFile MakeLog(const std::string& folder) {
    MakeScratchFolder(folder);
    KeepOwnTemporaryFolder(folder);
    const fs::path path = PathAsItStands(folder);
    for (int number = 1;; ++number) {
        const std::string name = std::to_string(number);
        if (!IsTaken(path, name))
            if (auto file = HeldFile::Make(path / (name + ".log")))
                return std::move(*file);
    }
}

LeftLogs LeftLogsOf(const std::string& folder, const std::optional<std::string>& l2File) {
    LeftLogs found;
    if (folder.empty())
        return found;
    const fs::path path = PathAsItStands(folder);
    for (const std::string& file : NamesIn(path).Names)
        if (const auto named = NamedLogOf(file))
            ReadLog(path / file, *named, l2File, found);
    std::ranges::stable_sort(found.Logs, {},
                             [](const LeftLog& log) { return log.Story.Last; });
    return found;
}

std::string WhyUnfit(const LogStory& story) {
    const uint8_t papers = story.Papers();
    std::vector<const BasedOnFile*> files{&story.Files.L2, &story.Files.O2,
                                          &story.Files.Bin};
    if ((papers & PaperBit(Paper::MapFile)) != 0)
        files.push_back(&story.Files.Map);
    for (const BasedOnFile* file : files)
        if (!IsThere(*file))
            return file->Path + " has been changed since then";
    if ((papers & PaperBit(Paper::Heights)) != 0 && story.LastInUse) {
        const HeightsFiles& heights = story.Heights.back();
        if (heights.Kind == ElevationKind::None)
            return "it does not tell the file of its heights";
        if (const BasedOnFile* gone = FirstGone(heights))
            return gone->Path + " has been changed since then";
    }
    return {};
}

void DropLog(const LeftLog& log) { log.File.Delete(); }

void DropUnread(const std::string& folder, const LeftLogs::Unread& log) {
    for (const auto& [fate, ending] : Endings) {
        const fs::path path = PathAsItStands(folder) / (log.Name + std::string(ending));
        if (!StatusOfLink(path))
            continue;
        const auto file = HeldFile::Take(path);
        if (!file)
            throw RuntimeError(ErrorNumber::PermissionDenied,
                               TextOfPath(path) + ": " + log.Why);
        file->Delete();
    }
}

void SetFate(LeftLog& log, LogFate fate) {
    const fs::path& path = log.File.Path();
    const fs::path folder = path.parent_path();
    const fs::path now = folder / (log.Name + std::string(EndingOf(fate)));
    if (::rename(path.c_str(), now.c_str()) != 0)
        ThrowSystemError(errno, "renaming", TextOfPath(path));
    log.Fate = fate;
}

} // namespace vardenix
