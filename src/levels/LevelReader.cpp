#include "levels/LevelReader.h"

#include "files/FileNames.h"
#include "texts/RuntimeError.h"

#include <algorithm>

namespace vardenix {

namespace {

// Four times the O file of the widest level 0.
constexpr uint64_t LongestOffsetFile = uint64_t{256} << 20;

FileBytes ReadOffsets(const ReadableFile& file) {
    if (file.Size() > LongestOffsetFile)
        throw RuntimeError(ErrorNumber::OutOfMemory,
                           file.Path() + ": " + std::to_string(file.Size()) +
                               " bytes are more than the O file of any theater has");
    return file.ReadAll();
}

} // namespace

LevelReader::LevelReader(const LevelPair& pair, int32_t blocks)
    : fileL_(pair.L), fileO_(pair.O), blocks_(blocks), bytesO_(ReadOffsets(fileO_)) {
    const size_t entries = static_cast<size_t>(blocks) * static_cast<size_t>(blocks);
    BinaryReader reader(bytesO_.Span(), pair.O);
    const auto bytes = reader.Bytes(entries * sizeof(int32_t));
    offsets_.resize(entries);
    std::ranges::copy(bytes, std::as_writable_bytes(std::span(offsets_)).begin());
}

std::span<const std::byte> LevelReader::BehindEntries() const {
    return bytesO_.Span().subspan(offsets_.size() * sizeof(int32_t));
}

// Blocks that follow one another in the file are read in one go, and those of a row that
// share one are copied: both are the rule in files that this program has written. A block
// before the file's beginning is followed by none.
void LevelReader::ReadRow(int32_t y, std::span<TerrainPost> row) {
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

void LevelReader::ReadBlocks(int32_t offset, std::span<std::byte> bytes) {
    size_t got = 0;
    if (offset >= 0)
        got = fileL_.ReadAt(static_cast<uint64_t>(offset), bytes);
    // A post that the end of the file cuts counts as missing.
    got -= got % sizeof(TerrainPost);
    std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(got), bytes.end(),
              std::byte{0});
}

} // namespace vardenix
