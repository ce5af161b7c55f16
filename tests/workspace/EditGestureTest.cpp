#include "workspace/EditGesture.h"

#include "program/ProgramState.h"
#include "support/RecordingCommands.h"
#include "workspace/GridShapes.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace vardenix {
namespace {

// A theater of 64 posts a side in a view of 8 by 8 posts of 32 pixels from (10, 20): the
// middle of post (x, y) of the view is (x * 32 + 16, 256 - y * 32 - 16).
class EditGestureTest : public testing::Test {
protected:
    EditGestureTest() {
        terrain_.MapWidth = 64;
        terrain_.LxArr = PostArray(64 * 64);
        view_.GridCells = 8;
        view_.TilePixels = 32;
        view_.MapLeftX = 10;
        view_.MapBottomY = 20;
        interaction_.SelectedTile = 7;
    }

    void EditElevations(HeightTool tool, int16_t feet) {
        view_.L0Mode = true;
        terrain_.Elevations.EMapWidth = 256;
        terrain_.Elevations.L0ElvArr = HeightArray(256 * 256);
        interaction_.Heights = tool;
        interaction_.Feet = feet;
    }
    static double X(int x) { return x * 32 + 16; }
    static double Y(int y) { return 256 - y * 32 - 16; }
    void Begin(int x, int y, GestureKeys keys = {}) { gesture_.Begin(X(x), Y(y), keys); }
    std::optional<PostBox> Move(int x, int y) { return gesture_.Move(X(x), Y(y)); }
    void End(int x, int y) { gesture_.End(X(x), Y(y)); }
    int32_t Tile(int x, int y) const {
        return terrain_.LxArr((int64_t{y} + 20) * 64 + x + 10 + 1).TileOffset;
    }
    // All posts with the tile, by their places in the view.
    std::set<std::pair<int, int>> Painted() const {
        std::set<std::pair<int, int>> posts;
        for (int32_t serial = 1; serial <= 64 * 64; ++serial)
            if (terrain_.LxArr(serial).TileOffset == 7)
                posts.insert({(serial - 1) % 64 - 10, (serial - 1) / 64 - 20});
        return posts;
    }
    int16_t Steps() const { return undo_.UndoPostStack().UpperBound(); }
    static std::vector<int32_t> Sides(const std::optional<PostBox>& box) {
        return box ? std::vector{box->X1, box->Y1, box->X2, box->Y2}
                   : std::vector<int32_t>{};
    }

    ProgramState state_;
    Terrain& terrain_ = state_.Terrain;
    MapView view_;
    MapInteraction interaction_;
    tests::RecordingCommands workspace_;
    UndoPoints undo_{terrain_, state_.Changes, workspace_};
    EditGesture gesture_{terrain_, view_, interaction_, undo_, workspace_};
};

TEST_F(EditGestureTest, AStrokePaintsWhatThePointerCrosses) {
    Begin(1, 1);
    EXPECT_EQ(workspace_.Story, "commands refresh L2"); // the click that it begins with
    workspace_.Story.clear();
    const auto changed = Move(5, 1); // far from the last event
    EXPECT_EQ(Sides(changed), (std::vector{12, 21, 15, 21}));
    Move(5, 3);
    End(5, 3);
    EXPECT_EQ(Painted(), (std::set<std::pair<int, int>>{
                             {1, 1}, {2, 1}, {3, 1}, {4, 1}, {5, 1}, {5, 2}, {5, 3}}));
    EXPECT_EQ(workspace_.Story, "L2 L2"); // no repaint of the whole
    EXPECT_EQ(workspace_.Told, "7 posts changed");
    EXPECT_EQ(Steps(), 1);
    undo_.Undo(Layer::Posts);
    EXPECT_TRUE(Painted().empty());
    undo_.Redo(Layer::Posts);
    EXPECT_EQ(Painted().size(), 7U);
}

TEST_F(EditGestureTest, MovingOnAPaintedPostIsNoChange) {
    Begin(1, 1);
    workspace_.Story.clear();
    EXPECT_FALSE(gesture_.Move(X(1) + 3, Y(1)).has_value());
    EXPECT_EQ(workspace_.Story, "");
    EXPECT_EQ(workspace_.Told, "1 post changed");
}

TEST_F(EditGestureTest, TwoStrokesAreTwoSteps) {
    Begin(1, 1);
    Move(3, 1);
    End(3, 1);
    Begin(5, 5);
    Move(6, 5);
    End(6, 5);
    EXPECT_EQ(Steps(), 2);
    undo_.Undo(Layer::Posts);
    EXPECT_EQ(Painted().size(), 3U);
}

TEST_F(EditGestureTest, WithoutATileNothingIsPainted) {
    interaction_.SelectedTile = -1;
    for (const MapTool tool : {MapTool::Brush, MapTool::Rectangle, MapTool::Fill}) {
        interaction_.Tool = tool;
        Begin(1, 1);
        EXPECT_FALSE(gesture_.Goes());
        Move(5, 5);
        End(5, 5);
    }
    EXPECT_EQ(Steps(), 0);
    EXPECT_EQ(workspace_.Story, "");
}

TEST_F(EditGestureTest, AStrokeMayLeaveThePictureAndComeBack) {
    Begin(6, 2);
    gesture_.Move(400, Y(2)); // 16 posts to the right
    EXPECT_EQ(Painted(), (std::set<std::pair<int, int>>{{6, 2}, {7, 2}}));
    gesture_.Move(400, Y(5)); // outside all the way
    EXPECT_EQ(Painted().size(), 2U);
    Move(5, 5);
    EXPECT_EQ(Painted(),
              (std::set<std::pair<int, int>>{{6, 2}, {7, 2}, {7, 5}, {6, 5}, {5, 5}}));
    EXPECT_EQ(Steps(), 1);
}

TEST_F(EditGestureTest, ALineIsCutWhereItLeavesThePicture) {
    MapView view;
    view.GridCells = 2;
    view.TilePixels = 50;
    double x1 = 5, y1 = 5, x2 = -5, y2 = 15;
    ASSERT_TRUE(CutToPicture(view, x1, y1, x2, y2));
    EXPECT_EQ(x1, 5);
    EXPECT_EQ(x2, 0);
    EXPECT_EQ(y2, 10);
    x1 = -10, y1 = -20, x2 = 110, y2 = 100;
    ASSERT_TRUE(CutToPicture(view, x1, y1, x2, y2));
    EXPECT_EQ(x1, 10);
    EXPECT_EQ(y1, 0);
    EXPECT_EQ(x2, 109 - 10);
    x1 = -10, y1 = 5, x2 = -10, y2 = 50;
    EXPECT_FALSE(CutToPicture(view, x1, y1, x2, y2));
    x1 = -10, y1 = 5, x2 = 5, y2 = -10;
    EXPECT_FALSE(CutToPicture(view, x1, y1, x2, y2));
    view.RoomWidth = 300;
    view.RoomHeight = 80;
    x1 = 10, y1 = 0, x2 = 410, y2 = 100;
    ASSERT_TRUE(CutToPicture(view, x1, y1, x2, y2));
    EXPECT_EQ(x2, 299); // sooner than 316, where the line meets the lower edge
    EXPECT_EQ(y2, 72.25);
}

TEST_F(EditGestureTest, AStrokeStopsAtTheEdgeOfTheTerrain) {
    view_.MapLeftX = 60;
    Begin(2, 0);
    Move(7, 0);
    End(7, 0);
    EXPECT_EQ(Painted(), (std::set<std::pair<int, int>>{{52, 0}, {53, 0}}));
}

TEST_F(EditGestureTest, AStrokeMayBeginBeyondTheEdge) {
    view_.MapLeftX = 60;
    Begin(6, 0);
    EXPECT_EQ(workspace_.Story, "");
    Move(3, 0);
    EXPECT_EQ(Painted(), (std::set<std::pair<int, int>>{{53, 0}}));
    EXPECT_EQ(Steps(), 1);
}

TEST_F(EditGestureTest, WhileTheProgramScrollsNothingIsPainted) {
    Begin(1, 1);
    view_.ScrollBusy = true;
    Move(3, 1);
    view_.ScrollBusy = false;
    EXPECT_EQ(Painted().size(), 1U);
}

TEST_F(EditGestureTest, AWideBrushIsOneStepTooAndPaintsEachPostOnce) {
    interaction_.BrushSize = 3;
    Begin(2, 2);
    Move(4, 2);
    End(4, 2);
    EXPECT_EQ(Painted().size(), 15U);
    EXPECT_TRUE(Painted().contains({1, 1}));
    EXPECT_TRUE(Painted().contains({5, 3}));
    EXPECT_EQ(workspace_.Told, "15 posts changed");
    EXPECT_EQ(Steps(), 1);
    undo_.Undo(Layer::Posts);
    EXPECT_TRUE(Painted().empty());
}

TEST_F(EditGestureTest, ARectangleIsFilledWhenTheButtonIsLetGo) {
    interaction_.Tool = MapTool::Rectangle;
    Begin(4, 3);
    Move(2, 1);
    EXPECT_TRUE(Painted().empty());
    const auto preview = gesture_.Preview();
    ASSERT_TRUE(preview.has_value());
    EXPECT_EQ(preview->LowerLeft.X, 2 * 32);
    EXPECT_EQ(preview->LowerLeft.Y, 256 - 32);
    EXPECT_EQ(preview->UpperRight.X, 5 * 32);
    EXPECT_EQ(preview->UpperRight.Y, 256 - 4 * 32);
    workspace_.Story.clear();
    End(2, 1);
    EXPECT_EQ(workspace_.Story, "commands refresh L2");
    EXPECT_EQ(Painted().size(), 9U);
    EXPECT_TRUE(Painted().contains({2, 1}));
    EXPECT_TRUE(Painted().contains({4, 3}));
    EXPECT_FALSE(gesture_.Preview().has_value());
    undo_.Undo(Layer::Posts);
    EXPECT_TRUE(Painted().empty());
}

TEST_F(EditGestureTest, ARectangleReachesToTheEdgesOfViewAndTerrain) {
    interaction_.Tool = MapTool::Rectangle;
    view_.MapLeftX = 60;
    Begin(2, 1);
    gesture_.Move(5000, -300);
    gesture_.End(5000, -300);
    // Columns 62 and 63, rows 21 to 27: at its upper border the picture's own pixel
    // belongs to its highest row of posts or to the next one above.
    for (const auto& [x, y] : Painted()) {
        EXPECT_GE(x, 52);
        EXPECT_GE(y, 1);
        EXPECT_LE(y, 8);
    }
    EXPECT_TRUE(Painted().contains({53, 7}));
}

TEST_F(EditGestureTest, AGivenUpRectangleChangesNothing) {
    interaction_.Tool = MapTool::Rectangle;
    Begin(4, 3);
    Move(2, 1);
    gesture_.Cancel();
    EXPECT_FALSE(gesture_.Preview().has_value());
    End(2, 1);
    EXPECT_EQ(Steps(), 0);
}

// The view shows posts (10..17, 20..27): segments 0 and 1 across, 1 up.
TEST_F(EditGestureTest, AFillStaysInTheSegmentsInView) {
    interaction_.Tool = MapTool::Fill;
    Begin(3, 3);
    EXPECT_EQ(Painted().size(), 32U * 16U);
    EXPECT_TRUE(Painted().contains({0 - 10, 16 - 20}));
    EXPECT_TRUE(Painted().contains({31 - 10, 31 - 20}));
    EXPECT_EQ(workspace_.Story, "commands refresh L2");
    EXPECT_EQ(workspace_.Told, "512 posts changed");
    undo_.Undo(Layer::Posts);
    EXPECT_TRUE(Painted().empty());
}

TEST_F(EditGestureTest, WithShiftAFillGoesAsFarAsTheTileDoes) {
    interaction_.Tool = MapTool::Fill;
    for (int y = 0; y < 64; ++y)
        terrain_.LxArr(y * 64 + 40).TileOffset = 3; // a wall
    Begin(3, 3, {.Shift = true});
    EXPECT_EQ(Painted().size(), 64U * 39U);
    EXPECT_EQ(Steps(), 1);
    // A row takes one run.
    EXPECT_EQ(undo_.UndoPostStack().At(1).Stroke.size(), 64U);
}

TEST_F(EditGestureTest, AFillBeyondTheEdgeOrOfItsOwnTileDoesNothing) {
    interaction_.Tool = MapTool::Fill;
    view_.MapLeftX = 62;
    Begin(5, 3);
    interaction_.SelectedTile = 0;
    Begin(0, 0);
    EXPECT_EQ(workspace_.Story, "");
    EXPECT_EQ(Steps(), 0);
}

TEST_F(EditGestureTest, APickTakesTheTileAndGivesTheToolBack) {
    terrain_.LxArr((20 + 2) * 64 + 10 + 1 + 1).TileOffset = 41;
    EXPECT_EQ(gesture_.Begin(X(1), Y(2), {.Alt = true}), 41);
    interaction_.ToolBeforePick = MapTool::Fill;
    interaction_.Tool = MapTool::Pick;
    EXPECT_EQ(gesture_.Begin(X(1), Y(2), {}), 41);
    EXPECT_EQ(interaction_.Tool, MapTool::Fill);
    view_.MapLeftX = 62;
    EXPECT_EQ(gesture_.Begin(X(5), Y(2), {.Alt = true}), std::nullopt);
    EXPECT_EQ(Steps(), 0);
}

TEST_F(EditGestureTest, InL0ModeAClickWithTheToolOnLeaveSaysThatItPaintsLevel2) {
    EditElevations(HeightTool::None, 10);
    Begin(1, 1);
    EXPECT_EQ(Tile(1, 1), 7);
    EXPECT_EQ(workspace_.Told, "1 post of level 2 changed, no height");
}

TEST_F(EditGestureTest, InL0ModeTheBrushWorksOnHeights) {
    EditElevations(HeightTool::Raise, 10);
    // Quarters of 8 pixels: index (41, 81) at the lower left.
    gesture_.Begin(4, 252, {});
    EXPECT_EQ(workspace_.Story, "commands refresh L0");
    const auto changed = gesture_.Move(4 + 8 * 5, 252);
    EXPECT_EQ(Sides(changed), (std::vector{10, 20, 11, 20}));
    gesture_.Move(4, 252); // over the same again
    gesture_.End(4, 252);
    for (int x = 41; x <= 46; ++x)
        EXPECT_EQ(terrain_.Elevations.At(x, 81), 10) << x;
    EXPECT_EQ(terrain_.Elevations.At(47, 81), 0);
    EXPECT_EQ(terrain_.Elevations.At(41, 82), 0);
    EXPECT_EQ(workspace_.Told, "6 heights changed");
    EXPECT_EQ(undo_.UndoElvStack().UpperBound(), 1);
    EXPECT_EQ(Steps(), 0);
    // The next stroke raises them again.
    gesture_.Begin(4, 252, {});
    EXPECT_EQ(terrain_.Elevations.At(41, 81), 20);
    undo_.Undo(Layer::Heights);
    undo_.Undo(Layer::Heights);
    EXPECT_EQ(terrain_.Elevations.At(41, 81), 0);
    EXPECT_EQ(terrain_.Elevations.At(46, 81), 0);
}

TEST_F(EditGestureTest, RectangleFillAndPickWorkOnHeightsToo) {
    EditElevations(HeightTool::Set, 300);
    interaction_.Tool = MapTool::Rectangle;
    gesture_.Begin(4, 252, {});
    gesture_.Move(4 + 8, 252 - 16);
    const auto preview = gesture_.Preview();
    ASSERT_TRUE(preview.has_value());
    EXPECT_EQ(preview->UpperRight.X, 16);
    EXPECT_EQ(preview->UpperRight.Y, 256 - 24);
    gesture_.End(4 + 8, 252 - 16);
    EXPECT_EQ(terrain_.Elevations.At(41, 81), 300);
    EXPECT_EQ(terrain_.Elevations.At(42, 83), 300);
    EXPECT_EQ(terrain_.Elevations.At(43, 83), 0);
    EXPECT_EQ(workspace_.Told, "6 heights changed");
    interaction_.Tool = MapTool::Fill;
    interaction_.Feet = 500;
    gesture_.Begin(4, 252, {});
    EXPECT_EQ(terrain_.Elevations.At(42, 83), 500);
    EXPECT_EQ(terrain_.Elevations.At(43, 83), 0);
    gesture_.Begin(100, 100, {});
    EXPECT_EQ(workspace_.Told, std::to_string(32 * 16 * 16 - 6) + " heights changed");
    interaction_.Feet = 1;
    gesture_.Begin(4, 252, {.Alt = true});
    EXPECT_EQ(interaction_.Feet, 500);
    EXPECT_EQ(interaction_.SelectedTile, 7);
    undo_.Undo(Layer::Heights);
    undo_.Undo(Layer::Heights);
    undo_.Undo(Layer::Heights);
    for (const int16_t height : terrain_.Elevations.L0ElvArr.Values())
        ASSERT_EQ(height, 0);
}

// Any gestures and steps whatever: the posts are those of a plain copy kept beside.
TEST_F(EditGestureTest, ManyGesturesAreTakenBackExactly) {
    std::mt19937 random(11);
    std::uniform_int_distribution<int> pixel(-40, 300);
    std::uniform_int_distribution<int> tile(0, 3);
    std::vector<std::vector<int32_t>> states;
    const auto tiles = [this] {
        std::vector<int32_t> all;
        for (const TerrainPost& post : terrain_.LxArr.Values())
            all.push_back(post.TileOffset);
        return all;
    };
    states.push_back(tiles());
    for (int round = 0; round < 60; ++round) {
        interaction_.Tool = static_cast<MapTool>(round % 3);
        interaction_.BrushSize = 1 + round % 9;
        interaction_.SelectedTile = tile(random);
        const int16_t before = Steps();
        gesture_.Begin(std::clamp(pixel(random), 0, 255),
                       std::clamp(pixel(random), 0, 255), {.Shift = round % 7 == 0});
        for (int i = 0; i < 4; ++i)
            gesture_.Move(pixel(random), pixel(random));
        gesture_.End(pixel(random), pixel(random));
        if (Steps() != before)
            states.push_back(tiles());
        else
            EXPECT_EQ(tiles(), states.back());
    }
    for (size_t i = states.size() - 1; i-- > 0;) {
        undo_.Undo(Layer::Posts);
        ASSERT_EQ(tiles(), states[i]) << i;
    }
    EXPECT_FALSE(undo_.CanUndo(Layer::Posts));
    for (size_t i = 1; i < states.size(); ++i) {
        undo_.Redo(Layer::Posts);
        ASSERT_EQ(tiles(), states[i]) << i;
    }
}

} // namespace
} // namespace vardenix
