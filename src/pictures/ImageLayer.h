#pragma once

#include "pictures/Bitmap.h"
#include "pictures/PictureFormat.h"
#include "pictures/Raster.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace vardenix {

// The single steps of the image library that the program takes, and the way between its
// bitmaps and surfaces. Where a step is handed no bitmap, or the library cannot do it,
// the answer is no bitmap.

// Keeps the library ready while it lives, around one repaint. They may lie inside one
// another.
class ImageSession {
public:
    ImageSession();
    ImageSession(const ImageSession&) = delete;
    ImageSession& operator=(const ImageSession&) = delete;
    ~ImageSession();

private:
    bool open_; // by the time that it began
};

// Of the library: another one may decode and scale to other pixels.
std::string ImageLibraryVersion();

Bitmap Clone(const Bitmap& bitmap);

// 24 bits, all of one colour 0x00BBGGRR. Error 5 for a side outside 1 to
// ImageLargestSide, 7 when there is no memory.
Bitmap AllocateEx(int32_t width, int32_t height, uint32_t color);

// 1 bit: white where the grey value is `threshold` or more, else black.
Bitmap Threshold(const Bitmap& bitmap, uint8_t threshold);

// 8 bits.
Bitmap ConvertToGreyscale(const Bitmap& bitmap);

Bitmap ConvertTo32Bits(const Bitmap& bitmap);

constexpr int32_t AlphaChannel = 4;

// Puts an 8-bit picture of the same size into one channel of a 32-bit one; false, and
// nothing changed, where the two do not fit.
bool SetChannel(Bitmap& bitmap, const Bitmap& source, int32_t channel);

// The night picture as it is laid over the day: 32 bits, alpha 255 where it is brighter
// than the threshold of 127 and 0 elsewhere.
Bitmap MaskNightPicture(const Bitmap& bitmap);

// 32-bit bitmaps keep their alpha, others become opaque. Error 5 without a bitmap.
Raster BitmapToHBitmap(const Bitmap& bitmap);
Raster BitmapToPicture(const Bitmap& bitmap);
// 32 bits, alpha kept. Error 7 when there is no memory, 5 for a surface without pixels.
Bitmap PictureToBitmap(const RasterView& picture);

// `percentage` from -100 (black) over 0 (unchanged) up. Pictures of 8, 24 and 32 bits;
// any other gives no picture.
Bitmap AdjustPictureBrightness(const Bitmap& picture, double percentage);
// Brightens a surface in place; alpha stays.
void AdjustPictureBrightness(const RasterView& picture, double percentage);

// What a brightness does to each value of a colour. Relies on the library's treating
// every pixel and every colour alike, so that 256 greys that it has brightened tell all
// of it.
class BrightnessTable {
public:
    // Error 7 when there is no memory.
    explicit BrightnessTable(double percentage);

    void Apply(const RasterView& picture) const;

private:
    std::array<uint8_t, 256> values_;
};

// Format questions.
PictureFormat FormatFromFileName(std::string_view path); // by its extension alone
std::string FormatName(PictureFormat format);            // "JPEG"; "" for Unknown
// "jpg,jif,jpeg,jpe"; "" for Unknown.
std::string FormatExtensions(PictureFormat format);
// What ImageLoad takes.
bool SupportsReading(PictureFormat format);
bool SupportsWriting(PictureFormat format);
// Bitmaps of `bits` a pixel can be saved as they stand.
bool SupportsDepth(PictureFormat format, int32_t bits);

} // namespace vardenix
