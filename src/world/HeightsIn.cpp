#include "world/HeightsIn.h"

#include "texts/Numbers.h"

#include <cmath>
#include <limits>

namespace vardenix {

namespace {

constexpr double FeetPerMetre = 1 / 0.3048;

bool Fits(double feet) {
    const double rounded = RoundHalfEven(feet);
    return rounded >= std::numeric_limits<int16_t>::min() &&
           rounded <= std::numeric_limits<int16_t>::max();
}

} // namespace

HeightsTaken TakeHeights(const WorldRaster& raster, PostPlace corner,
                         const HeightUnits& units, WithoutData without,
                         const std::function<void(PostPlace, int16_t)>& put) {
    HeightsTaken taken;
    const double feetPerUnit = units.Metres ? FeetPerMetre : 1;
    auto value = raster.Values.begin();
    for (int32_t row = 0; row < raster.Rows; ++row)
        for (int32_t column = 0; column < raster.Columns; ++column, ++value) {
            const PostPlace place{corner.X + column, corner.Y + row};
            if (std::isnan(*value)) {
                ++taken.Without;
                if (without == WithoutData::Zero)
                    put(place, 0);
                continue;
            }
            const double feet = (*value * units.Scale + units.Offset) * feetPerUnit;
            ++taken.Set;
            taken.Clamped += Fits(feet) ? 0 : 1;
            put(place, ClampToInt16(feet));
        }
    return taken;
}

} // namespace vardenix
