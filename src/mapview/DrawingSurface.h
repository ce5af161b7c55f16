#pragma once

#include "pictures/Raster.h"
#include "pictures/TilePictures.h"
#include "platform/Dialogs.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace vardenix {

// Numbers as the settings and the feature files know them.
enum class FillStyle : int16_t { Solid = 0, None = 1, CrossHatch = 6 };

// A point on the picture, pixels from its left and top edge, with fractions.
struct PicturePoint {
    double X = 0;
    double Y = 0;
};

// Pixels.
struct TextSize {
    int32_t Width = 0;
    int32_t Height = 0;
};

// What a picture is painted on. Lengths are pixels, (0, 0) is the top left one. Real
// coordinates become pixels through PixelAt; they may lie anywhere, what is outside the
// picture is cut. Colours are 0x00BBGGRR. Shapes are drawn without smoothing.
class DrawingSurface {
public:
    DrawingSurface() = default;
    DrawingSurface(const DrawingSurface&) = delete;
    DrawingSurface& operator=(const DrawingSurface&) = delete;
    virtual ~DrawingSurface() = default;

    // The whole picture, to take and to put. Good until the surface changes its size.
    virtual RasterView Pixels() = 0;
    virtual void Clear(uint32_t color) = 0;

    // Whoever draws a lot says when it begins and ends: a surface may put off what is
    // drawn in between and do it together, so that it shows at the end only. The picture
    // is the same. DropSteps gives up what has been put off; nothing between two
    // repaints.
    virtual void BeginSteps() {}
    virtual void EndSteps() {}
    virtual void DropSteps() {}

    // The whole picture is stretched to a square of `side` pixels, without smoothing, and
    // its upper left part fills the cell, which is no larger; night pictures are laid
    // over it by their mask. False, and nothing painted, when there is no picture. Called
    // for every post of a view, so it costs no more than the copy of a kept square.
    virtual bool PaintTile(TilePictures& pictures, TilePictureId id,
                           const PixelRect& cell, int32_t side) = 0;
    // One colour over a rectangle; 255 replaces what is there.
    virtual void BlendColor(const PixelRect& rect, uint32_t color, uint8_t alpha) = 0;
    // Of all that is on the picture; percent, -100 (black) over 0 (unchanged) up.
    virtual void AdjustBrightness(double percent) = 0;

    // The pen draws lines and outlines, the fill the inside of closed shapes. A width
    // below 1 draws one pixel.
    virtual void SetPen(uint32_t color, int32_t width) = 0;
    virtual void SetFill(FillStyle style, uint32_t color) = 0;

    virtual void Line(PicturePoint from, PicturePoint to) = 0;
    // Opposite corners, in any order; both lie on the outline.
    virtual void Rectangle(PicturePoint corner, PicturePoint opposite) = 0;
    virtual void Circle(PicturePoint center, double radius) = 0;
    // Opposite corners of the rectangle that it fills.
    virtual void Ellipse(PicturePoint corner, PicturePoint opposite) = 0;
    virtual void Polygon(std::span<const PicturePoint> points) = 0;
    virtual void Polyline(std::span<const PicturePoint> points) = 0;

    // The font's own colour is not looked at. Texts are UTF-8, one line.
    virtual void SetFont(const FontChoice& font) = 0;
    virtual TextSize MeasureText(std::string_view text) = 0;
    // `topLeft` of the text's rectangle, which stays unpainted behind it.
    virtual void DrawText(PicturePoint topLeft, std::string_view text,
                          uint32_t color) = 0;
    // DrawText with a rim of one pixel round the letters, so that they can be read on any
    // ground.
    virtual void DrawRimmedText(PicturePoint topLeft, std::string_view text,
                                uint32_t color, uint32_t rim);
};

// BeginSteps to End, or to the error that keeps from it.
class StepsTogether {
public:
    explicit StepsTogether(DrawingSurface& surface) : surface_(surface) {
        surface.BeginSteps();
    }
    StepsTogether(const StepsTogether&) = delete;
    StepsTogether& operator=(const StepsTogether&) = delete;
    ~StepsTogether() { surface_.DropSteps(); }

    void End() { surface_.EndSteps(); }

private:
    DrawingSurface& surface_;
};

// Black round light letters, white round dark ones.
constexpr uint32_t RimOf(uint32_t color) {
    const uint32_t light =
        299 * (color & 0xFF) + 587 * (color >> 8 & 0xFF) + 114 * (color >> 16 & 0xFF);
    return light >= 128000 ? 0 : 0xFFFFFF;
}

// The pixel of a real coordinate, a half going to the even neighbour. Far beyond any
// picture the answer is a million: still outside, and no sum of two of them leaves 32
// bits.
inline int32_t PixelAt(double coordinate) {
    constexpr double far = 1000000;
    // Above 2 to the 52nd the processor has no room for fractions and rounds, halves to
    // even. This is asked several times for each of 40,000 posts.
    constexpr double noFractions = 0x1.8p52;
    if (coordinate > -far && coordinate < far)
        return static_cast<int32_t>(coordinate + noFractions - noFractions);
    return coordinate > 0 ? 1000000 : coordinate < 0 ? -1000000 : 0;
}

// 0x00BBGGRR as an opaque pixel of a raster.
constexpr uint32_t OpaquePixel(uint32_t color) {
    return OpaqueBlack | (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}

inline void DrawingSurface::DrawRimmedText(PicturePoint topLeft, std::string_view text,
                                           uint32_t color, uint32_t rim) {
    // Rounded first: neighbouring pixels stay neighbours.
    const double x = PixelAt(topLeft.X);
    const double y = PixelAt(topLeft.Y);
    DrawText({x - 1, y}, text, rim);
    DrawText({x + 1, y}, text, rim);
    DrawText({x, y - 1}, text, rim);
    DrawText({x, y + 1}, text, rim);
    DrawText({x, y}, text, color);
}

} // namespace vardenix
