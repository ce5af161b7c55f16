#include "mapview/PreviewHeights.h"

#include <algorithm>

namespace vardenix {

namespace {

uint32_t PreviewPixel(uint32_t color) {
    return 0xFF000000 | (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}

} // namespace

bool UpdateHeights(const Terrain& terrain, const PreviewColors& colors,
                   PostPlace lowerLeft, int32_t across, int32_t down,
                   const RasterView& picture) {
    const int64_t side = terrain.MapWidth;
    const auto posts = terrain.LxArr.Values();
    if (picture.Width != side || picture.Height != side ||
        static_cast<int64_t>(posts.size()) != side * side)
        return false;
    const int64_t left = std::clamp<int64_t>(lowerLeft.X, 0, side);
    const int64_t right = std::clamp<int64_t>(int64_t{lowerLeft.X} + across, left, side);
    // The lowest row of posts has none in the picture.
    const int64_t bottom = std::clamp<int64_t>(lowerLeft.Y, 1, side);
    const int64_t top = std::clamp<int64_t>(int64_t{lowerLeft.Y} + down, bottom, side);
    bool changed = false;
    for (int64_t y = bottom; y < top; ++y) {
        uint32_t* row = picture.Row(static_cast<int32_t>(side - y));
        for (int64_t x = left; x < right; ++x) {
            const int16_t elevation = posts[static_cast<size_t>(y * side + x)].Elevation;
            const uint32_t pixel = PreviewPixel(
                elevation == 0 ? colors.Sea : ElevationClassColor(elevation, colors));
            changed |= row[x] != pixel;
            row[x] = pixel;
        }
    }
    return changed;
}

} // namespace vardenix
