#pragma once

#include "mapview/RasterSurface.h"
#include "platform/ZeroPages.h"

namespace vardenix {

// A picture in bare memory, for maps of nothing but tiles and what is level and upright.
// Slanted lines, round shapes, hatches and texts are the toolkit's; asked for one of them
// it ends in error 5.
class PlainSurface : public RasterSurface {
public:
    // A square of `side` pixels, to be cleared before anything is drawn.
    explicit PlainSurface(int32_t side);

    RasterView Pixels() override;

    void Circle(PicturePoint center, double radius) override;
    void Ellipse(PicturePoint corner, PicturePoint opposite) override;
    void Polygon(std::span<const PicturePoint> points) override;
    void Polyline(std::span<const PicturePoint> points) override;
    TextSize MeasureText(std::string_view text) override;
    void DrawText(PicturePoint topLeft, std::string_view text, uint32_t color) override;

protected:
    void SlantedLine(PicturePoint from, PicturePoint to) override;
    void HatchedRectangle(const PixelRect& inside) override;

private:
    int32_t side_;
    ZeroPages pages_;
};

} // namespace vardenix
