#include "workspace/ZoomAndDrag.h"

#include "texts/Numbers.h"
#include "workspace/MapInteraction.h"

namespace vardenix {

PostPlace ZoomedAt(const MapView& view, int16_t zoomPosts, double x, double y,
                   int32_t mapWidth) {
    const PostPlace post = PostUnderCursor(view, x, y);
    MapView zoomed = view;
    zoomed.ZoomPosts = zoomPosts;
    const PostPlace then = PostUnderCursor(zoomed, x, y);
    return ClampToScroll(
        {view.MapLeftX + post.X - then.X, view.MapBottomY + post.Y - then.Y}, mapWidth);
}

PostPlace ZoomedAtMiddle(const MapView& view, int16_t zoomPosts, int32_t mapWidth) {
    const int32_t posts = view.GridCells * zoomPosts;
    const int32_t by = ClampToInt32(RoundHalfEven((view.ViewPosts() - posts) / 2.0));
    return ClampToScroll({view.MapLeftX + by, view.MapBottomY + by}, mapWidth);
}

int16_t ZoomAfterWheel(int16_t zoomPosts, int32_t backward) {
    const int64_t wanted = int64_t{zoomPosts} + backward;
    return static_cast<int16_t>(
        std::clamp<int64_t>(wanted, ZoomRange.Min, ZoomRange.Max));
}

PostPlace Dragged(const MapView& view, double right, double down, int32_t mapWidth) {
    const double cell = view.CellSize();
    return ClampToScroll({ClampToInt32(view.MapLeftX - RoundHalfEven(right / cell)),
                          ClampToInt32(view.MapBottomY + RoundHalfEven(down / cell))},
                         mapWidth);
}

std::string ZoomWords(int32_t zoomPosts) {
    return std::to_string(zoomPosts) +
           (zoomPosts == 1 ? " post a cell" : " posts a cell");
}

} // namespace vardenix
