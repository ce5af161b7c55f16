#include "workspace/MapInteraction.h"

#include "mapview/ViewGrid.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <ostream>

namespace vardenix {

static std::ostream& operator<<(std::ostream& out, PostPlace post) {
    return out << post.X << "," << post.Y;
}

namespace {

MapView View(int16_t gridCells, int32_t tilePixels, int16_t zoomPosts) {
    MapView view;
    view.GridCells = gridCells;
    view.TilePixels = tilePixels;
    view.ZoomPosts = zoomPosts;
    return view;
}

PostPlace Post(int32_t x, int32_t y) { return {x, y}; }

// Five by five posts of 128 pixels: rows count from the lower edge, at 640.
TEST(PostUnderCursor, CountsFromTheLowerLeftOfTheView) {
    const MapView view = View(5, 128, 1);
    EXPECT_EQ(PostUnderCursor(view, 0, 640), Post(0, 0));
    EXPECT_EQ(PostUnderCursor(view, 127, 513), Post(0, 0));
    EXPECT_EQ(PostUnderCursor(view, 128, 512), Post(1, 1));
    EXPECT_EQ(PostUnderCursor(view, 639, 1), Post(4, 4));
}

// The uppermost row of pixels belongs to the post above the view.
TEST(PostUnderCursor, TheTopLineOfPixelsMeetsTheNextRow) {
    EXPECT_EQ(PostUnderCursor(View(5, 128, 1), 0, 0), Post(0, 5));
}

TEST(PostUnderCursor, AddsThePositionOfTheView) {
    MapView view = View(5, 128, 1);
    view.MapLeftX = 10;
    view.MapBottomY = 20;
    EXPECT_EQ(PostUnderCursor(view, 300, 300), Post(12, 22));
}

TEST(PostUnderCursor, PositionsAreRoundedHalfToEvenFirst) {
    const MapView view = View(5, 128, 1);
    EXPECT_EQ(PostUnderCursor(view, 127.5, 512.5), Post(1, 1)); // 128, 512
    EXPECT_EQ(PostUnderCursor(view, 126.5, 511.5), Post(0, 1)); // 126, 512
    EXPECT_EQ(PostUnderCursor(view, 0, 513.5), Post(0, 0));     // 514
}

// 128 pixels for 3 posts are 42.67 each, taken as 43: fifteen rows are 645 pixels.
TEST(PostUnderCursor, TakesCellsAsRounded) {
    const MapView view = View(5, 128, 3);
    EXPECT_EQ(PostUnderCursor(view, 42, 639), Post(0, 0));
    EXPECT_EQ(PostUnderCursor(view, 43, 602), Post(1, 1));
    EXPECT_EQ(PostUnderCursor(view, 128, 603), Post(2, 0));
    EXPECT_EQ(PostUnderCursor(view, 639, 1), Post(14, 14));
}

// Sixteen pixels for twenty posts: a cell is a pixel here, and the view 40 of them high.
TEST(PostUnderCursor, ACellBelowAPixelCountsAsOne) {
    EXPECT_EQ(PostUnderCursor(View(2, 16, 20), 5, 31), Post(5, 9));
}

// Each pixel of a picture that fills a room, by the cells that the renderer paints.
TEST(PostUnderCursor, OfARoomIsThePostThatIsPaintedThere) {
    Terrain terrain;
    terrain.MapWidth = 256;
    terrain.LxArr = PostArray(256 * 256);
    for (const int16_t zoom : {int16_t{1}, int16_t{3}, int16_t{7}, int16_t{20}}) {
        MapView view;
        view.TilePixels = 64;
        view.ZoomPosts = zoom;
        view.RoomWidth = 401;
        view.RoomHeight = 123;
        view.MapLeftX = 30;
        view.MapBottomY = 17;
        const ViewGrid grid(view, terrain);
        int64_t pixels = 0;
        for (int32_t i = 1; i <= grid.Count(); ++i) {
            const auto post = grid.At(i);
            ASSERT_TRUE(post);
            const PixelRect& cell = post->Cell;
            for (int32_t y = cell.Top; y < cell.Top + cell.Height; ++y)
                for (int32_t x = cell.Left; x < cell.Left + cell.Width; ++x) {
                    if (x >= 401 || y < 0)
                        continue; // cut
                    ++pixels;
                    ASSERT_EQ(PostUnderCursor(view, x + 0.6, y + 0.3),
                              (PostPlace{post->X - 1, post->Y - 1}))
                        << zoom << ": " << x << ", " << y;
                }
        }
        EXPECT_EQ(pixels, 401 * 123) << zoom; // and nothing is blank
    }
}

TEST(ElevationUnderCursor, OfARoomCountsQuartersOfThePaintedCells) {
    MapView view;
    view.TilePixels = 64;
    view.RoomWidth = 401;
    view.RoomHeight = 123;
    view.MapLeftX = 30;
    view.MapBottomY = 17;
    EXPECT_EQ(ElevationUnderCursor(view, 0, 122), (PostPlace{120, 68}));
    EXPECT_EQ(ElevationUnderCursor(view, 15, 107), (PostPlace{120, 68}));
    EXPECT_EQ(ElevationUnderCursor(view, 16, 106), (PostPlace{121, 69}));
    EXPECT_EQ(ElevationUnderCursor(view, 400, 0), (PostPlace{145, 75}));
}

TEST(OnElevations, FirstAndLastQuartersAreIn) {
    Terrain terrain;
    terrain.Elevations.EMapWidth = 64;
    EXPECT_TRUE(OnElevations(Post(0, 0), terrain));
    EXPECT_TRUE(OnElevations(Post(63, 63), terrain));
    for (const PostPlace outside : {Post(-1, 0), Post(0, -1), Post(64, 0), Post(0, 64)})
        EXPECT_FALSE(OnElevations(outside, terrain));
}

TEST(ElevationUnderCursor, CountsQuartersOfACellFromZero) {
    MapView view = View(5, 128, 1);
    EXPECT_EQ(ElevationUnderCursor(view, 0, 640), Post(0, 0));
    EXPECT_EQ(ElevationUnderCursor(view, 31, 609), Post(0, 0));
    EXPECT_EQ(ElevationUnderCursor(view, 32, 608), Post(1, 1));
    view.MapLeftX = 10;
    view.MapBottomY = 20;
    EXPECT_EQ(ElevationUnderCursor(view, 64, 576), Post(42, 82));
}

TEST(ElevationUnderCursor, RoundsAQuarterHalfToEven) {
    // 32 / 5 is taken as 6, a quarter of that, 1.5, as 2.
    EXPECT_EQ(ElevationUnderCursor(View(2, 32, 5), 11, 60), Post(5, 0));
    // 128 / 3 is taken as 43, a quarter of that, 10.75, as 11.
    EXPECT_EQ(ElevationUnderCursor(View(5, 128, 3), 22, 645), Post(2, 0));
}

TEST(ElevationUnderCursor, AQuarterBelowAPixelCountsAsOne) {
    EXPECT_EQ(ElevationUnderCursor(View(2, 16, 20), 5, 38), Post(5, 2));
    EXPECT_EQ(ElevationUnderCursor(View(2, 16, 8), 5, 32), Post(5, 0)); // cells of 2
}

class ReadOutTest : public testing::Test {
protected:
    ReadOutTest() {
        terrain_.MapWidth = 64;
        terrain_.LxArr = PostArray(64 * 64);
        lookup_.resize(32);
        lookup_[17].Name = "H\xD6LL";
        view_.MapLeftX = 17;
        view_.MapBottomY = 40;
    }

    // The post at the lower left of the view, (17, 40) counted from 0.
    TerrainPost& Post() { return terrain_.LxArr(40 * 64 + 17 + 1); }
    ReadOut At(double x, double y) { return ReadOutAt(view_, terrain_, lookup_, x, y); }

    MapView view_ = View(5, 128, 1);
    Terrain terrain_;
    TileLookup lookup_;
};

TEST_F(ReadOutTest, TellsFiveLinesOfAPost) {
    Post().TileOffset = 17;
    Post().Palette = 200;
    const ReadOut out = At(5, 635);
    EXPECT_EQ(out.Text, "X:17    Y:40\r\nSegment:1,1\r\nTile #:17\r\nH\xD6LL\r\nPalette "
                        "#:200");
    EXPECT_EQ(out.BackColor, 15659248u);
    EXPECT_EQ(out.Header, "");
}

// Counted from 0, the second number from the top of the map down.
TEST_F(ReadOutTest, SegmentsCountFromTheUpperLeft) {
    view_.MapLeftX = 0;
    view_.MapBottomY = 0;
    EXPECT_NE(At(5, 635).Text.find("\r\nSegment:0,3\r\n"), std::string::npos);
    view_.MapLeftX = 63;
    view_.MapBottomY = 63;
    EXPECT_NE(At(5, 635).Text.find("\r\nSegment:3,0\r\n"), std::string::npos);
    // On both sides of a border between segments.
    view_.MapLeftX = 15;
    view_.MapBottomY = 15;
    EXPECT_NE(At(5, 635).Text.find("\r\nSegment:0,3\r\n"), std::string::npos);
    view_.MapLeftX = 16;
    view_.MapBottomY = 16;
    EXPECT_NE(At(5, 635).Text.find("\r\nSegment:1,2\r\n"), std::string::npos);
}

TEST_F(ReadOutTest, AnUnknownTileNumberIsNotSpecified) {
    Post().TileOffset = 32;
    EXPECT_NE(At(5, 635).Text.find("\r\nTile #:32\r\nNot Specified in BIN File\r\n"),
              std::string::npos);
    Post().TileOffset = 31; // in the table, without a tile
    EXPECT_NE(At(5, 635).Text.find("\r\nTile #:31\r\n\r\nPalette"), std::string::npos);
    EXPECT_EQ(TileNameOf(-1, lookup_), "Not Specified in BIN File");
}

TEST_F(ReadOutTest, BeyondTheEdgeThereIsNoPost) {
    view_.MapLeftX = 63;
    EXPECT_EQ(At(128, 635).Text, "Outside Terrain Area");
    EXPECT_NE(At(127, 635).Text, "Outside Terrain Area");
    view_.MapLeftX = 0;
    view_.MapBottomY = 63;
    EXPECT_EQ(At(5, 512).Text, "Outside Terrain Area");
    EXPECT_EQ(At(5, 512).BackColor, 15659248u);
}

class ElevationReadOutTest : public ReadOutTest {
protected:
    ElevationReadOutTest() {
        view_.L0Mode = true;
        terrain_.Elevations.EMapWidth = 256;
        terrain_.Elevations.L0ElvArr = HeightArray(256 * 256);
    }
};

// Shown are the indices less 1; the height is the one at the index itself.
TEST_F(ElevationReadOutTest, TellsThePlaceLessOneAndTheHeight) {
    terrain_.Elevations.At(70, 162) = -45;
    const ReadOut out = At(40, 600); // second column, second row of quarters
    EXPECT_EQ(out.Text, "X:69    Y:161\r\nHeight: -45ft");
    EXPECT_EQ(out.BackColor, 12383484u);
    EXPECT_EQ(out.Header, "L0/ELV File");
}

TEST_F(ElevationReadOutTest, BeyondTheEdgeThereIsNoHeight) {
    view_.MapLeftX = 63;
    EXPECT_EQ(At(127, 635).Text.substr(0, 5), "X:255");
    const ReadOut out = At(128, 635);
    EXPECT_EQ(out.Text, "Outside Terrain Area");
    EXPECT_EQ(out.BackColor, 12383484u);
    EXPECT_EQ(out.Header, "L0/ELV File");
}

TEST(PointerFor, AWaitedForCornerComesBeforeTheBrush) {
    MapInteraction interaction;
    EXPECT_EQ(PointerFor(interaction, MapView()), MapPointer::Default);
    interaction.SelectedTile = 0;
    EXPECT_EQ(PointerFor(interaction, MapView()), MapPointer::Brush);
    for (bool MapInteraction::*wait :
         {&MapInteraction::WaitExportCorner1, &MapInteraction::WaitExportCorner2,
          &MapInteraction::WaitImportCorner}) {
        interaction.*wait = true;
        EXPECT_EQ(PointerFor(interaction, MapView()), MapPointer::Cross);
        interaction.*wait = false;
    }
    EXPECT_EQ(static_cast<int>(MapPointer::Brush), 99);
    EXPECT_EQ(static_cast<int>(MapPointer::Cross), 2);
}

TEST(AfterWheel, ANotchIsZoomPostsAndBackwardAdds) {
    MapView view;
    view.ZoomPosts = 7;
    const ControlRange range{-63, 0};
    EXPECT_EQ(AfterWheel(-30, 1, view, range), -23);
    EXPECT_EQ(AfterWheel(-30, -1, view, range), -37);
    EXPECT_EQ(AfterWheel(-30, 2, view, range), -16);
}

TEST(AfterWheel, StopsAtTheEndsOfTheBar) {
    MapView view;
    view.ZoomPosts = 7;
    const ControlRange range{-63, 0};
    EXPECT_EQ(AfterWheel(-6, 1, view, range), 0);
    EXPECT_EQ(AfterWheel(-60, -1, view, range), -63);
    EXPECT_EQ(AfterWheel(-7, 1, view, range), 0);
}

TEST(PlaceInBIN, AreTheSetFromOneAndTheTileFromZero) {
    const auto place = PlaceInBIN(37, 3);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->Set, 3);
    EXPECT_EQ(place->Slot, 5);
    EXPECT_EQ(PlaceInBIN(0, 1)->Set, 1);
    EXPECT_FALSE(PlaceInBIN(37, 2));
    EXPECT_FALSE(PlaceInBIN(-1, 2));
    EXPECT_STREQ(NoSetForTile, "The Set number for this tile doesn't exist");
}

// "1,2 3,4", or nothing.
std::string Told(const std::optional<PostBox>& box) {
    if (!box)
        return "";
    return std::to_string(box->X1) + "," + std::to_string(box->Y1) + " " +
           std::to_string(box->X2) + "," + std::to_string(box->Y2);
}

TEST(BoxAtCursor, FollowsTheCursorBetweenTheTwoCorners) {
    MapInteraction interaction;
    MapView view;
    view.ExportX1 = 3;
    view.ExportY1 = 4;
    EXPECT_EQ(Told(BoxAtCursor(interaction, view, {7, 1})), "");
    interaction.WaitExportCorner1 = true;
    EXPECT_EQ(Told(BoxAtCursor(interaction, view, {7, 1})), "");
    interaction.WaitExportCorner1 = false;
    interaction.WaitExportCorner2 = true;
    EXPECT_EQ(Told(BoxAtCursor(interaction, view, {7, 1})), "3,4 7,1");
    interaction.StopWaiting();
    EXPECT_FALSE(interaction.Waits());
}

TEST(BoxAtCursor, AStampBeginsAtTheCursor) {
    MapInteraction interaction;
    interaction.WaitImportCorner = true;
    EXPECT_EQ(Told(BoxAtCursor(interaction, {}, {7, 1})), "");
    interaction.ImportWidth = 2;
    interaction.ImportHeight = 5;
    EXPECT_EQ(Told(BoxAtCursor(interaction, {}, {7, 1})), "7,1 8,5");
}

} // namespace
} // namespace vardenix
