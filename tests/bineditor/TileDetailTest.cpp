#include "bineditor/TileDetail.h"

#include "bineditor/MadeCatalogue.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

TEST(TileDetail, UpThePictureIsXAndToTheRightIsY) {
    // A picture of 400 by 200: a foot is 8.2021 to the right, 16.4042 up.
    const TileScale scale(400, 200);
    EXPECT_FLOAT_EQ(scale.ScreenToFeet(100), 820.21F);
    EXPECT_FLOAT_EQ(scale.ScreenToFeetFlipped(150), 820.21F);
    EXPECT_FLOAT_EQ(scale.ScreenToFeetFlipped(200), 0);
    EXPECT_FLOAT_EQ(scale.ScreenToFeetFlipped(0), 3280.84F);
    EXPECT_NEAR(scale.FeetToScreen(1640.42F), 200, 1e-3);
    EXPECT_NEAR(scale.FeetToScreenFlipped(820.21F), 150, 1e-3);
}

TEST(TileDetail, AStoredPointIsAtTheSamePlaceOfTheTileAtEveryZoom) {
    for (double zoom = LeastZoom; zoom <= MostZoom; zoom *= 2) {
        const TileScale scale(512 * zoom, 512 * zoom);
        EXPECT_NEAR(scale.FeetToScreen(1000) / zoom, 156.0576, 1e-3);
        EXPECT_NEAR(scale.FeetToScreenFlipped(1000) / zoom, 355.9424, 1e-3);
    }
}

TEST(TileDetail, ZoomStopsAtEightAndAtAnEighth) {
    EXPECT_EQ(ZoomedIn(4), 8);
    EXPECT_EQ(ZoomedIn(8), 8);
    EXPECT_EQ(ZoomedOut(0.25), 0.125);
    EXPECT_EQ(ZoomedOut(0.125), 0.125);
}

TEST(TileDetail, ADragMakesAnArea) {
    const TileScale scale(328.084, 328.084); // ten feet a pixel
    const TileArea area = AreaOf({100, 128.084, 130, 168.084}, scale, 1);
    EXPECT_EQ(area.Type, 7);
    EXPECT_FLOAT_EQ(area.CenterX, 2000);
    EXPECT_FLOAT_EQ(area.CenterY, 1000);
    EXPECT_FLOAT_EQ(area.Radius, 500);
}

TEST(TileDetail, AClickMakesAnAreaOfRadiusZeroAndAPathOfNoLength) {
    const TileScale scale(328.084, 328.084);
    const TileArea area = AreaOf({10, 10, 10, 10}, scale, 0);
    EXPECT_EQ(area.Type, 1);
    EXPECT_EQ(area.Radius, 0);
    const TilePath path = PathOf({10, 318.084, 10, 318.084}, scale, 3);
    EXPECT_EQ(path.Type, 12);
    EXPECT_EQ(path.Width, 50);
    EXPECT_FLOAT_EQ(path.StartX, 100);
    EXPECT_FLOAT_EQ(path.StartY, 100);
    EXPECT_EQ(path.StartX, path.EndX);
    EXPECT_EQ(path.StartY, path.EndY);
    EXPECT_EQ(PathOf({}, scale, -1).Type, 0);
}

TEST(TileDetail, APenIsAtLeastOneWideAndNeverEndless) {
    EXPECT_EQ(PenWidth({512 * LeastZoom, 512}, 50), 1);
    EXPECT_EQ(PenWidth({512, 512}, 50), 8); // 7.80
    EXPECT_EQ(PenWidth({512, 512}, -50), 1);
    EXPECT_EQ(PenWidth({512, 512}, std::numeric_limits<float>::quiet_NaN()), 1);
    EXPECT_EQ(PenWidth({512, 512}, std::numeric_limits<float>::infinity()), 32767);
}

TEST(TileDetail, ADeletedRowGoesAndTheOthersStay) {
    TileRecord record;
    WorkingTile tile(record);
    for (const float x : {1.0F, 2.0F, 3.0F})
        tile.Add(TileArea{7, x, 0, 0});
    tile.Add(TilePath{});
    tile.DeleteArea(2);
    tile.DeleteArea(0);
    tile.DeleteArea(3);
    tile.DeletePath(2);
    EXPECT_EQ(tile.Tile().NumAreas, 2);
    ASSERT_EQ(tile.Tile().Areas.size(), 3U);
    EXPECT_EQ(tile.Area(1).Radius, 1);
    EXPECT_EQ(tile.Area(2).Radius, 3);
    EXPECT_EQ(tile.Tile().NumPaths, 1);
    EXPECT_EQ(AreasPathsText(tile.Tile()), "2 Areas and 1 Paths");
}

TEST(TileDetail, ABadTextLeavesTheBoxesBeforeItWritten) {
    TileArea area{7, 1, 2, 3};
    EXPECT_EQ(WriteFields(AreaFields(area), {"10.5", "", "30"}), 1U);
    EXPECT_EQ(area.CenterX, 10.5F);
    EXPECT_EQ(area.CenterY, 3);
    EXPECT_EQ(area.Radius, 1);
    EXPECT_FALSE(WriteFields(AreaFields(area), {"-1", "2.", ".5"}));
    EXPECT_EQ(area.CenterX, -1);
    EXPECT_EQ(area.CenterY, 2);
    EXPECT_EQ(area.Radius, 0.5F);
    TilePath path;
    EXPECT_EQ(WriteFields(PathFields(path), {"1", "2", "3", "4", "5-"}), 4U);
    EXPECT_EQ(path.StartX, 1);
    EXPECT_EQ(path.StartY, 2);
    EXPECT_EQ(path.EndX, 3);
    EXPECT_EQ(path.EndY, 4);
    EXPECT_EQ(path.Width, 0);
}

TEST(TileDetail, OnlyAWholeNumberTextConverts) {
    for (const char* text : {"", " ", "-", ".", "1.2.3", "1-2", "--1", "nan", "inf",
                             "99999999999999999999999999999999999999999"})
        EXPECT_FALSE(FloatOfText(text)) << text;
    EXPECT_EQ(FloatOfText(" 7.25 "), 7.25F);
}

TEST(TileDetail, RowsShowTypesByNameAndUnknownOnesByNumber) {
    EXPECT_EQ(AreaColumns({3, 1, 2.5F, 3})[0], "Swamp");
    EXPECT_EQ(AreaColumns({2, 1, 2.5F, 3})[0], "2");
    EXPECT_EQ(AreaColumns({7, 1, 2.5F, 3})[2], "2.50000");
    EXPECT_EQ(PathColumns({11, 1, 2, 3, 4, 5})[0], "RailRoad");
    EXPECT_EQ(PathColumns({3, 1, 2, 3, 4, 5})[0], "3");
    EXPECT_EQ(PathColumns({10, 1, 2, 3, 4, 5})[5], "5.00000");
    EXPECT_EQ(AreaTypeIndex(7), 1);
    EXPECT_EQ(AreaTypeIndex(3), -1);
    EXPECT_EQ(PathTypeIndex(12), 3);
}

TEST(TileDetail, TheCaptionNamesNumberSizeAndTile) {
    const Catalogue catalogue = tests::CatalogueOf({1, 2});
    EXPECT_EQ(TileDetailCaption(catalogue, 17, 512, 256),
              "Tile #: 17 - Size: 512x256 - 2B.PCX");
}

} // namespace
} // namespace vardenix
