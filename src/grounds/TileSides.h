#pragma once

#include "catalogue/TextureBin.h"
#include "pictures/Raster.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vardenix {

// Sides and corners of a tile and of a post.
enum Side : uint8_t { North, East, South, West };
enum Corner : uint8_t { SouthWest, SouthEast, NorthWest, NorthEast };
constexpr size_t SideCount = 4;
constexpr size_t CornerCount = 4;

// The outermost pixels along one side as means of red, green and blue: from the west to
// the east, or from the south to the north, so that two sides that meet are compared
// element by element.
constexpr size_t SideSamples = 16;
using SideColors = std::array<std::array<uint8_t, 3>, SideSamples>;

struct TileSides {
    bool Known = false; // there is a picture
    std::array<SideColors, SideCount> Colors{};
};

// Of a picture of at least one pixel.
TileSides SidesOf(const RasterView& picture);
// Of a picture file; none known for one that is not there or cannot be read.
TileSides SidesOfFile(std::string_view path);

// Root of the mean square of the differences, 0 to 255.
float DifferenceOf(const SideColors& a, const SideColors& b);

// Which sides ways lead over, a bit (1 << side) each.
struct TileWays {
    uint8_t Rivers = 0;
    uint8_t Roads = 0; // bridges too
    uint8_t Rails = 0;

    bool operator==(const TileWays&) const = default;
    bool None() const { return Rivers == 0 && Roads == 0 && Rails == 0; }
    // Bits 0 to 2: a river, a road, a railroad leads over that side.
    uint8_t Over(Side side) const {
        return static_cast<uint8_t>((Rivers >> side & 1) | (Roads >> side & 1) << 1 |
                                    (Rails >> side & 1) << 2);
    }
};

// By the ends of its paths, which lie at a side or just inside.
TileWays WaysOf(const TileRecord& tile);

} // namespace vardenix
