#pragma once

#include "platform/ReadableFile.h"
#include "theater/TerrainPost.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace vardenix {

// The blocks of an L file, by their offsets. A file no larger than a level of its width
// can use is taken into memory whole; of a larger one only the blocks asked for are read,
// so that a file of gigabytes under an L file's name costs nothing.
class LevelBlocks {
public:
    // The bytes are borrowed.
    explicit LevelBlocks(std::span<const std::byte> bytes) : bytes_(bytes) {}
    LevelBlocks(ReadableFile file, int32_t width);

    // Copies what the file holds of the block at `offset` to 16 rows that lie `width`
    // posts apart, `first` being the block's first post. Nothing is read for an offset
    // outside the file, and posts that its end cuts are left alone.
    void Read(int32_t offset, TerrainPost* first, int32_t width);

    // How many of the blocks read were not there or not whole.
    int32_t Missing() const { return missing_; }

private:
    std::span<const std::byte> At(int32_t offset);

    FileBytes whole_;
    std::span<const std::byte> bytes_;
    std::optional<ReadableFile> file_; // of which blocks are read one by one
    FileBytes block_;
    int32_t missing_ = 0;
};

} // namespace vardenix
