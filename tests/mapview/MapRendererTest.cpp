#include "mapview/MapRenderer.h"

#include "support/MapWorld.h"
#include "support/RecordingSurface.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>

namespace vardenix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

class Map : public testing::Test {
protected:
    // Paints and gives the story; pictures are called "D5", "N5" and "NoTile".
    Lines Paint(FeatureLayer* features = nullptr) {
        NamePictures();
        finished_ = world_.Renderer().RefreshPicArray(world_.View, surface_, screen_,
                                                      {features, {}});
        return story_.Lines();
    }
    Lines PaintedLines(const std::string& word) {
        Paint();
        return story_.Lines(word);
    }
    void NamePictures() {
        for (int i = 0; i < 32; ++i) {
            surface_.Name(world_.Day(i), "D" + std::to_string(i));
            surface_.Name(world_.Night(i), "N" + std::to_string(i));
        }
        surface_.Name(world_.NoTile(), "NoTile");
    }

    tests::MapWorld world_;
    tests::Story story_;
    tests::RecordingSurface surface_{story_};
    tests::RecordingScreen screen_{story_};
    bool finished_ = false;
};

// A terrain of a single post in the lower left cell.
class MapOfOnePost : public Map {
protected:
    MapOfOnePost() {
        world_.Terrain.MapWidth = 1;
        world_.Terrain.LxArr = PostArray(1);
    }
};

TEST_F(Map, PaintsRowsFromTheBottomAndColumnsFromTheLeft) {
    world_.SetTile(1, 1, 3);
    world_.SetTile(2, 1, 4);
    world_.SetTile(1, 2, 5);
    world_.SetTile(2, 2, 31);
    EXPECT_THAT(Paint(),
                ElementsAre("clear 404040", "clear PicShow", "tile D3 0,128 128x128",
                            "tile D4 128,128 128x128", "tile D5 0,0 128x128",
                            "tile D31 128,0 128x128", "viewport 0,0 zoom 1", "copy"));
    EXPECT_TRUE(finished_);
}

TEST_F(Map, ShowsThePostsBesideItsLowerLeftOne) {
    world_.View.MapLeftX = 3;
    world_.View.MapBottomY = 5;
    world_.SetTile(4, 6, 1);
    world_.SetTile(5, 6, 2);
    world_.SetTile(4, 7, 3);
    world_.SetTile(5, 7, 4);
    EXPECT_THAT(PaintedLines("tile"),
                ElementsAre("tile D1 0,128 128x128", "tile D2 128,128 128x128",
                            "tile D3 0,0 128x128", "tile D4 128,0 128x128"));
}

TEST_F(Map, LeavesTheBackgroundBeyondTheEdge) {
    world_.View.MapLeftX = 15;
    world_.View.MapBottomY = 15;
    EXPECT_THAT(PaintedLines("tile"), ElementsAre("tile D0 0,128 128x128"));
}

TEST_F(Map, LeavesTheBackgroundBeyondTheLowerLeftEdge) {
    world_.View.MapLeftX = -1;
    world_.View.MapBottomY = -1;
    EXPECT_THAT(PaintedLines("tile"), ElementsAre("tile D0 128,0 128x128"));
}

TEST_F(Map, SkipsPostsThatTheArrayDoesNotHold) {
    world_.Terrain.LxArr = PostArray(17); // (1, 2) is serial 17
    EXPECT_THAT(PaintedLines("tile"),
                ElementsAre("tile D0 0,128 128x128", "tile D0 128,128 128x128",
                            "tile D0 0,0 128x128"));
}

TEST_F(Map, ShowsNothingWithoutATheater) {
    world_.Terrain = Terrain();
    world_.View.ShowSegments = world_.View.ShowGrid = world_.View.ShowHeights = true;
    EXPECT_THAT(PaintedLines("tile"), IsEmpty());
}

TEST_F(Map, TenCellsOfOnePostAreAHundredPosts) {
    world_.View.GridCells = 10;
    EXPECT_EQ(PaintedLines("tile").size(), 100U);
}

TEST_F(MapOfOnePost, NumbersOutsideTheTableShowNoTileWithoutMapColour) {
    world_.View.ApplyMAP = true;
    for (const int32_t number : {32, 33, 2000000000, -1, -2147483647}) {
        world_.SetTile(1, 1, number);
        story_ = {};
        EXPECT_THAT(PaintedLines("tile"), ElementsAre("tile NoTile 0,128 128x128"));
        EXPECT_THAT(story_.Lines("blend"), IsEmpty());
    }
}

TEST_F(MapOfOnePost, AnyHasImageButOneShowsNoTileAndStillTheMapColour) {
    world_.View.ApplyMAP = true;
    for (const auto hasImage : std::initializer_list<int16_t>{0, 2, -1}) {
        world_.Catalogue.Lookup[0].HasImage = hasImage;
        story_ = {};
        EXPECT_THAT(PaintedLines("tile"), ElementsAre("tile NoTile 0,128 128x128"));
        EXPECT_EQ(story_.Lines("blend").size(), 1U);
    }
}

TEST_F(MapOfOnePost, TheMapColourLiesOverItsTile) {
    world_.View.ApplyMAP = true;
    world_.View.MapAlpha = 90;
    world_.Post(1, 1).Palette = 200;
    world_.MapFileRecord.Palette[200] = {0x11, 0x22, 0x33, 0x44};
    const Lines lines = Paint();
    EXPECT_EQ(lines.at(2), "tile D0 0,128 128x128");
    EXPECT_EQ(lines.at(3), "blend 332211 90 0,128 128x128");
}

TEST_F(Map, CellsMeetWithoutGaps) {
    world_.View.ZoomPosts = 3;
    world_.View.TilePixels = 16; // 5.33 pixels a post: 0, 5, 11, 16, 21, 27, 32
    const Lines tiles = PaintedLines("tile");
    ASSERT_EQ(tiles.size(), 36U);
    EXPECT_EQ(tiles[0], "tile D0 0,27 5x5 of 6");
    EXPECT_EQ(tiles[1], "tile D0 5,27 6x5 of 6");
    EXPECT_EQ(tiles[2], "tile D0 11,27 5x5 of 6");
    EXPECT_EQ(tiles[7], "tile D0 5,21 6x6");
    EXPECT_EQ(tiles[35], "tile D0 27,0 5x5 of 6");
}

// 50 by 35 pixels in cells of 20: three columns, the last of which is cut, and two rows,
// the upper one cut by the upper edge.
TEST_F(Map, ARoomIsFilledFromTheLowerLeft) {
    world_.View.TilePixels = 20;
    world_.View.RoomWidth = 50;
    world_.View.RoomHeight = 35;
    const Lines tiles = PaintedLines("tile");
    EXPECT_THAT(tiles, ElementsAre("tile D0 0,15 20x20", "tile D0 20,15 20x20",
                                   "tile D0 40,15 20x20", "tile D0 0,-5 20x20",
                                   "tile D0 20,-5 20x20", "tile D0 40,-5 20x20"));
}

TEST_F(Map, HalvesGoToTheEvenPixel) {
    world_.View.ZoomPosts = 2;
    world_.View.TilePixels = 5; // 2.5 pixels a post: 0, 2, 5, 8, 10
    const Lines tiles = PaintedLines("tile");
    ASSERT_EQ(tiles.size(), 16U);
    EXPECT_EQ(tiles[0], "tile D0 0,8 2x2 of 3");
    EXPECT_EQ(tiles[1], "tile D0 2,8 3x2 of 3");
    EXPECT_EQ(tiles[2], "tile D0 5,8 3x2 of 3");
    EXPECT_EQ(tiles[3], "tile D0 8,8 2x2 of 3");
    EXPECT_EQ(tiles[5], "tile D0 2,5 3x3");
}

TEST_F(Map, TheBarRunsOverBothPassesWithHalvesToTheEvenPercent) {
    Paint();
    EXPECT_EQ(world_.PB3.Story(), "show|bar 12|bar 25|bar 38|bar 50|bar 62|bar 75|bar 88|"
                                  "bar 100|hide");
}

TEST_F(Map, TheBarIsToldOnlyWhenItMoves) {
    world_.View.ZoomPosts = 10; // 400 posts
    Paint();
    std::string expected = "show";
    for (int i = 1; i <= 100; ++i)
        expected += "|bar " + std::to_string(i);
    EXPECT_EQ(world_.PB3.Story(), expected + "|hide");
}

TEST_F(Map, EscEndsTheFirstPassAfterThePost) {
    world_.View.Brightness = 20;
    world_.View.ShowSegments = world_.View.ShowExport = world_.View.ShowGrid = true;
    screen_.OnPost = [&](int post) { world_.AbortPaint = post == 3; };
    EXPECT_THAT(Paint(),
                ElementsAre("clear 404040", "clear PicShow", "tile D0 0,128 128x128",
                            "tile D0 128,128 128x128", "tile D0 0,0 128x128", "copy"));
    EXPECT_FALSE(finished_);
    EXPECT_FALSE(world_.AbortPaint);
    EXPECT_EQ(world_.PB3.Story(), "show|bar 12|bar 25|bar 38|hide");
}

TEST_F(Map, EscEndsTheThirdPassAfterThePost) {
    world_.View.ShowSegments = world_.View.ShowExport = world_.View.ShowGrid = true;
    screen_.OnPost = [&](int post) { world_.AbortPaint = post == 5; };
    EXPECT_EQ(PaintedLines("box").size(), 1U);
    EXPECT_EQ(story_.Lines("tile").size(), 4U);
    EXPECT_THAT(story_.Lines("line"), IsEmpty());
    EXPECT_THAT(story_.Lines("viewport"), IsEmpty());
    EXPECT_EQ(story_.Lines().back(), "copy");
    EXPECT_FALSE(finished_);
    EXPECT_FALSE(world_.AbortPaint);
}

TEST_F(Map, EscFromBeforeTheRepaintDoesNotCount) {
    world_.AbortPaint = true;
    Paint();
    EXPECT_TRUE(finished_);
}

TEST_F(Map, APictureThatFailsCostsItsTileAndNothingElse) {
    world_.View.ApplyMAP = true;
    int tiles = 0;
    surface_.OnTile = [&] {
        ++tiles;
        if (tiles == 1) // of the first post, and the second post's, with its substitute
            throw RuntimeError(ErrorNumber::InvalidPicture);
        if (tiles == 3 || tiles == 4)
            throw std::bad_alloc();
    };
    EXPECT_THAT(PaintedLines("tile"),
                ElementsAre("tile NoTile 0,128 128x128", "tile D0 0,0 128x128",
                            "tile D0 128,0 128x128"));
    EXPECT_EQ(story_.Lines("blend").size(), 4U);
    EXPECT_TRUE(finished_);
}

TEST_F(MapOfOnePost, TheLogNamesEveryTile) {
    const tests::TestFolder folder;
    world_.Log.DebugFlag = true;
    world_.Log.StartDebugLog(folder.Path() + "/");
    world_.View.ApplyNight = true;
    Paint();
    world_.SetTile(1, 1, 99);
    world_.View.TilePixels = 32;
    Paint();
    world_.Log.StopDebugLog();
    const std::string log = tests::Slurp(folder.File("Debug.txt"));
    EXPECT_THAT(log,
                testing::HasSubstr("\r\nPainting Tile with dimensions 128 X 128\r\n"
                                   "Painting Night Tile with dimensions 128 X 128\r\n"
                                   "Painting NOTile with dimensions 32 X 32\r\n"
                                   "Painting Tile with dimensions 32 X 32\r\n"
                                   "Debug Terminated"));
}

class Features : public FeatureLayer {
public:
    explicit Features(tests::Story& story) : story_(story) {}
    bool On = true;

    bool ShowFeatures() const override { return On; }
    bool Shown(FeatureKind kind) const override { return kind != FeatureKind::River; }
    void FeatureDraw(DrawingSurface&, const MapView&, FeatureKind kind,
                     bool flag) override {
        story_.Tell("feature " + std::to_string(static_cast<int>(kind)) +
                    (flag ? " on" : " off"));
    }

private:
    tests::Story& story_;
};

TEST_F(MapOfOnePost, LayersLieInTheirOrder) {
    MapView& view = world_.View;
    view.ApplyMAP = view.ApplyNight = view.ShowHeights = view.ShowGrid = true;
    view.ShowSegments = view.ShowExport = view.ShowAreasPaths = true;
    view.Brightness = -15;
    view.SegmentColor = 0x0A0B0C;
    world_.Terrain.MapWidth = 16;
    world_.AddArea(0, {1, 0, 0, 0});
    world_.AddPath(0, {2, 0, 0, 0, 0, 0});
    Features features(story_);
    EXPECT_THAT(
        Paint(&features),
        ElementsAre("clear 404040", "clear PicShow", "tile D0 0,128 128x128",
                    "blend 000000 127 0,128 128x128", "brightness -15",
                    "circle 0,256 0 pen F2EA82 1 none", "line 0,256 0,256 pen E2776B 1",
                    "font Arial 10", "tile N0 0,128 128x128", "measure 0",
                    "text 0 61,187 D3F7FF rim 000000",
                    "box 0,128 128,256 pen 000000 1 none",
                    "line 0,-1792 0,256 pen 0A0B0C 1", "line 0,256 2048,256 pen 0A0B0C 1",
                    "box -128,384 0,256 pen 000000 1 none", "feature 2 on",
                    "feature 3 on", "feature 5 off", "feature 6 on", "feature 1 on",
                    "feature 4 on", "viewport 0,0 zoom 1", "copy"));
}

TEST_F(MapOfOnePost, TheFeatureSwitchTurnsAllKindsOff) {
    Features features(story_);
    features.On = false;
    Paint(&features);
    EXPECT_THAT(story_.Lines("feature"), IsEmpty());
}

TEST_F(Map, OverlaysFollowPostByPost) {
    world_.View.ShowHeights = world_.View.ShowGrid = true;
    Paint();
    Lines order;
    for (const std::string& line : story_.Lines())
        if (line.starts_with("text") || line.starts_with("box"))
            order.push_back(line.substr(0, line.find(' ')));
    EXPECT_THAT(order,
                ElementsAre("text", "box", "text", "box", "text", "box", "text", "box"));
}

} // namespace
} // namespace vardenix
