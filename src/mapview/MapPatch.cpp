#include "mapview/MapPatch.h"

#include "texts/Numbers.h"

#include <algorithm>
#include <cmath>

namespace vardenix {

namespace {

constexpr double TileFeet = 3280.84;
// A pen three pixels wide round a cell, and its corner.
constexpr int32_t GridReach = 4;

// Beyond the side of a tile that spans 0 to TileFeet, as parts of that.
double Beyond(double low, double high) {
    const double most = std::max(-low, high - TileFeet) / TileFeet;
    return std::isfinite(most) ? std::max(most, 0.0) : 0;
}

double AreasReach(const TextureBin& bin) {
    double most = 0;
    const auto take = [&most](double at, double radius) {
        most = std::max(most, Beyond(at - radius, at + radius));
    };
    for (const TileSet& set : bin.Sets)
        for (const TileRecord& tile : set.Tiles) {
            for (const TileArea& area : tile.Areas) {
                take(area.CenterX, area.Radius);
                take(area.CenterY, area.Radius);
            }
            for (const TilePath& path : tile.Paths)
                for (const float at : {path.StartX, path.StartY, path.EndX, path.EndY})
                    take(at, path.Width);
        }
    return most;
}

// The longest height, and what leans out of it, round the middle of its quarter cell.
int32_t HeightsReach(const Configuration& settings, DrawingSurface& texts) {
    texts.SetFont(settings.HeightsFont);
    const TextSize longest = texts.MeasureText("-30000");
    constexpr int32_t rim = 1;
    return std::max(longest.Width, longest.Height) / 2 + longest.Height + rim;
}

} // namespace

int32_t ReachOf(const MapView& view, const MapSources& sources, DrawingSurface& texts) {
    int32_t reach = GridReach;
    if (view.ShowHeights)
        reach = std::max(reach, HeightsReach(sources.Settings, texts));
    if (view.ShowAreasPaths)
        reach = std::max(
            reach, GridReach + ClampToInt32(std::ceil(std::min(
                                   AreasReach(sources.Catalogue.Bin) * view.CellSize(),
                                   1.0 * view.PictureSide()))));
    return reach;
}

MapPatch PatchOfPart(const MapView& view, const PixelRect& part, int32_t reach) {
    const int32_t last = view.ViewPosts() - 1;
    const auto cellAt = [&](int32_t pixel) {
        return std::clamp(ClampToInt32(std::floor(pixel / view.CellSize())), 0, last);
    };
    // A cell's edge is a pixel's at most from where it would be without rounding.
    const int32_t around = reach + 1;
    return {part,
            {cellAt(part.Left - around), last - cellAt(part.Top + part.Height + around),
             cellAt(part.Left + part.Width + around), last - cellAt(part.Top - around)}};
}

MapPatch PatchOf(const MapView& view, const PostBox& changed, int32_t reach) {
    // A height shows in the relief of its neighbours, and in their contour lines.
    const int32_t around = view.ShowRelief || view.ShowContours ? 1 : 0;
    const PostBox posts{changed.X1 - around, changed.Y1 - around, changed.X2 + around,
                        changed.Y2 + around};
    const int32_t last = view.ViewPosts() - 1;
    const int32_t side = view.PictureSide();
    const double cell = view.CellSize();
    const int32_t x1 = std::max(posts.X1 - view.MapLeftX, 0);
    const int32_t x2 = std::min(posts.X2 - view.MapLeftX, last);
    const int32_t y1 = std::max(posts.Y1 - view.MapBottomY, 0);
    const int32_t y2 = std::min(posts.Y2 - view.MapBottomY, last);
    if (x2 < x1 || y2 < y1)
        return {};
    const int32_t left = std::max(PixelAt(cell * x1) - reach, 0);
    const int32_t right = std::min(PixelAt(cell * (x2 + 1)) + reach, side);
    const int32_t top = std::max(PixelAt(cell * (last - y2)) - reach, 0);
    const int32_t bottom = std::min(PixelAt(cell * (last - y1 + 1)) + reach, side);
    return PatchOfPart(view, {left, top, right - left, bottom - top}, reach);
}

} // namespace vardenix
