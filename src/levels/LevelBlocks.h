#pragma once

#include "files/ReadableFile.h"
#include "levels/TerrainPost.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// The offsets of a level `segments` segments a side, from the bytes of its O file, in the
// order of the file. Error 62 when it has too few entries.
std::vector<int32_t> ReadOffsets(std::span<const std::byte> fileO, int32_t segments,
                                 const std::string& pathO);

// The blocks of an L file, by their offsets. Of a file larger than a level of its width
// can use only the blocks asked for are read, so that a file of gigabytes under an L
// file's name costs nothing.
class LevelBlocks {
public:
    // The bytes are borrowed.
    explicit LevelBlocks(std::span<const std::byte> bytes) : bytes_(bytes) {}
    LevelBlocks(ReadableFile file, int32_t width);

    // Copies what the file holds of the block at `offset` to 16 rows that lie `width`
    // posts apart, `first` being the block's first post. Nothing is read for an offset
    // outside the file, and posts that its end cuts are left alone. Whoever asks for one
    // block after the other has the file taken into memory whole.
    void Read(int32_t offset, TerrainPost* first, int32_t width);

    // Calls take(i, bytes) once for each of the offsets, with what the file holds of its
    // block; in the order of the file, which is read through one buffer of a mebibyte.
    void ReadEach(std::span<const int32_t> offsets,
                  const std::function<void(size_t, std::span<const std::byte>)>& take);

    // How many of the blocks read were not there or not whole.
    int32_t Missing() const { return missing_; }

private:
    std::span<const std::byte> At(int32_t offset);
    void ReadThroughWindows(
        std::span<const int32_t> offsets,
        const std::function<void(size_t, std::span<const std::byte>)>& take);

    std::span<const std::byte> bytes_;
    std::optional<ReadableFile> file_;
    bool reasonable_ = false; // the file's size, for its width
    FileBytes whole_;
    FileBytes block_;
    int32_t missing_ = 0;
};

// Copies the whole posts among the bytes of a block as LevelBlocks::Read does.
void CopyBlock(std::span<const std::byte> block, TerrainPost* first, int32_t width);

} // namespace vardenix
