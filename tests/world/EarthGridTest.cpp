#include "world/EarthGrid.h"

#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace vardenix {
namespace {

constexpr int32_t Side = EarthGrid::Side;

// A theater that leans and bends, with its corner at a longitude.
GeographicPoint Bent(double from, double across, double up) {
    const double bend = (across - 0.5) * (across - 0.5);
    return {from + 12 * across + 1.5 * across * up + 0.4 * std::sin(2 * up),
            44 + 9 * up - 0.9 * bend + 0.5 * across};
}

double Wrapped(double longitude) { return longitude > 180 ? longitude - 360 : longitude; }

EarthGrid BentGrid(double from) {
    std::vector<GeographicPoint> points;
    for (int row = 0; row < Side; ++row)
        for (int column = 0; column < Side; ++column) {
            GeographicPoint point = Bent(from, column / (Side - 1.), row / (Side - 1.));
            point.Longitude = Wrapped(point.Longitude);
            points.push_back(point);
        }
    return EarthGrid(points);
}

TEST(EarthGrid, FindsPlacesBetweenItsPointsAndTheWayBack) {
    std::mt19937 random(3);
    std::uniform_real_distribution<> part(0, 0.9999);
    for (const double from : {10., 172.}) { // the other one crosses 180 degrees
        const EarthGrid grid = BentGrid(from);
        for (int i = 0; i < 500; ++i) {
            const double across = part(random);
            const double up = part(random);
            const GeographicPoint expected = Bent(from, across, up);
            const GeographicPoint found = grid.At({across, up});
            ASSERT_NEAR(found.Longitude, Wrapped(expected.Longitude), 1e-6);
            ASSERT_NEAR(found.Latitude, expected.Latitude, 1e-6);
            const auto back = grid.Find(found);
            ASSERT_TRUE(back.has_value()) << across << ' ' << up;
            ASSERT_NEAR(back->Across, across, 1e-7);
            ASSERT_NEAR(back->Up, up, 1e-7);
        }
    }
}

TEST(EarthGrid, DoesNotFindWhatLiesBeyondTheTerrain) {
    const EarthGrid grid = BentGrid(10);
    EXPECT_TRUE(grid.Find({10.5, 44.5}));
    EXPECT_FALSE(grid.Find({9, 46}));
    EXPECT_FALSE(grid.Find({16, 43}));
    EXPECT_FALSE(grid.Find({16, 54}));
    EXPECT_FALSE(grid.Find({24.5, 48}));
    EXPECT_FALSE(grid.Find({-170, -46}));
}

// Held against the program itself, at other points than the grid has.
TEST(EarthGrid, IsRightToAHundredthOfAPost) {
    const tests::TestFolder folder;
    const WorldHelper helper = OwnWorldHelper(folder.Path() + "/");
    struct Case {
        const char* System;
        PlacedBox Edges;
        double Post; // degrees of latitude
    };
    constexpr double metre = 1 / 111195.;
    for (const Case& place :
         {Case{"EPSG:32633", {100000, 6500000, 1124000, 7524000}, 1000 * metre},
          Case{"EPSG:3035", {2500000, 1500000, 6596000, 5596000}, 1000 * metre},
          Case{"EPSG:4326", {170, 50, 190, 66}, 1 / 64.},
          Case{"+proj=tmerc +lat_0=38 +lon_0=127 +datum=WGS84",
               {0, 0, 1024000, 1024000},
               1000 * metre}}) {
        SCOPED_TRACE(place.System);
        const RasterWish::Where where{place.System, place.Edges};
        const EarthGrid grid(helper.GridOf(where, Side));
        constexpr int32_t others = 28;
        const auto truth = helper.GridOf(where, others);
        for (int32_t i = 0; i < others * others; ++i) {
            const double across = i % others / (others - 1.);
            const int32_t row = i / others;
            const double up = row / (others - 1.);
            const GeographicPoint& point = truth[static_cast<size_t>(i)];
            const GeographicPoint found = grid.At({across, up});
            const double east = std::remainder(found.Longitude - point.Longitude, 360) *
                                std::cos(point.Latitude * std::numbers::pi / 180);
            ASSERT_LT(std::hypot(east, found.Latitude - point.Latitude), place.Post / 100)
                << across << ' ' << up;
        }
    }
}

} // namespace
} // namespace vardenix
