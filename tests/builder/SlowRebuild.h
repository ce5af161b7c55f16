#pragma once

#include "support/TheaterMaker.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// A rebuild as plain as it can be: loops over posts, offsets worked out one by one, the
// image library for every picture, and the block compressor for every far tile. It shares
// no code with the program's.
namespace vardenix::tests {

struct SlowFartile {
    std::vector<int> Serials;
    int Level = 0;
};

// The bytes of a rebuilt pair. `old` is the level that was there, or null.
PairBytes SlowFineLevel(const MadeLevel& level2, int level, const MadeLevel* old);
PairBytes SlowFarLevel(const MadeLevel& level2, int level, const MadeLevel& old,
                       std::vector<SlowFartile>& fartiles);

// The bytes of a container. `pictureOf` gives the path of a tile's picture.
std::string SlowContainer(const MadeLevel& level2,
                          const std::vector<SlowFartile>& fartiles, int farSize,
                          const std::function<std::string(int tile)>& pictureOf);

// The levels of an elevation rebuild: grids of heights by halving, from `finest` (four
// times the width of level 2), with method 1, 2 or 3.
std::vector<int16_t> SlowHalved(const std::vector<int16_t>& grid, int width, int method);
// `old` null where the level is not there; level 2 is always there.
PairBytes SlowLevelElevations(const MadeLevel& level2, int level, const MadeLevel* old,
                              const std::vector<int16_t>& heights);
PairBytes SlowFarLevelElevations(const MadeLevel& level2, int level, const MadeLevel& old,
                                 const std::vector<int16_t>& heights);

} // namespace vardenix::tests
