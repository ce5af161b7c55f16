#pragma once

#include "files/ReadableFile.h"
#include "levels/Terrain.h"
#include "levels/TerrainStore.h"
#include "platform/DebugLog.h"

#include <cstdint>
#include <span>
#include <vector>

namespace vardenix {

// Single posts of a level, read where they lie in its files. X and Y count from 1 and lie
// inside whole segments of a level `segments` segments a side.

// Error 62 when an O file has too few entries.
void RequireOffsets(const ReadableFile& fileO, int32_t segments);
// The offset of the block of a post.
int32_t OffsetAt(const ReadableFile& fileO, int32_t segments, int32_t x, int32_t y);
// A post of the block at `offset`; zero where the file does not hold all of it.
TerrainPost PostAt(const ReadableFile& fileL, int32_t offset, int32_t x, int32_t y);

// A value at an offset of a file; zero where the file does not hold all of it.
template <typename Value>
Value ValueAt(const ReadableFile& file, uint64_t offset) {
    Value value{};
    const auto bytes = std::as_writable_bytes(std::span(&value, 1));
    return file.ReadAt(offset, bytes) == bytes.size() ? value : Value{};
}

// Level 2 for whoever wants single posts of it: finds and checks what LoadLFile does but
// reads the O file alone, and what it leaves in the terrain is the same but for LxArr.
class Level2Lookup {
public:
    // Errors as of LoadLFile, which the O file alone can cause.
    Level2Lookup(Terrain& terrain, DebugLog& log);

    // The post (x, y), each 1 to MapWidth, as it would stand in LxArr.
    TerrainPost At(int32_t x, int32_t y) const;

private:
    Level2Lookup(Terrain& terrain, Level2Files files);

    ReadableFile fileL_;
    std::vector<int32_t> offsets_;
    int32_t segments_;
};

} // namespace vardenix
