#pragma once

#include "levels/LevelGeometry.h"
#include "levels/Terrain.h"

#include <cstdint>
#include <span>
#include <vector>

namespace vardenix {

// The level 2 posts under one post of a far level, and what they say.
class PostsUnder {
public:
    PostsUnder(const Terrain& terrain, const LevelGeometry& geometry);

    // Looks under the post at that column and row of the whole level, from 0.
    void Look(int32_t column, int32_t row);

    // From the bottom row up, left to right.
    std::span<const int32_t> Serials() const { return serials_; }
    // None has a tile.
    bool Empty() const { return empty_; }
    // None has a tile or an elevation.
    bool Blank() const { return blank_; }

private:
    const Terrain& terrain_;
    int32_t side_;
    std::vector<int32_t> serials_;
    bool empty_ = true;
    bool blank_ = true;
};

} // namespace vardenix
