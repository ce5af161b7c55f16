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
            reach,
            GridReach + ClampToInt32(std::ceil(std::min(
                            AreasReach(sources.Catalogue.Bin) * view.CellSize(),
                            1.0 * std::max(view.PictureWidth(), view.PictureHeight())))));
    return reach;
}

MapPatch PatchOfPart(const MapView& view, const PixelRect& part, int32_t reach) {
    const auto cellAt = [&](int32_t pixels, int32_t count) {
        return std::clamp(ClampToInt32(std::floor(pixels / view.CellSize())), 0,
                          std::max(count - 1, 0));
    };
    const auto columnAt = [&](int32_t x) { return cellAt(x, view.ViewColumns()); };
    const auto rowAt = [&](int32_t y) {
        return cellAt(view.PictureHeight() - y, view.ViewRows());
    };
    // A cell's edge is a pixel's at most from where it would be without rounding.
    const int32_t around = reach + 1;
    return {part,
            {columnAt(part.Left - around), rowAt(part.Top + part.Height + around),
             columnAt(part.Left + part.Width + around), rowAt(part.Top - around)}};
}

MapPatch PatchOf(const MapView& view, const PostBox& changed, int32_t reach) {
    // A height shows in the relief of its neighbours, and in their contour lines.
    const int32_t around = view.ShowRelief || view.ShowContours ? 1 : 0;
    const PostBox posts{changed.X1 - around, changed.Y1 - around, changed.X2 + around,
                        changed.Y2 + around};
    const double cell = view.CellSize();
    const int32_t x1 = std::max(posts.X1 - view.MapLeftX, 0);
    const int32_t x2 = std::min(posts.X2 - view.MapLeftX, view.ViewColumns() - 1);
    const int32_t y1 = std::max(posts.Y1, view.MapBottomY);
    const int32_t y2 = std::min(posts.Y2, view.MapBottomY + view.ViewRows() - 1);
    if (x2 < x1 || y2 < y1)
        return {};
    const int32_t left = std::max(PixelAt(cell * x1) - reach, 0);
    const int32_t right = std::min(PixelAt(cell * (x2 + 1)) + reach, view.PictureWidth());
    const int32_t top = std::max(PixelAt(view.BottomOfRow(y2 + 1)) - reach, 0);
    const int32_t bottom =
        std::min(PixelAt(view.BottomOfRow(y1)) + reach, view.PictureHeight());
    return PatchOfPart(view, {left, top, right - left, bottom - top}, reach);
}

} // namespace vardenix
