#pragma once

#include "pictures/Bitmap.h"
#include "pictures/Raster.h"

#include <cstdint>

namespace vardenix {

// Where a bitmap is painted. A destination width or height of 0 is the bitmap's own, a
// source width or height of 0 the destination's; both count from the top left. The
// destination may reach past the surface on every side; pixels whose source lies outside
// the bitmap are left alone, and negative sizes paint nothing.
struct PaintPlace {
    PixelRect Destination;
    PixelRect Source;
};

// The whole bitmap into a rectangle, which may be empty: that paints nothing.
PaintPlace WholeInto(const Bitmap& bitmap, const PixelRect& destination);

// May be added together.
enum MirrorFlags : uint32_t { MirrorNone = 0, MirrorVertical = 1, MirrorHorizontal = 2 };

// Stretches without smoothing: pixel d of a destination of n pixels takes source pixel
// floor(d * source / n). What is painted is opaque, whatever alpha the bitmap has.
// Without a bitmap nothing is painted.
void ImagePaintDC(const RasterView& target, const Bitmap& bitmap, const PaintPlace& place,
                  uint32_t mirror = MirrorNone);

// Stretches the same way and blends: a pixel counts with the bitmap's own alpha (of
// 32-bit bitmaps and of transparent palette entries) times `alpha` / 255. With w out of
// 255 the channels become (source * w + target * (255 - w)) / 255, rounded to nearest, so
// 0 leaves the target and 255 replaces it exactly. Colours are not multiplied by alpha
// beforehand; the target stays opaque.
void ImagePaintTransparent(const RasterView& target, const Bitmap& bitmap,
                           const PaintPlace& place, uint8_t alpha = 255);

// One colour 0xAARRGGBB (its alpha is not looked at) over a rectangle, as
// ImagePaintTransparent with a bitmap filled with it.
void BlendColor(const RasterView& target, const PixelRect& rect, uint32_t color,
                uint8_t alpha);

} // namespace vardenix
