#pragma once

#include "builder/RewrittenFile.h"
#include "levels/LevelReader.h"
#include "levels/Terrain.h"
#include "levels/TerrainStore.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// Stores the blocks of a level in the order of its O file. Blocks that say nothing share
// one copy, that of the first of them.
class LevelWriter {
public:
    // `old` is what the blocks are made from, null where the level does not exist.
    LevelWriter(RebuildFiles& files, const LevelPair& pair, const LevelReader* old);

    // The next block; `blank` when it says nothing. Error 6 when the L file would outgrow
    // the 31 bits of its offsets.
    void Store(std::span<const TerrainPost> block, bool blank);

    // All blocks are stored. What stood behind the entries of the old O file stays there.
    void Finish();

private:
    void Write(std::span<const TerrainPost> block);

    RebuildFiles& files_;
    LevelPair pair_;
    const LevelReader* old_;
    RewrittenFile fileL_;
    std::vector<int32_t> offsets_;
    int32_t sharedBlock_ = -1;
};

} // namespace vardenix
