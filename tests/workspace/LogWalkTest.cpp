#include "workspace/LogWalk.h"

#include "program/ProgramState.h"
#include "support/RecordingCommands.h"
#include "support/RecordingSurface.h"
#include "workspace/ChangedPosts.h"
#include "workspace/UndoPoints.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

using Lines = std::vector<std::string>;

class LogWalkTest : public testing::Test {
protected:
    LogWalkTest() {
        state_.Terrain.MapWidth = 64;
        state_.Terrain.LxArr = PostArray(64 * 64);
        // Four by four posts of 10 pixels, from (20, 30) on.
        view_.MapLeftX = 20;
        view_.MapBottomY = 30;
        view_.ZoomPosts = 2;
        view_.GridCells = 2;
        view_.TilePixels = 20;
    }

    void Set(const std::string& name, int32_t x, int32_t y) {
        const Recording made(state_.Changes, {Paper::Level2}, name);
        state_.Terrain.LxArr(y * 64 + x + 1).TileOffset += 7;
    }
    std::string Back() {
        workspace_.Story.clear();
        walked_ = WalkLog(state_.Changes, Walk::Back, view_, 64, frame_, workspace_);
        return workspace_.Story;
    }

    ProgramState state_;
    MapView view_;
    tests::RecordingCommands workspace_;
    UndoPoints undo_{state_.Terrain, state_.Changes, workspace_};
    StepFrame frame_;
    bool walked_ = false;
};

TEST_F(LogWalkTest, AStepIsToldAndItsPlaceGiven) {
    Set("Import coast.exp", 21, 31);
    EXPECT_EQ(Back(), "commands refresh L2saved");
    EXPECT_EQ(workspace_.Told, "Taken back: Import coast.exp");
    ASSERT_TRUE(frame_.Box.has_value());
    EXPECT_EQ(frame_.Box->X1, 21);
    EXPECT_EQ(frame_.Box->Y1, 31);
    EXPECT_EQ(frame_.Box->X2, 21);
    EXPECT_EQ(frame_.Box->Y2, 31);
    workspace_.Story.clear();
    EXPECT_TRUE(WalkLog(state_.Changes, Walk::Again, view_, 64, frame_, workspace_));
    EXPECT_EQ(workspace_.Story, "commands refresh L2");
    EXPECT_EQ(workspace_.Told, "Done again: Import coast.exp");
}

TEST_F(LogWalkTest, WhatLiesOutOfViewIsScrolledTo) {
    Set("Import", 3, 4);
    EXPECT_EQ(Back(), "commands refresh L2saved scroll(3,4)");
}

TEST_F(LogWalkTest, WithoutAStepNothingHappens) {
    EXPECT_EQ(Back(), "");
    EXPECT_FALSE(walked_);
    EXPECT_EQ(workspace_.Told, "");
}

// Posts 62 to 64 of a row and the first of the next.
TEST_F(LogWalkTest, AStretchOverTheEndOfARowReachesFromEdgeToEdge) {
    Change change{.Name = "Rows"};
    change.Posts.Values = {{{62, 4}}, {{}, {}, {}, {}}, {{}, {}, {}, {}}};
    const auto place = PlaceOf(change, 64, {30, 1, 31, 1});
    ASSERT_TRUE(place.has_value());
    EXPECT_EQ(place->Box.X1, 0);
    EXPECT_EQ(place->Box.X2, 63);
    EXPECT_EQ(place->Box.Y1, 0);
    EXPECT_EQ(place->Box.Y2, 1);
    EXPECT_TRUE(place->AnyIn);
}

TEST_F(LogWalkTest, AChangeOfTheCatalogueHasNoPlaceOnTheMap) {
    {
        const Recording made(state_.Changes, {Paper::Catalogue}, "Type");
        ++state_.Catalogue.Bin.NumTiles;
    }
    EXPECT_EQ(Back(), "commands refresh");
    EXPECT_FALSE(frame_.Box.has_value());
}

TEST_F(LogWalkTest, TheFrameLiesRoundThePosts) {
    tests::Story story;
    tests::RecordingSurface surface(story);
    StepFrame frame;
    frame.DrawMarks(surface, view_);
    EXPECT_TRUE(story.Lines().empty());
    frame.Box = PostBox{21, 31, 22, 31};
    frame.DrawMarks(surface, view_);
    EXPECT_EQ(story.Lines(), (Lines{"box 10,20 30,30 pen 00FFFF 2 none"}));
}

} // namespace
} // namespace vardenix
