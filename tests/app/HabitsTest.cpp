// What comes back at the next start of the program.
#include "app/OpenedWorkspace.h"
#include "program/DeskFile.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/FrmVXTilePal.h"
#include "workspace/windows/MapToolStrip.h"

#include <QComboBox>
#include <QScrollBar>

namespace vardenix {
namespace {

using tests::Find;

class HabitsTest : public tests::OpenedWorkspace {
protected:
    HabitsTest() {
        for (size_t tile = 2; tile < 16; ++tile) {
            state_.Catalogue.Lookup[tile] = state_.Catalogue.Lookup[1];
            state_.Catalogue.Lookup[tile].Terrain = 3;
            state_.Catalogue.Lookup[tile].Name = "H" + std::to_string(tile);
        }
        state_.Configuration.PalWinVis = true;
        state_.Terrain.LFilename = folder_.Write("a/terrain/theater.L2", "");
        state_.Catalogue.BinPath = folder_.File("a/texture/Texture.bin");
        state_.MAPFile = folder_.File("a/terrain/theater.map");
        state_.Catalogue.DDSFolder = folder_.File("a/texture/texture/");
    }
    void StartAgain() {
        workspace_->StorePlaces();
        state_.Configuration.X = state_.Configuration.Y = 7;
        Open();
    }
};

TEST_F(HabitsTest, ToolBrushAndPaletteComeBackWithoutATile) {
    Open();
    workspace_->Map().ChooseTool(MapTool::Fill);
    workspace_->Map().Strip().SetBrushSize(4);
    workspace_->Windows().Palette->resize(280,
                                          200); // three columns, fewer rows than five
    workspace_->Windows().Palette->ShowFrom(3, 2);
    workspace_->Interaction().SelectedTile = 5;
    const int32_t row = workspace_->Windows().Palette->FirstRow();
    ASSERT_GT(row, 0);
    workspace_->StorePlaces();
    const Desk desk = ReadDesk(state_.Folders.AppPath);
    EXPECT_EQ(desk.Tool, "fill");
    EXPECT_EQ(desk.PaletteClass, 3);
    EXPECT_EQ(desk.PaletteRow, row);
    Open();
    EXPECT_EQ(workspace_->Interaction().Tool, MapTool::Fill);
    EXPECT_EQ(workspace_->Interaction().BrushSize, 4);
    EXPECT_EQ(workspace_->Interaction().SelectedTile, -1);
    EXPECT_EQ(workspace_->Windows().Palette->ShownClass(), 3);
    EXPECT_EQ(workspace_->Windows().Palette->FirstRow(), row);
}

TEST_F(HabitsTest, APickIsNoHabit) {
    Open();
    workspace_->Map().ChooseTool(MapTool::Rectangle);
    workspace_->Map().ChooseTool(MapTool::Pick);
    StartAgain();
    EXPECT_EQ(workspace_->Interaction().Tool, MapTool::Rectangle);
}

TEST_F(HabitsTest, WhatTheFileSaysWrongCountsForNothing) {
    folder_.Write("Desk.ini", "[WINDOWS]\r\nONE_WINDOW=0\r\n[MAP]\r\nTOOL=plough\r\n"
                              "BRUSH_SIZE=999\r\n[PALETTE]\r\nCLASS=77\r\nROW=-5\r\n");
    Open();
    EXPECT_EQ(workspace_->Interaction().Tool, MapTool::Brush);
    EXPECT_EQ(workspace_->Interaction().BrushSize, 9);
    EXPECT_EQ(workspace_->Windows().Palette->FirstRow(), 0);
}

TEST_F(HabitsTest, OnlyARecentTheaterComesBackAsItWasSeen) {
    Open();
    workspace_->ScrollTo(20, 11);
    workspace_->Map().ZoomBy(-1);
    const MapView seen = workspace_->View();
    StartAgain();
    EXPECT_EQ(workspace_->View().MapLeftX, 7); // what was stored of the position holds
    workspace_->View().MapLeftX = seen.MapLeftX;
    workspace_->View().MapBottomY = seen.MapBottomY;
    workspace_->View().ZoomPosts = seen.ZoomPosts;
    workspace_->StartAnew(folder_.File("a"));
    EXPECT_EQ(ends_, 1);
    state_.Configuration.X = state_.Configuration.Y = 3;
    Open();
    EXPECT_EQ(workspace_->View().MapLeftX, seen.MapLeftX);
    EXPECT_EQ(workspace_->View().MapBottomY, seen.MapBottomY);
    EXPECT_EQ(workspace_->View().ZoomPosts, seen.ZoomPosts);
    EXPECT_EQ(ReadDesk(state_.Folders.AppPath).Resume, "");
}

} // namespace
} // namespace vardenix
