#include "services/ImageLayer.h"

#include "platform/RuntimeError.h"
#include "services/ImageScaling.h"

#include <FreeImage.h>

#include <cstring>
#include <utility>

namespace vardenix {
namespace {

constexpr uint8_t NightThreshold = 127;

FREE_IMAGE_FORMAT LibraryFormat(PictureFormat format) {
    return static_cast<FREE_IMAGE_FORMAT>(format);
}

uint8_t Part(uint32_t color, int shift) {
    return static_cast<uint8_t>(color >> shift & 255);
}

} // namespace

ImageSession::ImageSession() { FreeImage_Initialise(FALSE); }
ImageSession::~ImageSession() { FreeImage_DeInitialise(); }

std::string ImageLibraryVersion() { return FreeImage_GetVersion(); }

Bitmap Clone(const Bitmap& bitmap) { return Bitmap(FreeImage_Clone(bitmap.Handle())); }

Bitmap AllocateEx(int32_t width, int32_t height, uint32_t color) {
    if (width < 1 || height < 1 || width > ImageLargestSide || height > ImageLargestSide)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           "a picture of " + std::to_string(width) + " by " +
                               std::to_string(height) + " pixels");
    const RGBQUAD quad{Part(color, 16), Part(color, 8), Part(color, 0), 0};
    Bitmap bitmap(FreeImage_AllocateEx(width, height, 24, &quad));
    if (!bitmap)
        throw RuntimeError(ErrorNumber::OutOfMemory);
    return bitmap;
}

Bitmap Threshold(const Bitmap& bitmap, uint8_t threshold) {
    return Bitmap(FreeImage_Threshold(bitmap.Handle(), threshold));
}

Bitmap ConvertToGreyscale(const Bitmap& bitmap) {
    return Bitmap(FreeImage_ConvertToGreyscale(bitmap.Handle()));
}

Bitmap ConvertTo32Bits(const Bitmap& bitmap) {
    return Bitmap(FreeImage_ConvertTo32Bits(bitmap.Handle()));
}

bool SetChannel(Bitmap& bitmap, const Bitmap& source, int32_t channel) {
    return FreeImage_SetChannel(bitmap.Handle(), source.Handle(),
                                static_cast<FREE_IMAGE_COLOR_CHANNEL>(channel)) != FALSE;
}

// The library sets alpha in 32-bit bitmaps only, and a night picture of 24 bits has its
// dark parts too.
Bitmap MaskNightPicture(const Bitmap& bitmap) {
    Bitmap masked = ConvertTo32Bits(bitmap);
    const Bitmap mask = ConvertToGreyscale(Threshold(masked, NightThreshold));
    if (!SetChannel(masked, mask, AlphaChannel))
        return {};
    return masked;
}

Raster BitmapToHBitmap(const Bitmap& bitmap) {
    const bool converted = bitmap.BitsPerPixel() != 32;
    const Bitmap other = converted ? ConvertTo32Bits(bitmap) : Bitmap();
    const Bitmap& pixels = converted ? other : bitmap;
    if (!pixels)
        throw RuntimeError(ErrorNumber::InvalidCall, "no bitmap");
    Raster raster(pixels.Width(), pixels.Height());
    for (int32_t y = 0; y < raster.Height(); ++y)
        std::memcpy(raster.Row(y), pixels.Row(y),
                    static_cast<size_t>(raster.Width()) * sizeof(uint32_t));
    return raster;
}

Raster BitmapToPicture(const Bitmap& bitmap) { return BitmapToHBitmap(bitmap); }

Bitmap PictureToBitmap(const RasterView& picture) {
    if (picture.Width < 1 || picture.Height < 1)
        throw RuntimeError(ErrorNumber::InvalidCall, "a picture without pixels");
    Bitmap bitmap(FreeImage_Allocate(picture.Width, picture.Height, 32));
    if (!bitmap)
        throw RuntimeError(ErrorNumber::OutOfMemory);
    for (int32_t y = 0; y < picture.Height; ++y)
        std::memcpy(bitmap.Row(y), picture.Row(y),
                    static_cast<size_t>(picture.Width) * sizeof(uint32_t));
    return bitmap;
}

Bitmap AdjustPictureBrightness(const Bitmap& picture, double percentage) {
    const int32_t bits = picture.BitsPerPixel();
    if (bits != 8 && bits != 24 && bits != 32)
        return {};
    Bitmap result = Clone(picture);
    if (!result || FreeImage_AdjustBrightness(result.Handle(), percentage) == FALSE)
        return {};
    return result;
}

void AdjustPictureBrightness(const RasterView& picture, double percentage) {
    if (picture.Width < 1 || picture.Height < 1 || percentage == 0)
        return;
    // A bitmap over the surface's own pixels, rows the wrong way up, which is all the
    // same here.
    const Bitmap borrowed(FreeImage_ConvertFromRawBitsEx(
        FALSE, reinterpret_cast<BYTE*>(picture.Pixels), FIT_BITMAP, picture.Width,
        picture.Height, static_cast<int>(picture.Stride * ptrdiff_t{sizeof(uint32_t)}),
        32, FI_RGBA_RED_MASK, FI_RGBA_GREEN_MASK, FI_RGBA_BLUE_MASK, FALSE));
    if (!borrowed)
        throw RuntimeError(ErrorNumber::OutOfMemory);
    FreeImage_AdjustBrightness(borrowed.Handle(), percentage);
}

PictureFormat FormatFromFileName(std::string_view path) {
    return static_cast<PictureFormat>(
        FreeImage_GetFIFFromFilename(std::string(path).c_str()));
}

std::string FormatName(PictureFormat format) {
    const char* name = FreeImage_GetFormatFromFIF(LibraryFormat(format));
    return name == nullptr ? "" : name;
}

std::string FormatExtensions(PictureFormat format) {
    const char* list = FreeImage_GetFIFExtensionList(LibraryFormat(format));
    return list == nullptr ? "" : list;
}

bool SupportsReading(PictureFormat format) {
    return format == PictureFormat::Bmp || format == PictureFormat::Jpeg ||
           format == PictureFormat::Targa || format == PictureFormat::Dds;
}

bool SupportsWriting(PictureFormat format) {
    return FreeImage_FIFSupportsWriting(LibraryFormat(format)) == TRUE;
}

// The library's 32 bits of a JPEG file are four inks, not alpha, and saving fails.
bool SupportsDepth(PictureFormat format, int32_t bits) {
    if (format == PictureFormat::Jpeg && bits == 32)
        return false;
    return FreeImage_FIFSupportsExportBPP(LibraryFormat(format), bits) == TRUE;
}

} // namespace vardenix
