#include "pictures/Dxt1Writer.h"

#include "pictures/fast/ClusterFit.h"
#include "texts/RuntimeError.h"

#include <squish.h>

#include <algorithm>
#include <string>

namespace vardenix {
namespace {

void CheckSides(int32_t width, int32_t height) {
    if (width < 1 || height < 1 || width > Dxt1LargestSide || height > Dxt1LargestSide)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           "a picture of " + std::to_string(width) + " by " +
                               std::to_string(height) + " pixels cannot be compressed");
}

std::size_t BlocksAlong(int32_t side) { return (static_cast<std::size_t>(side) + 3) / 4; }

using BlockPixels = std::array<uint8_t, 64>;

BlockPixels TakeBlock(std::span<const uint8_t> rgba, int32_t width, int32_t height,
                      std::size_t blockX, std::size_t blockY, Dxt1Alpha alpha) {
    const auto lastColumn = static_cast<std::size_t>(width) - 1;
    const auto lastRow = static_cast<std::size_t>(height) - 1;
    BlockPixels pixels;
    for (std::size_t row = 0; row < 4; ++row) {
        const std::size_t y = std::min(blockY * 4 + row, lastRow);
        for (std::size_t column = 0; column < 4; ++column) {
            const std::size_t x = std::min(blockX * 4 + column, lastColumn);
            const uint8_t* from = &rgba[(y * static_cast<std::size_t>(width) + x) * 4];
            uint8_t* to = &pixels[(row * 4 + column) * 4];
            std::copy_n(from, 4, to);
            if (alpha == Dxt1Alpha::Opaque)
                to[3] = 255;
        }
    }
    return pixels;
}

void PutNumber(std::array<uint8_t, DdsHeaderBytes>& header, std::size_t offset,
               uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i)
        header[offset + i] = static_cast<uint8_t>(value >> (8 * i));
}

} // namespace

std::vector<uint8_t> CompressDxt1(std::span<const uint8_t> rgba, int32_t width,
                                  int32_t height, Dxt1Options options) {
    CheckSides(width, height);
    const std::size_t needed =
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4;
    if (rgba.size() < needed)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           "a picture to compress has " + std::to_string(rgba.size()) +
                               " bytes where " + std::to_string(needed) + " are needed");

    const int flags =
        squish::kDxt1 | (options.Fit == Dxt1Fit::Cluster ? squish::kColourClusterFit
                                                         : squish::kColourRangeFit);
    std::vector<uint8_t> blocks(BlocksAlong(width) * BlocksAlong(height) *
                                Dxt1BlockBytes);
    uint8_t* target = blocks.data();
    for (std::size_t y = 0; y < BlocksAlong(height); ++y) {
        for (std::size_t x = 0; x < BlocksAlong(width); ++x) {
            const BlockPixels pixels =
                TakeBlock(rgba, width, height, x, y, options.Alpha);
            const bool done =
                options.Fit == Dxt1Fit::Cluster && options.Alpha == Dxt1Alpha::Opaque &&
                ClusterFit(pixels,
                           std::span<uint8_t, Dxt1BlockBytes>(target, Dxt1BlockBytes));
            if (!done)
                squish::Compress(pixels.data(), target, flags);
            target += Dxt1BlockBytes;
        }
    }
    return blocks;
}

// Linear size is width * height / 2 for every size, not rounded up to whole blocks, and
// the mip count is 0: so do the compressors that theater makers use, and tools compare
// headers.
std::array<uint8_t, DdsHeaderBytes> Dxt1FileHeader(int32_t width, int32_t height) {
    CheckSides(width, height);
    const auto w = static_cast<uint32_t>(width);
    const auto h = static_cast<uint32_t>(height);
    std::array<uint8_t, DdsHeaderBytes> header{};
    PutNumber(header, 0, 0x20534444); // "DDS "
    PutNumber(header, 4, 124);
    PutNumber(header, 8, 0x81007); // caps, height, width, pixel format, linear size
    PutNumber(header, 12, h);
    PutNumber(header, 16, w);
    PutNumber(header, 20, static_cast<uint32_t>(uint64_t{w} * h / 2));
    PutNumber(header, 76, 32);
    PutNumber(header, 80, 4);          // a four-character code follows
    PutNumber(header, 84, 0x31545844); // "DXT1"
    PutNumber(header, 108, 0x1000);    // a texture
    return header;
}

std::vector<uint8_t> Dxt1File(std::span<const uint8_t> rgba, int32_t width,
                              int32_t height, Dxt1Options options) {
    const auto header = Dxt1FileHeader(width, height);
    const auto blocks = CompressDxt1(rgba, width, height, options);
    std::vector<uint8_t> file(header.size() + blocks.size());
    std::copy(header.begin(), header.end(), file.begin());
    std::copy(blocks.begin(), blocks.end(),
              file.begin() + static_cast<std::ptrdiff_t>(header.size()));
    return file;
}

} // namespace vardenix
