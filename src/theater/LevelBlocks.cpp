#include "theater/LevelBlocks.h"

#include "theater/Terrain.h"

#include <algorithm>
#include <cstring>

namespace vardenix {

namespace {

constexpr size_t RowBytes = SegmentSide * sizeof(TerrainPost);
// What other programs leave between the blocks is read along.
constexpr uint64_t Gaps = uint64_t{1} << 20;

uint64_t LargestUse(int32_t width) {
    const auto segments = static_cast<uint64_t>(width / SegmentSide);
    return segments * segments * BlockBytes + Gaps;
}

} // namespace

LevelBlocks::LevelBlocks(ReadableFile file, int32_t width) {
    if (file.Size() <= LargestUse(width)) {
        whole_ = file.ReadAll();
        bytes_ = whole_.Span();
    } else {
        block_ = FileBytes(BlockBytes);
        file_ = std::move(file);
    }
}

std::span<const std::byte> LevelBlocks::At(int32_t offset) {
    if (offset < 0)
        return {};
    const auto from = static_cast<size_t>(offset);
    if (file_) {
        const size_t got = file_->ReadAt(from, {block_.data(), block_.size()});
        return block_.Span().first(got);
    }
    if (from >= bytes_.size())
        return {};
    return bytes_.subspan(from, std::min(bytes_.size() - from, size_t{BlockBytes}));
}

void LevelBlocks::Read(int32_t offset, TerrainPost* first, int32_t width) {
    const auto block = At(offset);
    missing_ += block.size() < BlockBytes ? 1 : 0;
    const size_t wholeBytes = block.size() - block.size() % sizeof(TerrainPost);
    for (size_t row = 0; row * RowBytes < wholeBytes; ++row)
        std::memcpy(first + row * static_cast<size_t>(width), &block[row * RowBytes],
                    std::min(RowBytes, wholeBytes - row * RowBytes));
}

} // namespace vardenix
