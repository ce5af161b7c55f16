#include "mapview/RasterSurface.h"

#include "services/ImageLayer.h"
#include "services/ImagePainting.h"

#include <algorithm>

namespace vardenix {

void RasterSurface::Clear(uint32_t color) {
    const RasterView view = Pixels();
    for (int32_t y = 0; y < view.Height; ++y)
        std::fill_n(view.Row(y), view.Width, OpaquePixel(color));
}

bool RasterSurface::PaintTile(TilePictures& pictures, TilePictureId id,
                              const PixelRect& cell, int32_t side) {
    // Where the cell begins left of the picture or above it, so does the square.
    return pictures.Paint(Part(cell), id,
                          {std::min(cell.Left, 0), std::min(cell.Top, 0), side, side});
}

// The pixels of a rectangle that lie on the picture, as a surface of their own.
RasterView RasterSurface::Part(const PixelRect& rect) {
    const RasterView view = Pixels();
    const int32_t left = std::clamp(rect.Left, 0, view.Width);
    const int32_t top = std::clamp(rect.Top, 0, view.Height);
    const int32_t right = std::clamp(rect.Left + rect.Width, left, view.Width);
    const int32_t bottom = std::clamp(rect.Top + rect.Height, top, view.Height);
    return {view.Row(top) + left, right - left, bottom - top, view.Stride};
}

void RasterSurface::BlendColor(const PixelRect& rect, uint32_t color, uint8_t alpha) {
    vardenix::BlendColor(Pixels(), rect, OpaquePixel(color), alpha);
}

void RasterSurface::AdjustBrightness(double percent) {
    AdjustPictureBrightness(Pixels(), percent);
}

void RasterSurface::SetPen(uint32_t color, int32_t width) {
    penColor_ = color;
    penWidth_ = std::max(width, 1);
}

void RasterSurface::SetFill(FillStyle style, uint32_t color) {
    fillStyle_ = style;
    fillColor_ = color;
}

void RasterSurface::Line(PicturePoint from, PicturePoint to) {
    const int32_t x1 = PixelAt(from.X);
    const int32_t y1 = PixelAt(from.Y);
    const int32_t x2 = PixelAt(to.X);
    const int32_t y2 = PixelAt(to.Y);
    if (x1 == x2 || y1 == y2)
        Stroke({std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)});
    else
        SlantedLine(from, to);
}

void RasterSurface::Rectangle(PicturePoint corner, PicturePoint opposite) {
    const int32_t x1 = PixelAt(corner.X);
    const int32_t y1 = PixelAt(corner.Y);
    const int32_t x2 = PixelAt(opposite.X);
    const int32_t y2 = PixelAt(opposite.Y);
    const Bounds box{std::min(x1, x2), std::min(y1, y2), std::max(x1, x2),
                     std::max(y1, y2)};
    const Bounds inside{box.Left + 1, box.Top + 1, box.Right - 1, box.Bottom - 1};
    if (fillStyle_ == FillStyle::Solid)
        FillBounds(inside, fillColor_);
    else if (fillStyle_ == FillStyle::CrossHatch && inside.Left <= inside.Right &&
             inside.Top <= inside.Bottom)
        HatchedRectangle({inside.Left, inside.Top, inside.Right - inside.Left + 1,
                          inside.Bottom - inside.Top + 1});
    Stroke({box.Left, box.Top, box.Right, box.Top});
    Stroke({box.Left, box.Bottom, box.Right, box.Bottom});
    Stroke({box.Left, box.Top, box.Left, box.Bottom});
    Stroke({box.Right, box.Top, box.Right, box.Bottom});
}

void RasterSurface::Stroke(const Bounds& bounds) {
    const int32_t before = (penWidth_ - 1) / 2;
    const int32_t behind = penWidth_ / 2;
    FillBounds({bounds.Left - before, bounds.Top - before, bounds.Right + behind,
                bounds.Bottom + behind},
               penColor_);
}

void RasterSurface::FillBounds(const Bounds& bounds, uint32_t color) {
    const RasterView view = Pixels();
    const int32_t left = std::max(bounds.Left, 0);
    const int32_t right = std::min(bounds.Right, view.Width - 1);
    const int32_t bottom = std::min(bounds.Bottom, view.Height - 1);
    if (left > right)
        return;
    const uint32_t pixel = OpaquePixel(color);
    for (int32_t y = std::max(bounds.Top, 0); y <= bottom; ++y)
        std::fill_n(view.Row(y) + left, right - left + 1, pixel);
}

} // namespace vardenix
