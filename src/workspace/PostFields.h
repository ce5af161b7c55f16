#pragma once

#include "levels/PostChange.h"
#include "levels/Posts.h"
#include "levels/Terrain.h"

#include <cstdint>

namespace vardenix {

// Posts a side that a save of a grid `width` posts a side keeps: whole segments only.
int32_t SavedWidth(int32_t width);

// Changes every post of a box and gives their number. Error 9, with nothing
// changed, when a corner lies outside the posts that a save keeps.
int64_t FillPosts(Terrain& terrain, const PostBox& box, const PostChange& change);

// How many segments that the box, inside the terrain, reaches into are all sea. In
// the file such segments are one block, so their Palette, X1 and X2 do not survive a
// save, but for those of the terrain's first one, which become everybody's.
int32_t SeaSegments(const Terrain& terrain, const PostBox& box);

} // namespace vardenix
