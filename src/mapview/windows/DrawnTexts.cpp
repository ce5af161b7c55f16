#include "mapview/windows/DrawnTexts.h"

#include "services/Blending.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <limits>

namespace vardenix {

namespace {

constexpr int DotsPerMeter = 3780; // 96 to the inch, whatever the screen has
// Points. Sizes come from a file that anybody may have written.
constexpr qreal LeastFontSize = 1;
constexpr qreal GreatestFontSize = 400;
// Of one font. Heights are some thousand texts at most; beyond that it is something that
// changes all the time, and the memory is better given back.
constexpr size_t MostTexts = 20000;
// Pixels, within what a dot can tell.
constexpr int LongestSide = 30000;

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

QImage NewSheet(QSize size) {
    QImage sheet(size.boundedTo({LongestSide, LongestSide}),
                 QImage::Format_ARGB32_Premultiplied);
    sheet.setDotsPerMeterX(DotsPerMeter);
    sheet.setDotsPerMeterY(DotsPerMeter);
    sheet.fill(Qt::transparent);
    return sheet;
}

// Row by row, from the left.
void AddDot(DrawnText& drawn, int x, int y, uint8_t alpha) {
    constexpr int reach = std::numeric_limits<uint8_t>::max();
    std::vector<DrawnText::Stretch>& stretches = drawn.Stretches;
    if (stretches.empty() || stretches.back().Y != y || x - stretches.back().X > reach)
        stretches.push_back({static_cast<int16_t>(x), static_cast<int16_t>(y), 0});
    DrawnText::Stretch& stretch = stretches.back();
    drawn.Dots.push_back({static_cast<uint8_t>(x - stretch.X), alpha});
    ++stretch.Count;
}

void TakeInk(const QImage& sheet, int margin, DrawnText& drawn) {
    int left = sheet.width();
    int top = sheet.height();
    int right = -1;
    int bottom = -1;
    for (int y = 0; y < sheet.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(sheet.constScanLine(y));
        for (int x = 0; x < sheet.width(); ++x) {
            if (qAlpha(row[x]) == 0)
                continue;
            AddDot(drawn, x - margin, y - margin, static_cast<uint8_t>(qAlpha(row[x])));
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = y;
        }
    }
    drawn.Stretches.shrink_to_fit();
    drawn.Dots.shrink_to_fit();
    if (right >= 0)
        drawn.Ink = {left - margin, top - margin, right - left + 1, bottom - top + 1};
}

} // namespace

void DrawnText::LayOver(const RasterView& picture, int32_t left, int32_t top,
                        uint32_t color) const {
    const uint32_t ink = OpaquePixel(color);
    const bool whole = left + Ink.Left >= 0 && top + Ink.Top >= 0 &&
                       left + Ink.Left + Ink.Width <= picture.Width &&
                       top + Ink.Top + Ink.Height <= picture.Height;
    const Dot* dot = Dots.data();
    for (const Stretch& stretch : Stretches) {
        const Dot* const end = dot + stretch.Count;
        const int32_t y = top + stretch.Y;
        if (y < 0 || y >= picture.Height) {
            dot = end;
            continue;
        }
        uint32_t* const pixels = picture.Row(y);
        const int32_t first = left + stretch.X;
        for (; dot != end; ++dot) {
            const int32_t x = first + dot->X;
            if (whole || (x >= 0 && x < picture.Width))
                pixels[x] = BlendPixel(pixels[x], ink, dot->Alpha);
        }
    }
}

DrawnTexts::DrawnTexts(const FontChoice& font)
    : font_(FontOf(font)), sheet_(NewSheet({1, 1})) {}

const DrawnText& DrawnTexts::Of(std::string_view text) {
    const auto found = texts_.find(text);
    if (found != texts_.end())
        return found->second;
    if (texts_.size() >= MostTexts)
        texts_.clear();
    return texts_.emplace(std::string(text), Draw(text)).first->second;
}

DrawnText DrawnTexts::Draw(std::string_view text) const {
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

} // namespace vardenix
