#include "cli/TheaterFiles.h"

#include "catalogue/TextureBinFile.h"
#include "cli/Printing.h"
#include "files/FileNames.h"
#include "files/Mending.h"
#include "levels/RebuiltFiles.h"
#include "levels/TerrainStore.h"
#include "mapeditor/MapFile.h"
#include "program/MissingSegments.h"
#include "texts/RuntimeError.h"

namespace vardenix {

TheaterFiles::TheaterFiles(Command& command, Wanted wanted) {
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
    const auto counts = [this, wanted] { return wanted == Wanted::Always || AreNamed(); };
    command.Check([this, counts] {
        if (counts())
            Paths();
    });
    command.Keeps(
        [this, counts] { return counts() ? AllFiles() : std::vector<std::string>(); });
}

bool TheaterFiles::AreNamed() const {
    return !folder_.empty() || !l2_.empty() || !bin_.empty() || !map_.empty() ||
           !dds_.empty();
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

void MendAndTell(const std::vector<std::string>& files) {
    for (const std::string& sentence : MendAll(files).SetAside)
        Tell(sentence);
}

FileIdentity OpenMapAndTell(const std::string& path, MapFileRecord& record) {
    const FileIdentity read = OpenMapFile(path, record);
    if (read.Size < sizeof record)
        Tell(NameOnDisk(path) + " is cut: " + std::to_string(read.Size) + " of " +
             std::to_string(sizeof record) +
             " bytes. What it lacks counts as 0, and a save writes it so; bring back a "
             "whole one if there is any.");
    return read;
}

void AddOverwrite(Command& command, bool& overwrite) {
    command.Flag("--overwrite", overwrite,
                 "Write although another program has changed the file since it was read, "
                 "or a file of others would be replaced");
}

std::vector<std::string> TheaterFiles::AllFiles() const {
    const TheaterPaths paths = Paths();
    std::vector<std::string> files =
        FilesOfRebuild(UpToLastSlash(paths.L2File), UpToLastSlash(paths.BinFile));
    const LevelPair pair = FindLevelPair(paths.L2File);
    files.insert(files.end(), {pair.L, pair.O, paths.BinFile, paths.MapFile});
    return files;
}

std::vector<std::string> TheaterFiles::WrittenFiles() const {
    const TheaterPaths paths = Paths();
    return {paths.L2File, paths.BinFile, paths.MapFile};
}

std::optional<int32_t> TheaterFiles::WidthOnDisk() const {
    try {
        const std::string pathO = FindLevelPair(L2File()).O;
        return WidthFromOffsetFile(FileLength(pathO), pathO);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

void TheaterFiles::Open(ProgramState& state, Progress& progress, const Platform& platform,
                        DebugLog& log) const {
    CheckPaths(state, platform.Dialogs, log);
    const ReadingLock reading({state.Terrain.LFilename, state.Terrain.OFilename,
                               state.Catalogue.BinPath, state.MAPFile,
                               state.Catalogue.DDSFolder});
    LogMended(reading.Mended(), log);
    LoadLFile(state.Terrain, progress, log);
    OpenBinFile(state.Catalogue, progress, platform.Dialogs, log);
    state.MAPFileRead = OpenMapAndTell(state.MAPFile, state.MapFileRecord);
    TellGap(state.Terrain, state.MapFileRecord, platform.Dialogs);
    progress.HideBar();
}

void TheaterFiles::CheckPaths(ProgramState& state, Dialogs& dialogs,
                              DebugLog& log) const {
    if (!CheckTheaterPaths(state, Paths(), dialogs, log))
        throw RuntimeError(ErrorNumber::FileNotFound, "the theater cannot be opened");
}

LevelReader TheaterFiles::OpenToLookUp(ProgramState& state, Dialogs& dialogs,
                                       DebugLog& log, bool catalogue) const {
    CheckPaths(state, dialogs, log);
    std::vector<std::string> files{state.Terrain.LFilename, state.Terrain.OFilename,
                                   state.MAPFile};
    if (catalogue)
        files.push_back(state.Catalogue.BinPath);
    const ReadingLock reading(files);
    LogMended(reading.Mended(), log);
    LevelReader posts = OpenLevel2(state.Terrain, log);
    if (catalogue)
        OpenBinFileAlone(state.Catalogue);
    state.MAPFileRead = OpenMapAndTell(state.MAPFile, state.MapFileRecord);
    TellGap(state.Terrain, state.MapFileRecord, dialogs);
    return posts;
}

} // namespace vardenix
