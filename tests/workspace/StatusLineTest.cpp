#include "workspace/StatusLine.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

class StatusLineTest : public testing::Test {
protected:
    StatusLineTest() {
        terrain_.MapWidth = 16;
        terrain_.LxArr = PostArray(256);
        view_.GridCells = 4;
        view_.TilePixels = 64;
        lookup_.resize(16);
        lookup_[5].Name = "HRIVER05";
    }

    Terrain terrain_;
    MapView view_;
    TileLookup lookup_;
    MapInteraction interaction_;
};

TEST_F(StatusLineTest, TellsAllOfThePostUnderThePointer) {
    TerrainPost& post = terrain_.LxArr(2 * 16 + 3 + 1);
    post.TileOffset = 5;
    post.Elevation = -1250;
    post.Palette = 9;
    EXPECT_EQ(PostWords(view_, terrain_, lookup_, 3 * 64 + 5, 256 - 2 * 64 - 5),
              "X 3  Y 2   -1250 ft   Tile 5 HRIVER05   Palette 9");
    post.TileOffset = 99;
    EXPECT_EQ(PostWords(view_, terrain_, lookup_, 3 * 64 + 5, 256 - 2 * 64 - 5),
              "X 3  Y 2   -1250 ft   Tile 99 Not Specified in BIN File   Palette 9");
    view_.MapLeftX = 14;
    EXPECT_EQ(PostWords(view_, terrain_, lookup_, 3 * 64 + 5, 200), "");
}

TEST_F(StatusLineTest, TellsTheHeightInItsOwnCoordinates) {
    view_.L0Mode = true;
    terrain_.Elevations.EMapWidth = 64;
    terrain_.Elevations.L0ElvArr = HeightArray(64 * 64);
    terrain_.Elevations.At(3, 2) = 77;
    EXPECT_EQ(PostWords(view_, terrain_, lookup_, 2 * 16 + 5, 256 - 16 - 5),
              "X 2  Y 1   77 ft");
}

TEST_F(StatusLineTest, TellsTheToolAndWhatItGives) {
    EXPECT_EQ(ToolWords(interaction_, view_, lookup_), "Brush 1: no tile chosen");
    interaction_.SelectedTile = 5;
    interaction_.BrushSize = 3;
    EXPECT_EQ(ToolWords(interaction_, view_, lookup_), "Brush 3: tile 5 HRIVER05");
    interaction_.Tool = MapTool::Fill;
    interaction_.Heights = HeightTool::Lower;
    EXPECT_EQ(ToolWords(interaction_, view_, lookup_), "Fill: tile 5 HRIVER05");
    view_.L0Mode = true;
    interaction_.Heights = HeightTool::None;
    EXPECT_EQ(ToolWords(interaction_, view_, lookup_),
              "Fill: tile 5 HRIVER05, on level 2 and not on the heights");
    interaction_.Heights = HeightTool::Lower;
    interaction_.Feet = 40;
    EXPECT_EQ(ToolWords(interaction_, view_, lookup_), "Fill: lower by 40 ft");
    interaction_.Heights = HeightTool::Set;
    interaction_.Tool = MapTool::Rectangle;
    EXPECT_EQ(ToolWords(interaction_, view_, lookup_), "Rectangle: set to 40 ft");
    interaction_.Heights = HeightTool::Smooth;
    EXPECT_EQ(ToolWords(interaction_, view_, lookup_), "Rectangle: smooth");
    interaction_.Tool = MapTool::Pick;
    EXPECT_EQ(ToolWords(interaction_, view_, lookup_), "Pick");
}

TEST_F(StatusLineTest, TellsWhatWasDone) {
    LocalTime now;
    now.Hour = 9;
    now.Minute = 5;
    EXPECT_EQ(SavedWords("/games/terrain/theater.L2", now), "theater.L2 saved at 09:05");
    EXPECT_EQ(HitWords(1), "1 hit");
    EXPECT_EQ(HitWords(0), "0 hits");
}

TEST_F(StatusLineTest, TellsWhatTheMapWaitsFor) {
    interaction_.Tool = MapTool::Pick;
    interaction_.WaitExportCorner1 = true;
    EXPECT_EQ(ToolWords(interaction_, view_, lookup_),
              "Export: click a corner (Esc ends it)");
    interaction_.ExportFeatures = true;
    interaction_.StopWaiting();
    interaction_.WaitExportCorner2 = true;
    EXPECT_EQ(ToolWords(interaction_, view_, lookup_),
              "Export of features: click the opposite corner (Esc ends it)");
    interaction_.StopWaiting();
    interaction_.WaitImportCorner = true;
    interaction_.ImportWidth = 12;
    interaction_.ImportHeight = 8;
    EXPECT_EQ(ToolWords(interaction_, view_, lookup_),
              "Import of 12 X 8 posts: click its lower left corner (Esc ends it)");
}

TEST_F(StatusLineTest, NamesWhatAnExportHasWritten) {
    EXPECT_EQ(ExportedWords("/a b/coast.exp"), "coast.exp written");
    EXPECT_EQ(ExportedWords("C:\\maps\\north\\"), "north written");
}

} // namespace
} // namespace vardenix
