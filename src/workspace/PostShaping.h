#pragma once

#include "levels/PostDelta.h"
#include "levels/Posts.h"
#include "levels/Terrain.h"
#include "workspace/Selection.h"

#include <cstdint>
#include <vector>

namespace vardenix {

// What becomes of the elevations of posts.
enum class PostShape { Set, Raise, Lower, Smooth, Flatten };

// A brush over the elevations of level 2.
struct PostBrush {
    PostShape Shape = PostShape::Raise;
    int16_t Feet = 100; // of Set, Raise and Lower
    int32_t Size = 1;   // posts across
    // Its work fades from the middle to nothing beyond its edge; otherwise it is whole
    // everywhere under it.
    bool Soft = false;
};

// What a stroke makes of the elevations of posts, each place of the line once; nothing is
// changed yet. Flatten takes the elevation of the line's first post, Smooth the mean of a
// post and its eight neighbours before the stroke. Feet stop at the ends of 16 bits and
// are rounded half to even. `bounds`, where there is one, is what may be changed.
PostDelta BrushedHeights(const Terrain& terrain, const std::vector<PostPlace>& line,
                         const PostBrush& brush, const Selection* bounds = nullptr);

// All posts of a selection alike; Flatten takes their mean.
PostDelta ShapedHeights(const Terrain& terrain, const Selection& selection,
                        PostShape shape, int16_t feet);

// An even slope between two posts, from the elevation of the one to that of the other:
// posts that lie beside the line, up to `size` posts across, get the height of the
// nearest place on it. With `soft` they get it less the farther they lie.
PostDelta SlopedHeights(const Terrain& terrain, PostPlace from, PostPlace to,
                        int32_t size, bool soft, const Selection* bounds = nullptr);

} // namespace vardenix
