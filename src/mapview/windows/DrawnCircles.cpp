#include "mapview/windows/DrawnCircles.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace vardenix {

namespace {

constexpr int32_t LargestSide = 64;
constexpr int Margin = 2; // of the sheet round the circle
const QColor OutlineColor(255, 0, 0);
const QColor InsideColor(0, 0, 255);

} // namespace

bool DrawnCircles::Takes(int32_t width, int32_t height) {
    return std::min(width, height) >= 1 && std::max(width, height) <= LargestSide &&
           std::abs(width - height) <= 1;
}

void DrawnCircles::Drawn::LayOver(const RasterView& picture, int32_t left, int32_t top,
                                  uint32_t color, uint32_t other) const {
    const auto fill = [&](const std::vector<Run>& runs, uint32_t pixel) {
        for (const Run& run : runs) {
            const int32_t y = top + run.Y;
            const int32_t begin = std::max(left + run.X, 0);
            const int32_t end = std::min(left + run.X + run.Length, picture.Width);
            if (y >= 0 && y < picture.Height && begin < end)
                std::fill_n(picture.Row(y) + begin, end - begin, pixel);
        }
    };
    fill(Inside, other);
    fill(Outline, color);
}

const Stamp& DrawnCircles::Of(int32_t width, int32_t height, bool filled) {
    const int32_t size = width * (LargestSide + 1) + height;
    const auto [place, isNew] = drawn_.try_emplace(size * 2 + (filled ? 1 : 0));
    if (isNew)
        place->second = Make(width, height, filled);
    return place->second;
}

DrawnCircles::Drawn DrawnCircles::Make(int32_t width, int32_t height, bool filled) {
    QImage sheet(width + 1 + 2 * Margin, height + 1 + 2 * Margin, QImage::Format_RGB32);
    sheet.fill(Qt::black);
    {
        QPainter painter(&sheet);
        painter.setPen(
            QPen(OutlineColor, 1, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin));
        if (filled)
            painter.setBrush(InsideColor);
        painter.drawEllipse(Margin, Margin, width, height);
    }
    Drawn drawn;
    const auto take = [&sheet](std::vector<Run>& runs, QRgb color) {
        for (int y = 0; y < sheet.height(); ++y)
            for (int x = 0; x < sheet.width(); ++x) {
                if (sheet.pixel(x, y) != color)
                    continue;
                if (x > 0 && sheet.pixel(x - 1, y) == color)
                    ++runs.back().Length;
                else
                    runs.push_back({x - Margin, y - Margin, 1});
            }
    };
    take(drawn.Inside, InsideColor.rgb());
    take(drawn.Outline, OutlineColor.rgb());
    return drawn;
}

} // namespace vardenix
