#include "search/HitFrames.h"

#include "levels/TerrainStore.h"
#include "search/SearchHits.h"

namespace vardenix {

namespace {

constexpr uint32_t HitColor = 0xFF00FF;

} // namespace

void HitFrames::DrawMarks(DrawingSurface& surface, const MapView& view) {
    if (!Shown || hits_.size() < 2)
        return;
    const double cell = view.CellSize();
    const int32_t width = terrain_.MapWidth;
    surface.SetPen(HitColor, 1);
    surface.SetFill(FillStyle::None, 0);
    for (const int32_t serial : HitsInside(
             hits_, width, view.MapLeftX + 1, view.MapBottomY + 1,
             view.MapLeftX + view.ViewColumns(), view.MapBottomY + view.ViewRows())) {
        const PostXY post = SerialToXY(serial, width);
        const double left = cell * (post.X - 1 - view.MapLeftX);
        const double top = view.PictureHeight() - cell * (post.Y - view.MapBottomY);
        surface.Rectangle({left + 1, top + 1}, {left + cell - 1, top + cell - 1});
    }
}

} // namespace vardenix
