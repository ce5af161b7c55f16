#include "builder/FartileDrawing.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace vardenix {

namespace {

constexpr size_t BlockSide = 4;
constexpr size_t PixelBytes = 4;

std::array<uint8_t, 64> BlackBlock() {
    std::array<uint8_t, 64> pixels{};
    for (size_t i = 3; i < pixels.size(); i += PixelBytes)
        pixels[i] = 255;
    return pixels;
}

std::array<uint8_t, Dxt1BlockBytes> Compressed(const std::array<uint8_t, 64>& pixels) {
    std::array<uint8_t, Dxt1BlockBytes> block{};
    const auto bytes = CompressDxt1(pixels, BlockSide, BlockSide);
    std::copy_n(bytes.begin(), block.size(), block.begin());
    return block;
}

// Where tile k of a far tile begins, in pixels from the upper left. Tiles come from the
// bottom row up, pictures from the top down.
struct Corner {
    size_t Left = 0;
    size_t Top = 0;
};
Corner CornerOf(size_t k, size_t along, size_t side) {
    return {k % along * side, (along - 1 - k / along) * side};
}

size_t AlongOf(const FartileRecord& record) {
    return static_cast<size_t>(FartileShape::TilesAlong(record.Level));
}

// The pixels of a block of a square picture; where the picture ends inside the block, its
// last pixels are repeated, so that no stray colour decides the block.
std::array<uint8_t, 64> BlockAt(const std::vector<uint8_t>& pixels, size_t side, size_t x,
                                size_t y) {
    std::array<uint8_t, 64> block{};
    for (size_t row = 0; row < BlockSide; ++row)
        for (size_t column = 0; column < BlockSide; ++column) {
            const size_t fromX = std::min(x * BlockSide + column, side - 1);
            const size_t fromY = std::min(y * BlockSide + row, side - 1);
            std::memcpy(&block[(row * BlockSide + column) * PixelBytes],
                        &pixels[(fromY * side + fromX) * PixelBytes], PixelBytes);
        }
    return block;
}

} // namespace

uint64_t KnownBlocks::BlockOf(const std::array<uint8_t, 64>& pixels) {
    Colours colours;
    for (size_t i = 0; i < 16; ++i)
        std::memcpy(&colours[i * 3], &pixels[i * PixelBytes], 3);
    const size_t hash = std::hash<std::string_view>()(
        {reinterpret_cast<const char*>(colours.data()), colours.size()});
    Shard& shard = shards_[hash % Shards];
    const size_t at = hash / Shards % PlacesOfShard;
    {
        const std::lock_guard lock(shard.Mutex);
        shard.Places.resize(PlacesOfShard);
        const Place& place = shard.Places[at];
        if (place.Used && place.Pixels == colours)
            return place.Block;
    }
    uint64_t block = 0;
    std::memcpy(&block, Compressed(pixels).data(), sizeof block);
    const std::lock_guard lock(shard.Mutex);
    shard.Places[at] = {colours, block, true};
    return block;
}

FartileDrawing::FartileDrawing(const Terrain& terrain, const FartileShape& shape,
                               const SmallTiles& tiles)
    : terrain_(terrain), shape_(shape), tiles_(tiles), black_(Compressed(BlackBlock())) {}

std::vector<uint8_t> FartileDrawing::Draw(const FartileRecord& record, DayOrNight when) {
    return shape_.InWholeBlocks(record.Level) ? OfBlocks(record, when)
                                              : OfPixels(record, when);
}

const SmallTile& FartileDrawing::TileUnder(const FartileRecord& record, size_t k,
                                           DayOrNight when) const {
    const auto posts = terrain_.LxArr.Values();
    const size_t post = static_cast<size_t>(record.Serials[k]) - 1;
    return tiles_.Of(posts[post].TileOffset).Of(when, record.Level);
}

std::vector<uint8_t> FartileDrawing::OfBlocks(const FartileRecord& record,
                                              DayOrNight when) const {
    const size_t blocks = static_cast<size_t>(shape_.FarSize()) / BlockSide;
    const size_t side =
        static_cast<size_t>(shape_.PixelsOfTile(record.Level)) / BlockSide;
    std::vector<uint8_t> bytes(shape_.LinearSize());
    if (side * AlongOf(record) < blocks)
        for (size_t at = 0; at < bytes.size(); at += Dxt1BlockBytes)
            std::copy(black_.begin(), black_.end(),
                      bytes.begin() + static_cast<std::ptrdiff_t>(at));
    for (size_t k = 0; k < record.Serials.size(); ++k) {
        const std::vector<uint8_t>& tile = TileUnder(record, k, when).Blocks;
        const Corner corner = CornerOf(k, AlongOf(record), side);
        if (corner.Left >= blocks)
            continue;
        const size_t width = std::min(side, blocks - corner.Left);
        for (size_t row = 0; row < side && corner.Top + row < blocks; ++row)
            std::memcpy(
                &bytes[((corner.Top + row) * blocks + corner.Left) * Dxt1BlockBytes],
                &tile[row * side * Dxt1BlockBytes], width * Dxt1BlockBytes);
    }
    return bytes;
}

std::vector<uint8_t> FartileDrawing::OfPixels(const FartileRecord& record,
                                              DayOrNight when) {
    const auto farSize = static_cast<size_t>(shape_.FarSize());
    const auto side = static_cast<size_t>(shape_.PixelsOfTile(record.Level));
    std::vector<uint8_t> pixels(farSize * farSize * PixelBytes);
    for (size_t i = 3; i < pixels.size(); i += PixelBytes)
        pixels[i] = 255;
    for (size_t k = 0; k < record.Serials.size(); ++k) {
        const std::vector<uint8_t>& tile = TileUnder(record, k, when).Pixels.Pixels;
        const Corner corner = CornerOf(k, AlongOf(record), side);
        if (corner.Left >= farSize)
            continue;
        const size_t width = std::min(side, farSize - corner.Left);
        for (size_t row = 0; row < side && corner.Top + row < farSize; ++row)
            std::memcpy(
                &pixels[((corner.Top + row) * farSize + corner.Left) * PixelBytes],
                &tile[row * side * PixelBytes], width * PixelBytes);
    }
    std::vector<uint8_t> bytes(shape_.LinearSize());
    const size_t blocks = (farSize + BlockSide - 1) / BlockSide;
    for (size_t i = 0; i * Dxt1BlockBytes < bytes.size(); ++i) {
        const uint64_t block =
            known_.BlockOf(BlockAt(pixels, farSize, i % blocks, i / blocks));
        std::memcpy(&bytes[i * Dxt1BlockBytes], &block,
                    std::min(Dxt1BlockBytes, bytes.size() - i * Dxt1BlockBytes));
    }
    return bytes;
}

} // namespace vardenix
