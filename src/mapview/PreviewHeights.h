#pragma once

#include "levels/HeightPicture.h"
#include "mapview/MapLayout.h"
#include "pictures/Raster.h"

#include <cstdint>

namespace vardenix {

// What is laid over the colours of heights; nothing at first.
struct PreviewLooks {
    int32_t Relief = 0;      // its strength, percent
    int32_t ContourStep = 0; // feet, 0 for no lines
};

// Brings part of the height picture that ShowLFile has painted up to date with posts that
// were edited since: those from `lowerLeft`, counted from 0, `across` columns and `down`
// rows of them; what of that lies outside the terrain is passed over. `picture` has one
// pixel for each post, 0xFFRRGGBB. True when a pixel has changed; nothing is done, and
// the result false, while the picture is that of another theater.
bool UpdateHeights(const Terrain& terrain, const PreviewColors& colors,
                   PostPlace lowerLeft, int32_t across, int32_t down,
                   const RasterView& picture, const PreviewLooks& looks = {});

} // namespace vardenix
