#include "workspace/SeamMarks.h"

#include "grounds/TerrainBrush.h"
#include "mapview/PictureBox.h"

namespace vardenix {

namespace {

constexpr uint32_t SeamColor = 0x0000FF; // red
constexpr int32_t SeamWidth = 3;         // pixels

} // namespace

void SeamMarks::DrawMarks(DrawingSurface& surface, const MapView& view) {
    const LearnedLand* land = Shown ? land_() : nullptr;
    if (land == nullptr)
        return;
    const PostBox seen =
        CutToGrid({view.MapLeftX - 1, view.MapBottomY - 1,
                   view.MapLeftX + view.ViewColumns(), view.MapBottomY + view.ViewRows()},
                  terrain_.MapWidth);
    if (seen.X2 < seen.X1 || seen.Y2 < seen.Y1)
        return;
    surface.SetPen(SeamColor, SeamWidth);
    for (const auto& [post, how] : BadSeams(*land, terrain_, seen)) {
        const PictureBox cell = BoxOnPicture(view, {post.X, post.Y, post.X, post.Y});
        if (how == Meeting::Eastward)
            surface.Line({cell.UpperRight.X, cell.LowerLeft.Y}, cell.UpperRight);
        else
            surface.Line({cell.LowerLeft.X, cell.UpperRight.Y}, cell.UpperRight);
    }
}

} // namespace vardenix
