#pragma once

#include "builder/FartileShape.h"
#include "platform/FileNames.h"
#include "services/SquareShrinking.h"
#include "theater/TextureBin.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace vardenix {

enum class DayOrNight : size_t { Day = 0, Night = 1 };

// A tile's picture at the size that it has in far tiles of one level: DXT1 blocks where
// the shape has whole ones, else pixels.
struct SmallTile {
    std::vector<uint8_t> Blocks;
    RgbaPicture Pixels;
};

// The pictures of one tile for all far levels, day and night.
struct SmallTilePair {
    std::array<std::array<SmallTile, FarLevels>, 2> Tiles;

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

    // The catalogue is borrowed.
    SmallTiles(const Catalogue& catalogue, const FartileShape& shape,
               size_t memoryBound = MemoryBound);

    // Tiles that may be wanted at a time within the memory bound, but no fewer than one
    // far tile can need.
    size_t TilesAtOnce() const { return tilesAtOnce_; }

    // Forgets what was made before unless there is room for these tiles beside it. They
    // are no more than TilesAtOnce.
    void MakeRoomFor(const std::set<int32_t>& tiles);
    // Makes those of the tiles that are not there yet, several at a time. Numbers are
    // below the catalogue's. Error 481 with its path for a picture that is missing or
    // cannot be read. `stop` as in ForEachInParallel, and false when it stopped.
    bool Require(const std::set<int32_t>& tiles, const std::function<bool()>& stop,
                 unsigned threads);

    // One that was required since there was last made room.
    const SmallTilePair& Of(int32_t tile) const {
        return *tiles_[static_cast<size_t>(tile)];
    }

private:
    std::vector<int32_t> MissingOf(const std::set<int32_t>& tiles) const;
    std::string PathOf(int32_t tile, DayOrNight when) const;
    std::array<SmallTile, FarLevels> Make(const std::string& path);
    std::vector<RgbaPicture> Scaled(const Bitmap& bitmap);
    std::shared_ptr<const SquareShrinker> ShrinkerFor(int32_t side);

    const Catalogue& catalogue_;
    FartileShape shape_;
    size_t tilesAtOnce_;
    FolderIndex folder_; // of the pictures, as it was at the start of the run
    std::vector<std::unique_ptr<SmallTilePair>> tiles_; // by number
    size_t kept_ = 0;
    std::mutex mutex_; // over shrinkers_
    std::map<int32_t, std::shared_ptr<const SquareShrinker>> shrinkers_; // by side
};

} // namespace vardenix
