#include "program/ProgramState.h"
#include "support/RecordingCommands.h"
#include "workspace/UndoPoints.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

class UndoStrokesTest : public testing::Test {
protected:
    UndoStrokesTest() {
        terrain_.MapWidth = 16;
        terrain_.LxArr = PostArray(256);
        terrain_.Elevations.EMapWidth = 64;
        terrain_.Elevations.L0ElvArr = HeightArray(64 * 64);
        view_.GridCells = 4;
    }

    // As the map does it: painted, then remembered, then marked.
    void Stroke(std::vector<TileRun> runs) {
        WriteNew(terrain_.LxArr, runs);
        undo_.AddStroke(std::move(runs));
    }
    void GoOn(std::vector<TileRun> runs) {
        WriteNew(terrain_.LxArr, runs);
        undo_.ExtendStroke(std::move(runs));
    }
    void Click(int32_t serial, int32_t tile) {
        const TerrainPost old = terrain_.LxArr(serial);
        terrain_.LxArr(serial).TileOffset = tile;
        undo_.AddPostUndo(old, terrain_.LxArr(serial), serial);
    }
    // As the BIN editor does it: the catalogue changes, and the steps follow.
    void Renumber(const TileRenumbering& numbers) {
        const Recording made(state_.Changes, {Paper::Catalogue}, "Append a set");
        ++state_.Catalogue.Bin.NumTiles;
        undo_.TilesRenumbered(numbers);
    }
    void Import(int32_t serial, int32_t tile) {
        const Recording made(state_.Changes, {Paper::Level2}, "Import coast.exp at 4, 0");
        terrain_.LxArr(serial).TileOffset = tile;
    }
    int32_t Tile(int32_t serial) const { return terrain_.LxArr(serial).TileOffset; }
    std::string Undo(Layer layer = Layer::Posts) {
        workspace_.Story.clear();
        undo_.Undo(layer);
        return workspace_.Story;
    }

    ProgramState state_;
    Terrain& terrain_ = state_.Terrain;
    MapView view_;
    tests::RecordingCommands workspace_;
    UndoPoints undo_{terrain_, state_.Changes, workspace_};
};

TEST_F(UndoStrokesTest, AStrokeIsOneStep) {
    Stroke({{3, 2, 0, 7}, {20, 1, 0, 7}});
    GoOn({{40, 3, 0, 7}});
    EXPECT_EQ(undo_.UndoPostStack().UpperBound(), 1);
    Undo();
    for (const int32_t serial : {3, 4, 20, 40, 41, 42})
        EXPECT_EQ(Tile(serial), 0) << serial;
    undo_.Redo(Layer::Posts);
    for (const int32_t serial : {3, 4, 20, 40, 41, 42})
        EXPECT_EQ(Tile(serial), 7) << serial;
    EXPECT_EQ(Tile(5), 0);
}

TEST_F(UndoStrokesTest, AStrokeChangesTileNumbersOnly) {
    terrain_.LxArr(21).Elevation = 100;
    Stroke({{20, 2, 0, 7}});
    terrain_.LxArr(21).Elevation = 200;
    Undo();
    const int16_t elevation = terrain_.LxArr(21).Elevation;
    EXPECT_EQ(elevation, 200);
}

TEST_F(UndoStrokesTest, AStrokeThatWasUndoneWhileItWentOnBeginsAnew) {
    Stroke({{3, 1, 0, 7}});
    Undo();
    GoOn({{4, 1, 0, 7}});
    EXPECT_EQ(undo_.UndoPostStack().UpperBound(), 1);
    Undo();
    EXPECT_EQ(Tile(3), 0);
    EXPECT_EQ(Tile(4), 0);
    undo_.Redo(Layer::Posts);
    EXPECT_EQ(Tile(3), 0);
    EXPECT_EQ(Tile(4), 7);
}

TEST_F(UndoStrokesTest, WhatChangedNothingIsNoStep) {
    undo_.AddStroke(std::vector<TileRun>{});
    undo_.ExtendStroke(std::vector<HeightRun>{});
    EXPECT_FALSE(undo_.CanUndo(Layer::Posts));
    EXPECT_FALSE(undo_.CanUndo(Layer::Heights));
    EXPECT_EQ(workspace_.Story, "");
}

TEST_F(UndoStrokesTest, AHundredStrokesAreRemembered) {
    for (int i = 0; i < 101; ++i)
        Stroke({{1, 5, i, i + 1}});
    EXPECT_EQ(undo_.UndoPostStack().UpperBound(), 100);
    for (int i = 0; i < 100; ++i)
        Undo();
    EXPECT_EQ(Tile(5), 1);
    EXPECT_FALSE(undo_.CanUndo(Layer::Posts));
}

TEST_F(UndoStrokesTest, HeightsAreTakenBackToo) {
    terrain_.Elevations.At(3, 2) = 50;
    std::vector<HeightRun> runs{{67, 1, 50, 150}, {68, 2, 0, 100}};
    WriteNew(terrain_.Elevations.L0ElvArr, runs);
    undo_.AddStroke(runs);
    EXPECT_EQ(undo_.UndoElvStack().At(1).X, 3);
    EXPECT_EQ(undo_.UndoElvStack().At(1).Y, 2);
    Undo(Layer::Heights);
    EXPECT_EQ(terrain_.Elevations.At(3, 2), 50);
    EXPECT_EQ(terrain_.Elevations.At(5, 2), 0);
    undo_.Redo(Layer::Heights);
    EXPECT_EQ(terrain_.Elevations.At(3, 2), 150);
    EXPECT_EQ(terrain_.Elevations.At(5, 2), 100);
}

TEST_F(UndoStrokesTest, MemoryIsBounded) {
    using Stack = UndoStack<UndoPostEntry>;
    const std::vector<TileRun> big(Stack::MostRuns / 4);
    Stack stack;
    for (int i = 0; i < 6; ++i)
        stack.Add({i, {}, {}, big});
    EXPECT_EQ(stack.UpperBound(), 4);
    EXPECT_EQ(stack.At(4).Serial, 2);
    // The newest is kept, whatever it takes.
    stack.Extend([&](UndoPostEntry& step) { step.Stroke.resize(Stack::MostRuns + 1); });
    EXPECT_EQ(stack.UpperBound(), 1);
    EXPECT_EQ(stack.At(1).Serial, 5);
}

// A set comes in before number 16 and the first goes: 20 becomes 36 and then 20 again, 3
// falls to 0.
TEST_F(UndoStrokesTest, EveryPostOfAStrokeFollowsTheCatalogue) {
    for (const int32_t serial : {9, 10, 11})
        terrain_.LxArr(serial).TileOffset = 20;
    Stroke({{9, 2, 20, 3}, {11, 1, 20, 3}});
    Renumber(TileRenumbering::SetInserted(16, 32));
    Undo();
    for (const int32_t serial : {9, 10, 11})
        EXPECT_EQ(Tile(serial), 36);
    Renumber(TileRenumbering::SetDeleted(0, 48));
    undo_.Redo(Layer::Posts);
    for (const int32_t serial : {9, 10, 11})
        EXPECT_EQ(Tile(serial), 0);
    Undo();
    for (const int32_t serial : {9, 10, 11})
        EXPECT_EQ(Tile(serial), 20);
}

TEST_F(UndoStrokesTest, UndoToWhatWasSavedTakesTheStarOff) {
    Click(3, 7);
    EXPECT_EQ(Undo(), "commands refresh L2saved");
    undo_.Redo(Layer::Posts);
    state_.Changes.Saved(Paper::Level2);
    EXPECT_EQ(Undo(), "commands refresh L2");
    workspace_.Story.clear();
    undo_.Redo(Layer::Posts);
    EXPECT_EQ(workspace_.Story, "commands refresh L2saved");
    Click(4, 7);
    Click(5, 7);
    EXPECT_EQ(Undo(), "commands refresh L2");
    EXPECT_EQ(Undo(), "commands refresh L2saved");
}

TEST_F(UndoStrokesTest, WhatWasSavedMayHaveFallenOffTheStack) {
    for (int i = 0; i < 101; ++i)
        Click(3, i + 1);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(Undo(), "commands refresh L2");
    EXPECT_EQ(Undo(), "");
}

TEST_F(UndoStrokesTest, WhatWasSavedMayHaveBeenDroppedByANewEdit) {
    Click(3, 7);
    state_.Changes.Saved(Paper::Level2);
    Undo();
    Click(3, 8);
    EXPECT_EQ(Undo(), "commands refresh L2");
}

TEST_F(UndoStrokesTest, AStrokeThatGoesOnAfterASaveIsUnsaved) {
    Stroke({{3, 1, 0, 7}});
    state_.Changes.Saved(Paper::Level2);
    GoOn({{4, 1, 0, 7}});
    EXPECT_EQ(Undo(), "commands refresh L2");
    workspace_.Story.clear();
    undo_.Redo(Layer::Posts);
    EXPECT_EQ(workspace_.Story, "commands refresh L2");
}

// A stamped region, a pass of the catalogue, a restore point: an arrow takes back the
// edit before it, which is no way to what was saved.
TEST_F(UndoStrokesTest, AfterAnyOtherChangeNoStepLeadsBack) {
    Click(3, 7);
    Import(5, 9);
    EXPECT_EQ(Undo(), "commands refresh L2");
    state_.Changes.Saved(Paper::Level2);
    Click(3, 8);
    {
        const Recording pass(state_.Changes, {Paper::Level2}, "Append a set");
        terrain_.LxArr(5).TileOffset = 25;
        undo_.TilesRenumbered(TileRenumbering::SetInserted(0, 32));
    }
    EXPECT_EQ(Undo(), "commands refresh L2");
    EXPECT_EQ(Tile(3), 16);
}

// What an arrow takes back behind an import can be brought again, and taken back, by the
// log; the import stays meanwhile.
TEST_F(UndoStrokesTest, AnArrowPastAnImportIsAnEntryOfItsOwn) {
    Click(3, 7);
    Import(5, 9);
    Undo();
    EXPECT_EQ(Tile(3), 0);
    EXPECT_EQ(Tile(5), 9);
    EXPECT_EQ(workspace_.Told, "Taken back: paint at 2, 0. The import after it stays; "
                               "Ctrl+Z takes that back");
    EXPECT_EQ(undo_.UndoPostPos(), 1);
    ASSERT_EQ(state_.Changes.Count(), 3U);
    EXPECT_EQ(state_.Changes.At(2).Name, "Undo paint at 2, 0");
    state_.Changes.Back();
    EXPECT_EQ(Tile(3), 7);
    EXPECT_EQ(undo_.UndoPostPos(), 0);
    state_.Changes.Back(); // the import
    EXPECT_EQ(Tile(5), 0);
    state_.Changes.Back();
    EXPECT_EQ(Tile(3), 0);
    EXPECT_EQ(undo_.UndoPostPos(), 1);
    EXPECT_FALSE(state_.Changes.AnyUnsaved());
    state_.Changes.Again();
    EXPECT_EQ(undo_.UndoPostPos(), 0);
}

TEST_F(UndoStrokesTest, ArrowsAndTheLogAgree) {
    Click(3, 7);
    Click(4, 7);
    Undo(); // by the arrow
    EXPECT_EQ(state_.Changes.Position(), 1U);
    state_.Changes.Back(); // by the key
    EXPECT_EQ(undo_.UndoPostPos(), 2);
    EXPECT_TRUE(undo_.CanRedo(Layer::Posts));
    undo_.Redo(Layer::Posts);
    EXPECT_EQ(state_.Changes.Position(), 1U);
    EXPECT_EQ(Tile(3), 7);
    EXPECT_EQ(Tile(4), 0);
}

// The steps are those of before the pass, under their old numbers, once it is taken back.
TEST_F(UndoStrokesTest, APassTakenBackGivesTheStepsTheirNumbersBack) {
    Click(3, 7);
    {
        const Recording pass(state_.Changes, {Paper::Level2}, "Append a set");
        terrain_.LxArr(3).TileOffset = 23;
        undo_.TilesRenumbered(TileRenumbering::SetInserted(0, 32));
    }
    const int32_t renumbered = undo_.UndoPostStack().At(1).NewPost.TileOffset;
    EXPECT_EQ(renumbered, 23);
    state_.Changes.Back();
    const int32_t again = undo_.UndoPostStack().At(1).NewPost.TileOffset;
    EXPECT_EQ(again, 7);
    EXPECT_EQ(Undo(), "commands refresh L2saved");
    EXPECT_EQ(Tile(3), 0);
}

TEST_F(UndoStrokesTest, EachModeIsSavedByItself) {
    terrain_.Elevations.At(1, 1) = 5;
    undo_.AddElvUndo(0, 5, 1, 1);
    Click(3, 7);
    state_.Changes.Saved(Paper::Heights);
    EXPECT_EQ(Undo(Layer::Heights), "commands refresh L0");
    EXPECT_EQ(Undo(Layer::Posts), "commands refresh L2saved");
}

TEST_F(UndoStrokesTest, AStepThatCannotBeSeenIsScrolledTo) {
    view_.MapLeftX = 8; // posts (8 to 11, 8 to 11), from 0
    view_.MapBottomY = 8;
    Stroke({{2 * 16 + 4, 3, 0, 7}, {5 * 16 + 2, 1, 0, 7}}); // (3..5, 2), (1, 5)
    workspace_.Story.clear();
    UndoInView(undo_, view_, workspace_);
    EXPECT_EQ(workspace_.Story, "commands refresh L2saved scroll(1,2)");
    workspace_.Story.clear();
    RedoInView(undo_, view_, workspace_);
    EXPECT_EQ(workspace_.Story, "commands refresh L2 scroll(1,2)");
    workspace_.Story.clear();
    RedoInView(undo_, view_, workspace_);
    EXPECT_EQ(workspace_.Story, "");
}

TEST_F(UndoStrokesTest, AStepOfWhichAPostIsSeenIsNot) {
    view_.MapLeftX = 8;
    view_.MapBottomY = 8;
    Click(8 * 16 + 9, 7); // (8, 8)
    workspace_.Story.clear();
    UndoInView(undo_, view_, workspace_);
    EXPECT_EQ(workspace_.Story, "commands refresh L2saved");
    Click(11 * 16 + 12, 7); // (11, 11)
    Click(11 * 16 + 13, 7); // (12, 11)
    workspace_.Story.clear();
    UndoInView(undo_, view_, workspace_);
    EXPECT_EQ(workspace_.Story, "commands refresh L2 scroll(12,11)");
    workspace_.Story.clear();
    UndoInView(undo_, view_, workspace_);
    EXPECT_EQ(workspace_.Story, "commands refresh L2saved");
    // A stroke round the view has its box in view, but no post.
    Stroke({{4 * 16 + 5, 1, 0, 7}, {14 * 16 + 15, 1, 0, 7}}); // (4, 4), (14, 14)
    workspace_.Story.clear();
    UndoInView(undo_, view_, workspace_);
    EXPECT_EQ(workspace_.Story, "commands refresh L2saved scroll(4,4)");
}

TEST_F(UndoStrokesTest, HeightsAreLookedForInTheirPosts) {
    view_.L0Mode = true;
    view_.MapLeftX = 2;
    view_.MapBottomY = 1;
    undo_.AddStroke(
        std::vector<HeightRun>{{4 * 64 + 8, 2, 0, 9}}); // (7 and 8, 4): posts 1, 2
    workspace_.Story.clear();
    UndoInView(undo_, view_, workspace_);
    EXPECT_EQ(workspace_.Story, "commands refresh L0saved");
    undo_.AddElvUndo(0, 9, 4, 9); // index (9, 4): post (2, 0)
    workspace_.Story.clear();
    UndoInView(undo_, view_, workspace_);
    EXPECT_EQ(workspace_.Story, "commands refresh L0saved scroll(2,0)");
}

TEST_F(UndoStrokesTest, AnArrowNamesTheNewestChangeThatStays) {
    Stroke({{18, 2, 0, 7}});
    {
        const Recording made(state_.Changes, {Paper::Level2}, "Set 215 posts");
        terrain_.LxArr(5).TileOffset = 9;
    }
    Undo();
    EXPECT_EQ(workspace_.Told, "Taken back: paint at 1, 1. \"Set 215 posts\" after it "
                               "stays; Ctrl+Z takes that back");
    undo_.Redo(Layer::Posts); // which is the newest change by now
    EXPECT_EQ(Tile(18), 7);
}

} // namespace
} // namespace vardenix
