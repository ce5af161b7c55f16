#include "workspace/UndoPoints.h"

#include "support/RecordingCommands.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

TerrainPost Post(int32_t tile) {
    TerrainPost post{};
    post.TileOffset = tile;
    return post;
}

class UndoPointsTest : public testing::Test {
protected:
    UndoPointsTest() {
        terrain_.MapWidth = 16;
        terrain_.LxArr = PostArray(256);
        terrain_.Elevations.EMapWidth = 64;
        terrain_.Elevations.L0ElvArr = HeightArray(64 * 64);
    }

    // As the map does it: the post is changed, then the edit is remembered.
    void Paint(int32_t serial, int32_t tile) {
        const TerrainPost old = terrain_.LxArr(serial);
        terrain_.LxArr(serial) = Post(tile);
        undo_.AddPostUndo(old, Post(tile), serial);
    }
    void Raise(int32_t x, int32_t y, int16_t feet) {
        const int16_t old = terrain_.Elevations.At(x, y);
        terrain_.Elevations.At(x, y) = feet;
        undo_.AddElvUndo(old, feet, y, x);
    }
    int32_t Tile(int32_t serial) const { return terrain_.LxArr(serial).TileOffset; }

    Terrain terrain_;
    tests::RecordingCommands workspace_;
    UndoPoints undo_{terrain_, workspace_};
};

TEST_F(UndoPointsTest, BothStacksBeginEmpty) {
    EXPECT_EQ(undo_.UndoPostStack().UpperBound(), 0);
    EXPECT_EQ(undo_.UndoElvStack().UpperBound(), 0);
    for (const Layer layer : {Layer::Posts, Layer::Heights}) {
        EXPECT_FALSE(undo_.CanUndo(layer));
        EXPECT_FALSE(undo_.CanRedo(layer));
        undo_.Undo(layer);
        undo_.Redo(layer);
    }
    EXPECT_EQ(workspace_.Story, "");
}

TEST_F(UndoPointsTest, EntryOneIsTheNewest) {
    Paint(3, 10);
    Paint(4, 11);
    ASSERT_EQ(undo_.UndoPostStack().UpperBound(), 2);
    EXPECT_EQ(undo_.UndoPostStack().At(1).Serial, 4);
    EXPECT_EQ(undo_.UndoPostStack().At(2).Serial, 3);
    const int32_t oldTile = undo_.UndoPostStack().At(1).OldPost.TileOffset;
    const int32_t newTile = undo_.UndoPostStack().At(1).NewPost.TileOffset;
    EXPECT_EQ(oldTile, 0);
    EXPECT_EQ(newTile, 11);
    EXPECT_THROW(undo_.UndoPostStack().At(3), std::out_of_range);
}

TEST_F(UndoPointsTest, AddingLeavesTheTerrainAloneAndRepaints) {
    undo_.AddPostUndo(Post(1), Post(2), 5);
    EXPECT_EQ(Tile(5), 0);
    EXPECT_EQ(workspace_.Story, "commands refresh");
}

TEST_F(UndoPointsTest, StepsBackAndForwardOneEditAtATime) {
    Paint(3, 10);
    Paint(3, 11);
    undo_.Undo(Layer::Posts);
    EXPECT_EQ(Tile(3), 10);
    EXPECT_EQ(undo_.UndoPostPos(), 1);
    undo_.Undo(Layer::Posts);
    EXPECT_EQ(Tile(3), 0);
    undo_.Redo(Layer::Posts);
    EXPECT_EQ(Tile(3), 10);
    undo_.Redo(Layer::Posts);
    EXPECT_EQ(Tile(3), 11);
    EXPECT_EQ(undo_.UndoPostPos(), 0);
}

TEST_F(UndoPointsTest, WritesTheWholePost) {
    TerrainPost full{};
    full.TileOffset = 7;
    full.Elevation = -120;
    full.Palette = 9;
    full.X1 = 3;
    full.X2 = 255;
    terrain_.LxArr(8) = full;
    undo_.AddPostUndo(Post(0), full, 8);
    undo_.Undo(Layer::Posts);
    EXPECT_TRUE(terrain_.LxArr(8) == Post(0));
    undo_.Redo(Layer::Posts);
    EXPECT_TRUE(terrain_.LxArr(8) == full);
}

TEST_F(UndoPointsTest, ButtonsFollowTheEndsOfTheStack) {
    Paint(1, 1);
    Paint(1, 2);
    EXPECT_TRUE(undo_.CanUndo(Layer::Posts));
    EXPECT_FALSE(undo_.CanRedo(Layer::Posts));
    undo_.Undo(Layer::Posts);
    EXPECT_TRUE(undo_.CanUndo(Layer::Posts));
    EXPECT_TRUE(undo_.CanRedo(Layer::Posts));
    undo_.Undo(Layer::Posts);
    EXPECT_FALSE(undo_.CanUndo(Layer::Posts));
    EXPECT_TRUE(undo_.CanRedo(Layer::Posts));
}

TEST_F(UndoPointsTest, TheHundredAndFirstEditLosesTheOldest) {
    for (int32_t i = 1; i <= 101; ++i)
        Paint(i, 1000 + i);
    EXPECT_EQ(undo_.UndoPostStack().UpperBound(), 100);
    EXPECT_EQ(undo_.UndoPostStack().At(1).Serial, 101);
    EXPECT_EQ(undo_.UndoPostStack().At(100).Serial, 2);
    for (int i = 0; i < 100; ++i)
        undo_.Undo(Layer::Posts);
    EXPECT_FALSE(undo_.CanUndo(Layer::Posts));
    EXPECT_EQ(Tile(1), 1001); // no longer on the stack
    EXPECT_EQ(Tile(2), 0);
    EXPECT_EQ(Tile(101), 0);
}

TEST_F(UndoPointsTest, ANewEditDropsWhatIsUndone) {
    for (int32_t i = 1; i <= 5; ++i)
        Paint(i, 10 + i);
    undo_.Undo(Layer::Posts);
    undo_.Undo(Layer::Posts);
    Paint(9, 99);
    // Five entries less two undone, plus the new one.
    ASSERT_EQ(undo_.UndoPostStack().UpperBound(), 4);
    EXPECT_EQ(undo_.UndoPostStack().At(1).Serial, 9);
    EXPECT_EQ(undo_.UndoPostStack().At(2).Serial, 3);
    EXPECT_EQ(undo_.UndoPostStack().At(4).Serial, 1);
    EXPECT_FALSE(undo_.CanRedo(Layer::Posts));
    EXPECT_EQ(undo_.UndoPostPos(), 0);
}

TEST_F(UndoPointsTest, AFullStackWithUndoneEntriesShrinks) {
    for (int32_t i = 1; i <= 100; ++i)
        Paint(i, i);
    for (int i = 0; i < 10; ++i)
        undo_.Undo(Layer::Posts);
    Paint(200, 7);
    EXPECT_EQ(undo_.UndoPostStack().UpperBound(), 91);
}

TEST_F(UndoPointsTest, UndoWritesTheOldPostWhateverThePostIsNow) {
    Paint(3, 10);
    terrain_.LxArr(3) = Post(555); // a region stamped over it, or a restore point
    undo_.Undo(Layer::Posts);
    EXPECT_EQ(Tile(3), 0);
}

TEST_F(UndoPointsTest, EachModeHasItsOwnStack) {
    Paint(3, 10);
    Raise(5, 6, 700);
    ASSERT_EQ(undo_.UndoElvStack().UpperBound(), 1);
    EXPECT_EQ(undo_.UndoElvStack().At(1).X, 5);
    EXPECT_EQ(undo_.UndoElvStack().At(1).Y, 6);
    undo_.Undo(Layer::Heights);
    EXPECT_EQ(terrain_.Elevations.At(5, 6), 0);
    EXPECT_EQ(Tile(3), 10);
    EXPECT_EQ(undo_.UndoPostPos(), 0);
    undo_.Redo(Layer::Heights);
    EXPECT_EQ(terrain_.Elevations.At(5, 6), 700);
    undo_.Undo(Layer::Posts);
    EXPECT_EQ(Tile(3), 0);
    EXPECT_EQ(terrain_.Elevations.At(5, 6), 700);
}

TEST_F(UndoPointsTest, AStepRepaintsAndMarksWhatDiffersFromTheDisk) {
    Paint(3, 10);
    Raise(1, 1, 5);
    undo_.Saved(Layer::Posts);
    undo_.Saved(Layer::Heights);
    workspace_.Story.clear();
    undo_.Undo(Layer::Posts);
    EXPECT_EQ(workspace_.Story, "commands refresh L2");
    workspace_.Story.clear();
    undo_.Undo(Layer::Heights);
    EXPECT_EQ(workspace_.Story, "commands refresh L0");
}

TEST_F(UndoPointsTest, EnteringAModeChangesNothingButTheButtons) {
    Paint(3, 10);
    undo_.Undo(Layer::Posts);
    terrain_.LxArr(3) = Post(44);
    workspace_.Story.clear();
    undo_.ShowButtons(Layer::Posts);
    EXPECT_EQ(workspace_.Story, "commands refresh");
    EXPECT_EQ(undo_.UndoPostPos(), 1);
    EXPECT_EQ(Tile(3), 44);
    EXPECT_TRUE(undo_.CanRedo(Layer::Posts));
}

TEST_F(UndoPointsTest, OtherElevationsBeginWithAnEmptyStack) {
    Paint(3, 10);
    Raise(5, 6, 700);
    undo_.ForgetElevations();
    EXPECT_FALSE(undo_.CanUndo(Layer::Heights));
    EXPECT_TRUE(undo_.CanUndo(Layer::Posts));
}

} // namespace
} // namespace vardenix
