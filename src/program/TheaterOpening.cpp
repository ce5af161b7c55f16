#include "program/TheaterOpening.h"

#include "catalogue/TextureBinFile.h"
#include "catalogue/TileCheck.h"
#include "files/FileNames.h"
#include "files/FileStatus.h"
#include "files/Mending.h"
#include "levels/RebuiltFiles.h"
#include "levels/TerrainStore.h"
#include "program/MissingSegments.h"
#include "texts/Cutting.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace vardenix {

namespace {

// `path` is a real one.
bool RequireFile(const std::string& path, const std::string& complaint,
                 Dialogs& dialogs) {
    if (!path.empty() && IsFile(StatusOf(path)))
        return true;
    dialogs.Notice(path.empty() ? complaint : complaint + "\n" + path, "Error...",
                   BoxIcon::Critical);
    return false;
}

// Real paths of the files of one theater. Folders that a path shares with that of the L2
// file are the very ones that the L2 file was found in, so that nothing of a theater
// whose name differs in case only gets in between.
class FilesOfTheater {
public:
    explicit FilesOfTheater(const std::string& l2File)
        : toldL2_(TextOfPath(PathAsItStands(l2File))),
          realL2_(TextOfPath(RealPathToRead(l2File))) {}

    const std::string& L2File() const { return realL2_; }

    std::string RealOf(const std::string& text, PathKind kind) const {
        const std::string told = TextOfPath(PathAsItStands(text));
        const auto differs =
            std::mismatch(told.begin(), told.end(), toldL2_.begin(), toldL2_.end()).first;
        const size_t shared =
            UpToLastSlash({told.data(), static_cast<size_t>(differs - told.begin())})
                .size();
        // Letters differ in case alone, so what is shared is as long in both.
        return TextOfPath(
            RealPathBelow(realL2_.substr(0, shared), told.substr(shared), kind));
    }

private:
    std::string toldL2_;
    std::string realL2_;
};

} // namespace

TheaterPaths PathsOfTheater(const std::string& baseDir, const std::string& terrainDir) {
    const std::string folder = baseDir + terrainDir;
    return {folder + "\\terrain\\theater.l2", folder + "\\texture\\texture.bin",
            folder + "\\terrain\\theater.map", folder + "\\texture\\texture\\"};
}

LevelPair FindLevelPair(const std::string& l2File) {
    return PairOfL2(TextOfPath(RealPathToRead(l2File)));
}

void MendTheater(const TheaterPaths& paths, Dialogs& dialogs, DebugLog& log) {
    const FilesOfTheater files(paths.L2File);
    const LevelPair pair = PairOfL2(files.L2File());
    std::vector<std::string> told{pair.L, pair.O};
    for (const std::string& path : {paths.BinFile, paths.MapFile})
        if (!path.empty())
            told.push_back(files.RealOf(path, PathKind::File));
    if (!paths.DDSFolder.empty())
        told.push_back(files.RealOf(paths.DDSFolder, PathKind::Folder) + "/");
    const Mended mended = MendAll(told);
    LogMended(mended.Done, log);
    for (const std::string& sentence : mended.SetAside)
        dialogs.Notice(sentence, "Attention", BoxIcon::Warning);
}

bool CheckTheaterPaths(ProgramState& state, const TheaterPaths& paths, Dialogs& dialogs,
                       DebugLog& log) {
    const FilesOfTheater files(paths.L2File);
    Terrain& terrain = state.Terrain;
    terrain.LFilename = files.L2File();
    if (!RequireFile(terrain.LFilename, "L2 File not found", dialogs))
        return false;
    // A save that was killed half way may owe us any of the files that are looked for.
    MendTheater(paths, dialogs, log);
    terrain.OFilename = PairOfL2(terrain.LFilename).O;
    if (!RequireFile(terrain.OFilename, "O2 File not found", dialogs))
        return false;
    log.WriteLog("LFilename to open: " + UpperCase(terrain.LFilename));
    log.WriteLog("OFilename to open: " + UpperCase(terrain.OFilename));

    state.Catalogue.BinPath = files.RealOf(paths.BinFile, PathKind::File);
    if (!RequireFile(state.Catalogue.BinPath, "Texture.bin File not found", dialogs))
        return false;
    log.WriteLog("BinPath to open: " + state.Catalogue.BinPath);

    state.MAPFile = files.RealOf(paths.MapFile, PathKind::File);
    if (!RequireFile(state.MAPFile, "Theater.map File not found", dialogs))
        return false;
    log.WriteLog("MAPFile to open: " + state.MAPFile);

    // Should it not be there, its tiles are missed one by one.
    state.Catalogue.DDSFolder = files.RealOf(paths.DDSFolder, PathKind::Folder) + "/";
    log.WriteLog("DDSFolder to open: " + state.Catalogue.DDSFolder);

    // What an interrupted rebuild has left of the other levels and the far tiles.
    LogMended(MendFiles(FilesOfRebuild(UpToLastSlash(terrain.LFilename),
                                       UpToLastSlash(state.Catalogue.BinPath))),
              log);
    return true;
}

void LoadTheater(ProgramState& state, Progress& progress, const Platform& platform,
                 DebugLog& log, OpeningWindows& windows) {
    log.WriteLog("Starting LoadLfile...");
    // Both are of one moment; the first box that waits for the user lets others save.
    std::optional<ReadingLock> reading(
        std::in_place,
        std::vector<std::string>{state.Terrain.LFilename, state.Terrain.OFilename,
                                 state.Catalogue.BinPath, state.Catalogue.DDSFolder});
    LogMended(reading->Mended(), log);
    LoadLFile(state.Terrain, progress, log);

    progress.SetText("Loading Tiles...");
    log.WriteLog("Starting OpenBinFile...");
    OpenBinFile(state.Catalogue, progress, platform.Dialogs, log,
                [&reading] { reading.reset(); });

    log.WriteLog("Starting ShowLFile...");
    progress.SetBar(0);
    progress.SetText("Making Image...");
    const PreviewColors colors{state.Configuration.PreviewSeaColor,
                               state.Configuration.PreviewLevelColors};
    state.Preview = ShowLFile(state.Terrain, colors, progress, log);
    windows.PreviewChanged();
    progress.SetText("");
    progress.SetBar(0);

    progress.HideBar();
    progress.SetText("Almost done...");
    progress.SetBar(0);
    log.WriteLog("Comparing L2 Tiles");
    CompareL2Tiles(true, state.Terrain, state.Catalogue.Lookup, state.Folders.AppPath,
                   platform.Dialogs, platform.Clock);

    log.WriteLog("Initiating FrmVXMap...");
    log.WriteLog("Showing FrmVXMain...");
    windows.LoadMapEditor();
    TellGap(state.Terrain, state.MapFileRecord, platform.Dialogs);
    windows.LoadMap();
    windows.ShowMainPanel();
    windows.RestoreChildWindows();
    windows.RefreshPalette();
    windows.InitForm();
}

} // namespace vardenix
