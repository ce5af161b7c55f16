#pragma once

#include "grounds/LearnedLand.h"

#include <cstdint>
#include <vector>

namespace vardenix {

// A tile, by index, that a post may have, and what it costs there beside its seams.
struct TileChoice {
    int32_t Tile = 0;
    float Cost = 0;
};

// Posts of which some may have other tiles.
struct SeamProblem {
    LandGrid Posts; // as they stand; what is not known has seams that cost nothing
    std::vector<std::vector<TileChoice>> Choices; // by LandGrid::At; none: it stays
};

// What the seams of a post to its neighbours cost if it had that tile.
double SeamCosts(const LearnedLand& land, const LandGrid& posts, int32_t x, int32_t y,
                 int32_t tile);

// Gives each post with choices that one which makes costs and seams together cheap: row
// by row and column by column exactly, until neither finds better, from several starts.
// The dearest choices of long lists are not looked at.
void SolveSeams(const LearnedLand& land, SeamProblem& problem);

} // namespace vardenix
