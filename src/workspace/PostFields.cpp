#include "workspace/PostFields.h"

#include "companion/Vardenix.h"
#include "levels/TerrainStore.h"
#include "texts/RuntimeError.h"

#include <algorithm>

namespace vardenix {

namespace {

PostRectangle Ordered(const PostRectangle& corners) {
    const auto [left, right] = std::minmax(corners.X1, corners.X2);
    const auto [bottom, top] = std::minmax(corners.Y1, corners.Y2);
    return {left, bottom, right, top};
}

void RequireSaved(const PostRectangle& ordered, int32_t savedWidth) {
    if (ordered.X1 < 1 || ordered.Y1 < 1 || ordered.X2 > savedWidth ||
        ordered.Y2 > savedWidth)
        throw RuntimeError(
            ErrorNumber::SubscriptOutOfRange,
            "posts " + std::to_string(ordered.X1) + ", " + std::to_string(ordered.Y1) +
                " to " + std::to_string(ordered.X2) + ", " + std::to_string(ordered.Y2) +
                " of 1 to " + std::to_string(savedWidth));
}

int32_t SegmentOf(int32_t post) { return (post - 1) / SegmentSide + 1; }

} // namespace

int32_t SavedWidth(int32_t width) { return width / SegmentSide * SegmentSide; }

int64_t FillPosts(Terrain& terrain, const PostRectangle& rectangle,
                  const PostChange& change) {
    const PostRectangle posts = Ordered(rectangle);
    RequireSaved(posts, SavedWidth(terrain.MapWidth));
    const int32_t across = posts.X2 - posts.X1 + 1;
    const int32_t up = posts.Y2 - posts.Y1 + 1;
    for (int32_t y = posts.Y1; y <= posts.Y2; ++y) {
        const auto first =
            static_cast<size_t>(XYToSerial(posts.X1, y, terrain.MapWidth)) - 1;
        const auto row =
            terrain.LxArr.Values().subspan(first, static_cast<size_t>(across));
        for (TerrainPost& post : row)
            ApplyChange(post, change);
    }
    return int64_t{across} * up;
}

int32_t SeaSegments(const Terrain& terrain, const PostRectangle& rectangle) {
    const PostRectangle posts = Ordered(rectangle);
    int32_t found = 0;
    for (int32_t segY = SegmentOf(posts.Y1); segY <= SegmentOf(posts.Y2); ++segY)
        for (int32_t segX = SegmentOf(posts.X1); segX <= SegmentOf(posts.X2); ++segX)
            found += IsCommonSeg(terrain, segX, segY) ? 1 : 0;
    return found;
}

} // namespace vardenix
