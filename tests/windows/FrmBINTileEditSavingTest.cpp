// Saving from the BIN editor, alone and with level 2.
#include "support/PlainUser.h"
#include "windows/FrmBINTileEditTest.h"

namespace vardenix {
namespace {

using tests::Find;
using tests::FrmBINTileEditTest;

TEST_F(FrmBINTileEditTest, SavingTakesTheStarAwayAndTellsOfTheOtherFile) {
    Click("cmdDeleteSet");
    EXPECT_EQ(verbs_.Story, " 0to0 L2");
    EXPECT_TRUE(Shown("cmdSaveBoth"));
    Click("cmdSaveBIN");
    EXPECT_EQ(window_->windowTitle(), "BIN Editor v3.0.1");
    EXPECT_FALSE(Enabled("cmdSaveBIN"));
    EXPECT_EQ(
        Label("lblStatus"),
        "Texture.bin is saved; level 2 with the new tile numbers is still unsaved.");
    state_.Changes.Saved(Paper::Level2);
    window_->ShowNumbers();
    EXPECT_FALSE(Shown("cmdSaveBoth"));
    EXPECT_EQ(ParseBinFile(
                  ReadWholeFile(state_.Catalogue.BinPath, uint64_t{1} << 30).Span(), "")
                  .NumSets,
              2);
}

TEST_F(FrmBINTileEditTest, BothAreSavedTogether) {
    Click("cmdDeleteSet");
    Click("cmdSaveBoth");
    EXPECT_EQ(verbs_.Story, " 0to0 L2 both");
    EXPECT_FALSE(window_->NeedSaveFlag());
    EXPECT_FALSE(Shown("cmdSaveBoth"));
}

// The first set is deleted, so the post of tile 16 has tile 0 by then.
TEST_F(FrmBINTileEditTest, LevelTwoThatWasReadAnewIsCorrectedBeforeItIsCalledRight) {
    Click("cmdDeleteSet");
    ASSERT_EQ(state_.Terrain.LxArr(9).TileOffset, 0);
    {
        const Recording made(state_.Changes, {Paper::Level2}, "Level 2 read anew");
        state_.Terrain.LxArr(9).TileOffset = 16;
    }
    state_.Numbers.LevelTwoReadAnew();
    state_.Changes.Saved(Paper::Level2);
    window_->Open();
    EXPECT_EQ(Label("lblStatus"), "Level 2 was read anew and has its old tile numbers. "
                                  "Correct it before you save.");
    EXPECT_FALSE(Shown("cmdSaveBoth"));
    ASSERT_TRUE(Shown("cmdCorrectL2"));
    verbs_.Story.clear();
    Click("cmdCorrectL2");
    EXPECT_EQ(verbs_.Story, " late0to0 L2");
    EXPECT_EQ(state_.Terrain.LxArr(9).TileOffset, 0);
    EXPECT_FALSE(Shown("cmdCorrectL2"));
    EXPECT_TRUE(Shown("cmdSaveBoth"));
    EXPECT_EQ(Label("lblStatus"),
              "Tile numbers of level 2 have changed: save both files.");
    EXPECT_EQ(state_.Changes.NextBack()->Name, "Tile numbers of level 2 corrected");
}

TEST_F(FrmBINTileEditTest, WhatItSaidOfASaveGoesWithTheNextChange) {
    Click("cmdChangeSet");
    Click("cmdSaveBIN");
    EXPECT_EQ(Label("lblStatus"), "Texture.bin is saved.");
    Click("cmdChangeSet");
    EXPECT_TRUE(window_->windowTitle().startsWith("*"));
    EXPECT_EQ(Label("lblStatus"), "");
}

} // namespace
} // namespace vardenix
