#include "workspace/PanelRules.h"

#include <gtest/gtest.h>

#include <string>

namespace vardenix {
namespace {

TEST(PanelRules, BrightnessStepsByTwentyAndStopsAtTheEnds) {
    EXPECT_EQ(StepDown(0, BrightnessRange), -20);
    EXPECT_EQ(StepDown(-80, BrightnessRange), -100);
    EXPECT_EQ(StepDown(-81, BrightnessRange), -100);
    EXPECT_EQ(StepDown(-85, BrightnessRange), -100);
    EXPECT_EQ(StepDown(-100, BrightnessRange), -100);
    EXPECT_EQ(StepUp(0, BrightnessRange), 20);
    EXPECT_EQ(StepUp(79, BrightnessRange), 99);
    EXPECT_EQ(StepUp(80, BrightnessRange), 100);
    EXPECT_EQ(StepUp(81, BrightnessRange), 100);
    EXPECT_EQ(StepUp(100, BrightnessRange), 100);
}

TEST(PanelRules, TransparencyStepsByThirtyTwo) {
    EXPECT_EQ(StepDown(127, TransRange), 95);
    EXPECT_EQ(StepDown(33, TransRange), 1);
    EXPECT_EQ(StepDown(31, TransRange), 0);
    EXPECT_EQ(StepUp(127, TransRange), 159);
    EXPECT_EQ(StepUp(223, TransRange), 255);
    EXPECT_EQ(StepUp(224, TransRange), 255);
    EXPECT_EQ(StepUp(250, TransRange), 255);
}

TEST(PanelRules, ZoomStepsByOnePost) {
    EXPECT_EQ(ZoomMinus(1), 2);
    EXPECT_EQ(ZoomMinus(19), 20);
    EXPECT_EQ(ZoomMinus(20), 20);
    EXPECT_EQ(ZoomPlus(20), 19);
    EXPECT_EQ(ZoomPlus(1), 1);
}

TEST(PanelRules, TheGridStaysBetweenTwoAndTenCells) {
    MapView view;
    view.GridCells = 3;
    EXPECT_TRUE(ZoomIn(view));
    EXPECT_EQ(view.GridCells, 2);
    EXPECT_FALSE(ZoomIn(view));
    EXPECT_EQ(view.GridCells, 2);
    view.GridCells = 9;
    EXPECT_TRUE(ZoomOut(view));
    EXPECT_EQ(view.GridCells, 10);
    EXPECT_FALSE(ZoomOut(view));
    EXPECT_EQ(view.GridCells, 10);
}

TEST(PanelRules, TheGridsCaptionNamesBothSides) {
    MapView view;
    view.GridCells = 10;
    EXPECT_EQ(GridCaption(view), "10 X 10");
}

TEST(PanelRules, GoToXYRoundsAndClamps) {
    EXPECT_EQ(GoToXY("12", "7", 64), (PostPlace{12, 7}));
    EXPECT_EQ(GoToXY("64", "1000", 64), (PostPlace{63, 63}));
    EXPECT_EQ(GoToXY("99999999999999", "", 64), (PostPlace{63, 0}));
    EXPECT_EQ(GoToXY("2.5", "3.5", 64), (PostPlace{2, 4}));
    EXPECT_EQ(GoToXY("-3", "x", 64), (PostPlace{0, 0}));
    EXPECT_EQ(GoToXY("5", "5", 0), (PostPlace{0, 0}));
}

struct SaveButtonCase {
    bool Shift;
    Layer Edited;
    bool L0NeedSave, L2NeedSave;
    const char* Caption;
    bool Enabled;
};

TEST(PanelRules, TheSaveButtonFollowsShiftModeAndFlags) {
    const SaveButtonCase cases[] = {
        {false, Layer::Posts, false, false, "Save L2", false},
        {false, Layer::Posts, true, false, "Save L2", false},
        {false, Layer::Posts, false, true, "Save L2", true},
        {false, Layer::Heights, false, true, "Save L0/ELV", false},
        {false, Layer::Heights, true, false, "Save L0/ELV", true},
        {true, Layer::Posts, false, false, "Save L2 as...", true},
        {true, Layer::Heights, false, false, "Save L0/ELV as...", true},
    };
    for (const SaveButtonCase& one : cases) {
        const ButtonState state =
            RedrawSaveButton(one.Shift, one.Edited, one.L0NeedSave, one.L2NeedSave);
        EXPECT_EQ(state.Caption, one.Caption);
        EXPECT_EQ(state.Enabled, one.Enabled) << one.Caption;
    }
}

TEST(PanelRules, TheExportButtonFollowsShift) {
    EXPECT_EQ(RedrawExportButton(false), "Export");
    EXPECT_EQ(RedrawExportButton(true), "Export TDFs");
}

TEST(PanelRules, TheTipOfTheFinestElevationsNamesTheirFile) {
    EXPECT_EQ(L0ToolTip(""), "No L0/ELV file loaded.");
    EXPECT_EQ(L0ToolTip("D:\\a\\THEATER.L0"), "D:\\a\\THEATER.L0");
}

TEST(PanelRules, TheBarsWidthIsItsShareOfTheFullOne) {
    EXPECT_DOUBLE_EQ(ProgressWidth(0, 0, 100), 0);
    EXPECT_DOUBLE_EQ(ProgressWidth(50, 0, 100), 1747.5);
    EXPECT_DOUBLE_EQ(ProgressWidth(100, 0, 100), 3495);
    // The range's beginning is taken off the value and not off its end.
    EXPECT_DOUBLE_EQ(ProgressWidth(30, 20, 40), 873.75);
    EXPECT_DOUBLE_EQ(ProgressWidth(5, 0, 0), 0);
}

TEST(PanelRules, AStarStandsWhileEitherFlagIsUpInEitherMode) {
    for (const bool l2 : {false, true})
        for (const bool heights : {false, true}) {
            const DirtyFlags flags{.BIN = true, .L2 = l2, .L0ELV = heights, .MAP = true};
            const std::string star = l2 || heights ? "*" : "";
            EXPECT_EQ(MapCaption(flags, "Korea"), star + "Korea");
            EXPECT_EQ(MainCaption(flags, Layer::Posts), star + "Vardenix v3.0.1");
            EXPECT_EQ(MainCaption(flags, Layer::Heights),
                      star + "Vardenix v3.0.1 - L0/ELV MODE");
        }
}

TEST(PanelRules, InARoomTheCellsFollowTheTileSize) {
    MapView view;
    view.TilePixels = 256;
    view.RoomWidth = 1900;
    view.RoomHeight = 1000;
    EXPECT_EQ(GridCaption(view), "8 X 4");
    EXPECT_TRUE(ZoomOut(view));
    EXPECT_EQ(view.TilePixels, 128);
    EXPECT_EQ(GridCaption(view), "15 X 8");
    EXPECT_TRUE(ZoomIn(view));
    EXPECT_TRUE(ZoomIn(view));
    EXPECT_EQ(view.TilePixels, 512);
    EXPECT_FALSE(ZoomIn(view));
    EXPECT_EQ(view.GridCells, 5);
    view.TilePixels = 16;
    EXPECT_FALSE(ZoomOut(view));
    EXPECT_EQ(view.TilePixels, 16);
}

} // namespace
} // namespace vardenix
