#pragma once

#include "builder/Fartiles.h"
#include "builder/SmallTiles.h"
#include "levels/Terrain.h"

#include <array>
#include <cstdint>
#include <mutex>
#include <vector>

namespace vardenix {

// Blocks that were compressed before, by their pixels: compressing one takes a hundred
// times as long as finding it. Used by several threads at once.
class KnownBlocks {
public:
    // The 8 bytes of a block of 16 opaque pixels of 4 bytes.
    uint64_t BlockOf(const std::array<uint8_t, 64>& pixels);

private:
    // Red, green and blue of the pixels; all are opaque.
    using Colours = std::array<uint8_t, 48>;
    // A line of the processor's cache: a look costs one way to the memory. A block goes
    // when another one wants its place.
    struct alignas(64) Place {
        Colours Pixels{};
        uint64_t Block = 0;
        bool Used = false;
    };
    // All shards in use take 128 MB.
    static constexpr size_t Shards = 64;
    static constexpr size_t PlacesOfShard = 32768;
    struct Shard {
        std::mutex Mutex;
        std::vector<Place> Places; // none until it is used
    };
    std::array<Shard, Shards> shards_;
};

// Draws far tiles out of small tiles, as the DXT1 bytes that a container holds. Used by
// several threads at once.
class FartileDrawing {
public:
    // Terrain and tiles are borrowed; the tiles of a far tile are there when it is drawn.
    FartileDrawing(const Terrain& terrain, const FartileShape& shape,
                   const SmallTiles& tiles);

    // LinearSize bytes. What no tile covers is black.
    std::vector<uint8_t> Draw(const FartileRecord& record, DayOrNight when);

private:
    std::vector<uint8_t> OfBlocks(const FartileRecord& record, DayOrNight when) const;
    std::vector<uint8_t> OfPixels(const FartileRecord& record, DayOrNight when);
    const SmallTile& TileUnder(const FartileRecord& record, size_t k,
                               DayOrNight when) const;

    const Terrain& terrain_;
    FartileShape shape_;
    const SmallTiles& tiles_;
    KnownBlocks known_;
    std::array<uint8_t, Dxt1BlockBytes> black_{};
};

} // namespace vardenix
