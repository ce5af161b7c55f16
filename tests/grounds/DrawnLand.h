#pragma once

#include "grounds/TileFits.h"

#include <cstdint>
#include <random>
#include <vector>

namespace vardenix::tests {

// Two grounds drawn by hand, red and blue: tile i has blue in the corners whose bits of i
// are set (1 south west, 2 south east, 4 north west, 8 north east).
inline LearnedTiles RedAndBlueTiles() {
    LearnedTiles tiles;
    for (int32_t i = 0; i < 16; ++i) {
        const auto color = [i](bool north, bool east) {
            const int corner = (north ? 2 : 0) + (east ? 1 : 0);
            return (i >> corner & 1) != 0 ? 0xFF0000FFU : 0xFFFF0000U;
        };
        Raster picture(32, 32);
        for (int32_t y = 0; y < 32; ++y)
            for (int32_t x = 0; x < 32; ++x)
                picture.Row(y)[x] = color(y < 16, x >= 16);
        tiles.Numbers.push_back(100 + i);
        tiles.Sides.push_back(SidesOf(picture.View()));
        tiles.Ways.emplace_back();
    }
    tiles.Indices.assign(116, -1);
    for (int32_t i = 0; i < 16; ++i)
        tiles.Indices[size_t{100} + static_cast<size_t>(i)] = i;
    return tiles;
}

// A map of them: corners are blue here and there.
inline LandGrid RedAndBlueMap(int32_t side, unsigned seed) {
    std::mt19937 random(seed);
    const auto width = static_cast<size_t>(side) + 1;
    std::vector<int32_t> corners(width * width);
    for (int32_t& corner : corners)
        corner = random() % 3 == 0 ? 1 : 0;
    const auto corner = [&](int32_t x, int32_t y) {
        return corners[static_cast<size_t>(y) * width + static_cast<size_t>(x)];
    };
    LandGrid map{side, side, {}};
    for (int32_t y = 0; y < side; ++y)
        for (int32_t x = 0; x < side; ++x)
            map.Tiles.push_back(corner(x, y) | corner(x + 1, y) << 1 |
                                corner(x, y + 1) << 2 | corner(x + 1, y + 1) << 3);
    return map;
}

} // namespace vardenix::tests
