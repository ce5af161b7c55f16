#pragma once

#include "levels/HeightPicture.h"
#include "mapview/MapLayout.h"
#include "pictures/Raster.h"

namespace vardenix {

// Brings part of the height picture that ShowLFile has painted up to date with posts that
// were edited since: those from `lowerLeft`, counted from 0, `across` columns and `down`
// rows of them; what of that lies outside the terrain is passed over. `picture` has one
// pixel for each post, 0xFFRRGGBB. True when a pixel has changed; nothing is done, and
// the result false, while the picture is that of another theater.
bool UpdateHeights(const Terrain& terrain, const PreviewColors& colors,
                   PostPlace lowerLeft, int32_t across, int32_t down,
                   const RasterView& picture);

} // namespace vardenix
