#pragma once

#include "world/gdal/Rasters.h"

#include <string>

namespace vardenix {

// Longitude and latitude of as many points as the request's size says, evenly from corner
// to corner, row by row from the south west, a line each. MapRefused.
std::string PointGridOf(const RasterRequest& request);

} // namespace vardenix
