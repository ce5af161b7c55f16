#pragma once

#include "mapview/RasterSurface.h"
#include "mapview/windows/DrawnCircles.h"
#include "mapview/windows/DrawnTexts.h"

#include <QImage>
#include <QPainter>

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace vardenix {

// A surface over a 32-bit picture. Nothing is smoothed but texts, which are drawn once
// for each font and then laid over the picture in whatever colour is asked for.
class QtDrawingSurface : public RasterSurface {
public:
    QtDrawingSurface();
    ~QtDrawingSurface() override;

    // A black picture of that size, unless it has that already. No memory ends in
    // std::bad_alloc, and the old picture stands.
    void Resize(int32_t width, int32_t height);

    // What has been drawn. Shared, not copied: whoever keeps it beyond the next repaint
    // makes that repaint pay for a copy.
    const QImage& Image() const { return image_; }

    // The upper left part of another surface is laid over a part of this one, which is
    // wholly on the picture.
    void Put(const QtDrawingSurface& patch, const PixelRect& part);

    RasterView Pixels() override;
    void Clear(uint32_t color) override;

    void SetPen(uint32_t color, int32_t width) override;
    void SetFill(FillStyle style, uint32_t color) override;
    void Circle(PicturePoint center, double radius) override;
    void Ellipse(PicturePoint corner, PicturePoint opposite) override;
    void Polygon(std::span<const PicturePoint> points) override;
    void Polyline(std::span<const PicturePoint> points) override;

    void SetFont(const FontChoice& font) override;
    TextSize MeasureText(std::string_view text) override;
    void DrawText(PicturePoint topLeft, std::string_view text, uint32_t color) override;

protected:
    void SlantedLine(PicturePoint from, PicturePoint to) override;
    void HatchedRectangle(const PixelRect& inside) override;

private:
    QPainter& Painter();
    void ClosePainter();
    DrawnTexts& TextsOf(const FontChoice& font);
    const DrawnText& TextOf(std::string_view text);

    QImage image_;
    uint32_t* pixels_ = nullptr;
    QPainter painter_; // stays open between shapes; opening costs more than drawing
    bool penOrFillChanged_ = true;
    DrawnCircles circles_;
    std::map<std::string, std::unique_ptr<DrawnTexts>> texts_;
    DrawnTexts* textsOfFont_ = nullptr;
};

} // namespace vardenix
