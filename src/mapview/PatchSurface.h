#pragma once

#include "mapview/DrawingSurface.h"

namespace vardenix {

// Lets a part of the picture be painted on a small surface of its own: what is drawn at
// (left, top) of the picture lands on the small one's first pixel, rounded as on the
// whole picture, so that the part may be copied over it pixel for pixel.
class PatchSurface : public DrawingSurface {
public:
    // `small` is borrowed.
    PatchSurface(DrawingSurface& small, int32_t left, int32_t top)
        : small_(small), left_(left), top_(top) {}

    RasterView Pixels() override { return small_.Pixels(); }
    void Clear(uint32_t color) override { small_.Clear(color); }
    void BeginSteps() override { small_.BeginSteps(); }
    void EndSteps() override { small_.EndSteps(); }
    void DropSteps() override { small_.DropSteps(); }
    bool PaintTile(TilePictures& pictures, TilePictureId id, const PixelRect& cell,
                   int32_t side) override {
        return small_.PaintTile(pictures, id, Moved(cell), side);
    }
    void BlendColor(const PixelRect& rect, uint32_t color, uint8_t alpha) override {
        small_.BlendColor(Moved(rect), color, alpha);
    }
    void AdjustBrightness(double percent) override { small_.AdjustBrightness(percent); }
    void SetPen(uint32_t color, int32_t width) override { small_.SetPen(color, width); }
    void SetFill(FillStyle style, uint32_t color) override {
        small_.SetFill(style, color);
    }
    void Line(PicturePoint from, PicturePoint to) override {
        small_.Line(Moved(from), Moved(to));
    }
    void Rectangle(PicturePoint corner, PicturePoint opposite) override {
        small_.Rectangle(Moved(corner), Moved(opposite));
    }
    void Circle(PicturePoint center, double radius) override {
        Ellipse({center.X - radius, center.Y - radius},
                {center.X + radius, center.Y + radius});
    }
    void Ellipse(PicturePoint corner, PicturePoint opposite) override {
        small_.Ellipse(Moved(corner), Moved(opposite));
    }
    void Polygon(std::span<const PicturePoint> points) override;
    void Polyline(std::span<const PicturePoint> points) override;
    void SetFont(const FontChoice& font) override { small_.SetFont(font); }
    TextSize MeasureText(std::string_view text) override {
        return small_.MeasureText(text);
    }
    void DrawText(PicturePoint topLeft, std::string_view text, uint32_t color) override {
        small_.DrawText(Moved(topLeft), text, color);
    }

private:
    PicturePoint Moved(PicturePoint point) const {
        return {static_cast<double>(PixelAt(point.X) - left_),
                static_cast<double>(PixelAt(point.Y) - top_)};
    }
    PixelRect Moved(const PixelRect& rect) const {
        return {rect.Left - left_, rect.Top - top_, rect.Width, rect.Height};
    }

    DrawingSurface& small_;
    int32_t left_;
    int32_t top_;
};

} // namespace vardenix
