#include "make_sample_world/SampleWorld.h"

#include "features/FeatureFile.h"
#include "make_sample_theater/Features.h"
#include "make_sample_theater/Files.h"
#include "make_sample_theater/World.h"
#include "make_sample_world/Cover.h"
#include "world/PlaceFile.h"
#include "world/WorldHelper.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace vardenix::sample {
namespace {

constexpr int Steps = 304; // a side of the land that is drawn
constexpr double StepMetres = 1000;
constexpr int Finer = 2; // pixels of the maps for each step
constexpr double MetresPerFoot = 0.3048;

// The land lies square in one zone and the theater in the next, somewhat turned in it.
TheaterPlace LandPlace() {
    return {"EPSG:32623", 798000, 4138500, StepMetres, StepMetres, false};
}
TheaterPlace PlaceOfSampleTheater() {
    return {"EPSG:32624", 300000, 4150000, 1000, 1000, false};
}

RasterWish::Where WholeLand() {
    return {LandPlace().System, EdgesOf(LandPlace(), {0, 0, Steps - 1, Steps - 1})};
}

// In the middle of a pixel, between the corners of the land.
double HeightAt(const Grid<float>& heights, int column, int row) {
    const double x = (column + 0.5) / Finer;
    const double y = (row + 0.5) / Finer;
    const int left = static_cast<int>(x);
    const int bottom = static_cast<int>(y);
    const auto along = [&](int line) {
        return std::lerp(static_cast<double>(heights.At(left, line)),
                         static_cast<double>(heights.At(left + 1, line)), x - left);
    };
    return std::lerp(along(bottom), along(bottom + 1), y - bottom);
}

std::vector<int16_t> Elevations(const Landscape& land) {
    std::vector<int16_t> metres;
    for (int row = 0; row < Finer * Steps; ++row)
        for (int column = 0; column < Finer * Steps; ++column)
            metres.push_back(static_cast<int16_t>(std::nearbyint(
                std::max(0.0, HeightAt(land.Height, column, row)) * MetresPerFoot)));
    return metres;
}

std::vector<int32_t> LandCover(const Landscape& land) {
    std::vector<int32_t> classes;
    const auto nearest = [](int pixel) {
        return static_cast<int>(std::nearbyint((pixel + 0.5) / Finer));
    };
    for (int row = 0; row < Finer * Steps; ++row)
        for (int column = 0; column < Finer * Steps; ++column)
            classes.push_back(ClassOf(land.Corners.At(nearest(column), nearest(row))));
    return classes;
}

// Of some of the feature files of a folder.
std::vector<WorldShape> ShapesOf(const std::filesystem::path& folder,
                                 std::initializer_list<const char*> files) {
    FeatureSet features;
    for (const char* file : files)
        LoadFeatureFile((folder / file).string(), features);
    std::vector<WorldShape> shapes;
    for (const FeatureKind kind : FeatureKinds)
        for (size_t i = 1; i < features.Of(kind).size(); ++i)
            if (auto shape = ShapeOf(features.Of(kind)[i], kind, LandPlace()))
                shapes.push_back(std::move(*shape));
    return shapes;
}

World InventedLand(uint32_t seed) {
    World world(MakeLandscape(Steps, seed));
    DigRivers(world, seed);
    FoundTowns(world, seed);
    LayRoads(world, seed);
    BuildAirfields(world);
    return world;
}

void WriteShapeMaps(const World& world, const WorldHelper& helper,
                    const std::filesystem::path& out) {
    const std::filesystem::path files = out / "features";
    std::filesystem::create_directories(files);
    WriteFeatures(world, files);
    const auto write = [&](const char* name, std::initializer_list<const char*> of) {
        helper.WriteShapes((out / name).string(), ShapesOf(files, of), LandPlace().System,
                           [](const std::vector<std::string>&) { return true; });
    };
    write("coast.geojson", {"Coasts.tdf"});
    write("towns.geojson", {"Cities.tdf", "Labels.tdf", "Airports.tdf"});
    write("ways.geojson", {"Rivers.tdf", "Roads.tdf"});
    std::filesystem::remove_all(files);
}

} // namespace

void MakeSampleWorld(const std::filesystem::path& out, uint32_t seed,
                     const std::function<void(const std::string&)>& say) {
    std::filesystem::create_directories(out);
    const WorldHelper helper = OwnWorldHelper(out.string() + "/");
    const World world = InventedLand(seed);
    say("Raised a land of " + std::to_string(Steps) + " by " + std::to_string(Steps) +
        " km");
    helper.WriteRaster((out / "elevations.tif").string(), Elevations(world.Land),
                       Finer * Steps, WholeLand());
    helper.WriteNumbers((out / "landcover.tif").string(), LandCover(world.Land),
                        Finer * Steps, WholeLand());
    say("Wrote elevations and land cover");
    WriteShapeMaps(world, helper, out);
    say("Wrote coast, towns and ways");
    WriteFile(out / "landcover.table", CoverTable(Catalogue()));
    WritePlace(PlaceOfSampleTheater(), (out / "theater.place").string());
    say("Wrote where the theater lies, and which ground each class has");
}

} // namespace vardenix::sample
