#pragma once

#include "catalogue/TextureBin.h"
#include "levels/Terrain.h"

#include <array>
#include <cstdint>
#include <vector>

namespace vardenix {

// Posts by what their tile is: a class code of the catalogue, a set from 1, a tile
// number. Codes and sets that no post has are there too, unless the catalogue has none.
struct CountedPosts {
    int32_t Which = 0;
    int64_t Posts = 0;

    bool operator==(const CountedPosts&) const = default;
};

// Posts from From to From + the step of the histogram - 1 feet.
struct HeightBar {
    int32_t From = 0;
    int64_t Posts = 0;

    bool operator==(const HeightBar&) const = default;
};

// What a terrain is made of. Posts whose number has no tile are of no class and no set.
struct Statistics {
    int64_t Posts = 0;
    std::vector<CountedPosts> Kinds;   // by class code, rising
    std::vector<CountedPosts> Sets;    // all, rising
    std::vector<CountedPosts> Tiles;   // those that are used, most first, then rising
    std::vector<int32_t> UnusedTiles;  // rising
    std::vector<CountedPosts> Unknown; // numbers without a tile that posts have, rising
    std::vector<int32_t> NoPicture;    // tiles whose day picture is missing, rising
    int64_t SeaPosts = 0;              // water at 0 feet or below
    int16_t Lowest = 0;                // feet
    int16_t Highest = 0;
    double MeanHeight = 0;
    int32_t BarStep = 0;            // feet, at least 1
    std::vector<HeightBar> Heights; // from Lowest to Highest, gaps included

    bool operator==(const Statistics&) const = default;
};

// Of an empty terrain all is 0 but what the catalogue tells. Error 7 when memory lacks.
Statistics StatisticsOf(const Terrain& terrain, const TileLookup& lookup);

// The round step, 1, 2 or 5 and zeros, with which a span of feet takes at most 40 bars
// that begin at multiples of it.
int32_t BarStepFor(int32_t lowest, int32_t highest);

// A post covers a square of 3280.84 feet a side, which is one kilometer.
constexpr int64_t SquareKilometersOf(int64_t posts) { return posts; }

} // namespace vardenix
