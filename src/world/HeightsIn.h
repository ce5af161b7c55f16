#pragma once

#include "world/WorldHelper.h"

#include <cstdint>
#include <functional>

namespace vardenix {

// What the values of a map mean.
struct HeightUnits {
    bool Metres = true; // else feet
    double Scale = 1;   // applied before the offset, both before metres become feet
    double Offset = 0;
};

// What becomes of a height where the map has none.
enum class WithoutData { Leave, Zero };

struct HeightsTaken {
    int64_t Set = 0;
    int64_t Clamped = 0; // of those, beyond what a height can be
    int64_t Without = 0; // where the map has none
};

// Calls `put` with the feet, rounded half to even, of each height of a raster over a box
// whose lower left corner is `corner`; from the south west row by row.
HeightsTaken TakeHeights(const WorldRaster& raster, PostPlace corner,
                         const HeightUnits& units, WithoutData without,
                         const std::function<void(PostPlace, int16_t)>& put);

} // namespace vardenix
