#include "mapview/RasterSurface.h"

#include "pictures/ImageLayer.h"

#include <algorithm>
#include <utility>

namespace vardenix {

namespace {

PixelBox PixelBoxOf(const PixelRect& rect) {
    return {rect.Left, rect.Top, rect.Left + rect.Width, rect.Top + rect.Height};
}

} // namespace

void RasterSurface::BeginSteps() { putOff_ = true; }

void RasterSurface::EndSteps() {
    DoSteps();
    putOff_ = false;
}

void RasterSurface::DropSteps() {
    steps_.Drop();
    putOff_ = false;
}

void RasterSurface::Draw(const DrawingStep& step) {
    if (!putOff_)
        return DoStep(Pixels(), step);
    steps_.Add(step);
    if (steps_.IsFull())
        DoSteps();
}

void RasterSurface::DoSteps() {
    if (steps_.IsEmpty())
        return;
    DrawingSteps steps;
    std::swap(steps, steps_); // Pixels may ask for them to be done
    steps.Do(Pixels());
    std::swap(steps, steps_);
}

void RasterSurface::Clear(uint32_t color) {
    const RasterView picture = Pixels();
    InBands(picture, 0, picture.Height, [color](const RasterView& band, int32_t) {
        for (int32_t y = 0; y < band.Height; ++y)
            std::fill_n(band.Row(y), band.Width, OpaquePixel(color));
    });
}

bool RasterSurface::PaintTile(TilePictures& pictures, TilePictureId id,
                              const PixelRect& cell, int32_t side) {
    if (putOff_) {
        const ReadyPicture ready = pictures.Ready(id, side);
        if (!ready.IsPicture)
            return false;
        if (ready.Cell != nullptr) {
            Draw({.What = ready.Use == TileUse::Day ? DrawingStep::Kind::Copy
                                                    : DrawingStep::Kind::CopyOpaque,
                  .Box = PixelBoxOf(cell),
                  .X = cell.Left,
                  .Y = cell.Top,
                  .Pixels = ready.Cell});
            return true;
        }
        // Making a cell may drop one that a step waits for.
        DoSteps();
    }
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
    Draw({.What = DrawingStep::Kind::Blend,
          .Alpha = alpha,
          .Color = OpaquePixel(color),
          .Box = PixelBoxOf(rect)});
}

void RasterSurface::AdjustBrightness(double percent) {
    DoSteps();
    const BrightnessTable table(percent);
    const RasterView picture = Pixels();
    InBands(picture, 0, picture.Height,
            [&table](const RasterView& band, int32_t) { table.Apply(band); });
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
        Stroke({std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)},
               DrawingStep::Kind::Fill);
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
    Stroke(box, DrawingStep::Kind::Frame);
}

void RasterSurface::Stroke(const Bounds& bounds, DrawingStep::Kind kind) {
    const int32_t before = (penWidth_ - 1) / 2;
    const int32_t behind = penWidth_ / 2 + 1;
    Draw({.What = kind,
          .Color = OpaquePixel(penColor_),
          .Box = {bounds.Left - before, bounds.Top - before, bounds.Right + behind,
                  bounds.Bottom + behind},
          .X = penWidth_});
}

void RasterSurface::FillBounds(const Bounds& bounds, uint32_t color) {
    Draw({.What = DrawingStep::Kind::Fill,
          .Color = OpaquePixel(color),
          .Box = {bounds.Left, bounds.Top, bounds.Right + 1, bounds.Bottom + 1}});
}

} // namespace vardenix
