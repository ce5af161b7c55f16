#include "bineditor/BinSaving.h"

#include "catalogue/TextureBinFile.h"
#include "files/FileNames.h"
#include "levels/TerrainStore.h"
#include "texts/RuntimeError.h"

namespace vardenix {

void SaveBinAndLevelTwo(Catalogue& catalogue, Terrain& terrain, Progress& progress,
                        DebugLog& log, IfChanged ifChanged) {
    Transaction files({terrain.LFilename, terrain.OFilename, catalogue.BinPath});
    SaveBinTogether(files, catalogue, terrain, true, progress, log, ifChanged);
}

void SaveBinTogether(Transaction& files, Catalogue& catalogue, Terrain& terrain,
                     bool levelTwo, Progress& progress, DebugLog& log,
                     IfChanged ifChanged) {
    std::vector<std::filesystem::path> targets{TargetOf(catalogue.BinPath)};
    if (levelTwo)
        targets.insert(targets.end(),
                       {TargetOf(terrain.LFilename), TargetOf(terrain.OFilename)});
    const auto locks = LockFoldersOf(targets, FolderLock::Exclusive);
    if (!FileExists(catalogue.BinPath))
        throw RuntimeError(ErrorNumber::FileNotFound, "replacing " + catalogue.BinPath);
    const ShownBar bar(progress);
    StagedFile* fileL = nullptr;
    StagedFile* fileO = nullptr;
    if (levelTwo) {
        RequireSameName(terrain.LFilename);
        RequireSameName(terrain.OFilename);
        fileL = &files.Stage(terrain.LFilename, terrain.ReadL, ifChanged);
        fileO = &files.Stage(terrain.OFilename, terrain.ReadO, ifChanged);
        WriteLevel2(terrain, *fileL, *fileO, progress);
    }
    StagedFile& fileBin = files.Stage(catalogue.BinPath, catalogue.Read, ifChanged);
    WriteBinFile(catalogue.Bin, fileBin);
    files.Commit();
    if (levelTwo) {
        terrain.ReadL = fileL->Identity();
        terrain.ReadO = fileO->Identity();
        terrain.Gap.Missing = 0;
    }
    catalogue.Read = fileBin.Identity();
    log.WriteLog(levelTwo ? "Saved BinPath and L2 together..." : "Saved BinPath...");
}

} // namespace vardenix
