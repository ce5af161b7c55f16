#pragma once

#include "levels/PostDelta.h"
#include "world/HeightsIn.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// Which heights of a map are to come, and where to.
struct HeightsWish {
    std::string Map;
    Layer Into = Layer::Posts;
    // Posts that the map is stretched over; without them it lies where it lies.
    std::optional<PostBox> Over;
    Resampling How = Resampling::Bilinear;
    HeightUnits Units;
    WithoutData Without = WithoutData::Leave;
    std::string MapSystem;
    std::optional<double> NoData;
};

// What they would make of level 2, or of the finest elevations; nothing is changed yet.
struct HeightsPlan {
    Layer Into = Layer::Posts;
    PostBox Box;                // ordered, squares of the layer counted from 0
    std::vector<int16_t> Feet;  // row by row from the south west
    std::vector<uint8_t> Given; // 0 where the height stays as it is
    HeightsTaken Taken;

    int32_t Columns() const { return Box.X2 - Box.X1 + 1; }
    // Nothing outside the box, and where the height stays.
    std::optional<int16_t> At(int32_t x, int32_t y) const;
};

// Of a raster whose lower left corner is `corner`. What lies outside `within` stays and
// is not counted; an empty one bounds nothing.
HeightsPlan PlanHeights(const WorldRaster& raster, PostPlace corner,
                        const HeightsWish& wish, std::span<const RowSpan> within);

// What it changes. Error 9 where the box lies beyond the terrain.
PostDelta PostsChangedBy(const HeightsPlan& plan, const Terrain& terrain);
HeightDelta HeightsChangedBy(const HeightsPlan& plan, const Terrain& terrain);

// "4096 heights, 12 to 9430 ft; 3 of them did not fit into 16 bits; 120 places have none
// and stay".
std::string PlanWords(const HeightsPlan& plan, WithoutData without);

} // namespace vardenix
