#pragma once

#include "builder/FartileShape.h"
#include "builder/TileFiles.h"
#include "pictures/fast/SquareShrinking.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace vardenix {

// A tile's picture at the size that it has in far tiles of one level: DXT1 blocks where
// the shape has whole ones, else pixels.
struct SmallTile {
    std::vector<uint8_t> Blocks;
    RgbaPicture Pixels;
};

// The pictures of one tile for all far levels, day and night, and what they were made of.
struct SmallTilePair {
    std::array<std::array<SmallTile, FarLevels>, 2> Tiles;
    TileDigests Digests;

    const SmallTile& Of(DayOrNight when, int32_t level) const {
        return Tiles[static_cast<size_t>(when)][FarLevelIndex(level)];
    }
};

// Tile pictures, decoded once and kept at the sizes of far tiles: never the decoded
// pictures themselves.
class SmallTiles {
public:
    // Bytes that may be kept at a time.
    static constexpr size_t MemoryBound = size_t{256} << 20;

    // The files are borrowed.
    SmallTiles(TileFiles& files, const FartileShape& shape,
               size_t memoryBound = MemoryBound);

    // Tiles that may be wanted at a time within the memory bound, but no fewer than one
    // far tile can need.
    size_t TilesAtOnce() const { return tilesAtOnce_; }

    // Forgets what was made before unless there is room for these tiles beside it. They
    // are no more than TilesAtOnce, each once.
    void MakeRoomFor(const std::vector<int32_t>& tiles);
    // Makes those of the tiles that are not there yet, several at a time. Numbers are
    // below the catalogue's. Error 481 with its path for a picture that is missing or
    // cannot be read. `stop` as in ForEachInParallel, and false when it stopped.
    bool Require(const std::vector<int32_t>& tiles, const std::function<bool()>& stop,
                 unsigned threads);

    // One that was required since there was last made room.
    const SmallTilePair& Of(int32_t tile) const {
        return *tiles_[static_cast<size_t>(tile)];
    }

private:
    std::vector<int32_t> MissingOf(const std::vector<int32_t>& tiles) const;
    std::array<SmallTile, FarLevels> Make(PictureFile file);
    std::vector<RgbaPicture> Scaled(const Bitmap& bitmap);
    std::shared_ptr<const SquareShrinker> ShrinkerFor(int32_t side);

    TileFiles& files_;
    FartileShape shape_;
    size_t tilesAtOnce_;
    std::vector<std::unique_ptr<SmallTilePair>> tiles_; // by number
    size_t kept_ = 0;
    std::mutex mutex_; // over shrinkers_
    std::map<int32_t, std::shared_ptr<const SquareShrinker>> shrinkers_; // by side
};

} // namespace vardenix
