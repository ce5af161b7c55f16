#include "platform/windows/ColorImage.h"

#include "texts/RuntimeError.h"

#include <new>

namespace vardenix {

QColor ColorOf(uint32_t color) {
    return QColor(static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
                  static_cast<int>(color >> 16 & 0xFF));
}

uint32_t ValueOf(const QColor& color) {
    return static_cast<uint32_t>(color.red()) |
           static_cast<uint32_t>(color.green()) << 8 |
           static_cast<uint32_t>(color.blue()) << 16;
}

QImage ImageOf(const std::vector<uint32_t>& pixels, int side) {
    if (side == 0)
        return {};
    if (pixels.size() != static_cast<size_t>(side) * static_cast<size_t>(side))
        throw RuntimeError(ErrorNumber::InvalidPicture);
    QImage image(side, side, QImage::Format_RGB32);
    if (image.isNull())
        throw std::bad_alloc();
    const uint32_t* source = pixels.data();
    for (int y = 0; y < side; ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < side; ++x, ++source)
            row[x] = 0xFF000000 | (*source & 0xFF) << 16 | (*source & 0xFF00) |
                     (*source >> 16 & 0xFF);
    }
    return image;
}

} // namespace vardenix
