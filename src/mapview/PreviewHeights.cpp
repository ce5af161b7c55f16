#include "mapview/PreviewHeights.h"

#include "mapview/Relief.h"
#include "pictures/Blending.h"

#include <algorithm>

namespace vardenix {

namespace {

uint32_t PreviewPixel(uint32_t color) {
    return 0xFF000000 | (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}

// A post of the picture with relief and contour lines; a line lies where the level is
// another than to the right or above.
class PreviewPixels {
public:
    PreviewPixels(const Terrain& terrain, const PreviewColors& colors,
                  const PreviewLooks& looks)
        : heights_(terrain, Layer::Posts), colors_(colors), looks_(looks) {}

    uint32_t At(int32_t x, int32_t y, int16_t elevation) const {
        const uint32_t pixel = PreviewPixel(
            elevation == 0 ? colors_.Sea : ElevationClassColor(elevation, colors_));
        if (looks_.ContourStep > 0 && IsLine(x, y, elevation))
            return PreviewPixel(ContourColor);
        if (looks_.Relief == 0)
            return pixel;
        const ReliefTint tint = TintOf(ShadeAt(heights_, x, y), looks_.Relief);
        return BlendPixel(pixel, PreviewPixel(tint.Color), tint.Alpha);
    }

private:
    bool IsLine(int32_t x, int32_t y, int16_t elevation) const {
        const int32_t level = ContourLevel(elevation, looks_.ContourStep);
        return ContourLevel(heights_.At(x + 1, y), looks_.ContourStep) != level ||
               ContourLevel(heights_.At(x, y + 1), looks_.ContourStep) != level;
    }

    HeightField heights_;
    const PreviewColors& colors_;
    const PreviewLooks& looks_;
};

} // namespace

bool UpdateHeights(const Terrain& terrain, const PreviewColors& colors,
                   PostPlace lowerLeft, int32_t across, int32_t down,
                   const RasterView& picture, const PreviewLooks& looks) {
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
    const PreviewPixels pixels(terrain, colors, looks);
    bool changed = false;
    for (int64_t y = bottom; y < top; ++y) {
        uint32_t* row = picture.Row(static_cast<int32_t>(side - y));
        for (int64_t x = left; x < right; ++x) {
            const int16_t elevation = posts[static_cast<size_t>(y * side + x)].Elevation;
            const uint32_t pixel =
                pixels.At(static_cast<int32_t>(x), static_cast<int32_t>(y), elevation);
            changed |= row[x] != pixel;
            row[x] = pixel;
        }
    }
    return changed;
}

} // namespace vardenix
