#pragma once

#include "platform/Progress.h"
#include "theater/DebugLog.h"
#include "theater/Terrain.h"
#include "theater/TextureBin.h"

namespace vardenix {

// Writes the catalogue over BinPath and level 2 over its own pair, as one: after a kill
// at any moment all three files are old or, from the next opening on, all are new. Error
// 53 when there is no Texture.bin to replace; the system's refusals. The old files then
// stand.
void SaveBinAndLevelTwo(const Catalogue& catalogue, const Terrain& terrain,
                        Progress& progress, DebugLog& log);

} // namespace vardenix
