#include "pictures/ImagePainting.h"

#include "pictures/Blending.h"
#include "pictures/ImageLayer.h"
#include "pictures/Stretching.h"

namespace vardenix {
namespace {

const uint32_t* PixelRow(const Bitmap& bitmap, int32_t y) {
    return reinterpret_cast<const uint32_t*>(bitmap.Row(y));
}

int32_t Or(int32_t length, int32_t other) { return length == 0 ? other : length; }

template <typename Combine>
void Paint(const RasterView& target, const Bitmap& bitmap, const PaintPlace& place,
           uint32_t mirror, Combine combine) {
    const bool converted = bitmap.BitsPerPixel() != 32;
    const Bitmap other = converted ? ConvertTo32Bits(bitmap) : Bitmap();
    const Bitmap& pixels = converted ? other : bitmap;
    if (!pixels)
        return;
    const PixelRect& to = place.Destination;
    const PixelRect& from = place.Source;
    const int32_t width = Or(to.Width, pixels.Width());
    const int32_t height = Or(to.Height, pixels.Height());
    PaintStretched(
        target,
        StretchSide({to.Left, width}, {from.Left, Or(from.Width, width)}, target.Width,
                    pixels.Width(), (mirror & MirrorHorizontal) != 0),
        StretchSide({to.Top, height}, {from.Top, Or(from.Height, height)}, target.Height,
                    pixels.Height(), (mirror & MirrorVertical) != 0),
        [&](int32_t y) { return PixelRow(pixels, y); }, combine);
}

} // namespace

StretchedSide StretchSide(SideSpan destination, SideSpan source, int32_t surfaceLength,
                          int32_t bitmapLength, bool mirrored) {
    StretchedSide side;
    if (destination.Length < 1 || source.Length < 1)
        return side;
    const int64_t first = std::max<int64_t>(0, -int64_t{destination.Begin});
    const int64_t end =
        std::min<int64_t>(destination.Length, int64_t{surfaceLength} - destination.Begin);
    if (first >= end)
        return side;
    side.Begin = static_cast<int32_t>(destination.Begin + first);
    side.Sources.reserve(static_cast<size_t>(end - first));
    for (int64_t d = first; d < end; ++d) {
        const int64_t place = mirrored ? destination.Length - 1 - d : d;
        const int64_t pixel = source.Begin + place * source.Length / destination.Length;
        const bool inside = pixel >= 0 && pixel < bitmapLength;
        side.Sources.push_back(inside ? static_cast<int32_t>(pixel) : -1);
    }
    return side;
}

PaintPlace WholeInto(const Bitmap& bitmap, const PixelRect& destination) {
    PaintPlace place{destination, {0, 0, bitmap.Width(), bitmap.Height()}};
    // 0 would mean the bitmap's own size.
    if (destination.Width == 0 || destination.Height == 0)
        place.Destination.Width = place.Destination.Height = -1;
    return place;
}

void ImagePaintDC(const RasterView& target, const Bitmap& bitmap, const PaintPlace& place,
                  uint32_t mirror) {
    Paint(target, bitmap, place, mirror,
          [](uint32_t, uint32_t source) { return Opaque(source); });
}

void ImagePaintTransparent(const RasterView& target, const Bitmap& bitmap,
                           const PaintPlace& place, uint8_t alpha) {
    Paint(target, bitmap, place, MirrorNone, [alpha](uint32_t old, uint32_t source) {
        return BlendPixel(old, source, BlendPart(source >> 24, 0, alpha));
    });
}

void BlendColor(const RasterView& target, const PixelRect& rect, uint32_t color,
                uint8_t alpha) {
    const int64_t left = std::max<int64_t>(rect.Left, 0);
    const int64_t right =
        std::min<int64_t>(int64_t{rect.Left} + rect.Width, target.Width);
    const int64_t top = std::max<int64_t>(rect.Top, 0);
    const int64_t bottom =
        std::min<int64_t>(int64_t{rect.Top} + rect.Height, target.Height);
    for (int64_t y = top; y < bottom && left < right; ++y)
        BlendRow(target.Row(static_cast<int32_t>(y)) + left, color, alpha,
                 static_cast<size_t>(right - left));
}

} // namespace vardenix
