#include "levels/LevelReader.h"

#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace vardenix {

namespace {

constexpr size_t RowBytes = SegmentSide * sizeof(TerrainPost);
// Four times the O file of the widest level 0.
constexpr uint64_t LongestOffsetFile = uint64_t{256} << 20;
// What other programs leave between the blocks is read along.
constexpr uint64_t Gaps = uint64_t{1} << 20;
// Large enough that the system reads in large pieces, small enough for the processor's
// second cache.
constexpr uint64_t WindowBytes = uint64_t{1} << 20;

size_t Squared(int32_t blocks) {
    return static_cast<size_t>(blocks) * static_cast<size_t>(blocks);
}

std::vector<int32_t> ReadOffsets(const ReadableFile& fileO, int32_t blocks) {
    RequireOffsets(fileO, blocks);
    std::vector<int32_t> offsets(Squared(blocks));
    fileO.ReadMeasured(0, std::as_writable_bytes(std::span(offsets)));
    return offsets;
}

// Where the block of a post, from 1, stands among the offsets.
size_t PlaceOfBlock(int32_t blocks, int32_t x, int32_t y) {
    return static_cast<size_t>((y - 1) / SegmentSide) * static_cast<size_t>(blocks) +
           static_cast<size_t>((x - 1) / SegmentSide);
}

TerrainPost PostOfBlock(const ReadableFile& fileL, int32_t offset, int32_t x, int32_t y) {
    if (offset < 0)
        return {};
    const int32_t place = (y - 1) % SegmentSide * SegmentSide + (x - 1) % SegmentSide;
    return ValueAt<TerrainPost>(fileL,
                                static_cast<uint64_t>(offset) +
                                    static_cast<uint64_t>(place) * sizeof(TerrainPost));
}

// The part of `bytes` that belongs to a block beginning `from` bytes behind their first.
std::span<const std::byte> BlockIn(std::span<const std::byte> bytes, size_t from) {
    if (from >= bytes.size())
        return {};
    return bytes.subspan(from, std::min(bytes.size() - from, size_t{BlockBytes}));
}

// Places of offsets, grouped by the window of the file that they begin in; those outside
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

LevelReader::LevelReader(ReadableFile fileL, ReadableFile fileO, int32_t blocks)
    : fileL_(std::move(fileL)), fileO_(std::move(fileO)), blocks_(blocks),
      offsets_(ReadOffsets(fileO_, blocks)) {}

LevelReader::LevelReader(const LevelPair& pair, int32_t blocks)
    : fileL_(pair.L), fileO_(pair.O), blocks_(blocks),
      offsets_(ReadOffsets(fileO_, blocks)) {}

uint64_t LevelReader::LengthBehindEntries() const {
    return fileO_.Size() - offsets_.size() * sizeof(int32_t);
}

FileBytes LevelReader::BehindEntries() const {
    FileBytes bytes(static_cast<size_t>(LengthBehindEntries()));
    fileO_.ReadMeasured(offsets_.size() * sizeof(int32_t), {bytes.data(), bytes.size()});
    return bytes;
}

int64_t LevelReader::Missing() const {
    return std::ranges::count_if(offsets_, [this](int32_t offset) {
        return offset < 0 || static_cast<uint64_t>(offset) + BlockBytes > fileL_.Size();
    });
}

void LevelReader::ReadEach(
    const std::function<void(size_t, std::span<const std::byte>)>& take) const {
    if (fileL_.Size() <= offsets_.size() * BlockBytes + Gaps)
        return ReadThroughWindows(take);
    std::array<std::byte, BlockBytes> block{};
    for (size_t i = 0; i < offsets_.size(); ++i) {
        const size_t got = offsets_[i] < 0
                               ? 0
                               : fileL_.ReadAt(static_cast<uint64_t>(offsets_[i]), block);
        take(i, std::span(block).first(got));
    }
}

// A window reaches one block beyond its end, so every block lies whole in the window that
// it begins in.
void LevelReader::ReadThroughWindows(
    const std::function<void(size_t, std::span<const std::byte>)>& take) const {
    const uint64_t size = fileL_.Size();
    const Grouped grouped = GroupByWindow(offsets_, size);
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
        fileL_.ReadMeasured(begin, {buffer.data(), length});
        for (const uint32_t i : membersOf(window))
            take(i, BlockIn(buffer.Span().first(length),
                            static_cast<size_t>(offsets_[i]) - begin));
    }
    for (const uint32_t i : membersOf(windows))
        take(i, {});
}

// Blocks that follow one another in the file are read in one go, and those of a row that
// share one are copied: both are the rule in files that this program has written. A block
// before the file's beginning is followed by none.
void LevelReader::ReadRow(int32_t y, std::span<TerrainPost> row) const {
    const auto blocks = static_cast<size_t>(blocks_);
    const std::span<const int32_t> offsets =
        Offsets().subspan(static_cast<size_t>(y) * blocks, blocks);
    const auto bytes = std::as_writable_bytes(row);
    for (size_t x = 0; x < blocks;) {
        size_t next = x + 1;
        while (next < blocks && offsets[next - 1] >= 0 &&
               int64_t{offsets[next]} == int64_t{offsets[next - 1]} + BlockBytes)
            ++next;
        ReadBlocks(offsets[x], bytes.subspan(x * BlockBytes, (next - x) * BlockBytes));
        for (const size_t read = next - 1;
             next < blocks && offsets[next] == offsets[read]; ++next)
            std::copy_n(row.begin() + static_cast<std::ptrdiff_t>(read * PostsPerSegment),
                        PostsPerSegment,
                        row.begin() +
                            static_cast<std::ptrdiff_t>(next * PostsPerSegment));
        x = next;
    }
}

void LevelReader::ReadBlock(int32_t offset, std::span<TerrainPost> block) const {
    ReadBlocks(offset, std::as_writable_bytes(block));
}

TerrainPost LevelReader::PostAt(int32_t x, int32_t y) const {
    if (std::max(x, y) > blocks_ * SegmentSide)
        return {};
    return PostOfBlock(fileL_, offsets_[PlaceOfBlock(blocks_, x, y)], x, y);
}

void LevelReader::ReadBlocks(int32_t offset, std::span<std::byte> bytes) const {
    size_t got = 0;
    if (offset >= 0)
        got = fileL_.ReadAt(static_cast<uint64_t>(offset), bytes);
    // A post that the end of the file cuts counts as missing.
    got -= got % sizeof(TerrainPost);
    std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(got), bytes.end(),
              std::byte{0});
}

void RequireOffsets(const ReadableFile& fileO, int32_t blocks) {
    if (fileO.Size() > LongestOffsetFile)
        throw RuntimeError(ErrorNumber::OutOfMemory,
                           fileO.Path() + ": " + std::to_string(fileO.Size()) +
                               " bytes are more than the O file of any theater has");
    const uint64_t entries = fileO.Size() / sizeof(int32_t);
    if (entries < Squared(blocks))
        throw RuntimeError(
            ErrorNumber::InputPastEnd,
            fileO.Path() + ", offset " + std::to_string(entries * sizeof(int32_t)) +
                ": expected 4 bytes, found " +
                std::to_string(fileO.Size() % sizeof(int32_t)) + " bytes left");
}

TerrainPost LookUpPost(const ReadableFile& fileL, const ReadableFile& fileO,
                       int32_t blocks, int32_t x, int32_t y) {
    const auto offset =
        ValueAt<int32_t>(fileO, PlaceOfBlock(blocks, x, y) * sizeof(int32_t));
    return PostOfBlock(fileL, offset, x, y);
}

void CopyBlock(std::span<const std::byte> block, TerrainPost* first, int32_t width) {
    const size_t wholeBytes = block.size() - block.size() % sizeof(TerrainPost);
    for (size_t row = 0; row * RowBytes < wholeBytes; ++row)
        std::memcpy(first + row * static_cast<size_t>(width), &block[row * RowBytes],
                    std::min(RowBytes, wholeBytes - row * RowBytes));
}

} // namespace vardenix
