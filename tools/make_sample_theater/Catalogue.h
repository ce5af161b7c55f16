#pragma once

#include "make_sample_theater/Ground.h"

#include <array>
#include <compare>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vardenix::sample {

enum class Extra : uint8_t { None, Hamlet, Airfield };

// What a tile shows. Two tiles of the same look differ by their variant alone.
struct TileLook {
    Ground Low = Ground::Deep;
    Ground High = Ground::Deep; // the same as Low on a tile of one ground
    uint8_t HighCorners = 0;    // the corners with High; 0 on a tile of one ground
    uint8_t Roads = 0;          // edges that a road, river or railroad crosses
    uint8_t Rivers = 0;
    uint8_t Rails = 0;
    uint8_t EdgeStyles = 0; // of farmland: edges whose fields follow the second pattern
    Extra Special = Extra::None;

    // The check takes the 0 behind a defaulted comparison for a null pointer.
    auto operator<=>(const TileLook&) const = default; // NOLINT(modernize-use-nullptr)
};

// The look of four corners, in the order SW, SE, NW, NE. More than two grounds give the
// look of the first two, which no tile has to have.
TileLook LookOfCorners(const std::array<Ground, 4>& corners);

struct Tile {
    TileLook Look;
    uint32_t Variant = 0;
    std::string Stem; // "WATR001": the names less the letter H, M or L in front
};

struct TileSet {
    std::string Prefix;
    uint8_t Terrain = 0; // class code, 1 water to 9 urban
    std::vector<Tile> Tiles;
};

// The sets of the theater. They are the same whatever the seed of the land; tile 0 is the
// sea.
class Catalogue {
public:
    Catalogue();

    const std::vector<TileSet>& Sets() const { return sets_; }
    int TileCount() const;
    bool Has(const TileLook& look) const { return numbers_.contains(look); }
    // Tile numbers of all variants of a look; throws std::out_of_range when there is
    // none.
    const std::vector<int32_t>& NumbersOf(const TileLook& look) const {
        return numbers_.at(look);
    }

private:
    void BeginSet(const std::string& prefix, uint8_t terrain);
    void Add(TileLook look, int variants = 1);
    void AddBorders(Ground low, Ground high);
    void AddWays(Ground ground, uint8_t TileLook::*way, bool forks);
    void AddWaysAcrossBorder(Ground low, Ground high, uint8_t TileLook::*way);
    void AddWater();
    void AddLowLand();
    void AddForest();
    void AddMountains();
    void AddTowns();
    void AddTraffic();

    std::vector<TileSet> sets_;
    std::map<TileLook, std::vector<int32_t>> numbers_;
};

} // namespace vardenix::sample
