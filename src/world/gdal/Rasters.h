#pragma once

#include <array>
#include <optional>
#include <stdexcept>
#include <string>

namespace vardenix {

// What a map cannot be taken for, as a sentence.
class MapRefused : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

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
};

// Only the drivers that this program reads and writes by are known afterwards.
void KnowFewDrivers();

// Floats of this machine, row by row from the south west, not a number where the map has
// no data. All: MapRefused.
void ReadRaster(const RasterRequest& request);

// 16-bit numbers in the same order into a file; its ending says the form.
void WriteRaster(const RasterRequest& request);

// Longitude and latitude of the four corners: south west, south east, north west, north
// east, a line each.
std::string CornersOf(const RasterRequest& request);

} // namespace vardenix
