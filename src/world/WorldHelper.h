#pragma once

#include "world/TheaterPlace.h"
#include "world/WorldShapes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// How a value is found where no pixel's middle lies; Most is the value that most pixels
// of a place have.
enum class Resampling { Bilinear, Cubic, Average, Nearest, Most };

// Values over a grid, row by row from the south west; not a number where the map has
// none.
struct WorldRaster {
    int32_t Columns = 0;
    int32_t Rows = 0;
    std::vector<float> Values;
};

// Whole numbers in the same order: tiles, classes of land cover.
struct WorldNumbers {
    static constexpr int32_t None = std::numeric_limits<int32_t>::min(); // no data there

    int32_t Columns = 0;
    int32_t Rows = 0;
    std::vector<int32_t> Values;
};

// What of a map is wanted: so many values over a box.
struct RasterWish {
    int32_t Columns = 0;
    int32_t Rows = 0;
    // Where they lie; without it the whole map is stretched over them, wherever it lies.
    struct Where {
        std::string System;
        PlacedBox Edges;
    };
    std::optional<Where> Place;
    Resampling How = Resampling::Bilinear;
    std::string MapSystem;        // for a map that does not tell its own
    std::optional<double> NoData; // a value that means none, beside the map's own
};

// What of a map of shapes is wanted.
struct ShapeWish {
    std::string System;    // of the points that come back
    std::string MapSystem; // for a map that does not tell its own
    std::string KindField =
        "kind"; // the attributes; without that of the kind the name of
    std::string NameField = "name"; // the shape's layer is its kind
};

struct GeographicPoint {
    double Longitude = 0; // degrees, east of Greenwich
    double Latitude = 0;
};

// The program that reads and writes maps of the real world, a process of its own: a
// broken map ends that process, never this one, which may hold unsaved work. All
// routines: error 53 where the program or what it needs is not installed, error 5 with
// its own sentence for what it refused, error 7 where it ran out of its memory or time,
// error 32755 where whoever watches it wants it no more.
class WorldHelper {
public:
    // The program of that path, from the root. What is handed over goes through files of
    // `scratch`, a folder of ours.
    WorldHelper(std::string program, std::string scratch)
        : program_(std::move(program)), scratch_(std::move(scratch)) {}

    // As RunAndRead has it.
    void Watch(std::function<bool()> goOn) { goOn_ = std::move(goOn); }

    WorldRaster ReadRaster(const std::string& map, const RasterWish& wish) const;
    // Error 5 too for a map with other values than whole numbers.
    WorldNumbers ReadNumbers(const std::string& map, const RasterWish& wish) const;

    // Values over a box; the ending of `file`, .tif, .asc or .png, says the form. A .tif
    // tells where it lies. `file` is made anew. Numbers that a .png cannot hold, beyond 0
    // to 65535, are error 5.
    void WriteRaster(const std::string& file, std::span<const int16_t> heights,
                     int32_t columns, const RasterWish::Where& where) const;
    void WriteNumbers(const std::string& file, std::span<const int32_t> numbers,
                      int32_t columns, const RasterWish::Where& where) const;

    // Shapes of GeoJSON, GeoPackages and Shapefiles.
    std::vector<WorldShape> ReadShapes(const std::string& map,
                                       const ShapeWish& wish) const;

    // Shapes in units of a reference system as a map in the form of its ending, .geojson,
    // .gpkg or .shp: `mayReplace` gets the names of all files that this takes, and false
    // leaves all as it is. A .shp takes others of its name, and where there are several
    // forms of shapes a file for each, with "-points", "-lines" or "-areas" behind the
    // name. Gives the files of shapes.
    std::vector<std::string> WriteShapes(
        const std::string& file, const std::vector<WorldShape>& shapes,
        const std::string& system,
        const std::function<bool(const std::vector<std::string>&)>& mayReplace) const;

    // South west, south east, north west, north east.
    std::array<GeographicPoint, 4> CornersOf(const RasterWish::Where& where) const;

    // `side` by `side` points, evenly from corner to corner, row by row from the south
    // west; at most 33 a side.
    std::vector<GeographicPoint> GridOf(const RasterWish::Where& where,
                                        int32_t side) const;

private:
    // What it prints; `subject` is what an error is about.
    std::string Run(std::vector<std::string> arguments, const std::string& subject) const;
    void Read(const std::string& map, const RasterWish& wish, std::span<std::byte> values,
              const std::vector<std::string>& more) const;
    void Write(const std::string& file, std::span<const std::byte> values,
               int32_t columns, size_t rows, const RasterWish::Where& where,
               const std::vector<std::string>& more) const;

    std::string program_;
    std::string scratch_;
    std::function<bool()> goOn_;
};

// Whether a name ends as a map of shapes does, in letters of any case.
bool IsMapOfShapes(const std::string& file);

// The helper that came with the running program, with a scratch folder of this run.
WorldHelper OwnWorldHelper(const std::string& scratch);

} // namespace vardenix
