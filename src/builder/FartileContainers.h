#pragma once

#include "builder/FartileIndex.h"
#include "builder/FartileShape.h"
#include "builder/OldFartiles.h"
#include "builder/RewrittenFile.h"
#include "files/Digest.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vardenix {

// A far tile that was drawn: the bytes in both containers with their CRC-32, and what it
// is known by.
struct DrawnFartile {
    std::array<std::vector<uint8_t>, 2> Bytes; // by day and by night
    std::array<uint32_t, 2> Sums{};
    Digest Key{};
};

// Both containers and their index while they are written. Nothing is staged as long as
// all far tiles are those of the old containers.
class FartileContainers {
public:
    // The files are borrowed, and so is `old`, which may be null.
    FartileContainers(RebuildFiles& files, const std::string& textureFolder,
                      const FartileShape& shape, const OldFartiles* old);

    // The next far tile.
    void Add(const DrawnFartile& drawn);
    // The next far tile is that of the old containers.
    void Copy(int32_t from, const Digest& key);
    // All far tiles are there; the files count among those made. Error 75 when the old
    // containers have been changed meanwhile.
    void Finish(std::vector<KnownPicture> pictures);

private:
    int32_t Count() const { return static_cast<int32_t>(index_.Keys.size()); }
    void Stage();
    void CopyWhatWaits();
    void RequireOldAsTheyWere() const;
    void WriteIndex();

    RebuildFiles& files_;
    std::array<std::string, 2> paths_;
    std::string pathOfIndex_;
    FartileShape shape_;
    const OldFartiles* old_;
    ChecksumJoiner joiner_;
    std::array<StagedFile*, 2> staged_{};
    int32_t waitsFrom_ = 0; // far tiles of the old containers that are still to be copied
    int32_t waiting_ = 0;
    FartileIndex index_;
};

} // namespace vardenix
