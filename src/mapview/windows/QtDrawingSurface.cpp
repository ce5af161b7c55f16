#include "mapview/windows/QtDrawingSurface.h"

#include "platform/windows/ColorImage.h"

#include <QPolygon>

#include <algorithm>
#include <new>

namespace vardenix {

namespace {

std::string KeyOf(const FontChoice& font) {
    return font.Name + "|" + std::to_string(font.Size) + (font.Bold ? "b" : "") +
           (font.Italic ? "i" : "") + (font.Strikethrough ? "s" : "") +
           (font.Underline ? "u" : "");
}

Qt::BrushStyle BrushOf(FillStyle style) {
    switch (style) {
    case FillStyle::Solid:
        return Qt::SolidPattern;
    case FillStyle::CrossHatch:
        return Qt::CrossPattern;
    case FillStyle::None:
        break;
    }
    return Qt::NoBrush;
}

QPoint PointOf(PicturePoint point) { return {PixelAt(point.X), PixelAt(point.Y)}; }

QPolygon PolygonOf(std::span<const PicturePoint> points) {
    QPolygon polygon;
    polygon.reserve(static_cast<int>(points.size()));
    for (const PicturePoint& point : points)
        polygon.append(PointOf(point));
    return polygon;
}

} // namespace

QtDrawingSurface::QtDrawingSurface() = default;
QtDrawingSurface::~QtDrawingSurface() = default;

void QtDrawingSurface::Resize(int32_t width, int32_t height) {
    if (image_.size() == QSize(width, height))
        return;
    QImage image(width, height, QImage::Format_RGB32);
    if (image.isNull())
        throw std::bad_alloc();
    ClosePainter();
    image_ = std::move(image);
    image_.fill(Qt::black);
    pixels_ = reinterpret_cast<uint32_t*>(image_.bits());
}

RasterView QtDrawingSurface::Pixels() {
    DoSteps();
    return {pixels_, image_.width(), image_.height(),
            image_.bytesPerLine() / static_cast<ptrdiff_t>(sizeof(uint32_t))};
}

void QtDrawingSurface::Clear(uint32_t color) {
    // A repaint begins: what somebody else has kept of the last one stays theirs.
    DropSteps();
    ClosePainter();
    pixels_ = reinterpret_cast<uint32_t*>(image_.bits());
    RasterSurface::Clear(color);
}

void QtDrawingSurface::Put(const QtDrawingSurface& patch, const PixelRect& part) {
    ClosePainter();
    pixels_ = reinterpret_cast<uint32_t*>(image_.bits());
    const RasterView to = Pixels();
    for (int32_t y = 0; y < part.Height; ++y) {
        const auto* from =
            reinterpret_cast<const uint32_t*>(patch.image_.constScanLine(y));
        std::copy_n(from, part.Width, to.Row(part.Top + y) + part.Left);
    }
}

void QtDrawingSurface::SetPen(uint32_t color, int32_t width) {
    RasterSurface::SetPen(color, width);
    penOrFillChanged_ = true;
}

void QtDrawingSurface::SetFill(FillStyle style, uint32_t color) {
    RasterSurface::SetFill(style, color);
    penOrFillChanged_ = true;
}

QPainter& QtDrawingSurface::Painter() {
    DoSteps();
    if (!painter_.isActive()) {
        painter_.begin(&image_);
        // It cuts nothing that the picture's edge would not cut, but lets the toolkit set
        // the pixels of thin lines itself: a third of the time.
        painter_.setClipRect(image_.rect());
        pixels_ = reinterpret_cast<uint32_t*>(image_.bits());
        penOrFillChanged_ = true;
    }
    if (penOrFillChanged_) {
        painter_.setPen(QPen(ColorOf(PenColor()), PenWidth(), Qt::SolidLine,
                             Qt::SquareCap, Qt::RoundJoin));
        painter_.setBrush(QBrush(ColorOf(FillColor()), BrushOf(Fill())));
        penOrFillChanged_ = false;
    }
    return painter_;
}

void QtDrawingSurface::ClosePainter() {
    if (painter_.isActive())
        painter_.end();
}

void QtDrawingSurface::SlantedLine(PicturePoint from, PicturePoint to) {
    Painter().drawLine(PointOf(from), PointOf(to));
}

void QtDrawingSurface::HatchedRectangle(const PixelRect& inside) {
    Painter().fillRect(inside.Left, inside.Top, inside.Width, inside.Height,
                       painter_.brush());
}

void QtDrawingSurface::Circle(PicturePoint center, double radius) {
    Ellipse({center.X - radius, center.Y - radius},
            {center.X + radius, center.Y + radius});
}

void QtDrawingSurface::Ellipse(PicturePoint corner, PicturePoint opposite) {
    const QPoint a = PointOf(corner);
    const QPoint b = PointOf(opposite);
    const QRect box(QPoint(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
                    QSize(std::abs(a.x() - b.x()), std::abs(a.y() - b.y())));
    const int32_t reach = PenWidth();
    if (!image_.rect().intersects(QRect(box.topLeft(), box.size() + QSize(1, 1))
                                      .adjusted(-reach, -reach, reach, reach)))
        return;
    const bool plain = PenWidth() == 1 && Fill() != FillStyle::CrossHatch;
    if (plain && DrawnCircles::Takes(box.width(), box.height()))
        Draw({.What = DrawingStep::Kind::Lay,
              .Color = OpaquePixel(PenColor()),
              .Other = OpaquePixel(FillColor()),
              .Box = {box.x(), box.y(), box.x() + box.width() + 1,
                      box.y() + box.height() + 1},
              .X = box.x(),
              .Y = box.y(),
              .Drawn =
                  &circles_.Of(box.width(), box.height(), Fill() == FillStyle::Solid)});
    else if (box.width() == 0 || box.height() == 0)
        Painter().drawLine(a, b); // too flat to have an inside
    else
        Painter().drawEllipse(box);
}

void QtDrawingSurface::Polygon(std::span<const PicturePoint> points) {
    Painter().drawPolygon(PolygonOf(points));
}

void QtDrawingSurface::Polyline(std::span<const PicturePoint> points) {
    Painter().drawPolyline(PolygonOf(points));
}

DrawnTexts& QtDrawingSurface::TextsOf(const FontChoice& font) {
    std::unique_ptr<DrawnTexts>& texts = texts_[KeyOf(font)];
    if (!texts)
        texts = std::make_unique<DrawnTexts>(font);
    return *texts;
}

void QtDrawingSurface::SetFont(const FontChoice& font) {
    RasterSurface::SetFont(font);
    textsOfFont_ = &TextsOf(font);
}

const DrawnText& QtDrawingSurface::TextOf(std::string_view text) {
    DrawnTexts& texts = textsOfFont_ != nullptr ? *textsOfFont_ : TextsOf(Font());
    // Steps may wait for texts that go.
    if (texts.IsFull())
        DoSteps();
    return texts.Of(text);
}

TextSize QtDrawingSurface::MeasureText(std::string_view text) {
    return TextOf(text).Size;
}

void QtDrawingSurface::DrawText(PicturePoint topLeft, std::string_view text,
                                uint32_t color) {
    const DrawnText& drawn = TextOf(text);
    const int32_t left = PixelAt(topLeft.X);
    const int32_t top = PixelAt(topLeft.Y);
    const PixelRect& ink = drawn.Ink;
    Draw({.What = DrawingStep::Kind::Lay,
          .Color = OpaquePixel(color),
          .Box = {left + ink.Left, top + ink.Top, left + ink.Left + ink.Width,
                  top + ink.Top + ink.Height},
          .X = left,
          .Y = top,
          .Drawn = &drawn});
}

} // namespace vardenix
