#pragma once

#include <array>
#include <optional>
#include <string>

namespace vardenix {

// What is asked for on the command line of this program.
struct RasterRequest {
    std::string From;
    std::string To;
    std::array<int, 2> Size{};     // columns and rows
    std::string System;            // empty: stretched
    std::array<double, 4> Edges{}; // left, bottom, right, top
    std::string Resample = "bilinear";
    std::string MapSystem;
    std::optional<double> NoData;
    bool Whole = false; // numbers of tiles and classes rather than heights
};

// Floats of this machine, row by row from the south west, not a number where the map has
// no data; or whole numbers of 32 bits, of which the lowest means no data. All:
// MapRefused (Datasets.h).
void ReadRaster(const RasterRequest& request);

// Numbers of 16 bits, whole ones of 32, in the same order into a file; its ending says
// the form.
void WriteRaster(const RasterRequest& request);

// Longitude and latitude of the four corners: south west, south east, north west, north
// east, a line each.
std::string CornersOf(const RasterRequest& request);

} // namespace vardenix
