#include "workspace/RegionExchange.h"

#include "support/RecordingProgress.h"
#include "support/ScriptedDialogs.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace vardenix {
namespace {

using tests::Int32Bytes;

// Numbered by serial.
Terrain Numbered(int32_t width) {
    Terrain terrain;
    terrain.MapWidth = width;
    terrain.LxArr = PostArray(int64_t{width} * width);
    for (int32_t serial = 1; serial <= width * width; ++serial)
        terrain.LxArr(serial) = {serial, static_cast<int16_t>(-serial), 3, 4, 5};
    return terrain;
}

TileRegion Region(int32_t width, int32_t height, int32_t firstNumber) {
    TileRegion region{width, height, {}};
    for (int32_t i = 0; i < width * height; ++i)
        region.TileNumbers.push_back(firstNumber + i);
    return region;
}

class RegionExchangeTest : public testing::Test {
protected:
    std::string Exported(const Terrain& terrain, const PostBox& corners) {
        WriteRegion(terrain, corners, path_, progress_);
        return tests::Slurp(path_);
    }
    void ExpectRefused(const std::string& bytes, ErrorNumber number,
                       const std::string& detail) {
        tests::Spill(path_, bytes);
        try {
            ReadRegion(path_);
            ADD_FAILURE() << "read";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), number);
            EXPECT_NE(error.Detail().find(path_), std::string::npos);
            EXPECT_NE(error.Detail().find(detail), std::string::npos) << error.Detail();
        }
    }

    const tests::TestFolder folder_;
    const std::string path_ = folder_.File("a region.exp");
    tests::RecordingProgress progress_;
    tests::ScriptedDialogs dialogs_;
};

TEST_F(RegionExchangeTest, AOnePostRectangleHasTwelveBytes) {
    EXPECT_EQ(Exported(Numbered(16), {2, 3, 2, 3}),
              Int32Bytes(1) + Int32Bytes(1) + Int32Bytes(3 * 16 + 3));
}

TEST_F(RegionExchangeTest, RowsRunFromTheLowestPostUp) {
    const std::string expected = Int32Bytes(3) + Int32Bytes(2) + Int32Bytes(17) +
                                 Int32Bytes(18) + Int32Bytes(19) + Int32Bytes(33) +
                                 Int32Bytes(34) + Int32Bytes(35);
    EXPECT_EQ(Exported(Numbered(16), {0, 1, 2, 2}), expected);
    // Corners in reverse produce the same file.
    EXPECT_EQ(Exported(Numbered(16), {2, 2, 0, 1}), expected);
    EXPECT_EQ(Exported(Numbered(16), {0, 2, 2, 1}), expected);
}

TEST_F(RegionExchangeTest, TheExportsBarKeepsItsSum) {
    Exported(Numbered(16), {0, 4, 0, 5});
    EXPECT_EQ(progress_.Story(), "show|bar 450|events|bar 500|events|hide");
}

TEST_F(RegionExchangeTest, ACornerOutsideTheTerrainIsRefused) {
    tests::Spill(path_, "old");
    for (const PostBox& corners : {PostBox{-1, 0, 1, 1},
                                   {0, -1, 1, 1},
                                   {0, 0, 16, 1},
                                   {0, 0, 1, 16},
                                   {0, 0, 1, 99}})
        EXPECT_THROW(Exported(Numbered(16), corners), RuntimeError);
    try {
        Exported(Numbered(16), {3, 99, 0, 1});
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Detail(), "posts 0, 1 to 3, 99 of 0 to 15");
    }
    EXPECT_EQ(tests::Slurp(path_), "old");
}

TEST_F(RegionExchangeTest, AStampSetsTileNumbersAndNothingElse) {
    Terrain terrain = Numbered(16);
    EXPECT_EQ(StampRegion(terrain, Region(2, 2, 1000), 3, 4, progress_), 4);
    EXPECT_EQ(progress_.Story(), "show|bar 50|events|bar 100|events|hide");
    for (int32_t serial = 1; serial <= 256; ++serial) {
        const int32_t expected = serial == 4 * 16 + 4   ? 1000
                                 : serial == 4 * 16 + 5 ? 1001
                                 : serial == 5 * 16 + 4 ? 1002
                                 : serial == 5 * 16 + 5 ? 1003
                                                        : serial;
        const TerrainPost post = terrain.LxArr(serial);
        EXPECT_EQ(post, (TerrainPost{expected, static_cast<int16_t>(-serial), 3, 4, 5}));
    }
}

TEST_F(RegionExchangeTest, WhatWasExportedComesBackWhereItWas) {
    const Terrain from = Numbered(32);
    Exported(from, {5, 6, 20, 31});
    Terrain to = Numbered(32);
    for (TerrainPost& post : to.LxArr.Values())
        post.TileOffset = 7;
    StampRegion(to, ReadRegion(path_), 5, 6, progress_);
    for (int32_t y = 0; y < 32; ++y)
        for (int32_t x = 0; x < 32; ++x) {
            const bool inside = x >= 5 && x <= 20 && y >= 6;
            const int32_t serial = y * 32 + x + 1;
            EXPECT_EQ(to.LxArr(serial).TileOffset, inside ? serial : 7);
        }
}

// Post by post, with the edge looked at for each.
TEST_F(RegionExchangeTest, PastTheEdgeThePostsInsideAreSet) {
    std::mt19937 random(9);
    const auto within = [&](int32_t least, int32_t most) {
        return least +
               static_cast<int32_t>(random() % static_cast<unsigned>(most - least + 1));
    };
    for (int round = 0; round < 300; ++round) {
        const TileRegion region = Region(within(1, 9), within(1, 9), 5000);
        const int32_t x = within(-12, 12);
        const int32_t y = within(-12, 12);
        Terrain terrain = Numbered(8);
        const int64_t count = StampRegion(terrain, region, x, y, progress_);
        Terrain expected = Numbered(8);
        int64_t inside = 0;
        for (int32_t r = 1; r <= region.RegionHeight; ++r)
            for (int32_t c = 1; c <= region.RegionWidth; ++c) {
                const int32_t postX = x + c;
                const int32_t postY = y + r;
                if (postX < 1 || postX > 8 || postY < 1 || postY > 8)
                    continue;
                ++inside;
                expected.LxArr((postY - 1) * 8 + postX).TileOffset =
                    5000 + (r - 1) * region.RegionWidth + c - 1;
            }
        EXPECT_EQ(count, inside);
        EXPECT_TRUE(std::ranges::equal(terrain.LxArr.Values(), expected.LxArr.Values()))
            << x << ' ' << y;
        EXPECT_EQ(RegionFits(region, x, y, 8),
                  inside == int64_t{region.RegionWidth} * region.RegionHeight);
    }
}

// 0 is the sea, and a tile like any other.
TEST_F(RegionExchangeTest, ATileNumberOfMinusOneIsRefusedAndNoneOfZero) {
    const std::string two = Int32Bytes(2) + Int32Bytes(1);
    ExpectRefused(two + Int32Bytes(5) + Int32Bytes(-1), ErrorNumber::SubscriptOutOfRange,
                  "offset 12 is the tile number -1");
    ExpectRefused(two + Int32Bytes(-1) + Int32Bytes(0), ErrorNumber::SubscriptOutOfRange,
                  "offset 8 is the tile number -1");
    folder_.Write("a region.exp", two + Int32Bytes(0) + Int32Bytes(0));
    EXPECT_EQ(ReadRegion(path_).TileNumbers, (std::vector<int32_t>{0, 0}));
}

TEST_F(RegionExchangeTest, AFileWhoseSizeDoesNotFitItsHeaderIsRefused) {
    const std::string two = Int32Bytes(2) + Int32Bytes(1);
    ExpectRefused(two + Int32Bytes(5), ErrorNumber::InputPastEnd,
                  "expected 2 by 1 tile numbers, 16 bytes, found a file of 12 bytes");
    ExpectRefused(two + Int32Bytes(5) + Int32Bytes(6) + "x", ErrorNumber::InputPastEnd,
                  "found a file of 17 bytes");
    ExpectRefused("1234567", ErrorNumber::InputPastEnd, "");
    ExpectRefused("", ErrorNumber::InputPastEnd, "");
    const int most = std::numeric_limits<int>::max();
    ExpectRefused(Int32Bytes(most) + Int32Bytes(most), ErrorNumber::InputPastEnd,
                  "2147483647 by 2147483647");
    // 2 to the 31st columns by 2 rows would come out as nothing in 32 bits.
    ExpectRefused(Int32Bytes(std::numeric_limits<int>::min()) + Int32Bytes(2),
                  ErrorNumber::InputPastEnd, "sides of at least 1");
    ExpectRefused(Int32Bytes(0) + Int32Bytes(0), ErrorNumber::InputPastEnd,
                  "sides of at least 1");
    ExpectRefused(Int32Bytes(-1) + Int32Bytes(-1) + Int32Bytes(1),
                  ErrorNumber::InputPastEnd, "sides of at least 1");
}

TEST_F(RegionExchangeTest, ANegativeTileNumberIsRefused) {
    ExpectRefused(Int32Bytes(1) + Int32Bytes(2) + Int32Bytes(5) + Int32Bytes(-2),
                  ErrorNumber::SubscriptOutOfRange,
                  "the entry at offset 12 is the tile number -2");
}

TEST_F(RegionExchangeTest, TheExportAsksForItsFile) {
    dialogs_.ExpectSave("Save Export file as...", path_);
    EXPECT_TRUE(ExportTiles(Numbered(16), {1, 1, 1, 1}, dialogs_, progress_));
    EXPECT_EQ(dialogs_.LastFilter(), "Export Files | *.exp");
    EXPECT_EQ(tests::Slurp(path_).size(), 12U);
    dialogs_.ExpectCancel();
    EXPECT_FALSE(ExportTiles(Numbered(16), {1, 1, 1, 1}, dialogs_, progress_));
}

TEST_F(RegionExchangeTest, TheExportTakesWhatLiesOnTheTerrain) {
    dialogs_.ExpectSave("Save Export file as...", path_);
    EXPECT_TRUE(ExportTiles(Numbered(16), {15, 14, 20, 20}, dialogs_, progress_));
    EXPECT_EQ(tests::Slurp(path_),
              Int32Bytes(1) + Int32Bytes(2) + Int32Bytes(14 * 16 + 16) + Int32Bytes(256));
    dialogs_.ExpectBox("", "The region lies outside the terrain. Nothing was changed.",
                       BoxAnswer::Ok);
    EXPECT_FALSE(ExportTiles(Numbered(16), {16, 3, 20, 5}, dialogs_, progress_));
}

TEST_F(RegionExchangeTest, TheImportAsksForItsFile) {
    tests::Spill(path_, Int32Bytes(1) + Int32Bytes(1) + Int32Bytes(77));
    dialogs_.ExpectOpen("Open file to import...", path_);
    const auto region = AskForRegion(dialogs_);
    ASSERT_TRUE(region);
    EXPECT_EQ(dialogs_.LastFilter(), "Export Files | *.exp");
    EXPECT_EQ(region->TileNumbers, std::vector<int32_t>{77});
    dialogs_.ExpectCancel();
    EXPECT_FALSE(AskForRegion(dialogs_));
}

TEST_F(RegionExchangeTest, ABrokenFileIsToldInABox) {
    tests::Spill(path_, Int32Bytes(3) + Int32Bytes(1));
    dialogs_.ExpectOpen("Open file to import...", path_);
    dialogs_.ExpectBox("Error...",
                       "ERROR number 62\nInput past end of file\n" + path_ +
                           ": expected 3 by 1 tile numbers, 20 bytes, found a file of 8 "
                           "bytes",
                       BoxAnswer::Ok);
    EXPECT_FALSE(AskForRegion(dialogs_));
}

TEST_F(RegionExchangeTest, PastTheEdgeIsAskedFirst) {
    const char* question = "The region reaches past the edge of the terrain. Import only "
                           "the part that fits?";
    Terrain terrain = Numbered(16);
    dialogs_.ExpectBox("", question, BoxAnswer::No);
    EXPECT_FALSE(ImportTiles(terrain, Region(2, 1, 900), 15, 0, dialogs_, progress_));
    EXPECT_EQ(dialogs_.LastButtons(), BoxButtons::YesNo);
    EXPECT_EQ(terrain.LxArr(16).TileOffset, 16);
    dialogs_.ExpectBox("", question, BoxAnswer::Yes);
    EXPECT_TRUE(ImportTiles(terrain, Region(2, 1, 900), 15, 0, dialogs_, progress_));
    EXPECT_EQ(terrain.LxArr(16).TileOffset, 900);
    EXPECT_EQ(terrain.LxArr(17).TileOffset, 17);
    // Inside nothing is asked.
    EXPECT_TRUE(ImportTiles(terrain, Region(1, 1, 5), 0, 0, dialogs_, progress_));
}

TEST_F(RegionExchangeTest, BeyondTheEdgeNothingIsImported) {
    Terrain terrain = Numbered(16);
    dialogs_.ExpectBox("", "The region lies outside the terrain. Nothing was changed.",
                       BoxAnswer::Ok);
    EXPECT_FALSE(ImportTiles(terrain, Region(2, 1, 900), 16, 0, dialogs_, progress_));
}

} // namespace
} // namespace vardenix
