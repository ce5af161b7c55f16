#include "workspace/MapMouse.h"

#include "program/ProgramState.h"
#include "support/RecordingCommands.h"
#include "support/ToldMap.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

// A theater of 16 posts a side in a view of 4 by 4 posts of 64 pixels: the middle of post
// (x, y) of the view is (x * 64 + 32, 256 - y * 64 - 32).
class MapMouseTest : public testing::Test {
protected:
    MapMouseTest() {
        terrain_.MapWidth = 16;
        terrain_.LxArr = PostArray(256);
        view_.GridCells = 4;
        view_.TilePixels = 64;
    }

    static double X(int x) { return x * 64 + 32; }
    static double Y(int y) { return 256 - y * 64 - 32; }
    void Left(int x, int y) { mouse_.LeftDown(X(x), Y(y)); }
    bool Right(int x, int y) { return mouse_.RightDown(X(x), Y(y)); }
    void EditElevations() {
        view_.L0Mode = true;
        terrain_.Elevations.EMapWidth = 64;
        terrain_.Elevations.L0ElvArr = HeightArray(64 * 64);
    }

    ProgramState state_;
    Terrain& terrain_ = state_.Terrain;
    MapView view_;
    MapInteraction interaction_;
    tests::RecordingCommands workspace_;
    UndoPoints undo_{terrain_, state_.Changes, workspace_};
    tests::ToldMap commands_{workspace_.Story};
    MapMouse mouse_{terrain_, view_, interaction_, undo_, workspace_, commands_};
};

TEST_F(MapMouseTest, ALeftClickPaintsTheSelectedTileAndNothingElse) {
    view_.MapLeftX = 3;
    view_.MapBottomY = 2;
    TerrainPost before{};
    before.TileOffset = 5;
    before.Elevation = -100;
    before.Palette = 8;
    before.X1 = 1;
    before.X2 = 2;
    terrain_.LxArr(3 * 16 + 5) = before; // (4, 3) from 0
    interaction_.SelectedTile = 77;
    Left(1, 1);
    TerrainPost after = before;
    after.TileOffset = 77;
    EXPECT_TRUE(terrain_.LxArr(3 * 16 + 5) == after);
    EXPECT_EQ(workspace_.Story, "commands refresh L2");
    ASSERT_EQ(undo_.UndoPostStack().UpperBound(), 1);
    EXPECT_EQ(undo_.UndoPostStack().At(1).Serial, 3 * 16 + 5);
    undo_.Undo(Layer::Posts);
    EXPECT_TRUE(terrain_.LxArr(3 * 16 + 5) == before);
}

TEST_F(MapMouseTest, TileNumberZeroIsATileToo) {
    terrain_.LxArr(1).TileOffset = 9;
    interaction_.SelectedTile = 0;
    Left(0, 0);
    const int32_t tile = terrain_.LxArr(1).TileOffset;
    EXPECT_EQ(tile, 0);
}

TEST_F(MapMouseTest, WithoutATileALeftClickDoesNothing) {
    Left(1, 1);
    EXPECT_EQ(workspace_.Story, "");
    EXPECT_FALSE(undo_.CanUndo(Layer::Posts));
}

TEST_F(MapMouseTest, PaintingStopsAtTheEdgeOfTheTerrain) {
    interaction_.SelectedTile = 7;
    view_.MapLeftX = 14;
    Left(2, 0); // column 16
    view_.MapLeftX = 0;
    view_.MapBottomY = 14;
    Left(0, 2);
    EXPECT_EQ(workspace_.Story, "");
    view_.MapBottomY = 0;
    view_.MapLeftX = 14;
    Left(1, 0); // column 15, the last
    const int32_t tile = terrain_.LxArr(16).TileOffset;
    EXPECT_EQ(tile, 7);
}

TEST_F(MapMouseTest, InL0ModeTheLeftButtonStillPaintsLevel2) {
    EditElevations();
    interaction_.SelectedTile = 7;
    Left(2, 1);
    const int32_t tile = terrain_.LxArr(16 + 3).TileOffset;
    EXPECT_EQ(tile, 7);
    EXPECT_EQ(workspace_.Story, "commands refresh L2");
}

TEST_F(MapMouseTest, TwoCornersMakeAnExport) {
    interaction_.WaitExportCorner1 = true;
    interaction_.SelectedTile = 7; // comes last
    Left(0, 1);
    EXPECT_EQ(view_.ExportX1, 0);
    EXPECT_EQ(view_.ExportY1, 1);
    EXPECT_FALSE(interaction_.WaitExportCorner1);
    EXPECT_TRUE(interaction_.WaitExportCorner2);
    EXPECT_EQ(workspace_.Story, "");
    Left(3, 2);
    EXPECT_EQ(view_.ExportX2, 3);
    EXPECT_EQ(view_.ExportY2, 2);
    EXPECT_FALSE(interaction_.WaitExportCorner2);
    EXPECT_EQ(workspace_.Story, " nohint refresh export");
}

TEST_F(MapMouseTest, BothCornersMayBeTheSamePost) {
    interaction_.WaitExportCorner1 = true;
    Left(2, 2);
    Left(2, 2);
    EXPECT_EQ(view_.ExportX1, 2);
    EXPECT_EQ(view_.ExportX2, 2);
    EXPECT_EQ(view_.ExportY1, 2);
    EXPECT_EQ(view_.ExportY2, 2);
    EXPECT_NE(workspace_.Story.find("export"), std::string::npos);
}

TEST_F(MapMouseTest, AnExportBegunWithShiftWritesFeatures) {
    interaction_.WaitExportCorner2 = true;
    interaction_.ExportFeatures = true;
    Left(0, 0);
    EXPECT_EQ(workspace_.Story, " nohint refresh tdfs");
}

TEST_F(MapMouseTest, OneCornerMakesAnImport) {
    interaction_.WaitImportCorner = true;
    interaction_.SelectedTile = 7;
    view_.MapLeftX = 5;
    Left(1, 3);
    EXPECT_EQ(interaction_.ImportX, 6);
    EXPECT_EQ(interaction_.ImportY, 3);
    EXPECT_FALSE(interaction_.WaitImportCorner);
    EXPECT_EQ(workspace_.Story, " nohint import");
}

TEST_F(MapMouseTest, TheFirstWaitThatIsSetWins) {
    interaction_.WaitExportCorner1 = true;
    interaction_.WaitImportCorner = true;
    Left(0, 0);
    EXPECT_TRUE(interaction_.WaitImportCorner);
    EXPECT_TRUE(interaction_.WaitExportCorner2);
    Left(0, 0);
    EXPECT_TRUE(interaction_.WaitImportCorner);
    Left(0, 0);
    EXPECT_FALSE(interaction_.WaitImportCorner);
}

// It becomes the lower left post; ScrollTo clamps.
TEST_F(MapMouseTest, TheMiddleButtonScrollsToThePost) {
    view_.MapLeftX = 3;
    view_.MapBottomY = 13;
    mouse_.MiddleDown(X(1), Y(3));
    EXPECT_EQ(workspace_.Story, "scroll(4,16)");
}

TEST_F(MapMouseTest, WhileAScrollValueIsSetNoButtonDoesAnything) {
    view_.ScrollBusy = true;
    interaction_.SelectedTile = 7;
    interaction_.PopupSerial = 3;
    mouse_.MiddleDown(X(1), Y(1));
    EXPECT_FALSE(Right(1, 1));
    Left(1, 1);
    EXPECT_EQ(workspace_.Story, "");
    EXPECT_EQ(interaction_.PopupSerial, 3);
}

TEST_F(MapMouseTest, ARightClickRemembersThePostForTheMenu) {
    EXPECT_TRUE(Right(2, 1));
    EXPECT_EQ(interaction_.PopupSerial, 16 + 3);
    view_.MapLeftX = 15;
    EXPECT_TRUE(Right(2, 1));
    EXPECT_EQ(interaction_.PopupSerial, 0);
    mouse_.mnuTileProperties();
    EXPECT_EQ(workspace_.Story, "");
}

TEST_F(MapMouseTest, PropertiesOverwriteAllFiveFields) {
    terrain_.LxArr(16 + 3).TileOffset = 41;
    TerrainPost entered{};
    entered.TileOffset = 1;
    entered.Elevation = 2;
    entered.Palette = 3;
    entered.X1 = 4;
    entered.X2 = 5;
    commands_.PostAnswer = entered;
    Right(2, 1);
    mouse_.mnuTileProperties();
    const int32_t asked = commands_.AskedPost.TileOffset;
    EXPECT_EQ(asked, 41);
    EXPECT_TRUE(terrain_.LxArr(16 + 3) == entered);
    EXPECT_EQ(workspace_.Story, " post? commands refresh L2");
    undo_.Undo(Layer::Posts);
    const int32_t tile = terrain_.LxArr(16 + 3).TileOffset;
    EXPECT_EQ(tile, 41);
}

TEST_F(MapMouseTest, PropertiesClosedWithoutAnUpdateChangeNothing) {
    Right(2, 1);
    mouse_.mnuTileProperties();
    EXPECT_EQ(workspace_.Story, " post?");
    EXPECT_FALSE(undo_.CanUndo(Layer::Posts));
}

TEST_F(MapMouseTest, InL0ModeARightClickEditsOneHeight) {
    EditElevations();
    // Pixel (40, 250): the third quarter column of post (0, 0), its lowest row.
    terrain_.Elevations.At(3, 1) = 250;
    terrain_.LxArr(1).Elevation = 11;
    commands_.ElevationAnswer = int16_t{-30};
    EXPECT_FALSE(mouse_.RightDown(40, 250));
    EXPECT_EQ(terrain_.Elevations.At(3, 1), -30);
    EXPECT_EQ(workspace_.Story, " height 250? commands refresh L0");
    ASSERT_EQ(undo_.UndoElvStack().UpperBound(), 1);
    EXPECT_EQ(undo_.UndoElvStack().At(1).OldValue, 250);
    EXPECT_EQ(undo_.UndoElvStack().At(1).NewValue, -30);
    EXPECT_EQ(undo_.UndoElvStack().At(1).X, 3);
    EXPECT_EQ(undo_.UndoElvStack().At(1).Y, 1);
    const int16_t level2 = terrain_.LxArr(1).Elevation;
    EXPECT_EQ(level2, 11);
    EXPECT_EQ(interaction_.PopupSerial, 0);
}

TEST_F(MapMouseTest, InL0ModeAClosedDialogOrAClickBeyondTheEdgeChangesNothing) {
    EditElevations();
    mouse_.RightDown(40, 250);
    EXPECT_EQ(workspace_.Story, " height 0?");
    workspace_.Story.clear();
    view_.MapLeftX = 15;
    mouse_.RightDown(64, 250); // column 64 from 0
    EXPECT_EQ(workspace_.Story, "");
    EXPECT_FALSE(undo_.CanUndo(Layer::Heights));
}

} // namespace
} // namespace vardenix
