#pragma once

#include "catalogue/TextureBin.h"
#include "files/Transaction.h"
#include "levels/Terrain.h"
#include "platform/DebugLog.h"
#include "platform/Progress.h"

namespace vardenix {

// Writes the catalogue over BinPath and level 2 over its own pair, as one: after a kill
// at any moment all three files are old or, from the next opening on, all are new. Error
// 53 when there is no Texture.bin to replace, ChangedFileError when one of the files is
// another than was read; the system's refusals. The old files then stand.
void SaveBinAndLevelTwo(Catalogue& catalogue, Terrain& terrain, Progress& progress,
                        DebugLog& log, IfChanged ifChanged = IfChanged::Refuse);

// The same in a transaction that holds other files too, which it commits; level 2 only
// where `levelTwo` is set.
void SaveBinTogether(Transaction& files, Catalogue& catalogue, Terrain& terrain,
                     bool levelTwo, Progress& progress, DebugLog& log,
                     IfChanged ifChanged = IfChanged::Refuse);

} // namespace vardenix
