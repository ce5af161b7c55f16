#include "grounds/TileSides.h"

#include "catalogue/TypeNames.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

using Color = std::array<uint8_t, 3>;

TEST(TileSides, RunFromWestToEastAndFromSouthToNorth) {
    Raster picture(32, 32);
    for (int32_t y = 0; y < 32; ++y)
        for (int32_t x = 0; x < 32; ++x)
            picture.Row(y)[x] = OpaqueBlack | static_cast<uint32_t>(x) << 16 |
                                static_cast<uint32_t>(y) << 8 | 7;
    const TileSides sides = SidesOf(picture.View());
    EXPECT_TRUE(sides.Known);
    // Two pixels a sample: 0 and 1 have the mean 0.5, which becomes 1.
    EXPECT_EQ(sides.Colors[North][0], (Color{1, 0, 7}));
    EXPECT_EQ(sides.Colors[North][15], (Color{31, 0, 7}));
    EXPECT_EQ(sides.Colors[South][0], (Color{1, 31, 7}));
    EXPECT_EQ(sides.Colors[West][0], (Color{0, 31, 7})); // rows 31 and 30
    EXPECT_EQ(sides.Colors[West][15], (Color{0, 1, 7}));
    EXPECT_EQ(sides.Colors[East][0], (Color{31, 31, 7}));
}

TEST(TileSides, PicturesSmallerThanTheSamplesRepeatTheirPixels) {
    Raster picture(1, 1, 0xFF010203);
    EXPECT_EQ(SidesOf(picture.View()).Colors[East][9], (Color{1, 2, 3}));
}

TEST(TileSides, DifferTheMoreTheFartherTheirColorsAre) {
    SideColors black{};
    SideColors grey{};
    for (auto& color : grey)
        color = {3, 3, 3};
    EXPECT_FLOAT_EQ(DifferenceOf(black, black), 0);
    EXPECT_FLOAT_EQ(DifferenceOf(black, grey), 3);
    grey = black;
    grey[5] = {48, 0, 0};
    EXPECT_FLOAT_EQ(DifferenceOf(black, grey), 6.9282032F); // 48 / root of 48
}

TEST(TileSides, OfAFileThatIsNoneAreNotKnown) {
    const tests::TestFolder folder;
    EXPECT_FALSE(SidesOfFile(folder.File("none.dds")).Known);
    EXPECT_FALSE(SidesOfFile(folder.Write("bad.dds", "DDS nothing")).Known);
}

TEST(TileWays, LeadOverTheSidesThatTheirEndsLieAt) {
    TileRecord tile;
    // Up and right in feet: from the south side, 40 feet in, to the middle.
    tile.Paths.push_back({PathRiver, 100, 40, 1640, 1640, 1640});
    tile.Paths.push_back({PathBridge, 50, 1640, 3240.84F, 1640, 39});
    tile.Paths.push_back({PathRailRoad, 20, 3280.84F, 900, 41, 900});
    tile.Paths.push_back({99, 20, 0, 0, 0, 0});
    const TileWays ways = WaysOf(tile);
    EXPECT_EQ(ways.Rivers, 1 << South);
    EXPECT_EQ(ways.Roads, 1 << East | 1 << West);
    EXPECT_EQ(ways.Rails, 1 << North);
    EXPECT_EQ(ways.Over(East), 2);
    EXPECT_EQ(ways.Over(North), 4);
}

} // namespace
} // namespace vardenix
