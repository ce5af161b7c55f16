#pragma once

#include "mapview/RasterSurface.h"

#include <string>
#include <string_view>
#include <utility>

namespace vardenix::tests {

// A surface over plain memory. The slanted and the round, which a toolkit draws, are only
// hinted at: a line by its ends, a circle by its centre, a text by its rectangle.
class MemorySurface : public RasterSurface {
public:
    explicit MemorySurface(int32_t side) : raster_(side, side) {}

    // 0x00RRGGBB.
    uint32_t At(int32_t x, int32_t y) const { return raster_.Row(y)[x] & 0xFFFFFF; }
    const Raster& Picture() const { return raster_; }

    RasterView Pixels() override { return raster_.View(); }

    void Circle(PicturePoint center, double) override { Line(center, center); }
    void Ellipse(PicturePoint corner, PicturePoint opposite) override {
        Rectangle(corner, opposite);
    }
    void Polygon(std::span<const PicturePoint> points) override { Polyline(points); }
    void Polyline(std::span<const PicturePoint> points) override {
        for (const PicturePoint& point : points)
            Line(point, point);
    }

    TextSize MeasureText(std::string_view text) override {
        return {6 * static_cast<int32_t>(text.size()), 10};
    }
    void DrawText(PicturePoint topLeft, std::string_view text, uint32_t color) override {
        const TextSize size = MeasureText(text);
        SetPen(color, 1);
        Rectangle(topLeft, {topLeft.X + size.Width - 1, topLeft.Y + size.Height - 1});
    }

protected:
    void SlantedLine(PicturePoint from, PicturePoint to) override {
        Line(from, from);
        Line(to, to);
    }
    void HatchedRectangle(const PixelRect& inside) override {
        BlendColor(inside, FillColor(), 127);
    }

private:
    Raster raster_;
};

} // namespace vardenix::tests
