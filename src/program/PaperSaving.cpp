#include "program/PaperSaving.h"

#include "catalogue/TextureBinFile.h"
#include "files/FileNames.h"
#include "files/ReadableFile.h"
#include "levels/TerrainStore.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <span>
#include <string>

namespace vardenix {

namespace {

bool Among(const std::vector<Paper>& which, Paper paper) {
    return std::ranges::find(which, paper) != which.end();
}

std::vector<std::string> FilesOf(const ProgramState& state,
                                 const std::vector<Paper>& which) {
    std::vector<std::string> files;
    if (Among(which, Paper::Catalogue))
        files.push_back(state.Catalogue.BinPath);
    if (Among(which, Paper::Level2))
        files.insert(files.end(), {state.Terrain.LFilename, state.Terrain.OFilename});
    if (Among(which, Paper::MapFile))
        files.push_back(state.MAPFile);
    return files;
}

// A longer file keeps its tail.
void WriteMapFile(const ProgramState& state, StagedFile& file) {
    file.Write(std::as_bytes(std::span(&state.MapFileRecord, 1)));
    if (FileExists(state.MAPFile))
        file.WriteRestOf(ReadableFile(state.MAPFile), sizeof state.MapFileRecord);
}

} // namespace

void SavePapers(ProgramState& state, const std::vector<Paper>& which, Progress& progress,
                DebugLog& log, IfChanged ifChanged) {
    Transaction files(FilesOf(state, which));
    SavePapersWith(files, state, which, progress, log, ifChanged);
}

void SavePapersWith(Transaction& files, ProgramState& state,
                    const std::vector<Paper>& which, Progress& progress, DebugLog& log,
                    IfChanged ifChanged) {
    Terrain& terrain = state.Terrain;
    Catalogue& catalogue = state.Catalogue;
    const bool levelTwo = Among(which, Paper::Level2);
    if (levelTwo)
        RequireNoGap(terrain);
    std::vector<std::filesystem::path> targets;
    for (const std::string& path : FilesOf(state, which))
        targets.push_back(TargetOf(path));
    const auto locks = LockFoldersOf(targets, FolderLock::Exclusive);
    const bool bin = Among(which, Paper::Catalogue);
    if (bin && !FileExists(catalogue.BinPath))
        throw RuntimeError(ErrorNumber::FileNotFound, "replacing " + catalogue.BinPath);
    const ShownBar bar(progress);
    StagedFile* fileL = nullptr;
    StagedFile* fileO = nullptr;
    StagedFile* fileBin = nullptr;
    StagedFile* fileMap = nullptr;
    if (levelTwo) {
        RequireSameName(terrain.LFilename);
        RequireSameName(terrain.OFilename);
        fileL = &files.Stage(terrain.LFilename, terrain.ReadL, ifChanged);
        fileO = &files.Stage(terrain.OFilename, terrain.ReadO, ifChanged);
        WriteLevel2(terrain, *fileL, *fileO, progress);
    }
    if (bin) {
        fileBin = &files.Stage(catalogue.BinPath, catalogue.Read, ifChanged);
        WriteBinFile(catalogue.Bin, *fileBin);
    }
    if (Among(which, Paper::MapFile)) {
        fileMap = &files.Stage(state.MAPFile, state.MAPFileRead, ifChanged);
        WriteMapFile(state, *fileMap);
    }
    files.Commit();
    if (fileL != nullptr) {
        terrain.ReadL = fileL->Identity();
        terrain.ReadO = fileO->Identity();
        terrain.Gap = {};
    }
    if (fileBin != nullptr)
        catalogue.Read = fileBin->Identity();
    if (fileMap != nullptr)
        state.MAPFileRead = fileMap->Identity();
    for (const std::string& path : FilesOf(state, which))
        log.WriteLog("Saved " + path + "...");
}

} // namespace vardenix
