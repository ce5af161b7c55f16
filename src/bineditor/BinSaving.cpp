#include "bineditor/BinSaving.h"

#include "platform/Transaction.h"
#include "theater/TerrainStore.h"
#include "theater/TextureBinFile.h"

namespace vardenix {

void SaveBinAndLevelTwo(const Catalogue& catalogue, const Terrain& terrain,
                        Progress& progress, DebugLog& log) {
    RequireBinFile(catalogue);
    RequireSameName(terrain.LFilename);
    RequireSameName(terrain.OFilename);
    const ShownBar bar(progress);
    Transaction files;
    StagedFile& fileL = files.Stage(terrain.LFilename);
    StagedFile& fileO = files.Stage(terrain.OFilename);
    StagedFile& fileBin = files.Stage(catalogue.BinPath);
    WriteLevelPair(terrain, fileL, fileO, progress);
    WriteBinFile(catalogue.Bin, fileBin);
    files.Commit();
    log.WriteLog("Saved BinPath and L2 together...");
}

} // namespace vardenix
