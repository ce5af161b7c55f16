#pragma once

#include "grounds/TerrainBrush.h"

#include <cstdint>
#include <span>
#include <vector>

namespace vardenix {

// Error 5 with the reason where nothing can be painted.
void RequireLearned(const LearnedLand& land);

// A part of a terrain, tiles by their index.
struct LandPart {
    PostPlace Origin; // on the terrain
    LandGrid Posts;
};
// Of a box that is cut to the terrain; something is left of it.
LandPart PostsOf(const LearnedLand& land, const Terrain& terrain, const PostBox& box);

// The part of a terrain round some posts that a brush looks at. There is at least one.
struct BrushPart {
    PostPlace Origin;
    LandGrid Posts;
    std::vector<uint8_t> Marked; // the posts that it was asked for
};
BrushPart PartRound(const LearnedLand& land, const Terrain& terrain,
                    std::span<const RowSpan> spans, int32_t reach);

// What has become of a part.
BrushResult ResultOf(const LearnedLand& land, const Terrain& terrain,
                     const BrushPart& before, const LandGrid& after, int64_t unfilled);

// 1 for a seam of a post that does not fit, 0 for one that does or is not there.
int64_t SeamsThatDoNotFit(const LearnedLand& land, const LandGrid& posts, int32_t x,
                          int32_t y, Meeting meeting);

} // namespace vardenix
