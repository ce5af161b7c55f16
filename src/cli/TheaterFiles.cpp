#include "cli/TheaterFiles.h"

#include "mapeditor/MapFile.h"
#include "platform/FileNames.h"
#include "platform/RuntimeError.h"
#include "theater/TerrainStore.h"
#include "theater/TextureBinFile.h"

namespace vardenix {

TheaterFiles::TheaterFiles(Command& command) {
    const std::string group = "Theater";
    Argument folder =
        command.Text("--theater", folder_, "Folder that holds terrain/ and texture/");
    folder.Group(group);
    const auto path = [&](const char* name, std::string& value, const char* help) {
        command.Text(name, value, help).Group(group).Excludes(folder);
    };
    path("--l2", l2_, "The L2 file; its O2 file lies beside it");
    path("--bin", bin_, "The Texture.bin");
    path("--map", map_, "The theater.map");
    path("--dds", dds_, "The folder of tile pictures");
    command.Check([this] { Paths(); });
}

TheaterPaths TheaterFiles::Paths() const {
    if (!folder_.empty())
        return PathsOfTheater(folder_, "");
    if (l2_.empty() || bin_.empty() || map_.empty() || dds_.empty())
        throw UsageError("name the theater by --theater, or by --l2, --bin, --map "
                         "and --dds together");
    // The L file would be read as its own O file.
    if (OffsetFileOfL2(l2_) == l2_)
        throw UsageError(
            "--l2", l2_ + " has no O2 file that could be known: its name must be like "
                          "theater.L2");
    return {l2_, bin_, map_, WithTrailingSlash(dds_)};
}

std::optional<int32_t> TheaterFiles::WidthOnDisk() const {
    const std::string pathO = OffsetFileOfL2(UpperCase(L2File()));
    try {
        return WidthFromOffsetFile(FileLength(pathO), pathO);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

void TheaterFiles::Open(ProgramState& state, Progress& progress, const Platform& platform,
                        DebugLog& log) const {
    if (!CheckTheaterPaths(state, Paths(), platform.Dialogs, log))
        throw RuntimeError(ErrorNumber::FileNotFound, "the theater cannot be opened");
    LoadLFile(state.Terrain, progress, log);
    OpenBinFile(state.Catalogue, progress, platform.Dialogs, log);
    OpenMapFile(state.MAPFile, state.MapFileRecord);
    progress.HideBar();
}

} // namespace vardenix
