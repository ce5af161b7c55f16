#include "workspace/ZoomAndDrag.h"

#include "texts/Numbers.h"
#include "workspace/MapInteraction.h"

#include <algorithm>
#include <cmath>
#include <limits>

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
    const double fewer = 1.0 * (view.ZoomPosts - zoomPosts) / view.TilePixels;
    const auto by = [fewer](int32_t pixels) {
        return ClampToInt32(RoundHalfEven(pixels * fewer / 2));
    };
    return ClampToScroll({view.MapLeftX + by(view.PictureWidth()),
                          view.MapBottomY + by(view.PictureHeight())},
                         mapWidth);
}

int16_t ZoomAfterWheel(int16_t zoomPosts, int32_t backward, int32_t most) {
    int32_t zoom = zoomPosts;
    const int32_t last = std::max(ZoomRange.Max, most);
    for (; backward > 0 && zoom < last; --backward)
        zoom += zoom < ZoomRange.Max ? 1 : zoom / 4;
    for (; backward < 0 && zoom > ZoomRange.Min; ++backward)
        zoom = zoom > ZoomRange.Max ? std::max(ZoomRange.Max, zoom * 4 / 5) : zoom - 1;
    return static_cast<int16_t>(std::min(zoom, last));
}

int16_t ZoomOfWhole(const MapView& view, int32_t mapWidth) {
    const int32_t side = std::max(std::min(view.PictureWidth(), view.PictureHeight()), 1);
    const int64_t posts = (int64_t{mapWidth} * view.TilePixels + side - 1) / side;
    return static_cast<int16_t>(
        std::clamp<int64_t>(posts, 1, std::numeric_limits<int16_t>::max()));
}

int16_t MostZoomPosts(const MapView& view, int32_t mapWidth) {
    return std::max(MapView::MostZoomPosts, ZoomOfWhole(view, mapWidth));
}

PostPlace Dragged(const MapView& view, double right, double down, int32_t mapWidth) {
    const double cell = view.CellSize();
    return ClampToScroll({ClampToInt32(view.MapLeftX - RoundHalfEven(right / cell)),
                          ClampToInt32(view.MapBottomY + RoundHalfEven(down / cell))},
                         mapWidth);
}

std::optional<PostPlace> MapPanning::To(double x, double y, int32_t mapWidth) {
    moved_ = moved_ || std::abs(x - x_) > ClickSlip || std::abs(y - y_) > ClickSlip;
    if (!moved_)
        return std::nullopt;
    return Dragged(from_, x - x_, y - y_, mapWidth);
}

int32_t WheelSum::NotchesWith(int32_t eighths) {
    rest_ += eighths;
    const int32_t notches = rest_ / Notch;
    rest_ -= notches * Notch;
    return notches;
}

std::string ZoomWords(int32_t zoomPosts) {
    return std::to_string(zoomPosts) +
           (zoomPosts == 1 ? " post a cell" : " posts a cell");
}

} // namespace vardenix
