#include "grounds/TileSides.h"

#include "catalogue/TypeNames.h"
#include "pictures/Dxt1Sampling.h"
#include "pictures/ImageFiles.h"
#include "texts/RuntimeError.h"

#include <cmath>
#include <optional>

namespace vardenix {

namespace {

constexpr float TileFeet = 3280.84F;
constexpr float NearSide = 40;

// The mean of the pixels of a strip of `length` pixels that sample `index` stands for;
// pixel(i) is the strip's i-th one.
template <typename Pixel>
std::array<uint8_t, 3> MeanOf(int32_t length, size_t index, Pixel pixel) {
    const auto samples = static_cast<int64_t>(SideSamples);
    const auto first =
        static_cast<int32_t>(static_cast<int64_t>(index) * length / samples);
    const auto end =
        std::max(first + 1, static_cast<int32_t>((static_cast<int64_t>(index) + 1) *
                                                 length / samples));
    std::array<uint32_t, 3> sums{};
    for (int32_t i = first; i < end; ++i) {
        const uint32_t color = pixel(i);
        sums[0] += color >> 16 & 255;
        sums[1] += color >> 8 & 255;
        sums[2] += color & 255;
    }
    const auto count = static_cast<uint32_t>(end - first);
    std::array<uint8_t, 3> mean{};
    for (size_t part = 0; part < 3; ++part)
        mean[part] = static_cast<uint8_t>((sums[part] + count / 2) / count);
    return mean;
}

Raster RasterOf(const Bitmap& bitmap) {
    Raster raster(bitmap.Width(), bitmap.Height());
    const auto pixelBytes = static_cast<size_t>(bitmap.BitsPerPixel()) / 8;
    for (int32_t y = 0; y < raster.Height(); ++y)
        for (int32_t x = 0; x < raster.Width(); ++x) {
            const uint8_t* const pixel =
                bitmap.Row(y) + static_cast<size_t>(x) * pixelBytes;
            raster.Row(y)[x] = OpaqueBlack | uint32_t{pixel[2]} << 16 |
                               uint32_t{pixel[1]} << 8 | pixel[0];
        }
    return raster;
}

// All pixels of a picture; an empty one when that cannot be done.
Raster ReadPicture(std::string_view path) {
    if (auto pixels = LoadDxt1(path, 0, 0))
        return std::move(*pixels);
    const Bitmap bitmap = ImageLoad(PictureFormat::Dds, path);
    return bitmap.BitsPerPixel() >= 24 ? RasterOf(bitmap) : Raster();
}

void AddEnd(const TilePath& path, float up, float right, TileWays& ways) {
    uint8_t* mask = nullptr;
    switch (path.Type) {
    case PathRiver:
        mask = &ways.Rivers;
        break;
    case PathRoad:
    case PathBridge:
        mask = &ways.Roads;
        break;
    case PathRailRoad:
        mask = &ways.Rails;
        break;
    default:
        return;
    }
    const auto add = [mask](Side side) {
        *mask = static_cast<uint8_t>(*mask | 1U << side);
    };
    if (up >= TileFeet - NearSide)
        add(North);
    if (right >= TileFeet - NearSide)
        add(East);
    if (up <= NearSide)
        add(South);
    if (right <= NearSide)
        add(West);
}

} // namespace

TileSides SidesOf(const RasterView& picture) {
    TileSides sides;
    sides.Known = true;
    const int32_t right = picture.Width - 1;
    const int32_t bottom = picture.Height - 1;
    for (size_t i = 0; i < SideSamples; ++i) {
        sides.Colors[North][i] =
            MeanOf(picture.Width, i, [&](int32_t x) { return picture.Row(0)[x]; });
        sides.Colors[South][i] =
            MeanOf(picture.Width, i, [&](int32_t x) { return picture.Row(bottom)[x]; });
        sides.Colors[East][i] = MeanOf(
            picture.Height, i, [&](int32_t y) { return picture.Row(bottom - y)[right]; });
        sides.Colors[West][i] = MeanOf(
            picture.Height, i, [&](int32_t y) { return picture.Row(bottom - y)[0]; });
    }
    return sides;
}

TileSides SidesOfFile(std::string_view path) {
    try {
        Raster picture = ReadPicture(path);
        return picture.Width() > 0 ? SidesOf(picture.View()) : TileSides();
    } catch (const RuntimeError&) {
        return {};
    }
}

float DifferenceOf(const SideColors& a, const SideColors& b) {
    int32_t sum = 0;
    for (size_t i = 0; i < SideSamples; ++i)
        for (size_t part = 0; part < 3; ++part) {
            const int32_t difference = int32_t{a[i][part]} - int32_t{b[i][part]};
            sum += difference * difference;
        }
    return std::sqrt(static_cast<float>(sum) / (3 * SideSamples));
}

TileWays WaysOf(const TileRecord& tile) {
    TileWays ways;
    for (size_t i = 1; i < tile.Paths.size(); ++i) {
        const TilePath& path = tile.Paths[i];
        AddEnd(path, path.StartX, path.StartY, ways);
        AddEnd(path, path.EndX, path.EndY, ways);
    }
    return ways;
}

} // namespace vardenix
