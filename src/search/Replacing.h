#pragma once

#include "levels/Terrain.h"
#include "levels/ValueRuns.h"
#include "program/SearchResults.h"
#include "search/TilesMeant.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// Which tiles give way, and to which: one of several is drawn at each post, by a seed.
struct Replacement {
    TileMarks Old{};
    std::vector<int32_t> New{}; // at least one
    uint32_t Seed = 0;
};

// What a replacement makes of the posts of `spans`, each given once and on the terrain;
// nothing is changed yet. Error 5 when there is nothing to replace by.
std::vector<TileRun> ReplacedRuns(const Terrain& terrain, const Replacement& replacement,
                                  std::span<const RowSpan> spans);

// All posts of a terrain, and those of some hits, as stretches of rows. Hits rise.
std::vector<RowSpan> WholeTerrain(const Terrain& terrain);
std::vector<RowSpan> SpansOfHits(const SearchResults& hits, int32_t mapWidth);

// How many posts of the spans have a tile that gives way, whether or not it becomes
// another one: what is told before it happens.
int64_t CountReplaced(const Terrain& terrain, const TileMarks& old,
                      std::span<const RowSpan> spans);

} // namespace vardenix
