#include "pictures/ImageScaling.h"

#include "pictures/ImageLayer.h"
#include "pictures/ImageLibrary.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

namespace vardenix {
namespace {

struct Size {
    double Width = 0;
    double Height = 0;
};

void RequireBitmap(const Bitmap& bitmap) {
    if (!bitmap)
        throw RuntimeError(ErrorNumber::InvalidCall, "no bitmap");
}

// Whole pixels; 0 for a side that is missing.
double Pixels(const SideArgument& side, int32_t own, bool percent) {
    if (const int32_t* whole = std::get_if<int32_t>(&side))
        return *whole;
    if (const double* fraction = std::get_if<double>(&side))
        return RoundHalfEven(*fraction * own / (percent ? 100 : 1));
    return 0;
}

// What to scale to; nothing when the size is that already.
std::optional<Size> Target(const Bitmap& bitmap, const RescaleSize& size) {
    const double ownWidth = bitmap.Width();
    const double ownHeight = bitmap.Height();
    const double width = Pixels(size.Width, bitmap.Width(), size.Percent);
    const double height = Pixels(size.Height, bitmap.Height(), size.Percent);
    if (width > 0 && height > 0) {
        if (width == ownWidth && height == ownHeight)
            return std::nullopt;
        return Size{width, height};
    }
    if (width > 0 && width != ownWidth)
        return Size{width, RoundHalfEven(width / (ownWidth / ownHeight))};
    if (height > 0 && height != ownHeight)
        return Size{RoundHalfEven(ownWidth / ownHeight * height), height};
    return std::nullopt;
}

// A thin picture keeps a pixel, however much it shrinks.
int32_t CheckedSide(double side) {
    if (!(side <= ImageLargestSide))
        throw RuntimeError(ErrorNumber::InvalidCall,
                           "a picture cannot be scaled to " + Format0(side) + " pixels");
    return static_cast<int32_t>(std::max(side, 1.0));
}

Bitmap Made(FIBITMAP* handle) {
    if (handle == nullptr)
        throw RuntimeError(ErrorNumber::OutOfMemory);
    return Bitmap(handle);
}

Bitmap Rescaled(const Bitmap& source, const Size& size, ImageFilter filter) {
    return Made(ImageLibrary().Rescale(source.Handle(), CheckedSide(size.Width),
                                       CheckedSide(size.Height),
                                       static_cast<FREE_IMAGE_FILTER>(filter)));
}

// Nothing when the source is to be taken as it stands.
std::optional<Size> Wanted(const Bitmap& source, const RescaleSize& size,
                           bool forceCopy) {
    RequireBitmap(source);
    const std::optional<Size> target = Target(source, size);
    if (!target && forceCopy)
        return Size{double(source.Width()), double(source.Height())};
    return target;
}

bool HasDepth(const Bitmap& bitmap, ImageDepth depth) {
    const int32_t bits = bitmap.BitsPerPixel();
    if (bits != 16)
        return bits == static_cast<int32_t>(depth);
    const bool is565 =
        ImageLibrary().GetGreenMask(bitmap.Handle()) == FI16_565_GREEN_MASK;
    return depth == (is565 ? ImageDepth::Bits16As565 : ImageDepth::Bits16As555);
}

Bitmap ToDepth(const Bitmap& source, ImageDepth depth, BlackAndWhite how) {
    FIBITMAP* handle = source.Handle();
    switch (depth) {
    case ImageDepth::Bits1:
        return Made(how.Dither ? ImageLibrary().Dither(handle, FID_FS)
                               : ImageLibrary().Threshold(handle, how.Threshold));
    case ImageDepth::Bits4:
        return Made(ImageLibrary().ConvertTo4Bits(handle));
    case ImageDepth::Bits8: {
        const Bitmap colours = Made(ImageLibrary().ConvertTo24Bits(handle));
        return Made(ImageLibrary().ColorQuantize(colours.Handle(), FIQ_WUQUANT));
    }
    case ImageDepth::Bits16As555:
        return Made(ImageLibrary().ConvertTo16Bits555(handle));
    case ImageDepth::Bits16As565:
        return Made(ImageLibrary().ConvertTo16Bits565(handle));
    case ImageDepth::Bits24:
        return Made(ImageLibrary().ConvertTo24Bits(handle));
    case ImageDepth::Bits32:
        return Made(ImageLibrary().ConvertTo32Bits(handle));
    }
    throw RuntimeError(ErrorNumber::InvalidCall, "no such depth of a picture");
}

Bitmap Copied(const Bitmap& source) {
    return Made(ImageLibrary().Clone(source.Handle()));
}

} // namespace

Bitmap ImageRescaleEx(Bitmap&& source, const RescaleSize& size, ImageFilter filter,
                      bool forceCopy) {
    const auto target = Wanted(source, size, forceCopy);
    Bitmap consumed = std::move(source);
    return target ? Rescaled(consumed, *target, filter) : std::move(consumed);
}

Bitmap ImageRescaleEx(const Bitmap& source, const RescaleSize& size, ImageFilter filter,
                      bool forceCopy) {
    const auto target = Wanted(source, size, forceCopy);
    return target ? Rescaled(source, *target, filter) : Copied(source);
}

bool ChangesSize(const Bitmap& bitmap, const RescaleSize& size) {
    return bitmap && Target(bitmap, size).has_value();
}

Bitmap ImageConvertDepth(Bitmap&& source, ImageDepth depth, BlackAndWhite how) {
    RequireBitmap(source);
    Bitmap consumed = std::move(source);
    return HasDepth(consumed, depth) ? std::move(consumed)
                                     : ToDepth(consumed, depth, how);
}

Bitmap ImageConvertDepth(const Bitmap& source, ImageDepth depth, BlackAndWhite how) {
    RequireBitmap(source);
    return HasDepth(source, depth) ? Copied(source) : ToDepth(source, depth, how);
}

} // namespace vardenix
