#include "mapview/windows/DrawnTexts.h"

#include "pictures/Blending.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <iterator>

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

// From the first pixel with ink to behind the last.
struct Reach {
    int Begin;
    int End;
};

Reach InkOf(const QRgb* row, int width) {
    const auto hasInk = [](QRgb pixel) { return qAlpha(pixel) != 0; };
    const auto* first = std::find_if(row, row + width, hasInk);
    if (first == row + width)
        return {0, 0};
    const auto last = std::find_if(std::make_reverse_iterator(row + width),
                                   std::make_reverse_iterator(first), hasInk);
    return {static_cast<int>(first - row), static_cast<int>(last.base() - row)};
}

void AddRow(DrawnText& drawn, const QRgb* row, const Reach& reach, DrawnText::Row place) {
    constexpr size_t atOnce = PixelsAtOnce;
    const auto inked = static_cast<size_t>(reach.End - reach.Begin);
    const size_t count = (inked + atOnce - 1) / atOnce * atOnce;
    place.Count = static_cast<uint16_t>(count);
    drawn.Rows.push_back(place);
    for (size_t i = 0; i < count; ++i)
        drawn.Alphas.push_back(i < inked ? static_cast<uint8_t>(qAlpha(
                                               row[static_cast<size_t>(reach.Begin) + i]))
                                         : uint8_t{0});
}

void TakeInk(const QImage& sheet, int margin, DrawnText& drawn) {
    int left = sheet.width();
    int right = 0;
    for (int y = 0; y < sheet.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(sheet.constScanLine(y));
        const Reach reach = InkOf(row, sheet.width());
        if (reach.Begin == reach.End)
            continue;
        AddRow(drawn, row, reach,
               {static_cast<int16_t>(reach.Begin - margin),
                static_cast<int16_t>(y - margin), 0});
        left = std::min(left, reach.Begin);
        right = std::max(right, reach.Begin + int{drawn.Rows.back().Count});
    }
    drawn.Rows.shrink_to_fit();
    drawn.Alphas.shrink_to_fit();
    if (!drawn.Rows.empty())
        drawn.Ink = {left - margin, drawn.Rows.front().Y, right - left,
                     drawn.Rows.back().Y - drawn.Rows.front().Y + 1};
}

} // namespace

void DrawnText::LayOver(const RasterView& picture, int32_t left, int32_t top,
                        uint32_t color, uint32_t /*other*/) const {
    const uint8_t* alphas = Alphas.data();
    for (const Row& row : Rows) {
        const uint8_t* const rowAlphas = alphas;
        alphas += row.Count;
        const int32_t y = top + row.Y;
        if (y < 0 || y >= picture.Height)
            continue;
        const int32_t first = left + row.X;
        if (first >= 0 && first + row.Count <= picture.Width)
            BlendRow(picture.Row(y) + first, color, rowAlphas, row.Count);
        else
            for (int32_t i = 0; i < row.Count; ++i)
                if (first + i >= 0 && first + i < picture.Width) {
                    uint32_t& pixel = picture.Row(y)[first + i];
                    pixel = BlendPixel(pixel, color, rowAlphas[i]);
                }
    }
}

DrawnTexts::DrawnTexts(const FontChoice& font)
    : font_(FontOf(font)), sheet_(NewSheet({1, 1})) {}

const DrawnText& DrawnTexts::Of(std::string_view text) {
    const auto found = texts_.find(text);
    if (found != texts_.end())
        return found->second;
    if (IsFull())
        texts_.clear();
    return texts_.emplace(std::string(text), Draw(text)).first->second;
}

bool DrawnTexts::IsFull() const { return texts_.size() >= MostTexts; }

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
