#include "workspace/windows/QtDrawingSurface.h"

#include "platform/windows/ColorImage.h"

#include <QFont>
#include <QFontMetrics>
#include <QPolygon>

#include <algorithm>
#include <new>
#include <vector>

namespace vardenix {

namespace {

constexpr int DotsPerMeter = 3780; // 96 to the inch, whatever the screen has
// Points. Sizes come from a file that anybody may have written.
constexpr qreal LeastFontSize = 1;
constexpr qreal GreatestFontSize = 400;
// Of one font. Heights are some thousand texts at most; beyond that it is something that
// changes all the time, and the memory is better given back.
constexpr size_t MostTexts = 20000;

QFont FontOf(const FontChoice& choice) {
    QFont font(QString::fromStdString(choice.Name));
    const qreal size = choice.Size; // not a number becomes the least
    font.setPointSizeF(size > LeastFontSize ? std::min(size, GreatestFontSize)
                                            : LeastFontSize);
    font.setBold(choice.Bold);
    font.setItalic(choice.Italic);
    font.setStrikeOut(choice.Strikethrough);
    font.setUnderline(choice.Underline);
    return font;
}

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

uint32_t Mixed(uint32_t over, uint32_t under, uint32_t alpha) {
    const auto channel = [&](int shift) {
        const uint32_t sum =
            (over >> shift & 0xFF) * alpha + (under >> shift & 0xFF) * (255 - alpha);
        return (sum + 127) / 255 << shift;
    };
    return OpaqueBlack | channel(16) | channel(8) | channel(0);
}

} // namespace

// How strongly each pixel of a text is inked, over the part of its rectangle that has
// ink at all.
struct QtDrawingSurface::DrawnText {
    TextSize Size;
    PixelRect Ink; // within the text's rectangle; italics may reach out of it
    std::vector<uint8_t> Alpha;
};

class QtDrawingSurface::TextsOfFont {
public:
    explicit TextsOfFont(const FontChoice& choice) : font_(FontOf(choice)) {
        sheet_ = NewSheet({1, 1});
    }

    const DrawnText& Of(std::string_view text) {
        const auto found = texts_.find(text);
        if (found != texts_.end())
            return found->second;
        if (texts_.size() >= MostTexts)
            texts_.clear();
        return texts_.emplace(std::string(text), Draw(text)).first->second;
    }

private:
    struct TextHash {
        using is_transparent = void;
        size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };

    static QImage NewSheet(QSize size) {
        QImage sheet(size, QImage::Format_ARGB32_Premultiplied);
        sheet.setDotsPerMeterX(DotsPerMeter);
        sheet.setDotsPerMeterY(DotsPerMeter);
        sheet.fill(Qt::transparent);
        return sheet;
    }

    DrawnText Draw(std::string_view text) {
        const QString line =
            QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
        const QFontMetrics metrics(font_, &sheet_);
        DrawnText drawn;
        drawn.Size = {metrics.horizontalAdvance(line), metrics.height()};
        const int margin = metrics.height(); // for what leans out
        QImage sheet =
            NewSheet({drawn.Size.Width + 2 * margin, drawn.Size.Height + 2 * margin});
        {
            QPainter painter(&sheet);
            painter.setFont(font_);
            painter.setPen(Qt::white);
            painter.drawText(margin, margin + metrics.ascent(), line);
        }
        TakeInk(sheet, margin, drawn);
        return drawn;
    }

    static void TakeInk(const QImage& sheet, int margin, DrawnText& drawn) {
        int left = sheet.width();
        int top = sheet.height();
        int right = -1;
        int bottom = -1;
        const auto alphaAt = [&sheet](int x, int y) {
            return qAlpha(reinterpret_cast<const QRgb*>(sheet.constScanLine(y))[x]);
        };
        for (int y = 0; y < sheet.height(); ++y)
            for (int x = 0; x < sheet.width(); ++x)
                if (alphaAt(x, y) != 0) {
                    left = std::min(left, x);
                    right = std::max(right, x);
                    top = std::min(top, y);
                    bottom = y;
                }
        if (right < 0)
            return;
        drawn.Ink = {left - margin, top - margin, right - left + 1, bottom - top + 1};
        for (int y = top; y <= bottom; ++y)
            for (int x = left; x <= right; ++x)
                drawn.Alpha.push_back(static_cast<uint8_t>(alphaAt(x, y)));
    }

    QFont font_;
    QImage sheet_; // gives the metrics their dots per inch
    std::unordered_map<std::string, DrawnText, TextHash, std::equal_to<>> texts_;
};

QtDrawingSurface::QtDrawingSurface() = default;
QtDrawingSurface::~QtDrawingSurface() = default;

void QtDrawingSurface::Resize(int32_t side) {
    if (image_.width() == side)
        return;
    QImage image(side, side, QImage::Format_RGB32);
    if (image.isNull())
        throw std::bad_alloc();
    ClosePainter();
    image_ = std::move(image);
    image_.fill(Qt::black);
    pixels_ = reinterpret_cast<uint32_t*>(image_.bits());
}

RasterView QtDrawingSurface::Pixels() {
    return {pixels_, image_.width(), image_.height(),
            image_.bytesPerLine() / static_cast<ptrdiff_t>(sizeof(uint32_t))};
}

void QtDrawingSurface::Clear(uint32_t color) {
    // A repaint begins: what somebody else has kept of the last one stays theirs.
    ClosePainter();
    pixels_ = reinterpret_cast<uint32_t*>(image_.bits());
    RasterSurface::Clear(color);
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
    if (!painter_.isActive()) {
        painter_.begin(&image_);
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
    if (box.width() == 0 || box.height() == 0)
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

QtDrawingSurface::TextsOfFont& QtDrawingSurface::TextsOf(const FontChoice& font) {
    std::unique_ptr<TextsOfFont>& texts = texts_[KeyOf(font)];
    if (!texts)
        texts = std::make_unique<TextsOfFont>(font);
    return *texts;
}

void QtDrawingSurface::SetFont(const FontChoice& font) {
    RasterSurface::SetFont(font);
    textsOfFont_ = &TextsOf(font);
}

const QtDrawingSurface::DrawnText& QtDrawingSurface::TextOf(std::string_view text) {
    TextsOfFont& texts = textsOfFont_ != nullptr ? *textsOfFont_ : TextsOf(Font());
    return texts.Of(text);
}

TextSize QtDrawingSurface::MeasureText(std::string_view text) {
    return TextOf(text).Size;
}

void QtDrawingSurface::DrawText(PicturePoint topLeft, std::string_view text,
                                uint32_t color) {
    const DrawnText& drawn = TextOf(text);
    const int32_t left = PixelAt(topLeft.X) + drawn.Ink.Left;
    const int32_t top = PixelAt(topLeft.Y) + drawn.Ink.Top;
    const int32_t firstX = std::max(0, -left);
    const int32_t endX = std::min(drawn.Ink.Width, image_.width() - left);
    const int32_t endY = std::min(drawn.Ink.Height, image_.height() - top);
    const uint32_t ink = OpaquePixel(color);
    const RasterView view = Pixels();
    for (int32_t y = std::max(0, -top); y < endY; ++y) {
        const uint8_t* alpha = drawn.Alpha.data() + ptrdiff_t{y} * drawn.Ink.Width;
        uint32_t* pixel = view.Row(top + y);
        for (int32_t x = firstX; x < endX; ++x)
            if (alpha[x] != 0)
                pixel[left + x] = Mixed(ink, pixel[left + x], alpha[x]);
    }
}

} // namespace vardenix
