#include "bineditor/BinSaving.h"

#include "catalogue/TextureBinFile.h"
#include "files/FileNames.h"
#include "levels/TerrainStore.h"
#include "texts/RuntimeError.h"

namespace vardenix {

void SaveBinAndLevelTwo(Catalogue& catalogue, Terrain& terrain, Progress& progress,
                        DebugLog& log, IfChanged ifChanged) {
    const auto locks =
        LockFoldersOf({TargetOf(terrain.LFilename), TargetOf(terrain.OFilename),
                       TargetOf(catalogue.BinPath)},
                      FolderLock::Exclusive);
    if (!FileExists(catalogue.BinPath))
        throw RuntimeError(ErrorNumber::FileNotFound, "replacing " + catalogue.BinPath);
    RequireSameName(terrain.LFilename);
    RequireSameName(terrain.OFilename);
    const ShownBar bar(progress);
    Transaction files;
    StagedFile& fileL = files.Stage(terrain.LFilename, terrain.ReadL, ifChanged);
    StagedFile& fileO = files.Stage(terrain.OFilename, terrain.ReadO, ifChanged);
    StagedFile& fileBin = files.Stage(catalogue.BinPath, catalogue.Read, ifChanged);
    WriteLevel2(terrain, fileL, fileO, progress);
    WriteBinFile(catalogue.Bin, fileBin);
    files.Commit();
    terrain.ReadL = fileL.Identity();
    terrain.ReadO = fileO.Identity();
    terrain.Gap.Missing = 0;
    catalogue.Read = fileBin.Identity();
    log.WriteLog("Saved BinPath and L2 together...");
}

} // namespace vardenix
