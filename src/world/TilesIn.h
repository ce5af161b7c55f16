#pragma once

#include "catalogue/TextureBin.h"
#include "levels/Terrain.h"
#include "levels/ValueRuns.h"
#include "world/ClassTable.h"
#include "world/WorldHelper.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vardenix {

// Whether a number is that of a tile of the catalogue.
bool IsTile(const TileLookup& lookup, int32_t number);

// Error 5 that names some of the numbers of a raster over posts, whose lower left one is
// `corner`, that no tile has: negative ones, and those that the catalogue does not know
// unless they stand at their post already.
void RequireTiles(const WorldNumbers& numbers, PostPlace corner, const Terrain& terrain,
                  const TileLookup& lookup);

// What becomes of the posts that get these tile numbers; where there is none a post
// stays.
std::vector<TileRun> RunsOfTiles(const WorldNumbers& numbers, PostPlace corner,
                                 const Terrain& terrain);

// Where a class of land cover lies.
struct ClassPosts {
    int32_t Class = 0;
    ClassRule Rule;
    std::vector<RowSpan> Posts;
};
// The classes of a raster over posts that the table tells of, rising; those that it does
// not know are left out and named in `unknown`, rising.
std::vector<ClassPosts> PostsByClass(const WorldNumbers& classes, PostPlace corner,
                                     const ClassTable& table,
                                     std::vector<int32_t>& unknown);

// "1, 2, 5 and 12 more"
std::string SomeOf(const std::vector<int32_t>& numbers);

} // namespace vardenix
