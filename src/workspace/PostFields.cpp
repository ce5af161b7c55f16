#include "workspace/PostFields.h"

#include "companion/Vardenix.h"
#include "levels/TerrainStore.h"
#include "texts/RuntimeError.h"

#include <string>

namespace vardenix {

namespace {

void RequireSaved(const PostBox& ordered, int32_t savedWidth) {
    if (!LiesOnGrid(ordered, savedWidth))
        throw RuntimeError(
            ErrorNumber::SubscriptOutOfRange,
            "posts " + std::to_string(ordered.X1) + ", " + std::to_string(ordered.Y1) +
                " to " + std::to_string(ordered.X2) + ", " + std::to_string(ordered.Y2) +
                " of 0 to " + std::to_string(savedWidth - 1));
}

// From 1, of a post from 0.
int32_t SegmentOf(int32_t post) { return post / SegmentSide + 1; }

} // namespace

int32_t SavedWidth(int32_t width) { return width / SegmentSide * SegmentSide; }

int64_t FillPosts(Terrain& terrain, const PostBox& box, const PostChange& change) {
    const PostBox posts = Ordered(box);
    RequireSaved(posts, SavedWidth(terrain.MapWidth));
    const int32_t across = posts.X2 - posts.X1 + 1;
    const int32_t up = posts.Y2 - posts.Y1 + 1;
    for (int32_t y = posts.Y1; y <= posts.Y2; ++y) {
        const auto first =
            static_cast<size_t>(XYToSerial(posts.X1 + 1, y + 1, terrain.MapWidth)) - 1;
        const auto row =
            terrain.LxArr.Values().subspan(first, static_cast<size_t>(across));
        for (TerrainPost& post : row)
            ApplyChange(post, change);
    }
    return int64_t{across} * up;
}

int32_t SeaSegments(const Terrain& terrain, const PostBox& box) {
    const PostBox posts = Ordered(box);
    int32_t found = 0;
    for (int32_t segY = SegmentOf(posts.Y1); segY <= SegmentOf(posts.Y2); ++segY)
        for (int32_t segX = SegmentOf(posts.X1); segX <= SegmentOf(posts.X2); ++segX)
            found += IsCommonSeg(terrain, segX, segY) ? 1 : 0;
    return found;
}

} // namespace vardenix
