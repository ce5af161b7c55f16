#include "features/FeatureDrawing.h"

#include "features/FeatureFile.h"
#include "support/RecordingSurface.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

using Lines = std::vector<std::string>;

class FeatureDrawTest : public testing::Test {
protected:
    FeatureDrawTest() {
        // Ten posts a side of 10 pixels each, from 20, 30 on.
        view_.MapLeftX = 20;
        view_.MapBottomY = 30;
        view_.ZoomPosts = 5;
        view_.GridCells = 2;
        view_.TilePixels = 50;
        settings_.Airports = {0x0000AA, 4};
        settings_.AirportsFont = {.Name = "Arial", .Size = 8, .Color = 0x00BB00};
        settings_.City = {0x000022, 2};
        settings_.Coast = {0x000033, 3};
        settings_.Labels = {0x000044, 5};
        settings_.LabelsFont = {.Name = "Times",
                                .Size = 9,
                                .Bold = true,
                                .Italic = true,
                                .Strikethrough = true,
                                .Underline = true,
                                .Color = 0x0000CC};
        settings_.Rivers = {0x000055, 1};
        settings_.Roads = {0x000066, 1};
    }

    Lines Drawn(FeatureKind kind, std::initializer_list<const char*> lines,
                bool flag = true) {
        for (const char* line : lines)
            ParseFeatureLine(line, set_);
        tests::Story story;
        tests::RecordingSurface surface(story);
        layer_.FeatureDraw(surface, view_, kind, flag);
        return story.Lines();
    }

    MapView view_;
    Configuration settings_;
    FeatureSet set_;
    FeatureSwitches switches_;
    DrawnFeatures layer_{{set_, switches_, settings_}};
};

TEST_F(FeatureDrawTest, FeaturePixelIsTheMiddleOfAPostsCell) {
    const auto pixel = [this](double x, double y) {
        const PicturePoint at = FeaturePixel(view_, {x, y});
        return std::to_string(static_cast<int>(at.X)) + "," +
               std::to_string(static_cast<int>(at.Y));
    };
    EXPECT_EQ(pixel(20, 30), "5,95");
    EXPECT_EQ(pixel(29, 39), "95,5");
    EXPECT_EQ(pixel(20.5, 30), "10,95");
    EXPECT_EQ(pixel(0, 0), "-195,395");
    // 5.5 and 94.5 go to their even neighbours, and so do 6.5 and 93.5.
    EXPECT_EQ(pixel(20.05, 30.05), "6,94");
    EXPECT_EQ(pixel(20.15, 30.15), "6,94");
    view_.ZoomPosts = 4; // cells of 12.5 pixels
    EXPECT_EQ(pixel(20, 30), "6,94");
}

TEST_F(FeatureDrawTest, NothingIsDrawnWithoutTheFlag) {
    EXPECT_TRUE(Drawn(FeatureKind::Road, {"ROAD 2 20,30 21,31 0"}, false).empty());
}

TEST_F(FeatureDrawTest, AirportsHaveAMarkAndTheirNameAboveToTheRight) {
    EXPECT_EQ(Drawn(FeatureKind::Airport, {"AIRPORT 2 22,32 9,9 0 Kimpo"}),
              (Lines{"font Arial 8", "ellipse 21,71 29,79 pen 0000AA 1 solid 0000AA",
                     "measure Kimpo", "text Kimpo 29,61 00BB00 rim FFFFFF"}));
}

TEST_F(FeatureDrawTest, LabelsHaveTheirOwnColorsAndFont) {
    EXPECT_EQ(Drawn(FeatureKind::Label, {"LABEL 1 22,32 0 A B"}),
              (Lines{"font Times 9 bold italic strike underline",
                     "ellipse 20,70 30,80 pen 000044 1 solid 000044", "measure A B",
                     "text A B 30,60 0000CC rim FFFFFF"}));
}

TEST_F(FeatureDrawTest, AnAirportWithoutANameHasItsMark) {
    EXPECT_EQ(Drawn(FeatureKind::Airport, {"AIRPORT 1 22,32 0"}),
              (Lines{"font Arial 8", "ellipse 21,71 29,79 pen 0000AA 1 solid 0000AA"}));
}

TEST_F(FeatureDrawTest, AMarkWithoutAPointIsNotDrawn) {
    EXPECT_EQ(Drawn(FeatureKind::Airport, {"AIRPORT 0 5 Name", "AIRPORT -3"}),
              Lines{"font Arial 8"});
}

TEST_F(FeatureDrawTest, AMissingPointLiesAtZero) {
    view_.MapLeftX = view_.MapBottomY = 0;
    EXPECT_EQ(Drawn(FeatureKind::Airport, {"AIRPORT 1 x 0 Name"}),
              (Lines{"font Arial 8", "ellipse 1,91 9,99 pen 0000AA 1 solid 0000AA"}));
    EXPECT_EQ(Drawn(FeatureKind::Road, {"ROAD 9 2,2"}),
              Lines{"polyline 25,75 5,95 5,95 pen 000066 1"});
}

TEST_F(FeatureDrawTest, CitiesAreHatchedPolygons) {
    EXPECT_EQ(Drawn(FeatureKind::City, {"CITY 3 20,30 22,30 22,33 0 x"}),
              Lines{"polygon 5,95 25,95 25,65 pen 000022 2 hatch 000022"});
}

TEST_F(FeatureDrawTest, CoastsRiversAndRoadsAreLines) {
    EXPECT_EQ(Drawn(FeatureKind::Coast, {"COAST 3 20,30 22,30 22,33 0"}),
              Lines{"polyline 5,95 25,95 25,65 pen 000033 3"});
    EXPECT_EQ(Drawn(FeatureKind::River, {"RIVER 2 20,30 22,30 0"}),
              Lines{"polyline 5,95 25,95 pen 000055 1"});
    EXPECT_EQ(Drawn(FeatureKind::Road, {"ROAD 2 20,30 22,30 0"}),
              Lines{"polyline 5,95 25,95 pen 000066 1"});
}

TEST_F(FeatureDrawTest, SizesOutsideTheSlidersRangeActAsTheNearest) {
    settings_.Roads.Size = -4;
    EXPECT_EQ(Drawn(FeatureKind::Road, {"ROAD 2 20,30 22,30 0"}),
              Lines{"polyline 5,95 25,95 pen 000066 1"});
    settings_.Roads.Size = 2000000000;
    EXPECT_EQ(Drawn(FeatureKind::Road, {}), Lines{"polyline 5,95 25,95 pen 000066 20"});
}

TEST_F(FeatureDrawTest, WhatCannotTouchThePictureIsPassedOver) {
    EXPECT_TRUE(
        Drawn(FeatureKind::Road,
              {"ROAD 2 0,0 10,10 0", "ROAD 3 31,1 40,99 99,0 0", "ROAD 2 25,41 26,50 0"})
            .empty());
    EXPECT_TRUE(Drawn(FeatureKind::City, {"CITY 3 0,0 1,1 2,0 0"}).empty());
    // Its outline, 2 pixels wide, reaches in.
    EXPECT_EQ(Drawn(FeatureKind::City, {"CITY 3 19.3,30 19.2,31 19.2,32 0"}).size(), 1U);
    set_ = {};
    EXPECT_EQ(Drawn(FeatureKind::Label, {"LABEL 1 9999,9999 0 Far away"}).size(), 1U);
}

TEST_F(FeatureDrawTest, ALineThatComesBackIsDrawnInStretches) {
    // In, out at the right, far below, in again.
    EXPECT_EQ(Drawn(FeatureKind::Road, {"ROAD 6 25,35 35,35 35,0 22,0 22,31 22,32 0"}),
              (Lines{"polyline 55,45 155,45 pen 000066 1",
                     "polyline 25,395 25,85 25,75 pen 000066 1"}));
}

TEST_F(FeatureDrawTest, FarCornersComeNearerAlongTheirLine) {
    EXPECT_EQ(Drawn(FeatureKind::Road, {"ROAD 2 25,35 1000025,200035 0"}),
              Lines{"polyline 55,45 500000,-99944 pen 000066 1"});
    // A square round everything stays round the picture.
    EXPECT_EQ(Drawn(FeatureKind::City, {"CITY 4 -9e9,-9e9 9e9,-9e9 9e9,9e9 -9e9,9e9 0"}),
              Lines{"polygon -500000,-500000 -500000,500000 500000,500000 "
                    "500000,-500000 pen 000022 2 hatch 000022"});
}

TEST_F(FeatureDrawTest, EndlessNamesAreCut) {
    const std::string line = "LABEL 1 22,32 0 " + std::string(5000, 'n');
    const Lines drawn = Drawn(FeatureKind::Label, {line.c_str()});
    EXPECT_EQ(drawn.back(),
              "text " + std::string(1000, 'n') + " 30,60 0000CC rim FFFFFF");
}

TEST_F(FeatureDrawTest, NamesAreWindows1252) {
    EXPECT_EQ(Drawn(FeatureKind::Label, {"LABEL 1 22,32 0 M\xFCnchen"}).back(),
              "text M\xC3\xBCnchen 30,60 0000CC rim FFFFFF");
}

} // namespace
} // namespace vardenix
