#include "mapview/PictureBox.h"
#include "mapview/Repaint.h"

#include <algorithm>
#include <cmath>

namespace vardenix {

void DrawSegments(Repaint& repaint) {
    const MapView& view = repaint.View;
    const int32_t mapWidth = repaint.Sources.Terrain.MapWidth;
    const double cell = view.CellSize();
    const double left = cell * -view.MapLeftX;
    const double right = cell * (mapWidth - view.MapLeftX);
    const double bottom = view.BottomOfRow(0);
    const double top = view.BottomOfRow(mapWidth);
    const int32_t last =
        static_cast<int32_t>(std::trunc(static_cast<double>(mapWidth) / SegmentSide - 1));

    repaint.Surface.SetPen(view.SegmentColor, 1);
    for (int32_t k = 0; k <= last; ++k) {
        const double x = cell * (k * SegmentSide - view.MapLeftX);
        const double y = view.BottomOfRow(k * SegmentSide);
        repaint.Surface.Line({x, top}, {x, bottom});
        repaint.Surface.Line({left, y}, {right, y});
    }
}

PictureBox BoxOnPicture(const MapView& view, const PostBox& posts) {
    const double cell = view.CellSize();
    const auto x = [&](int32_t post) { return cell * (post - view.MapLeftX); };
    const auto y = [&](int32_t post) { return view.BottomOfRow(post); };
    const auto [left, right] = std::minmax(posts.X1, posts.X2);
    const auto [bottom, top] = std::minmax(posts.Y1, posts.Y2);
    return {{x(left), y(bottom)}, {x(right + 1), y(top + 1)}};
}

void DrawExportBox(Repaint& repaint) {
    const MapView& view = repaint.View;
    const PictureBox box =
        BoxOnPicture(view, {view.ExportX1, view.ExportY1, view.ExportX2, view.ExportY2});
    repaint.Surface.SetFill(FillStyle::None, 0);
    repaint.Surface.SetPen(view.ExportColor, 1);
    repaint.Surface.Rectangle(box.LowerLeft, box.UpperRight);
}

} // namespace vardenix
