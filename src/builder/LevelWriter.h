#pragma once

#include "builder/RewrittenFile.h"
#include "theater/Terrain.h"
#include "theater/TerrainStore.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// Stores the blocks of a level in the order of its O file. Blocks that say nothing share
// one copy, that of the first of them.
class LevelWriter {
public:
    LevelWriter(RebuildFiles& files, const LevelPair& pair);

    // The next block; `blank` when it says nothing. Error 6 when the L file would outgrow
    // the 31 bits of its offsets.
    void Store(std::span<const TerrainPost> block, bool blank);

    // All blocks are stored. `behind` is kept behind the entries of the O file.
    void Finish(std::span<const std::byte> behind);

private:
    void Write(std::span<const TerrainPost> block);

    RebuildFiles& files_;
    LevelPair pair_;
    RewrittenFile fileL_;
    std::vector<int32_t> offsets_;
    int32_t sharedBlock_ = -1;
};

} // namespace vardenix
