#include "levels/LevelGeometry.h"

#include "levels/Terrain.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <cmath>
#include <string>

namespace vardenix {

LevelGeometry GeometryOf(int32_t level, int32_t mapWidth) {
    LevelGeometry geometry;
    geometry.Level = level;
    geometry.Width = ToInt32(std::ldexp(mapWidth, 2 - level));
    geometry.Blocks = geometry.Width / SegmentSide;
    if (level < 2) {
        geometry.Finer = 4 / (level + 1);
        geometry.Base = 2048 * geometry.Finer;
    } else {
        geometry.Coarser = 1 << (level - 2);
    }
    if (int64_t{geometry.Blocks} * SegmentSide * geometry.Coarser >
        int64_t{mapWidth} * geometry.Finer)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                           "level " + std::to_string(level) + " of a theater " +
                               std::to_string(mapWidth) +
                               " posts a side reaches past its posts");
    return geometry;
}

int32_t RowsOfLevel(int32_t level, int32_t mapWidth) {
    return ToInt32(std::ldexp(mapWidth, 2 - level) / SegmentSide);
}

} // namespace vardenix
