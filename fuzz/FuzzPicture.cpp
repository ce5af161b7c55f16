// The bytes of a picture file, as each of the kinds that are read: the first byte chooses
// the kind, the rest is the file. Whatever the guard lets through the image library
// decodes, so its memory is watched as well.
#include "Require.h"
#include "files/BinaryReader.h"
#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "pictures/PictureGuard.h"
#include "texts/RuntimeError.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

using namespace vardenix;

namespace {

uint32_t SumOf(const Raster& raster) {
    uint32_t sum = 0;
    for (int32_t y = 0; y < raster.Height(); ++y)
        for (int32_t x = 0; x < raster.Width(); ++x)
            sum += raster.Row(y)[x];
    return sum;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0)
        return 0;
    constexpr std::array kinds{PictureFormat::Dds, PictureFormat::Targa,
                               PictureFormat::Jpeg, PictureFormat::Bmp};
    const PictureFormat kind = kinds.at(data[0] % kinds.size());
    FileBytes bytes(size - 1);
    std::memcpy(bytes.data(), data + 1, size - 1);
    try {
        const Bitmap bitmap = ImageDecode(kind, std::move(bytes), "picture");
        Require(bitmap.Width() >= 1 && bitmap.Width() <= PictureLargestSide);
        Require(bitmap.Height() >= 1 && bitmap.Height() <= PictureLargestSide);
        // Every pixel is looked at, so that a bitmap with less memory than it says shows.
        [[maybe_unused]] static volatile uint32_t seen = 0;
        seen = SumOf(BitmapToPicture(bitmap)) +
               SumOf(BitmapToPicture(MaskNightPicture(bitmap)));
    } catch (const RuntimeError& error) {
        Require(error.Number() == ErrorNumber::InvalidPicture);
    }
    return 0;
}
