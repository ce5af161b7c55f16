// A DDS file that is shown as a small square: the first two bytes say how wide and high,
// the rest is the file. What is unpacked straight to the size has to be what the image
// library decodes whole and the plain stretch of that.
#include "MemoryFile.h"
#include "Require.h"
#include "files/BinaryReader.h"
#include "pictures/Dxt1Sampling.h"
#include "pictures/ImageFiles.h"
#include "pictures/ImagePainting.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <optional>

using namespace vardenix;

namespace {

// Nothing where the guard refuses the file.
template <typename Make>
std::optional<Raster> Made(Make make) {
    try {
        return make();
    } catch (const RuntimeError& error) {
        Require(error.Number() == ErrorNumber::InvalidPicture);
        return std::nullopt;
    }
}

Raster ByTheLibrary(const std::string& path, int32_t width, int32_t height) {
    const Bitmap bitmap = ImageRead(PictureFormat::Dds, path);
    Raster raster(width, height);
    ImagePaintDC(raster.View(), bitmap, WholeInto(bitmap, {0, 0, width, height}));
    return raster;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const MemoryFile file;
    if (size < 2)
        return 0;
    const int32_t width = data[0] % 48 + 1;
    const int32_t height = data[1] % 48 + 1;
    Require(file.Put(std::as_bytes(std::span(data, size)).subspan(2)));
    bool isOther = false;
    const auto sampled = Made([&] {
        auto raster = LoadDxt1(file.Path(), width, height);
        isOther = !raster;
        return raster ? std::move(*raster) : Raster();
    });
    if (isOther)
        return 0;
    const auto whole = Made([&] { return ByTheLibrary(file.Path(), width, height); });
    Require(sampled.has_value() == whole.has_value());
    for (int32_t y = 0; sampled && y < height; ++y)
        Require(std::equal(sampled->Row(y), sampled->Row(y) + width, whole->Row(y)));
    return 0;
}
