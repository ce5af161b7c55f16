// What the tools with files of their own do to posts, through the map's mouse.
#include "program/ProgramState.h"
#include "support/RecordingCommands.h"
#include "support/ToldMap.h"
#include "workspace/FieldPosts.h"
#include "workspace/MapMouse.h"
#include "workspace/RegionExchange.h"
#include "workspace/SelectionEdges.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <set>

namespace vardenix {
namespace {

using Places = std::set<std::pair<int, int>>;

// A theater of 64 posts a side in a view of 8 by 8 posts of 32 pixels from (10, 20).
class HandToolsTest : public testing::Test {
protected:
    HandToolsTest() {
        terrain_.MapWidth = 64;
        terrain_.LxArr = PostArray(64 * 64);
        view_.GridCells = 8;
        view_.TilePixels = 32;
        view_.MapLeftX = 10;
        view_.MapBottomY = 20;
        interaction_.SelectedTile = 7;
    }

    static double X(int x) { return x * 32 + 16; }
    static double Y(int y) { return 256 - y * 32 - 16; }
    void Drag(int x1, int y1, int x2, int y2, GestureKeys keys = {}) {
        mouse_.LeftDown(X(x1), Y(y1), keys);
        mouse_.LeftMove(X(x2), Y(y2));
        mouse_.LeftUp(X(x2), Y(y2));
    }
    void Click(int x, int y, GestureKeys keys = {}) { Drag(x, y, x, y, keys); }
    TerrainPost& Post(int x, int y) {
        return terrain_.LxArr((int64_t{y} + 20) * 64 + x + 10 + 1);
    }
    // By their places in the view.
    Places Where(const std::function<bool(const TerrainPost&)>& holds) const {
        Places places;
        for (int32_t serial = 1; serial <= 64 * 64; ++serial)
            if (holds(terrain_.LxArr(serial)))
                places.insert({(serial - 1) % 64 - 10, (serial - 1) / 64 - 20});
        return places;
    }
    Places OfTile(int32_t tile) const {
        return Where([tile](const TerrainPost& post) { return post.TileOffset == tile; });
    }
    Places Selected() const {
        Places places;
        for (const RowSpan& span : interaction_.Hand.Selected.Spans())
            for (int32_t x = span.X1; x <= span.X2; ++x)
                places.insert({x - 10, span.Y - 20});
        return places;
    }
    static Places Box(int x1, int y1, int x2, int y2) {
        Places places;
        for (int y = y1; y <= y2; ++y)
            for (int x = x1; x <= x2; ++x)
                places.insert({x, y});
        return places;
    }
    void SelectBox(int x1, int y1, int x2, int y2) {
        interaction_.Hand.Selected =
            SelectedBox({x1 + 10, y1 + 20, x2 + 10, y2 + 20}, 64);
    }

    ProgramState state_;
    Terrain& terrain_ = state_.Terrain;
    MapView view_;
    MapInteraction interaction_;
    tests::RecordingCommands workspace_;
    UndoPoints undo_{terrain_, state_.Changes, workspace_};
    tests::ToldMap wishes_{workspace_.Story};
    MapMouse mouse_{terrain_, view_, interaction_, undo_, workspace_, wishes_};
};

TEST_F(HandToolsTest, ARectangleSelectsShiftAddsAndShiftWithCtrlTakesAway) {
    interaction_.Tool = MapTool::Select;
    Drag(1, 1, 3, 2);
    EXPECT_EQ(Selected(), Box(1, 1, 3, 2));
    EXPECT_EQ(workspace_.Told, "6 posts selected");
    Drag(5, 5, 5, 5, {.Shift = true});
    Places both = Box(1, 1, 3, 2);
    both.insert({5, 5});
    EXPECT_EQ(Selected(), both);
    Drag(2, 0, 2, 7, {.Shift = true, .Control = true});
    both.erase({2, 1});
    both.erase({2, 2});
    EXPECT_EQ(Selected(), both);
    Drag(6, 6, 7, 7);
    EXPECT_EQ(Selected(), Box(6, 6, 7, 7));
    EXPECT_EQ(state_.Changes.Count(), 0U);
}

TEST_F(HandToolsTest, ALassoSelectsWhatItGoesRound) {
    interaction_.Tool = MapTool::Lasso;
    mouse_.LeftDown(40, 216);
    for (const auto& [x, y] : {std::pair(200, 216), {200, 100}, {40, 100}})
        mouse_.LeftMove(x, y);
    EXPECT_EQ(mouse_.Line().size(), 4U);
    mouse_.LeftUp(40, 100);
    // Middles between 40 and 200 pixels across, and 40 and 156 up.
    EXPECT_EQ(Selected(), Box(1, 1, 5, 4));
    EXPECT_TRUE(mouse_.Line().empty());
}

TEST_F(HandToolsTest, ASelectionBoundsBrushRectangleAndFill) {
    SelectBox(2, 2, 4, 4);
    Drag(0, 3, 7, 3);
    EXPECT_EQ(OfTile(7), Box(2, 3, 4, 3));
    Click(1, 1); // a brush of one post beyond it
    EXPECT_EQ(OfTile(7), Box(2, 3, 4, 3));
    interaction_.Tool = MapTool::Rectangle;
    interaction_.SelectedTile = 8;
    Drag(0, 0, 3, 2);
    EXPECT_EQ(OfTile(8), Box(2, 2, 3, 2));
    interaction_.Tool = MapTool::Fill;
    interaction_.SelectedTile = 9;
    Click(3, 4, {.Shift = true});
    EXPECT_EQ(OfTile(9), Box(2, 4, 4, 4));
    interaction_.Hand.Selected = {};
    Click(7, 7, {.Shift = true});
    EXPECT_EQ(OfTile(9).size(), 64U * 64 - 6 + 1);
}

TEST_F(HandToolsTest, ASelectionOfPostsBoundsTheFinestElevations) {
    view_.L0Mode = true;
    terrain_.Elevations.EMapWidth = 256;
    terrain_.Elevations.L0ElvArr = HeightArray(256 * 256);
    interaction_.Heights = HeightTool::Set;
    interaction_.Feet = 55;
    SelectBox(2, 2, 2, 2);
    interaction_.Tool = MapTool::Rectangle;
    Drag(0, 0, 7, 7);
    Places set;
    for (int32_t serial = 1; serial <= 256 * 256; ++serial)
        if (terrain_.Elevations.L0ElvArr(serial) == 55)
            set.insert({(serial - 1) % 256, (serial - 1) / 256});
    EXPECT_EQ(set, Box(48, 88, 51, 91));
}

TEST_F(HandToolsTest, SeveralTilesAreDrawnTheSameWayEveryTime) {
    interaction_.Hand.MoreTiles = {8, 9};
    interaction_.Tool = MapTool::Rectangle;
    Drag(0, 0, 7, 7);
    const Places first = OfTile(8);
    EXPECT_GT(OfTile(7).size(), 10U);
    EXPECT_GT(first.size(), 10U);
    EXPECT_GT(OfTile(9).size(), 10U);
    EXPECT_EQ(OfTile(7).size() + first.size() + OfTile(9).size(), 64U);
    Drag(0, 0, 7, 7);
    EXPECT_EQ(OfTile(8), first);
    interaction_.Hand.Seed = 2;
    Drag(0, 0, 7, 7);
    EXPECT_NE(OfTile(8), first);
}

TEST_F(HandToolsTest, TheEraserLeavesItsOwnTile) {
    interaction_.Tool = MapTool::Rectangle;
    Drag(0, 0, 2, 2);
    interaction_.Tool = MapTool::Eraser;
    interaction_.SelectedTile = -1;
    Drag(0, 1, 2, 1);
    EXPECT_EQ(OfTile(7).size(), 6U);
    interaction_.Hand.EraserTile = 5;
    Click(0, 0);
    EXPECT_EQ(OfTile(5), Box(0, 0, 0, 0));
}

TEST_F(HandToolsTest, AFillTakesTilesOfOneSortAsOne) {
    for (int x = 0; x < 8; ++x)
        for (int y = 0; y < 8; ++y)
            Post(x, y).TileOffset = x < 4 ? 20 + (x + y) % 3 : 30;
    interaction_.Tool = MapTool::Fill;
    interaction_.Hand.SortOf = [](int32_t tile) { return tile / 10; };
    Click(0, 0);
    EXPECT_EQ(OfTile(7), Box(0, 0, 3, 7));
}

TEST_F(HandToolsTest, AHillIsOneStrokeAndOneStepOfTheLog) {
    interaction_.Hand.Paints = Painting::Heights;
    interaction_.Feet = 80;
    interaction_.BrushSize = 5;
    Drag(3, 3, 4, 3); // overlapping brushes raise once
    const auto raised = [this] {
        return Where([](const TerrainPost& post) { return post.Elevation == 80; });
    };
    EXPECT_EQ(raised(), Box(1, 1, 6, 5));
    ASSERT_EQ(state_.Changes.Count(), 1U);
    EXPECT_EQ(state_.Changes.At(0).Name, "Heights of 30 posts");
    EXPECT_TRUE(state_.Changes.Unsaved(Paper::Level2));
    state_.Changes.Back();
    EXPECT_TRUE(raised().empty());
    state_.Changes.Again();
    EXPECT_EQ(raised(), Box(1, 1, 6, 5));
}

TEST_F(HandToolsTest, EscTakesAStrokeBackThatTheLogDoesNotKnow) {
    interaction_.Hand.Paints = Painting::Heights;
    mouse_.LeftDown(X(3), Y(3));
    EXPECT_EQ(Post(3, 3).Elevation, 100); // seen at once
    EXPECT_TRUE(mouse_.HasPending());
    mouse_.LeftMove(X(4), Y(3));
    EXPECT_TRUE(mouse_.Stop());
    EXPECT_EQ(Post(3, 3).Elevation, 0);
    EXPECT_EQ(Post(4, 3).Elevation, 0);
    EXPECT_EQ(state_.Changes.Count(), 0U);
    EXPECT_FALSE(mouse_.Goes());
}

TEST_F(HandToolsTest, ASlopeGoesFromOneClickToTheNext) {
    interaction_.Hand.Paints = Painting::Heights;
    interaction_.Hand.Sloping = true;
    Post(0, 0).Elevation = 0;
    Post(4, 0).Elevation = 400;
    Click(0, 0);
    EXPECT_TRUE(mouse_.Waits());
    Click(4, 0);
    EXPECT_FALSE(mouse_.Waits());
    for (int x = 0; x <= 4; ++x)
        EXPECT_EQ(Post(x, 0).Elevation, 100 * x) << x;
    EXPECT_EQ(state_.Changes.Count(), 1U);
    EXPECT_EQ(state_.Changes.At(0).Name, "Slope of 3 posts");
}

TEST_F(HandToolsTest, PaletteX1AndX2ArePaintedByEveryTool) {
    HandState& hand = interaction_.Hand;
    hand.Value = 6;
    const auto paletteIs = [](uint8_t value) {
        return [value](const TerrainPost& post) { return post.Palette == value; };
    };
    hand.Paints = Painting::Palette;
    Drag(1, 1, 3, 1);
    EXPECT_EQ(Where(paletteIs(6)), Box(1, 1, 3, 1));
    hand.Value = 9;
    interaction_.Tool = MapTool::Fill;
    Click(2, 1);
    EXPECT_EQ(Where(paletteIs(9)), Box(1, 1, 3, 1));
    interaction_.Tool = MapTool::Rectangle;
    hand.Paints = Painting::X1;
    Drag(0, 0, 1, 1);
    EXPECT_EQ(Where([](const TerrainPost& post) { return post.X1 == 9; }),
              Box(0, 0, 1, 1));
    hand.Paints = Painting::X2;
    Drag(4, 4, 4, 4);
    EXPECT_EQ(Where([](const TerrainPost& post) { return post.X2 == 9; }),
              Box(4, 4, 4, 4));
    EXPECT_TRUE(OfTile(7).empty());
    EXPECT_EQ(state_.Changes.Count(), 4U);
}

TEST_F(HandToolsTest, AClipIsStampedByEveryClick) {
    Post(0, 0).TileOffset = 3;
    Post(1, 0).TileOffset = 4;
    Post(0, 0).Elevation = 33;
    interaction_.Hand.Stamp =
        StampInHand{ClipOf(terrain_, SelectedBox({10, 20, 11, 20}, 64)), {}, false};
    interaction_.Hand.Fields.Elevation = false;
    Click(2, 2);
    Click(5, 5);
    EXPECT_EQ(OfTile(3), (Places{{0, 0}, {2, 2}, {5, 5}}));
    EXPECT_EQ(OfTile(4), (Places{{1, 0}, {3, 2}, {6, 5}}));
    EXPECT_EQ(Post(2, 2).Elevation, 0);
    EXPECT_EQ(state_.Changes.At(1).Name, "Paste 2 posts at 15, 25");
    EXPECT_TRUE(interaction_.Hand.Stamp.has_value());
}

TEST_F(HandToolsTest, CtrlAndADragLeaveACopyAndTakeTheSelectionAlong) {
    Post(1, 1).TileOffset = 3;
    SelectBox(1, 1, 2, 2);
    Drag(2, 2, 5, 4, {.Control = true});
    EXPECT_EQ(OfTile(3), (Places{{1, 1}, {4, 3}}));
    EXPECT_EQ(Selected(), Box(4, 3, 5, 4));
    EXPECT_FALSE(interaction_.Hand.Stamp.has_value());
    EXPECT_EQ(state_.Changes.Count(), 1U);
    // Beside the selection Ctrl is no other brush.
    Drag(0, 7, 7, 3, {.Control = true});
    EXPECT_EQ(OfTile(3), (Places{{1, 1}, {4, 3}}));
}

TEST_F(HandToolsTest, WhereNothingWasLearnedNoGroundIsPainted) {
    interaction_.Hand.Paints = Painting::Ground;
    Drag(0, 0, 5, 5);
    EXPECT_TRUE(OfTile(7).empty());
    EXPECT_EQ(state_.Changes.Count(), 0U);
}

TEST_F(HandToolsTest, AnImportChangesSelectedPostsOnly) {
    SelectBox(1, 1, 2, 2);
    NoProgress progress;
    EXPECT_EQ(StampRegion(terrain_, {3, 2, {1, 2, 3, 4, 5, 6}}, 10, 21, progress,
                          &interaction_.Hand.Selected),
              4);
    EXPECT_EQ(OfTile(2), (Places{{1, 1}}));
    EXPECT_EQ(OfTile(3), (Places{{2, 1}}));
    EXPECT_EQ(OfTile(5), (Places{{1, 2}}));
    EXPECT_EQ(OfTile(6), (Places{{2, 2}}));
    EXPECT_TRUE(OfTile(1).empty());
}

// What the clipboard offers to others.
TEST_F(HandToolsTest, AClipHasTheBytesOfARegionAndBack) {
    Post(0, 0).TileOffset = 17;
    Post(1, 0).TileOffset = 300;
    const PostClip clip = ClipOf(terrain_, SelectedBox({10, 20, 11, 20}, 64));
    const std::vector<std::byte> bytes = BytesOf(RegionOf(clip));
    const std::vector<uint8_t> expected{2, 0, 0, 0, 1, 0, 0, 0, 17, 0, 0, 0, 44, 1, 0, 0};
    ASSERT_EQ(bytes.size(), expected.size());
    for (size_t i = 0; i < bytes.size(); ++i)
        EXPECT_EQ(std::to_integer<uint8_t>(bytes[i]), expected[i]) << i;
    const PostClip back = ClipOf(ParseRegion(bytes, "test"));
    EXPECT_EQ(back.Width, 2);
    EXPECT_EQ(back.Posts[1].TileOffset, 300);
    EXPECT_EQ(back.Selected, (std::vector<uint8_t>{1, 1}));
}

TEST_F(HandToolsTest, TilesInHandFollowTheCatalogue) {
    HandState hand;
    hand.MoreTiles = {1, 2, 17};
    hand.EraserTile = 17;
    hand.Stamp = StampInHand{{1, 1, {{17, 0, 0, 0, 0}}, {1}}, {}, false};
    // The second set comes first.
    Renumber(hand, TileRenumbering::SetsMoved({0, 2, 1}));
    EXPECT_EQ(hand.MoreTiles, (std::vector<int32_t>{17, 18, 1}));
    EXPECT_EQ(hand.EraserTile, 1);
    EXPECT_EQ(hand.Stamp->Clip.Posts[0].TileOffset, 1);
}

// Post by post: an edge between two posts of which one is selected.
TEST_F(HandToolsTest, EdgesLieBetweenSelectedAndOtherPosts) {
    std::mt19937 random(5);
    for (int round = 0; round < 20; ++round) {
        std::vector<RowSpan> spans;
        for (int i = 0; i < 25; ++i) {
            const auto x = static_cast<int32_t>(8 + random() % 13);
            spans.push_back({static_cast<int32_t>(18 + random() % 12), x,
                             x + static_cast<int32_t>(random() % 3)});
        }
        const Selection selection(spans);
        std::set<std::pair<int, int>> painted;
        for (const PixelBox& box : EdgesOnPicture(selection, view_, 1))
            for (int y = box.Top; y < box.Bottom; ++y)
                for (int x = box.Left; x < box.Right; ++x)
                    painted.insert({x, y});
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 8; ++x) {
                const bool here = selection.Has({x + 10, y + 20});
                const auto middle = [](int at) { return at * 32 + 16; };
                if (x > 0) {
                    EXPECT_EQ(painted.contains({x * 32, 255 - middle(y)}),
                              here != selection.Has({x + 9, y + 20}))
                        << x << " " << y;
                }
                if (y > 0) {
                    EXPECT_EQ(painted.contains({middle(x), 256 - y * 32}),
                              here != selection.Has({x + 10, y + 19}))
                        << x << " " << y;
                }
                EXPECT_FALSE(painted.contains({middle(x), 255 - middle(y)}));
            }
    }
}

} // namespace
} // namespace vardenix
