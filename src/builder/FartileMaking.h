#pragma once

#include "builder/Fartiles.h"
#include "builder/RebuildView.h"
#include "builder/RewrittenFile.h"
#include "catalogue/TextureBin.h"
#include "levels/RebuiltFiles.h"
#include "levels/Terrain.h"

#include <cstdint>
#include <string>

namespace vardenix {

// What MakeFartiles works with; everything is borrowed.
struct FartileParts {
    const vardenix::Terrain& Terrain;
    const vardenix::Catalogue& Catalogue;
    std::string TextureFolder; // of the containers, with a slash at its end
    RebuildFiles& Files;
    RebuildView& View;
    int32_t FarSize = 32; // pixels; one that FartileShape takes
    unsigned Threads = 0; // 0: as many as the machine has
};

// Makes the far tiles of the list and stages both containers: the header, then the DXT1
// data of each, in order; beside them the index by which the next run knows them. Where
// only what has changed is rewritten, far tiles are copied from the containers that are
// there, as far as their index can be trusted and tells of the same pictures. Error 9
// with X and Y of a post whose tile number the catalogue does not have; 481 with the path
// of a picture that is missing or cannot be read; 32755 when the user stops it.
void MakeFartiles(const FartileParts& parts, const FartileList& list);

// "About 2hours 05mins remaining.", with the hours left out below one.
std::string TimeRemainingText(int64_t seconds);

} // namespace vardenix
