#pragma once

#include "files/ReadableFile.h"
#include "levels/LevelPairs.h"
#include "levels/Terrain.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// The blocks of a level by the offsets of its O file: all of them, row by row, or one
// post. Posts that the L file does not hold whole are zero, and so is a block whose
// offset is negative. Nothing but the offsets stays in memory, however long the files
// are. The files stay open, and are read from even when others have taken their names.
class LevelReader {
public:
    // Of a level `blocks` blocks a side. Error 62 for an O file with fewer entries than
    // that needs, 7 for one longer than that of any theater; the system's refusals.
    LevelReader(ReadableFile fileL, ReadableFile fileO, int32_t blocks);
    // Error 53 too, with its name for either file that is not there.
    LevelReader(const LevelPair& pair, int32_t blocks);

    const FileIdentity& IdentityL() const { return fileL_.Identity(); }
    const FileIdentity& IdentityO() const { return fileO_.Identity(); }

    // In the order of the O file, those of the level's blocks alone.
    std::span<const int32_t> Offsets() const { return offsets_; }
    // How many bytes stand behind these entries in the O file, and the bytes.
    uint64_t LengthBehindEntries() const;
    FileBytes BehindEntries() const;
    // How many of the level's blocks the L file does not hold, or not whole.
    int64_t Missing() const;

    // Calls take(place, bytes) once for each block, with its place in Offsets and what
    // the file holds of it. The blocks come in the order of the L file, which is read
    // through one buffer of a mebibyte; of a file larger than such a level can use, the
    // blocks alone are read, so that a file of gigabytes under an L file's name costs
    // nothing.
    void
    ReadEach(const std::function<void(size_t, std::span<const std::byte>)>& take) const;
    // The blocks of row y, from 0, one behind the other: PostsPerSegment posts each, in
    // the order of the file. `row` holds blocks * PostsPerSegment.
    void ReadRow(int32_t y, std::span<TerrainPost> row) const;
    // PostsPerSegment posts from an offset on.
    void ReadBlock(int32_t offset, std::span<TerrainPost> block) const;
    // The post (x, y), each from 1; zero beyond the last whole block.
    TerrainPost PostAt(int32_t x, int32_t y) const;

private:
    void ReadBlocks(int32_t offset, std::span<std::byte> bytes) const;
    void ReadThroughWindows(
        const std::function<void(size_t, std::span<const std::byte>)>& take) const;

    ReadableFile fileL_;
    ReadableFile fileO_;
    int32_t blocks_;
    std::vector<int32_t> offsets_;
};

// Error 62 when an O file has fewer entries than a level `blocks` blocks a side has; 7
// for one longer than that of any theater.
void RequireOffsets(const ReadableFile& fileO, int32_t blocks);

// The post (x, y), from 1 and inside the whole blocks of a level `blocks` blocks a side:
// no more than its own bytes and its block's offset are read. The O file has its entries.
TerrainPost LookUpPost(const ReadableFile& fileL, const ReadableFile& fileO,
                       int32_t blocks, int32_t x, int32_t y);

// Copies the whole posts among a block's bytes to 16 rows that lie `width` posts apart,
// `first` being the block's first post. Posts that are not among the bytes are left
// alone.
void CopyBlock(std::span<const std::byte> block, TerrainPost* first, int32_t width);

} // namespace vardenix
