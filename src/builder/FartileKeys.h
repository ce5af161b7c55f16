#pragma once

#include "builder/FartileShape.h"
#include "builder/SmallTiles.h"
#include "builder/TileFiles.h"
#include "files/Digest.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace vardenix {

// What far tiles are known by: two with the same key have the same bytes by day and by
// night. In the key are the level, the pictures that lie under the far tile, each in its
// place, and all else that decides about the bytes: the size, and how this program and
// its libraries make them.
class FartileKeys {
public:
    explicit FartileKeys(const FartileShape& shape);

    // `pictures` in the order of the record's serials.
    Digest KeyOf(int32_t level, std::span<const TileDigests> pictures) const;

private:
    Digest making_;
};

// The digests of tile pictures, each asked for once a run. Pictures that are not known
// are read as a run of all far tiles reads them, and never only to be known.
class PictureDigests {
public:
    // Borrowed.
    PictureDigests(TileFiles& files, SmallTiles& tiles);

    // Asks for those of the tiles that were not asked for yet. Errors and `stop` as
    // SmallTiles::Require.
    bool Require(const std::vector<int32_t>& tiles, const std::function<bool()>& stop,
                 unsigned threads);
    // Of one that was required.
    const TileDigests& Of(int32_t tile) const {
        return *digests_[static_cast<size_t>(tile)];
    }

private:
    bool Recall(int32_t tile);

    TileFiles& files_;
    SmallTiles& tiles_;
    std::vector<std::optional<TileDigests>> digests_; // by number
};

} // namespace vardenix
