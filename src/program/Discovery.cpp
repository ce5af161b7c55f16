#include "program/Discovery.h"

#include "files/BinaryReader.h"
#include "files/FileNames.h"
#include "files/FileStatus.h"
#include "files/InPlace.h"
#include "texts/Cutting.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"
#include "texts/TextLines.h"
#include "texts/Windows1252.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

constexpr std::string_view InstallKey = "SOFTWARE\\Microprose\\Falcon\\4.0";

// Of the level 2 width in segments in theater.map.
constexpr size_t L2WidthOffset = 1068;

constexpr std::array<std::pair<std::string_view, std::string TheaterInfo::*>, 12>
    TextKeys{{{"NAME", &TheaterInfo::Name},
              {"CAMPAIGNDIR", &TheaterInfo::CampaignDir},
              {"OBJECTDIR", &TheaterInfo::ObjectDir},
              {"DESC", &TheaterInfo::Desc},
              {"BITMAP", &TheaterInfo::Bitmap},
              {"TERRAINDIR", &TheaterInfo::TerrainDir},
              {"ARTDIR", &TheaterInfo::ArtDir},
              {"MOVIEDIR", &TheaterInfo::MovieDir},
              {"UISOUNDDIR", &TheaterInfo::UISoundDir},
              {"MISCTEXDIR", &TheaterInfo::MiscTexDir},
              {"3DDATADIR", &TheaterInfo::DataDir3D},
              {"SOUNDDIR", &TheaterInfo::SoundDir}}};

// Of theater.lst and of a theater's description, which have some lines.
constexpr uint64_t LongestText = uint64_t{16} << 20;

std::string WithoutNuls(std::string text) {
    std::erase(text, '\0');
    return text;
}

// One that is not there has no neighbour of nearly the same name.
std::string ThisOne(const fs::path& path) {
    if (!StatusOf(path))
        ThrowSystemError(ENOENT, "opening", TextOfPath(path));
    return TextOfPath(path);
}

std::string ReadText(const fs::path& path) {
    const FileBytes bytes = ReadWholeFile(ThisOne(path), LongestText);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Calls `take(line)` for every trimmed line that is neither empty nor a comment.
template <typename Take>
void ForEachDataLine(std::string_view text, Take take) {
    std::string_view line;
    while (NextLine(text, line)) {
        line = TrimBlanks(line);
        if (IsDataLine(line, "#"))
            take(line);
    }
}

// `file` has backslashes only.
bool GoesUp(std::string_view file) {
    while (!file.empty()) {
        const size_t end = std::min(file.find('\\'), file.size());
        if (TrimBlanks(file.substr(0, end)) == "..")
            return true;
        file.remove_prefix(std::min(end + 1, file.size()));
    }
    return false;
}

bool LeadsOutside(std::string_view file) {
    return file.starts_with('\\') || file.substr(1).starts_with(':') || GoesUp(file);
}

// The folder of the game in which a theater.lst lies, where names that differ in case
// only leave a choice.
std::string RealBaseDir(const std::string& baseDir) {
    return UpToLastSlash(TextOfPath(RealPathToRead(baseDir + "\\theater.lst")));
}

Discovery Discover(const std::string& baseDir) {
    Discovery found;
    const std::string base = RealBaseDir(baseDir);
    const auto below = [&base](const std::string& name) {
        return RealPathBelow(base, name, PathKind::File);
    };
    found.FalconBaseDir = base.substr(0, base.size() - 1) + "\\";
    found.FalconState = IsFile(StatusOf(below("terrdata\\objects\\KoreaObj.Dxl")))
                            ? FalconUnlisted
                            : FalconListed;

    const fs::path list = below("theater.lst");
    std::vector<TheaterInfo> theaters =
        ReadTheaterList(ReadText(list), TextOfPath(list), found.LeftOut);
    for (TheaterInfo& theater : theaters)
        ReadDescription(ReadText(below(Utf8FromBytes(theater.TdfFile))), theater);
    for (TheaterInfo& theater : theaters) {
        const std::string folder = Utf8FromBytes(theater.TerrainDir);
        if (GoesUp(NormalizeSlashes(folder))) {
            found.LeftOut.push_back(TextOfPath(below(Utf8FromBytes(theater.TdfFile))) +
                                    ": TERRAINDIR " + folder +
                                    " leads outside the folder of the game");
            continue;
        }
        const FileBytes map =
            ReadBeginning(ThisOne(below(folder + "\\terrain\\theater.map")),
                          L2WidthOffset + sizeof(int32_t));
        theater.WidthText = ReadTheaterWidth(map.Span());
        found.TheaterList.push_back(std::move(theater));
    }
    return found;
}

} // namespace

void DiscoverTheaters(const Registry& registry, Discovery& discovery) {
    discovery = {};
    const std::string baseDir = WithoutNuls(registry.ReadText(InstallKey, "baseDir"));
    if (!baseDir.empty())
        discovery = Discover(baseDir);
    discovery.FalconCurTheater = WithoutNuls(registry.ReadText(InstallKey, "curTheater"));
}

bool IsInstall(const std::string& folder) { return FileExists(folder + "\\theater.lst"); }

void DiscoverTheatersIn(const std::string& folder, Discovery& discovery) {
    const std::string current = discovery.FalconCurTheater;
    discovery = {};
    discovery = Discover(folder);
    discovery.FalconState = FalconListed;
    discovery.FalconCurTheater = current;
}

std::vector<TheaterInfo> ReadTheaterList(std::string_view text, const std::string& path,
                                         std::vector<std::string>& leftOut) {
    std::vector<TheaterInfo> theaters;
    ForEachDataLine(text, [&](std::string_view line) {
        if (theaters.size() == MaxTheaters)
            throw RuntimeError(ErrorNumber::Overflow, path + " names more than " +
                                                          std::to_string(MaxTheaters) +
                                                          " theaters");
        std::string file = NormalizeSlashes(line);
        if (LeadsOutside(file))
            leftOut.push_back(path + ": the line \"" + Utf8FromBytes(line) +
                              "\" leads outside the folder of the game");
        else
            theaters.emplace_back().TdfFile = std::move(file);
    });
    return theaters;
}

void ReadDescription(std::string_view text, TheaterInfo& theater) {
    ForEachDataLine(text, [&](std::string_view line) {
        const std::string key = UpperCase(GetWord(line, 1));
        if (key == "MINTACAN")
            theater.MinTacan = ClampToInt16(Val(GetWord(line, 2)));
        for (const auto& [name, field] : TextKeys)
            if (key == name)
                theater.*field = GetWord(line, 2);
    });
}

std::string ReadTheaterWidth(std::span<const std::byte> map) {
    int32_t segments = 0;
    if (map.size() > L2WidthOffset)
        std::memcpy(&segments, map.data() + L2WidthOffset,
                    std::min(sizeof segments, map.size() - L2WidthOffset));
    return std::to_string(int64_t{segments} * 16);
}

bool IsDataLine(std::string_view line, std::string_view commentPrefix) {
    line = TrimBlanks(line);
    return !line.empty() && !line.starts_with(commentPrefix);
}

std::string GetWord(std::string_view line, int which) {
    line = TrimBlanks(line);
    const size_t blank = std::min(line.find(' '), line.size());
    return std::string(which == 1 ? line.substr(0, blank)
                                  : TrimBlanks(line.substr(blank)));
}

std::string NormalizeSlashes(std::string_view text) {
    std::string result(text);
    std::replace(result.begin(), result.end(), '/', '\\');
    return result;
}

} // namespace vardenix
