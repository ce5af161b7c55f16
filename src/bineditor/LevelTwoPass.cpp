#include "bineditor/LevelTwoPass.h"

#include "texts/Numbers.h"

#include <span>

namespace vardenix {

namespace {

// Rows of posts lie one behind the other, so a row of segments is one stretch of memory
// but for the posts beyond the last whole segment.
bool RenumberRow(std::span<TerrainPost> posts, const TileRenumbering& numbers) {
    bool changed = false;
    for (TerrainPost& post : posts) {
        const int32_t before = post.TileOffset;
        const int32_t after = numbers.Of(before);
        changed = changed || after != before;
        post.TileOffset = after;
    }
    return changed;
}

} // namespace

bool RenumberLevelTwo(Terrain& terrain, const TileRenumbering& numbers,
                      const BarShare& share, Progress& progress) {
    const int32_t segments = terrain.MapWidth / SegmentSide;
    const auto width = static_cast<size_t>(terrain.MapWidth);
    const auto whole = static_cast<size_t>(segments) * SegmentSide;
    const auto posts = terrain.LxArr.Values();
    bool changed = false;
    for (int32_t segY = 1; segY <= segments; ++segY) {
        const size_t firstRow = static_cast<size_t>(segY - 1) * SegmentSide;
        for (size_t row = firstRow; row < firstRow + SegmentSide; ++row)
            changed |= RenumberRow(posts.subspan(row * width, whole), numbers);
        progress.SetBar(
            ToInt32(share.From + segY * (share.To - share.From) * 1.0 / segments));
    }
    return changed;
}

} // namespace vardenix
