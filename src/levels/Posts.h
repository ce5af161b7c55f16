#pragma once

#include <algorithm>
#include <cstdint>

namespace vardenix {

// The two grids that are edited: the posts of level 2, and the finest elevations.
enum class Layer { Posts, Heights };

// A place on the grid of level 2, or on that of the finest elevations, counted from 0.
struct PostPlace {
    int32_t X = 0;
    int32_t Y = 0;

    bool operator==(const PostPlace&) const = default;
};

// Two places counted from 0, in either order; both belong to the box.
struct PostBox {
    int32_t X1 = 0;
    int32_t Y1 = 0;
    int32_t X2 = 0;
    int32_t Y2 = 0;
};

// With X1 and Y1 the lower ones.
inline PostBox Ordered(const PostBox& box) {
    return {std::min(box.X1, box.X2), std::min(box.Y1, box.Y2), std::max(box.X1, box.X2),
            std::max(box.Y1, box.Y2)};
}

// Ordered, and cut to a grid `width` places a side; nothing of it left makes X2 < X1 or
// Y2 < Y1.
inline PostBox CutToGrid(const PostBox& box, int32_t width) {
    const PostBox ordered = Ordered(box);
    return {std::max(ordered.X1, 0), std::max(ordered.Y1, 0),
            std::min(ordered.X2, width - 1), std::min(ordered.Y2, width - 1)};
}

// Of an ordered box.
inline bool Contains(const PostBox& box, PostPlace place) {
    return place.X >= box.X1 && place.X <= box.X2 && place.Y >= box.Y1 &&
           place.Y <= box.Y2;
}

// Whether both corners, and so all of a box, lie on a grid `width` places a side.
inline bool LiesOnGrid(const PostBox& box, int32_t width) {
    const PostBox ordered = Ordered(box);
    return ordered.X1 >= 0 && ordered.Y1 >= 0 && ordered.X2 < width && ordered.Y2 < width;
}

} // namespace vardenix
