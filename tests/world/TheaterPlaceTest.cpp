#include "world/TheaterPlace.h"

#include "support/ErrorOf.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"
#include "world/PlaceFile.h"

#include <gtest/gtest.h>

#include <limits>

namespace vardenix {
namespace {

using tests::ErrorOf;
using tests::TestFolder;

TEST(TheaterPlace, IsGuessedFromTheCornerAndTheWidthOfL0Tiles) {
    MapFileRecord map;
    map.Longitude = 8.5F;
    map.Latitude = -47.25F;
    map.FeetBetweenL0Tiles = 1000;
    const TheaterPlace place = GuessedPlace(map);
    EXPECT_EQ(place.System, "+proj=tmerc +lat_0=-47.2500000 +lon_0=8.5000000 +k=1 +x_0=0 "
                            "+y_0=0 +datum=WGS84 +units=m +no_defs");
    EXPECT_EQ(place.Left, 0);
    EXPECT_EQ(place.Bottom, 0);
    EXPECT_DOUBLE_EQ(place.PostWidth, 1219.2); // four times 304.8 metres
    EXPECT_DOUBLE_EQ(place.PostHeight, 1219.2);
    EXPECT_TRUE(place.IsGuess);
}

TEST(TheaterPlace, IsNotGuessedFromWhatCannotBeMeant) {
    constexpr float nothing = std::numeric_limits<float>::quiet_NaN();
    for (const auto& [longitude, latitude, feet] : {std::array{180.5F, 0.F, 1.F},
                                                    {0.F, 86.F, 1.F},
                                                    {0.F, -86.F, 1.F},
                                                    {0.F, 0.F, 0.F},
                                                    {0.F, 0.F, -3.F},
                                                    {nothing, 0.F, 1.F},
                                                    {0.F, nothing, 1.F},
                                                    {0.F, 0.F, nothing}}) {
        MapFileRecord map;
        map.Longitude = longitude;
        map.Latitude = latitude;
        map.FeetBetweenL0Tiles = feet;
        EXPECT_EQ(ErrorOf([&] { GuessedPlace(map); }).Number(), ErrorNumber::InvalidCall)
            << longitude << ' ' << latitude << ' ' << feet;
    }
}

TEST(TheaterPlace, EdgesLieRoundThePostsOfABox) {
    const TheaterPlace place{"EPSG:32632", 1000, 2000, 10, 20};
    const PlacedBox edges = EdgesOf(place, {3, 5, 2, 4});
    EXPECT_EQ(edges.Left, 1020);
    EXPECT_EQ(edges.Bottom, 2080);
    EXPECT_EQ(edges.Right, 1040);
    EXPECT_EQ(edges.Top, 2120);
    // Of the finest elevations four lie along a post.
    const PlacedBox finer = EdgesOf(place, {4, 0, 4, 0}, 4);
    EXPECT_EQ(finer.Left, 1010);
    EXPECT_EQ(finer.Right, 1012.5);
    EXPECT_EQ(finer.Top, 2005);
}

TEST(PlaceFile, HoldsWhatWasTold) {
    const TestFolder folder;
    const std::string path = folder.File("places/here.ini");
    EXPECT_FALSE(ReadPlace(path));
    const TheaterPlace place{"GEOGCS[\"a \"\"b\"\"\",1]", -0.1, 5200000.25, 1219.2, 1000};
    WritePlace(place, path);
    EXPECT_EQ(ReadPlace(path), place);
}

TEST(PlaceFile, IsOneForEachTheater) {
    const TestFolder folder;
    const std::string a = folder.Write("a/theater.L2", "");
    const std::string b = folder.Write("b/theater.L2", "");
    EXPECT_NE(PlaceFileOf(a), PlaceFileOf(b));
    EXPECT_EQ(PlaceFileOf(a), PlaceFileOf(folder.File("b/../a/theater.L2")));
}

TEST(PlaceFile, ThatHoldsNoPlaceIsNamed) {
    const TestFolder folder;
    for (const char* bytes :
         {"", "[Place]\r\nSystem=EPSG:4326\r\n", "[Place]\r\nLeft=1\r\nPostWidth=1\r\n",
          "[Place]\r\nSystem=x\r\nPostWidth=-1\r\nPostHeight=1\r\n",
          "[Place]\r\nSystem=x\r\nLeft=1e999\r\nPostWidth=1\r\nPostHeight=1\r\n"}) {
        const std::string path = folder.Write("x.ini", bytes);
        const RuntimeError error = ErrorOf([&] { ReadPlace(path); });
        EXPECT_EQ(error.Number(), ErrorNumber::InvalidCall) << bytes;
        EXPECT_EQ(error.Detail().find(path + ": this is no place of a theater: "), 0U)
            << error.Detail();
    }
}

TEST(PlaceFile, WithASystemThatItCouldNotHoldIsRefused) {
    const TestFolder folder;
    const TheaterPlace place{std::string(751, 'x'), 0, 0, 1, 1};
    EXPECT_EQ(ErrorOf([&] { WritePlace(place, folder.File("x.ini")); }).Number(),
              ErrorNumber::InvalidCall);
}

} // namespace
} // namespace vardenix
