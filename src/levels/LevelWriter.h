#pragma once

#include "files/ByteSink.h"
#include "levels/TerrainPost.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// Stores the blocks of a level in the order of its O file. Blocks that say nothing share
// one copy, that of the first of them.
class LevelWriter {
public:
    // The L file is borrowed; `pathL` names it in errors.
    LevelWriter(ByteSink& fileL, std::string pathL);

    // The next block, PostsPerSegment posts; `blank` when it says nothing. Error 6 when
    // the L file would outgrow the 31 bits of its offsets.
    void Store(std::span<const TerrainPost> block, bool blank);

    // The O file's entries, once all blocks are stored.
    void WriteOffsets(ByteSink& fileO) const;

private:
    ByteSink& fileL_;
    std::string pathL_;
    std::vector<int32_t> offsets_;
    int32_t sharedBlock_ = -1;
};

} // namespace vardenix
