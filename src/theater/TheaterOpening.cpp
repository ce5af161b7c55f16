#include "theater/TheaterOpening.h"

#include "platform/FileNames.h"
#include "platform/Mending.h"
#include "theater/MissingSegments.h"
#include "theater/TerrainStore.h"
#include "theater/TextureBinFile.h"
#include "theater/TileCheck.h"

#include <optional>
#include <utility>
#include <vector>

namespace vardenix {

namespace {

bool RequireFile(const std::string& path, const char* complaint, Dialogs& dialogs) {
    if (FileExists(path))
        return true;
    dialogs.Notice(complaint, "Error...", BoxIcon::Critical);
    return false;
}

} // namespace

TheaterPaths PathsOfTheater(const std::string& baseDir, const std::string& terrainDir) {
    const std::string folder = baseDir + terrainDir;
    return {folder + "\\terrain\\theater.l2", folder + "\\texture\\texture.bin",
            folder + "\\terrain\\theater.map", folder + "\\texture\\texture\\"};
}

std::string OffsetFileOfL2(const std::string& pathL) {
    return ReplaceAll(pathL, "THEATER.L", "THEATER.O");
}

bool CheckTheaterPaths(ProgramState& state, const TheaterPaths& paths, Dialogs& dialogs,
                       DebugLog& log) {
    Terrain& terrain = state.Terrain;
    terrain.LFilename = UpperCase(paths.L2File);
    if (!RequireFile(terrain.LFilename, "L2 File not found", dialogs))
        return false;
    terrain.OFilename = OffsetFileOfL2(terrain.LFilename);
    // A save that was killed half way may owe us the very O file.
    RecoverLevelPair({terrain.LFilename, terrain.OFilename}, log);
    if (!RequireFile(terrain.OFilename, "O2 File not found", dialogs))
        return false;
    log.WriteLog("LFilename to open: " + terrain.LFilename);
    log.WriteLog("OFilename to open: " + terrain.OFilename);

    state.Catalogue.BinPath = paths.BinFile;
    if (!RequireFile(paths.BinFile, "Texture.bin File not found", dialogs))
        return false;
    log.WriteLog("BinPath to open: " + paths.BinFile);

    state.MAPFile = paths.MapFile;
    if (!RequireFile(paths.MapFile, "Theater.map File not found", dialogs))
        return false;
    log.WriteLog("MAPFile to open: " + paths.MapFile);

    state.Catalogue.DDSFolder = paths.DDSFolder;
    log.WriteLog("DDSFolder to open: " + paths.DDSFolder);
    return true;
}

void LoadTheater(ProgramState& state, Progress& progress, const Platform& platform,
                 DebugLog& log, OpeningWindows& windows) {
    log.WriteLog("Starting LoadLfile...");
    // Both are of one moment; the first box that waits for the user lets others save.
    std::optional<ReadingLock> reading(std::in_place,
                                       std::vector<std::string>{state.Terrain.LFilename,
                                                                state.Terrain.OFilename,
                                                                state.Catalogue.BinPath});
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
