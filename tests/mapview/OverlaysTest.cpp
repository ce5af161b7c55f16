#include "mapview/MapRenderer.h"
#include "support/MapWorld.h"
#include "support/RecordingSurface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

// What lies over the tiles. The view is two by two posts of 128 pixels: post (1, 1) at
// (0, 128), post (2, 1) at (128, 128), post (1, 2) at (0, 0).
namespace vardenix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

class Overlay : public testing::Test {
protected:
    Lines Painted(const std::string& word) {
        story_ = {};
        world_.Renderer().RefreshPicArray(world_.View, surface_, screen_, {});
        return story_.Lines(word);
    }
    void OnePostOnly() {
        world_.Terrain.MapWidth = 1;
        world_.Terrain.LxArr = PostArray(1);
    }

    tests::MapWorld world_;
    tests::Story story_;
    tests::RecordingSurface surface_{story_};
    tests::RecordingScreen screen_{story_};
};

// 128 pixels for 3280.84 feet: 32 pixels are 820.21 feet.
class AreasAndPaths : public Overlay {
protected:
    AreasAndPaths() {
        world_.View.ShowAreasPaths = true;
        world_.SetTile(2, 1, 20);
    }
};

TEST_F(AreasAndPaths, TheFirstCoordinateRunsUpAndTheSecondToTheRight) {
    world_.AddArea(20, {1, 410.105F, 820.21F, 1640.42F});
    EXPECT_THAT(Painted("circle"), ElementsAre("circle 192,224 16 pen F2EA82 1 none"));
}

TEST_F(AreasAndPaths, OnlyTypeSevenIsForest) {
    for (const int type : {1, 6, 7, 8})
        world_.AddArea(20, {type, 0, 0, 0});
    EXPECT_THAT(Painted("circle"), ElementsAre("circle 128,256 0 pen F2EA82 1 none",
                                               "circle 128,256 0 pen F2EA82 1 none",
                                               "circle 128,256 0 pen 209B45 1 none",
                                               "circle 128,256 0 pen F2EA82 1 none"));
}

TEST_F(AreasAndPaths, FilledAreasHaveTheirOutlinesColour) {
    world_.View.AreasFilled = true;
    world_.Settings.VXAreasForestColor = 0x123456;
    world_.AddArea(20, {7, 0, 0, 0});
    EXPECT_THAT(Painted("circle"),
                ElementsAre("circle 128,256 0 pen 123456 1 solid 123456"));
}

TEST_F(AreasAndPaths, PathsTakeTheColourOfTheirType) {
    for (const int type : {10, 11, 12, 2, 77})
        world_.AddPath(20, {type, 0, 0, 0, 0, 0});
    EXPECT_THAT(Painted("line"), ElementsAre("line 128,256 128,256 pen 49DEDB 1",
                                             "line 128,256 128,256 pen 3E3E3E 1",
                                             "line 128,256 128,256 pen 5BF46F 1",
                                             "line 128,256 128,256 pen E2776B 1",
                                             "line 128,256 128,256 pen E2776B 1"));
}

TEST_F(AreasAndPaths, PathsRunFromStartToEndWithTheirWidthCut) {
    // 2.99 pixels, and 0.99.
    world_.AddPath(20, {10, 76.6F, 0, 820.21F, 3280.84F, 2460.63F});
    world_.AddPath(20, {10, 25.5F, 0, 0, 0, 0});
    world_.AddPath(20, {10, -500, 0, 0, 0, 0});
    EXPECT_THAT(Painted("line"), ElementsAre("line 160,256 224,128 pen 49DEDB 2",
                                             "line 128,256 128,256 pen 49DEDB 1",
                                             "line 128,256 128,256 pen 49DEDB 1"));
}

TEST_F(AreasAndPaths, EachKindHasItsSwitchAndBothAMaster) {
    world_.AddArea(20, {1, 0, 0, 0});
    world_.AddPath(20, {10, 0, 0, 0, 0, 0});
    world_.View.ShowAreas = false;
    EXPECT_THAT(Painted("circle"), IsEmpty());
    EXPECT_EQ(story_.Lines("line").size(), 1U);
    world_.View.ShowAreas = true;
    world_.View.ShowPaths = false;
    EXPECT_EQ(Painted("circle").size(), 1U);
    EXPECT_THAT(story_.Lines("line"), IsEmpty());
    world_.View.ShowPaths = true;
    world_.View.ShowAreasPaths = false;
    EXPECT_THAT(Painted("circle"), IsEmpty());
    EXPECT_THAT(story_.Lines("line"), IsEmpty());
}

TEST_F(AreasAndPaths, NumbersWithoutARecordHaveNone) {
    world_.AddArea(20, {1, 0, 0, 0});
    for (const int32_t number : {32, -12, 2147483647, -2147483647}) {
        world_.SetTile(2, 1, number);
        EXPECT_THAT(Painted("circle"), IsEmpty());
    }
    world_.SetTile(2, 1, 20);
    world_.Catalogue.Bin.Sets[2].Tiles.resize(5); // slots 0 to 3
    EXPECT_THAT(Painted("circle"), IsEmpty());
    world_.Catalogue.Bin.Sets.resize(2);
    EXPECT_THAT(Painted("circle"), IsEmpty());
}

TEST_F(AreasAndPaths, CountsBeyondTheListsAreNotBelieved) {
    world_.AddArea(20, {1, 0, 0, 0});
    world_.Tile(20).NumAreas = 1000;
    world_.Tile(20).NumPaths = -3;
    EXPECT_EQ(Painted("circle").size(), 1U);
    EXPECT_THAT(story_.Lines("line"), IsEmpty());
}

TEST_F(AreasAndPaths, WhatIsNoCircleOrLineIsNotDrawn) {
    constexpr float none = std::numeric_limits<float>::quiet_NaN();
    constexpr float endless = std::numeric_limits<float>::infinity();
    world_.AddArea(20, {1, -5, 0, 0});
    world_.AddArea(20, {1, none, 0, 0});
    world_.AddArea(20, {1, 5, endless, 0});
    world_.AddPath(20, {10, 5, 0, none, 0, 0});
    world_.AddPath(20, {10, none, 0, 0, 0, 0});
    EXPECT_THAT(Painted("circle"), IsEmpty());
    EXPECT_THAT(story_.Lines("line"), ElementsAre("line 128,256 128,256 pen 49DEDB 1"));
}

TEST_F(Overlay, NightTilesNeedAnEntryAndAPicture) {
    world_.View.ApplyNight = true;
    world_.SetTile(1, 1, 40);
    world_.SetTile(2, 1, 5);
    world_.SetTile(1, 2, -1);
    world_.SetTile(2, 2, 6);
    world_.Catalogue.Lookup[6].HasImage = 0;
    for (const int number : {5, 6})
        surface_.Name(world_.Night(number), "N" + std::to_string(number));
    Painted("tile");
    Lines night;
    for (const std::string& line : story_.Lines("tile"))
        if (line.starts_with("tile N"))
            night.push_back(line);
    EXPECT_THAT(night, ElementsAre("tile N5 128,128 128x128"));
}

TEST_F(Overlay, HeightsStandInTheMiddleOfTheirCells) {
    world_.View.ShowHeights = true;
    world_.Settings.HeightsFont = {"Courier New", 8.5F, true, true, true, true, 0xFFFFFF};
    world_.Post(1, 1).Elevation = 120;
    world_.Post(2, 1).Elevation = -32768;
    world_.Post(1, 2).Elevation = 100;
    world_.Post(2, 2).Elevation = 7;
    // Six pixels a letter, ten high.
    EXPECT_THAT(Painted("text"), ElementsAre("text 120 55,187 99E0FF rim 000000",
                                             "text -32768 174,187 0000FF rim FFFFFF",
                                             "text 100 55,59 ABF2FF rim 000000",
                                             "text 7 189,59 D3F7FF rim 000000"));
    EXPECT_THAT(story_.Lines("font"),
                ElementsAre("font Courier New 8.5 bold italic strike underline"));
}

TEST_F(Overlay, EachDistinctHeightIsMeasuredOnce) {
    world_.View.ShowHeights = true;
    world_.View.ZoomPosts = 8;
    for (int y = 1; y <= 16; ++y)
        for (int x = 1; x <= 16; ++x)
            world_.Post(x, y).Elevation = static_cast<int16_t>(x % 3);
    EXPECT_EQ(Painted("text").size(), 256U);
    EXPECT_THAT(story_.Lines("measure"),
                ElementsAre("measure 1", "measure 2", "measure 0"));
}

// Cells of 16 pixels have room for two letters of six.
TEST_F(Overlay, HeightsWiderThanTheirCellAreLeftOutAndCounted) {
    world_.View.ShowHeights = true;
    world_.View.ZoomPosts = 8;
    world_.Post(1, 1).Elevation = 100;
    world_.Post(2, 1).Elevation = -10;
    world_.Post(3, 1).Elevation = 99;
    MapRenderer renderer = world_.Renderer();
    renderer.RefreshPicArray(world_.View, surface_, screen_, {});
    EXPECT_EQ(renderer.HeightsLeftOut(), 2);
    EXPECT_EQ(story_.Lines("text").size(), 254U);
    EXPECT_EQ(story_.Lines("text").at(0).substr(0, 8), "text 99 ");
    world_.View.ShowHeights = false;
    renderer.RefreshPicArray(world_.View, surface_, screen_, {});
    EXPECT_EQ(renderer.HeightsLeftOut(), 0);
}

TEST(Rim, IsTheOtherOfBlackAndWhite) {
    EXPECT_EQ(RimOf(0xFFFFFF), 0U);
    EXPECT_EQ(RimOf(0), 0xFFFFFFU);
    EXPECT_EQ(RimOf(0x0000FF), 0xFFFFFFU); // red
    EXPECT_EQ(RimOf(0x00FF00), 0U);        // green
    EXPECT_EQ(RimOf(0xFF0000), 0xFFFFFFU); // blue
}

class FinestHeights : public Overlay {
protected:
    FinestHeights() {
        OnePostOnly();
        world_.View.L0Mode = true;
        ElevationLayer& layer = world_.Terrain.Elevations;
        layer.Kind = ElevationKind::L0;
        layer.EMapWidth = 4;
        layer.L0ElvArr = HeightArray(16);
        for (int y = 1; y <= 4; ++y)
            for (int x = 1; x <= 4; ++x)
                layer.L0ElvArr((y - 1) * 4 + x) = static_cast<int16_t>(10 * x + y);
    }
};

TEST_F(FinestHeights, SixteenStandInAPostTheTopRowFirst) {
    world_.View.ShowHeights = true;
    const Lines texts = Painted("text");
    ASSERT_EQ(texts.size(), 16U);
    // Quarters of 32 pixels, texts of 12 by 10.
    EXPECT_EQ(texts[0], "text 14 10,139 D3F7FF rim 000000");
    EXPECT_EQ(texts[1], "text 24 42,139 D3F7FF rim 000000");
    EXPECT_EQ(texts[3], "text 44 106,139 D3F7FF rim 000000");
    EXPECT_EQ(texts[4], "text 13 10,171 D3F7FF rim 000000");
    EXPECT_EQ(texts[15], "text 41 106,235 D3F7FF rim 000000");
}

TEST_F(FinestHeights, ASecondPostHasItsOwn) {
    world_.Terrain.MapWidth = 2;
    world_.Terrain.LxArr = PostArray(4);
    ElevationLayer& layer = world_.Terrain.Elevations;
    layer.EMapWidth = 8;
    layer.L0ElvArr = HeightArray(64);
    layer.At(5, 8) = 77; // upper left of post (2, 2)
    world_.View.ShowHeights = true;
    EXPECT_EQ(Painted("text").at(48), "text 77 138,11 ABF2FF rim 000000");
}

TEST_F(FinestHeights, NoneAreShownWithoutALayerThatFits) {
    world_.View.ShowHeights = true;
    world_.Terrain.Elevations.EMapWidth = 3;
    EXPECT_THAT(Painted("text"), IsEmpty());
    world_.Terrain.Elevations = ElevationLayer();
    EXPECT_THAT(Painted("text"), IsEmpty());
}

TEST_F(FinestHeights, TheGridHasSixteenBoxesAndAThickOneRoundThem) {
    world_.View.ShowGrid = true;
    world_.View.GridColor = 0x00FF00;
    const Lines boxes = Painted("box");
    ASSERT_EQ(boxes.size(), 17U);
    EXPECT_EQ(boxes[0], "box 0,128 32,160 pen 00FF00 1 none");
    EXPECT_EQ(boxes[1], "box 32,128 64,160 pen 00FF00 1 none");
    EXPECT_EQ(boxes[15], "box 96,224 128,256 pen 00FF00 1 none");
    EXPECT_EQ(boxes[16], "box 0,128 128,256 pen 00FF00 3 none");
}

TEST_F(Overlay, TheGridIsOneBoxRoundEachCell) {
    world_.View.ShowGrid = true;
    world_.View.GridColor = 0xABCDEF;
    EXPECT_THAT(Painted("box"), ElementsAre("box 0,128 128,256 pen ABCDEF 1 none",
                                            "box 128,128 256,256 pen ABCDEF 1 none",
                                            "box 0,0 128,128 pen ABCDEF 1 none",
                                            "box 128,0 256,128 pen ABCDEF 1 none"));
}

TEST_F(Overlay, SegmentsAreLinedFromTheTerrainsCorner) {
    world_.Terrain.MapWidth = 32;
    world_.View.ShowSegments = true;
    world_.View.SegmentColor = 0x60F0E9;
    world_.View.MapLeftX = 10;
    world_.View.MapBottomY = 12;
    EXPECT_THAT(Painted("line"), ElementsAre("line -1280,-2304 -1280,1792 pen 60F0E9 1",
                                             "line -1280,1792 2816,1792 pen 60F0E9 1",
                                             "line 768,-2304 768,1792 pen 60F0E9 1",
                                             "line -1280,-256 2816,-256 pen 60F0E9 1"));
}

TEST_F(Overlay, ARestOfASegmentHasNoLines) {
    world_.View.ShowSegments = true;
    world_.Terrain.MapWidth = 47; // 47 / 16 - 1 is 1.94
    EXPECT_EQ(Painted("line").size(), 4U);
    world_.Terrain.MapWidth = 48;
    EXPECT_EQ(Painted("line").size(), 6U);
}

TEST_F(Overlay, TheExportBoxTakesItsCornersInEitherOrder) {
    world_.View.ShowExport = true;
    world_.View.ExportColor = 0x7AEF65;
    world_.View.MapLeftX = 4;
    world_.View.MapBottomY = 6;
    const Lines expected{"box 128,256 512,-256 pen 7AEF65 1 none"};
    for (const bool swapX : {false, true})
        for (const bool swapY : {false, true}) {
            world_.View.ExportX1 = swapX ? 7 : 5;
            world_.View.ExportX2 = swapX ? 5 : 7;
            world_.View.ExportY1 = swapY ? 9 : 6;
            world_.View.ExportY2 = swapY ? 6 : 9;
            EXPECT_EQ(Painted("box"), expected);
        }
}

TEST_F(Overlay, AnExportOfOnePostIsItsCell) {
    world_.View.ShowExport = true;
    world_.View.ExportX1 = world_.View.ExportX2 = 1;
    world_.View.ExportY1 = world_.View.ExportY2 = 0;
    EXPECT_THAT(Painted("box"), ElementsAre("box 128,256 256,128 pen 000000 1 none"));
}

} // namespace
} // namespace vardenix
