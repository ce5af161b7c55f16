#include "pictures/ImageLayer.h"

#include "files/FileNames.h"
#include "pictures/ImageLibrary.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"

#include <cstring>
#include <utility>

namespace vardenix {
namespace {

constexpr uint8_t NightThreshold = 127;

uint8_t Part(uint32_t color, int shift) {
    return static_cast<uint8_t>(color >> shift & 255);
}

} // namespace

// A library that is not open yet makes itself ready when it is opened.
ImageSession::ImageSession() : open_(ImageLibraryIsOpen()) {
    if (open_)
        ImageLibrary().Initialise(FALSE);
}
ImageSession::~ImageSession() {
    if (open_)
        ImageLibrary().DeInitialise();
}

std::string ImageLibraryVersion() { return ImageLibrary().GetVersion(); }

Bitmap Clone(const Bitmap& bitmap) {
    return Bitmap(ImageLibrary().Clone(bitmap.Handle()));
}

Bitmap AllocateEx(int32_t width, int32_t height, uint32_t color) {
    if (width < 1 || height < 1 || width > ImageLargestSide || height > ImageLargestSide)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           "a picture of " + std::to_string(width) + " by " +
                               std::to_string(height) + " pixels");
    const RGBQUAD quad{Part(color, 16), Part(color, 8), Part(color, 0), 0};
    Bitmap bitmap(
        ImageLibrary().AllocateEx(width, height, 24, &quad, 0, nullptr, 0, 0, 0));
    if (!bitmap)
        throw RuntimeError(ErrorNumber::OutOfMemory);
    return bitmap;
}

Bitmap Threshold(const Bitmap& bitmap, uint8_t threshold) {
    return Bitmap(ImageLibrary().Threshold(bitmap.Handle(), threshold));
}

Bitmap ConvertToGreyscale(const Bitmap& bitmap) {
    return Bitmap(ImageLibrary().ConvertToGreyscale(bitmap.Handle()));
}

Bitmap ConvertTo32Bits(const Bitmap& bitmap) {
    return Bitmap(ImageLibrary().ConvertTo32Bits(bitmap.Handle()));
}

bool SetChannel(Bitmap& bitmap, const Bitmap& source, int32_t channel) {
    return ImageLibrary().SetChannel(bitmap.Handle(), source.Handle(),
                                     static_cast<FREE_IMAGE_COLOR_CHANNEL>(channel)) !=
           FALSE;
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
    Bitmap bitmap(ImageLibrary().Allocate(picture.Width, picture.Height, 32, 0, 0, 0));
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
    if (!result || ImageLibrary().AdjustBrightness(result.Handle(), percentage) == FALSE)
        return {};
    return result;
}

void AdjustPictureBrightness(const RasterView& picture, double percentage) {
    if (picture.Width < 1 || picture.Height < 1 || percentage == 0)
        return;
    BrightnessTable(percentage).Apply(picture);
}

BrightnessTable::BrightnessTable(double percentage) {
    Bitmap greys(ImageLibrary().Allocate(256, 1, 32, 0, 0, 0));
    if (!greys)
        throw RuntimeError(ErrorNumber::OutOfMemory);
    auto* row = reinterpret_cast<uint32_t*>(greys.Row(0));
    for (uint32_t value = 0; value < 256; ++value)
        row[value] = OpaqueBlack | value * 0x010101U;
    if (percentage != 0 &&
        ImageLibrary().AdjustBrightness(greys.Handle(), percentage) == FALSE)
        throw RuntimeError(ErrorNumber::OutOfMemory);
    for (size_t value = 0; value < 256; ++value)
        values_[value] = static_cast<uint8_t>(row[value]);
}

void BrightnessTable::Apply(const RasterView& picture) const {
    const auto part = [this](uint32_t pixel, int shift) {
        return uint32_t{values_[pixel >> shift & 255]} << shift;
    };
    for (int32_t y = 0; y < picture.Height; ++y) {
        uint32_t* const row = picture.Row(y);
        for (int32_t x = 0; x < picture.Width; ++x)
            row[x] = (row[x] & OpaqueBlack) | part(row[x], 16) | part(row[x], 8) |
                     part(row[x], 0);
    }
}

PictureFormat FormatFromFileName(std::string_view path) {
    // What is asked for most is known without the library.
    const std::string name = UpperCase(AfterLastSlash(path));
    for (const auto& [extension, format] : {std::pair{".DDS", PictureFormat::Dds},
                                            {".PNG", PictureFormat::Png},
                                            {".BMP", PictureFormat::Bmp}})
        if (name.ends_with(extension))
            return format;
    return static_cast<PictureFormat>(
        ImageLibrary().GetFIFFromFilename(std::string(path).c_str()));
}

std::string FormatName(PictureFormat format) {
    const char* name = ImageLibrary().GetFormatFromFIF(LibraryFormat(format));
    return name == nullptr ? "" : name;
}

std::string FormatExtensions(PictureFormat format) {
    const char* list = ImageLibrary().GetFIFExtensionList(LibraryFormat(format));
    return list == nullptr ? "" : list;
}

bool SupportsReading(PictureFormat format) {
    return format == PictureFormat::Bmp || format == PictureFormat::Jpeg ||
           format == PictureFormat::Targa || format == PictureFormat::Dds;
}

bool SupportsWriting(PictureFormat format) {
    return ImageLibrary().FIFSupportsWriting(LibraryFormat(format)) == TRUE;
}

// The library's 32 bits of a JPEG file are four inks, not alpha, and saving fails.
bool SupportsDepth(PictureFormat format, int32_t bits) {
    if (format == PictureFormat::Jpeg && bits == 32)
        return false;
    return ImageLibrary().FIFSupportsExportBPP(LibraryFormat(format), bits) == TRUE;
}

} // namespace vardenix
