#pragma once

#include "pictures/Bitmap.h"

#include <cstdint>
#include <variant>

namespace vardenix {

// The library's number; the one filter in use.
enum class ImageFilter : int32_t { Bicubic = 1 };

// A side that is wanted: missing, whole pixels, or a fraction of the bitmap's own.
using SideArgument = std::variant<std::monostate, int32_t, double>;

// With Percent, a fraction is in hundredths: 50.0 halves. Whole pixels are never percent.
// Fractions become pixels rounded half to even; 0 and less act as missing. A missing side
// follows the other one and keeps the aspect; with both missing the size stays.
struct RescaleSize {
    SideArgument Width;
    SideArgument Height;
    bool Percent = false;
};

// Scales. An rvalue is consumed, and comes back itself when it has the size already and
// no copy is forced. A const bitmap stays the caller's, and the result is always a bitmap
// of its own. Error 5 without a bitmap or for a side above ImageLargestSide, 7 when there
// is no memory.
Bitmap ImageRescaleEx(Bitmap&& source, const RescaleSize& size,
                      ImageFilter filter = ImageFilter::Bicubic, bool forceCopy = false);
Bitmap ImageRescaleEx(const Bitmap& source, const RescaleSize& size,
                      ImageFilter filter = ImageFilter::Bicubic, bool forceCopy = false);

// Whether ImageRescaleEx would scale `bitmap`.
bool ChangesSize(const Bitmap& bitmap, const RescaleSize& size);

// Bits a pixel; the two kinds of 16 bits are apart.
enum class ImageDepth : int32_t {
    Bits1 = 1,
    Bits4 = 4,
    Bits8 = 8,
    Bits16As555 = 15,
    Bits16As565 = 16,
    Bits24 = 24,
    Bits32 = 32,
};

// How a picture becomes black and white: split at a grey value, or dithered.
struct BlackAndWhite {
    uint8_t Threshold = 128;
    bool Dither = false;
};

// A bitmap of that depth already comes back itself (rvalue) or as a copy. Error 5 without
// a bitmap, 7 when there is no memory.
Bitmap ImageConvertDepth(Bitmap&& source, ImageDepth depth, BlackAndWhite how = {});
Bitmap ImageConvertDepth(const Bitmap& source, ImageDepth depth, BlackAndWhite how = {});

} // namespace vardenix
