#include "levels/LevelBlocks.h"

#include "files/BinaryReader.h"
#include "levels/Terrain.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace vardenix {

namespace {

constexpr size_t RowBytes = SegmentSide * sizeof(TerrainPost);
// What other programs leave between the blocks is read along.
constexpr uint64_t Gaps = uint64_t{1} << 20;
// Large enough that the system reads in large pieces, small enough for the processor's
// second cache.
constexpr uint64_t WindowBytes = uint64_t{1} << 20;

uint64_t LargestUse(int32_t width) {
    const auto segments = static_cast<uint64_t>(width / SegmentSide);
    return segments * segments * BlockBytes + Gaps;
}

// The part of `bytes` that belongs to a block beginning `from` bytes behind their first.
std::span<const std::byte> BlockIn(std::span<const std::byte> bytes, size_t from) {
    if (from >= bytes.size())
        return {};
    return bytes.subspan(from, std::min(bytes.size() - from, size_t{BlockBytes}));
}

// Numbers of offsets, grouped by the window of the file that they begin in; those outside
// the file are a last group.
struct Grouped {
    std::vector<uint32_t> Order;
    std::vector<uint32_t> Begins; // of each group in Order, and the end of the last
};

Grouped GroupByWindow(std::span<const int32_t> offsets, uint64_t fileSize) {
    const auto windows = static_cast<size_t>((fileSize + WindowBytes - 1) / WindowBytes);
    const auto groupOf = [&](int32_t offset) {
        const bool inside = offset >= 0 && static_cast<uint64_t>(offset) < fileSize;
        return inside ? static_cast<size_t>(offset) / WindowBytes : windows;
    };
    Grouped grouped{std::vector<uint32_t>(offsets.size()),
                    std::vector<uint32_t>(windows + 2)};
    for (const int32_t offset : offsets)
        ++grouped.Begins[groupOf(offset) + 1];
    for (size_t group = 1; group < grouped.Begins.size(); ++group)
        grouped.Begins[group] += grouped.Begins[group - 1];
    std::vector<uint32_t> next = grouped.Begins;
    for (size_t i = 0; i < offsets.size(); ++i)
        grouped.Order[next[groupOf(offsets[i])]++] = static_cast<uint32_t>(i);
    return grouped;
}

} // namespace

std::vector<int32_t> ReadOffsets(std::span<const std::byte> fileO, int32_t segments,
                                 const std::string& pathO) {
    const auto count = static_cast<size_t>(segments) * static_cast<size_t>(segments);
    BinaryReader reader(fileO, pathO);
    std::vector<int32_t> offsets;
    offsets.reserve(std::min(count, fileO.size() / sizeof(int32_t)));
    while (offsets.size() < count)
        offsets.push_back(reader.Int32());
    return offsets;
}

LevelBlocks::LevelBlocks(ReadableFile file, int32_t width)
    : file_(std::move(file)), reasonable_(file_->Size() <= LargestUse(width)) {}

std::span<const std::byte> LevelBlocks::At(int32_t offset) {
    if (offset < 0)
        return {};
    const auto from = static_cast<size_t>(offset);
    if (file_ && reasonable_) {
        whole_ = file_->ReadAll();
        bytes_ = whole_.Span();
        file_.reset();
    }
    if (!file_)
        return BlockIn(bytes_, from);
    if (block_.size() == 0)
        block_ = FileBytes(BlockBytes);
    return block_.Span().first(file_->ReadAt(from, {block_.data(), block_.size()}));
}

void LevelBlocks::Read(int32_t offset, TerrainPost* first, int32_t width) {
    const auto block = At(offset);
    missing_ += block.size() < BlockBytes ? 1 : 0;
    CopyBlock(block, first, width);
}

void LevelBlocks::ReadEach(
    std::span<const int32_t> offsets,
    const std::function<void(size_t, std::span<const std::byte>)>& take) {
    const auto counted = [&](size_t i, std::span<const std::byte> block) {
        missing_ += block.size() < BlockBytes ? 1 : 0;
        take(i, block);
    };
    if (file_ && reasonable_)
        return ReadThroughWindows(offsets, counted);
    for (size_t i = 0; i < offsets.size(); ++i)
        counted(i, At(offsets[i]));
}

// A window reaches one block beyond its end, so every block lies whole in the window that
// it begins in.
void LevelBlocks::ReadThroughWindows(
    std::span<const int32_t> offsets,
    const std::function<void(size_t, std::span<const std::byte>)>& take) {
    const uint64_t size = file_->Size();
    const Grouped grouped = GroupByWindow(offsets, size);
    const auto membersOf = [&](size_t group) {
        return std::span(grouped.Order)
            .subspan(grouped.Begins[group],
                     grouped.Begins[group + 1] - grouped.Begins[group]);
    };
    const size_t windows = grouped.Begins.size() - 2;
    FileBytes buffer(std::min<uint64_t>(size, WindowBytes + BlockBytes));
    for (size_t window = 0; window < windows; ++window) {
        if (membersOf(window).empty())
            continue;
        const uint64_t begin = window * WindowBytes;
        const size_t length = std::min<uint64_t>(size - begin, buffer.size());
        file_->ReadMeasured(begin, {buffer.data(), length});
        for (const uint32_t i : membersOf(window))
            take(i, BlockIn(buffer.Span().first(length),
                            static_cast<size_t>(offsets[i]) - begin));
    }
    for (const uint32_t i : membersOf(windows))
        take(i, {});
}

void CopyBlock(std::span<const std::byte> block, TerrainPost* first, int32_t width) {
    const size_t wholeBytes = block.size() - block.size() % sizeof(TerrainPost);
    for (size_t row = 0; row * RowBytes < wholeBytes; ++row)
        std::memcpy(first + row * static_cast<size_t>(width), &block[row * RowBytes],
                    std::min(RowBytes, wholeBytes - row * RowBytes));
}

} // namespace vardenix
