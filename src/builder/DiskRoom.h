#pragma once

#include "builder/ElevationGrids.h"
#include "builder/FartileShape.h"
#include "builder/Fartiles.h"
#include "levels/Terrain.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vardenix {

// Bytes that files of one folder will take beside the old ones.
struct RoomNeeded {
    std::string Folder;
    uint64_t Bytes = 0;
};

// Bytes that this user can still write where a folder lies, and what tells file systems
// apart.
struct FreeRoom {
    uint64_t Device = 0;
    uint64_t Bytes = 0;
};
using AskFreeRoom = std::function<FreeRoom(const std::string& folder)>;
FreeRoom FreeRoomAt(const std::string& folder);

// Error 61 with both numbers when a file system lacks the room for what it is to take;
// folders of one file system count together.
void RequireRoom(const std::vector<RoomNeeded>& needs, const AskFreeRoom& ask);

// The bytes that the pair of a rebuilt level will take, entries behind those of the level
// included. Blocks without a tile are looked at in the old level: they keep elevations.
uint64_t BytesOfFineLevel(const Terrain& terrain, const std::string& folder,
                          int32_t level);
uint64_t BytesOfFarLevel(const Terrain& terrain, const std::string& folder,
                         int32_t level);
// The bytes of the pair of level 0 to 2 in a run that replaces elevations by those of its
// finest grid. Level 1 may take less: elevations that are rounded to 0 count here.
uint64_t BytesOfElevations(const Terrain& terrain, const std::string& folder,
                           int32_t level, const ElevationGrids& grids);

// How many far tiles a rebuild will make, and over how many level 2 posts they lie.
struct FartileTotals {
    uint64_t Count = 0;
    uint64_t Serials = 0;
};
FartileTotals CountFartiles(const Terrain& terrain);

// What both containers and their index take.
uint64_t BytesOfFartiles(uint64_t count, uint64_t tiles, const FartileShape& shape);

} // namespace vardenix
