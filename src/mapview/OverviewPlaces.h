#pragma once

#include "mapview/Repaint.h"

#include <cstdint>
#include <vector>

namespace vardenix {

// Which post each pixel of an overview shows, from 0; -1 beyond the terrain.
struct OverviewPlaces {
    explicit OverviewPlaces(Repaint& repaint);

    RasterView Target;            // the pixels of the surface
    std::vector<int32_t> Columns; // of posts, by pixels of a row
    // Of the pixels of row `y`, which may lie beyond the surface.
    int32_t RowAt(int32_t y) const;

private:
    const Repaint& repaint_;
};

// Pixels 0xFFRRGGBB with some of `above` over them, 0 to 255.
uint32_t MixedPixel(uint32_t below, uint32_t above, uint32_t alpha);

} // namespace vardenix
