#include "pictures/Dxt1Sampling.h"

#include "files/ReadableFile.h"
#include "pictures/Stretching.h"

#include <algorithm>
#include <array>
#include <functional>
#include <vector>

namespace vardenix {
namespace {

constexpr int32_t BlockSide = 4;
constexpr size_t BlockBytes = 8;

using Colors = std::array<uint32_t, 4>; // 0xAARRGGBB

uint32_t Little(std::span<const std::byte> bytes, size_t offset, size_t count) {
    uint32_t value = 0;
    for (size_t i = 0; i < count; ++i)
        value |= std::to_integer<uint32_t>(bytes[offset + i]) << (8 * i);
    return value;
}

// Parts of a colour of 16 bits, red, green, blue, widened to 8 bits each.
std::array<uint32_t, 3> PartsOf(uint32_t color) {
    const uint32_t red = color >> 11;
    const uint32_t green = color >> 5 & 63;
    const uint32_t blue = color & 31;
    return {red << 3 | red >> 2, green << 2 | green >> 4, blue << 3 | blue >> 2};
}

// (a * first + b * second) / whole of each part, cut as the image library cuts it.
uint32_t Mixed(const std::array<uint32_t, 3>& first, uint32_t a,
               const std::array<uint32_t, 3>& second, uint32_t b) {
    const uint32_t whole = a + b;
    uint32_t pixel = 255;
    for (size_t part = 0; part < 3; ++part)
        pixel = pixel << 8 | (first[part] * a + second[part] * b) / whole;
    return pixel;
}

// A block whose first colour is the greater has four colours; any other has three, and
// the fourth is transparent.
Colors ColorsOf(std::span<const std::byte> block) {
    const uint32_t code0 = Little(block, 0, 2);
    const uint32_t code1 = Little(block, 2, 2);
    const auto first = PartsOf(code0);
    const auto second = PartsOf(code1);
    const Colors ends{Mixed(first, 1, second, 0), Mixed(first, 0, second, 1)};
    if (code0 > code1)
        return {ends[0], ends[1], Mixed(first, 2, second, 1), Mixed(first, 1, second, 2)};
    return {ends[0], ends[1], Mixed(first, 1, second, 1), OpaqueBlack};
}

size_t RowBytes(const Dxt1Layout& layout) {
    return static_cast<size_t>((layout.Width + BlockSide - 1) / BlockSide) * BlockBytes;
}

// One row of blocks, unpacked as far as the columns of a stretch look into it.
class BlockRow {
public:
    BlockRow(const Dxt1Layout& layout, const std::vector<int32_t>& columns)
        : columns_(columns), blocks_(RowBytes(layout) / BlockBytes) {}

    void Unpack(std::span<const std::byte> bytes) {
        int32_t last = -1;
        for (const int32_t column : columns_) {
            const int32_t number = column / BlockSide;
            if (number == last)
                continue;
            last = number;
            const auto place = static_cast<size_t>(number);
            const auto block = bytes.subspan(place * BlockBytes, BlockBytes);
            blocks_[place] = {ColorsOf(block), Little(block, 4, 4)};
        }
    }

    // Pixels of row `inside` (0 to 3) of the blocks.
    void Take(int32_t inside, uint32_t* to) const {
        for (const int32_t column : columns_) {
            const Block& block = blocks_[static_cast<size_t>(column / BlockSide)];
            const int32_t shift = 2 * (inside * BlockSide + column % BlockSide);
            *to++ = block.Palette[block.Choices >> shift & 3];
        }
    }

private:
    struct Block {
        Colors Palette;
        uint32_t Choices; // two bits a pixel
    };

    const std::vector<int32_t>& columns_;
    std::vector<Block> blocks_;
};

// For each row and column of a target, the one of the picture that it shows.
struct Stretched {
    Stretched(const Dxt1Layout& layout, int32_t width, int32_t height)
        : Columns(Side(width, layout.Width)), Rows(Side(height, layout.Height)) {}

    std::vector<int32_t> Columns;
    std::vector<int32_t> Rows;

private:
    static std::vector<int32_t> Side(int32_t target, int32_t source) {
        return StretchSide({0, target}, {0, source}, target, source, false).Sources;
    }
};

// `rowOf(n)` gives the bytes of the row of blocks `n`; it is asked from the top down, and
// for each row once.
void Sample(const Dxt1Layout& layout, const Stretched& stretched,
            const RasterView& target,
            const std::function<std::span<const std::byte>(int32_t)>& rowOf) {
    BlockRow row(layout, stretched.Columns);
    int32_t unpacked = -1;
    int32_t y = 0;
    for (const int32_t source : stretched.Rows) {
        if (source / BlockSide != unpacked) {
            unpacked = source / BlockSide;
            row.Unpack(rowOf(unpacked));
        }
        row.Take(source % BlockSide, target.Row(y++));
    }
}

// A row read by itself costs a call of the system, a row read along only its bytes.
bool AreFew(const std::vector<int32_t>& rows, int32_t height) {
    return rows.size() * BlockSide * 2 < static_cast<size_t>(height);
}

} // namespace

void SampleDxt1(const Dxt1Layout& layout, std::span<const std::byte> blocks,
                const RasterView& target) {
    const size_t length = RowBytes(layout);
    Sample(layout, Stretched(layout, target.Width, target.Height), target,
           [&](int32_t row) {
               return blocks.subspan(static_cast<size_t>(row) * length, length);
           });
}

std::optional<Raster> LoadDxt1(std::string_view path, int32_t width, int32_t height) {
    const ReadableFile file(path);
    FileBytes header(static_cast<size_t>(std::min(file.Size(), DdsHeaderBytes)));
    file.ReadMeasured(0, {header.data(), header.size()});
    const auto layout = GuardDxt1(header, file.Size(), file.Path());
    if (!layout)
        return std::nullopt;
    if (width == 0 && height == 0) {
        width = layout->Width;
        height = layout->Height;
    }
    Raster raster(width, height);
    const Stretched stretched(*layout, width, height);
    const size_t length = RowBytes(*layout);
    if (AreFew(stretched.Rows, layout->Height)) {
        FileBytes bytes(length);
        Sample(*layout, stretched, raster.View(), [&](int32_t row) {
            file.ReadMeasured(DdsHeaderBytes + static_cast<size_t>(row) * length,
                              {bytes.data(), length});
            return bytes.Span();
        });
        return raster;
    }
    const auto rows = static_cast<size_t>((layout->Height + BlockSide - 1) / BlockSide);
    FileBytes bytes(rows * length);
    file.ReadMeasured(DdsHeaderBytes, {bytes.data(), bytes.size()});
    SampleDxt1(*layout, bytes.Span(), raster.View());
    return raster;
}

} // namespace vardenix
