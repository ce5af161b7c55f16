#pragma once

#include "mapview/DrawingSteps.h"
#include "mapview/DrawingSurface.h"

namespace vardenix {

// What of a surface is done on the bare pixels, for every surface that has some: the
// pictures and everything that is upright and level. A toolkit adds the slanted and the
// round, and texts. Between BeginSteps and EndSteps what is drawn is put off, and whoever
// reads or changes pixels in another way has it done first (DoSteps).
class RasterSurface : public DrawingSurface {
public:
    void BeginSteps() override;
    void EndSteps() override;
    void DropSteps() override;

    void Clear(uint32_t color) override;
    bool PaintTile(TilePictures& pictures, TilePictureId id, const PixelRect& cell,
                   int32_t side) override;
    void BlendColor(const PixelRect& rect, uint32_t color, uint8_t alpha) override;
    void AdjustBrightness(double percent) override;

    void SetPen(uint32_t color, int32_t width) override;
    void SetFill(FillStyle style, uint32_t color) override;
    void SetFont(const FontChoice& font) override { font_ = font; }

    // Both ends are painted. A pen wider than one pixel lies round the line, its odd
    // pixel below or to the right, and makes it longer by as much at either end.
    void Line(PicturePoint from, PicturePoint to) override;
    // A solid fill lies inside the outline; a hatched one is the toolkit's.
    void Rectangle(PicturePoint corner, PicturePoint opposite) override;

protected:
    virtual void SlantedLine(PicturePoint from, PicturePoint to) = 0;
    virtual void HatchedRectangle(const PixelRect& inside) = 0;

    // At once, or together with others.
    void Draw(const DrawingStep& step);
    void DoSteps();

    uint32_t PenColor() const { return penColor_; }
    int32_t PenWidth() const { return penWidth_; }
    uint32_t FillColor() const { return fillColor_; }
    FillStyle Fill() const { return fillStyle_; }
    const FontChoice& Font() const { return font_; }

private:
    // The pixels from (left, top) to (right, bottom), all four of them included.
    struct Bounds {
        int32_t Left, Top, Right, Bottom;
    };
    RasterView Part(const PixelRect& rect);
    void FillBounds(const Bounds& bounds, uint32_t color);
    // Of the pen's width; where the bounds are no wider than a line, it is one.
    void Stroke(const Bounds& bounds, DrawingStep::Kind kind);

    DrawingSteps steps_;
    bool putOff_ = false;

    uint32_t penColor_ = 0;
    int32_t penWidth_ = 1;
    uint32_t fillColor_ = 0;
    FillStyle fillStyle_ = FillStyle::None;
    FontChoice font_;
};

} // namespace vardenix
