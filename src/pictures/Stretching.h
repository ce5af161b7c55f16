#pragma once

#include "pictures/Raster.h"

#include <algorithm>
#include <cstdint>
#include <vector>

// For the painters of this folder.
namespace vardenix {

// One side of a stretch: for each pixel painted, from surface pixel Begin on, the pixel
// it takes; -1 where that lies outside the bitmap.
struct StretchedSide {
    int32_t Begin = 0;
    std::vector<int32_t> Sources;
};

struct SideSpan {
    int32_t Begin = 0;
    int32_t Length = 0;
};

StretchedSide StretchSide(SideSpan destination, SideSpan source, int32_t surfaceLength,
                          int32_t bitmapLength, bool mirrored);

// `rowOf(y)` gives row y of the bitmap, 32-bit pixels; `combine(target, source)` gives
// the new pixel of the surface.
template <typename RowOf, typename Combine>
void PaintStretched(const RasterView& target, const StretchedSide& across,
                    const StretchedSide& down, RowOf rowOf, Combine combine) {
    int32_t y = down.Begin;
    for (const int32_t sourceY : down.Sources) {
        uint32_t* to = target.Row(y++) + across.Begin;
        if (sourceY < 0)
            continue;
        const uint32_t* from = rowOf(sourceY);
        for (const int32_t sourceX : across.Sources) {
            if (sourceX >= 0)
                *to = combine(*to, from[sourceX]);
            ++to;
        }
    }
}

inline uint32_t Opaque(uint32_t pixel) { return pixel | OpaqueBlack; }

} // namespace vardenix
