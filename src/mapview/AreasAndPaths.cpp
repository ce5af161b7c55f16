#include "catalogue/TypeNames.h"
#include "mapview/Repaint.h"
#include "texts/Numbers.h"

#include <algorithm>
#include <cmath>

namespace vardenix {
namespace {

constexpr double FeetPerPost = 3280.84;

const TileRecord* RecordOf(const TextureBin& bin, int32_t tileNumber) {
    const auto set = static_cast<size_t>(tileNumber / TilesPerSet) + 1;
    if (set >= bin.Sets.size())
        return nullptr;
    const auto position = static_cast<size_t>(tileNumber % TilesPerSet) + 1;
    const std::vector<TileRecord>& tiles = bin.Sets[set].Tiles;
    return position < tiles.size() ? &tiles[position] : nullptr;
}

// Feet on a tile to pixels on the picture, for the cell of one post.
struct TileScale {
    double CellSize;
    PixelRect Cell;

    double Length(double feet) const { return feet / (FeetPerPost / CellSize); }
    // The first coordinate of the catalogue runs up the tile, the second to the right.
    PicturePoint Point(double up, double right) const {
        return {Cell.Left + Length(right), Cell.Top + CellSize - Length(up)};
    }
};

bool IsFinite(PicturePoint point) {
    return std::isfinite(point.X) && std::isfinite(point.Y);
}

void DrawArea(Repaint& repaint, const TileScale& scale, const TileArea& area) {
    const double radius = scale.Length(area.Radius);
    const PicturePoint center = scale.Point(area.CenterX, area.CenterY);
    // A catalogue is not checked when it is read; what is no circle is not drawn.
    if (!IsFinite(center) || !(radius >= 0))
        return;
    const Configuration& settings = repaint.Sources.Settings;
    const uint32_t color = area.Type == TerrainThickForest ? settings.VXAreasForestColor
                                                           : settings.VXAreasWaterColor;
    repaint.Surface.SetPen(color, 1);
    repaint.Surface.SetFill(repaint.View.AreasFilled ? FillStyle::Solid : FillStyle::None,
                            color);
    repaint.Surface.Circle(center, radius);
}

uint32_t PathColor(const Configuration& settings, int32_t type) {
    switch (type) {
    case PathRoad:
        return settings.VXPathsRoadColor;
    case PathRailRoad:
        return settings.VXPathsRailColor;
    case PathBridge:
        return settings.VXPathsBridgeColor;
    default:
        return settings.VXPathsRiverColor;
    }
}

void DrawPath(Repaint& repaint, const TileScale& scale, const TilePath& path) {
    const PicturePoint start = scale.Point(path.StartX, path.StartY);
    const PicturePoint end = scale.Point(path.EndX, path.EndY);
    if (!IsFinite(start) || !IsFinite(end))
        return;
    const int32_t width = ClampToInt32(std::floor(scale.Length(path.Width)));
    repaint.Surface.SetPen(
        PathColor(repaint.Sources.Settings, path.Type),
        std::clamp(width, 1,
                   std::max(repaint.View.PictureWidth(), repaint.View.PictureHeight())));
    repaint.Surface.Line(start, end);
}

// Lists run from 1.
template <typename Item, typename Draw>
void ForEach(const std::vector<Item>& list, int32_t count, Draw draw) {
    const auto last = std::min(list.size(), static_cast<size_t>(std::max(count, 0)) + 1);
    for (size_t i = 1; i < last; ++i)
        draw(list[i]);
}

void DrawTile(Repaint& repaint, const TileRecord& tile, const PixelRect& cell) {
    const TileScale scale{repaint.View.CellSize(), cell};
    if (repaint.View.ShowAreas)
        ForEach(tile.Areas, tile.NumAreas,
                [&](const TileArea& area) { DrawArea(repaint, scale, area); });
    if (repaint.View.ShowPaths)
        ForEach(tile.Paths, tile.NumPaths,
                [&](const TilePath& path) { DrawPath(repaint, scale, path); });
}

} // namespace

void PaintAreasAndPaths(Repaint& repaint) {
    const Catalogue& catalogue = repaint.Sources.Catalogue;
    StepsTogether steps(repaint.Surface);
    for (int32_t i = 1; i <= repaint.Grid.Count(); ++i) {
        const auto post = repaint.Grid.At(i);
        if (!post || EntryOf(catalogue, post->Post.TileOffset) == nullptr)
            continue;
        if (const TileRecord* tile = RecordOf(catalogue.Bin, post->Post.TileOffset))
            DrawTile(repaint, *tile, post->Cell);
    }
    steps.End();
    repaint.Surface.SetPen(0, 1);
}

} // namespace vardenix
