#pragma once

#include "files/BinaryReader.h"
#include "files/ReadableFile.h"
#include "levels/Terrain.h"
#include "levels/TerrainStore.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// Reads the blocks of an existing level, a row of blocks at a time, so that no more than
// one row is ever in memory however long the files are. The files stay open, and are read
// from even when others have taken their names.
class LevelReader {
public:
    // `blocks` a side. Error 53 with its name for either file that is not there; 62 for
    // an O file with fewer entries than the level has blocks, 7 for one beyond any
    // theater; the system's refusals.
    LevelReader(const LevelPair& pair, int32_t blocks);

    // The files that are read.
    const FileIdentity& IdentityL() const { return fileL_.Identity(); }
    const FileIdentity& IdentityO() const { return fileO_.Identity(); }

    // Offsets in the order of the O file, those of the level's blocks alone.
    std::span<const int32_t> Offsets() const { return offsets_; }
    // What stands behind these entries in the O file.
    std::span<const std::byte> BehindEntries() const;

    // The blocks of row y, from 0, one behind the other: PostsPerSegment posts each, in
    // the order of the file. `row` holds blocks * PostsPerSegment. Posts that the L file
    // does not hold are zero, and so is a block with a negative offset.
    void ReadRow(int32_t y, std::span<TerrainPost> row);
    // The same for the one block at an offset.
    void ReadBlock(int32_t offset, std::span<TerrainPost> block) {
        ReadBlocks(offset, std::as_writable_bytes(block));
    }

private:
    void ReadBlocks(int32_t offset, std::span<std::byte> bytes);

    ReadableFile fileL_;
    ReadableFile fileO_;
    int32_t blocks_;
    FileBytes bytesO_;
    std::vector<int32_t> offsets_;
};

} // namespace vardenix
