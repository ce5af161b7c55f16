#pragma once

#include <array>
#include <gdal_priv.h>
#include <memory>
#include <ogr_spatialref.h>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace vardenix {

// What a map cannot be taken for, as a sentence.
class MapRefused : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct CloseDataset {
    void operator()(GDALDataset* dataset) const { GDALClose(dataset); }
};
using Dataset = std::unique_ptr<GDALDataset, CloseDataset>;

// The kinds of maps that are read and written; no others are known to the library.
inline constexpr std::array Readable{"GTiff", "SRTMHGT", "AAIGrid", "HFA", "PNG"};
inline constexpr std::array ReadableShapes{"GeoJSON", "GPKG", "ESRI Shapefile"};
void KnowFewDrivers();

// The library's words about what it refused last.
std::string LibrarySays();

[[noreturn]] void Refuse(const std::string& file, const std::string& why);

// Read only, by one of `drivers`; `kinds` is what they read, for the refusal. A file of
// the disk and no name that the library would take for something else.
Dataset OpenDataset(const std::string& file, unsigned flags,
                    std::span<const char* const> drivers, const std::string& kinds);

// A reference system by its number, WKT or PROJ text, x before y; refused in the name of
// `file`.
OGRSpatialReference SystemOf(const std::string& file, const std::string& system);
// Longitude before latitude.
OGRSpatialReference Degrees();

// Points of a reference system, as many x as y, as a line of longitude and latitude each;
// refused where they lie beyond what the system can tell.
std::string LinesOfDegrees(const std::string& system, std::vector<double> x,
                           std::vector<double> y);

// Reads back to the same value.
std::string Text(double number);

} // namespace vardenix
