#include "search/Replacing.h"

#include "levels/PostHash.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace vardenix {
namespace {

Terrain Land(int32_t width, unsigned seed) {
    Terrain terrain;
    terrain.MapWidth = width;
    terrain.LxArr = PostArray(int64_t{width} * width);
    std::mt19937 random(seed);
    for (TerrainPost& post : terrain.LxArr.Values())
        post.TileOffset = static_cast<int32_t>(random() % 4);
    return terrain;
}

TEST(Replacing, ChangesTilesThatGiveWayInsideTheSpans) {
    Terrain terrain = Land(4, 1);
    for (int32_t serial = 1; serial <= 16; ++serial)
        terrain.LxArr(serial).TileOffset = serial % 2; // columns 0 and 2 have 1
    const TileMarks old{0, 1};
    const std::vector<RowSpan> spans{{0, 0, 2}, {2, 2, 3}};
    EXPECT_EQ(CountReplaced(terrain, old, spans), 3);
    const auto runs = ReplacedRuns(terrain, {old, {9}}, spans);
    EXPECT_EQ(runs, (std::vector<TileRun>{{1, 1, 1, 9}, {3, 1, 1, 9}, {11, 1, 1, 9}}));
}

TEST(Replacing, NothingToReplaceByIsRefused) {
    const Terrain terrain = Land(4, 1);
    const auto error = tests::ErrorOf([&] {
        ReplacedRuns(terrain, {{1}, {}}, WholeTerrain(terrain));
    });
    EXPECT_EQ(error.Number(), ErrorNumber::InvalidCall);
}

TEST(Replacing, OfSeveralEachIsDrawnAboutAsOften) {
    Terrain terrain = Land(64, 1);
    for (TerrainPost& post : terrain.LxArr.Values())
        post.TileOffset = 0;
    WriteNew(terrain.LxArr,
             ReplacedRuns(terrain, {{1}, {5, 6, 7}, 3}, WholeTerrain(terrain)));
    std::map<int32_t, int> drawn;
    int alike = 0; // neighbours: a pattern would show as more or fewer than a third
    for (int32_t serial = 1; serial <= 4096; ++serial) {
        ++drawn[terrain.LxArr(serial).TileOffset];
        if (serial % 64 != 0)
            alike +=
                terrain.LxArr(serial).TileOffset == terrain.LxArr(serial + 1).TileOffset;
    }
    EXPECT_EQ(drawn.size(), 3U);
    for (const int32_t tile : {5, 6, 7})
        EXPECT_NEAR(drawn[tile], 1365, 150) << tile;
    EXPECT_NEAR(alike, 1344, 150);
}

TEST(Replacing, WhatIsDrawnAtAPostHangsOnTheSeedAndThePostAlone) {
    const Terrain terrain = Land(32, 2);
    const Replacement replacement{{1, 0, 1}, {5, 6, 7}, 11};
    Terrain whole = Land(32, 2);
    WriteNew(whole.LxArr, ReplacedRuns(terrain, replacement, WholeTerrain(terrain)));
    Terrain part = Land(32, 2);
    const std::vector<RowSpan> spans{{5, 3, 20}};
    WriteNew(part.LxArr, ReplacedRuns(terrain, replacement, spans));
    // The slow way, number by number.
    for (int32_t y = 0; y < 32; ++y)
        for (int32_t x = 0; x < 32; ++x) {
            const int32_t serial = y * 32 + x + 1;
            const int32_t old = terrain.LxArr(serial).TileOffset;
            const uint32_t share = HashOfPost(x, y, 11) / (0x100000000 / 3 + 1);
            const int32_t now =
                old == 0 || old == 2 ? 5 + static_cast<int32_t>(share) : old;
            EXPECT_EQ(whole.LxArr(serial).TileOffset, now) << x << " " << y;
            const bool inside = y == 5 && x >= 3 && x <= 20;
            EXPECT_EQ(part.LxArr(serial).TileOffset, inside ? now : old) << x << " " << y;
        }
}

TEST(Replacing, HitsBecomeStretchesOfRows) {
    EXPECT_EQ(SpansOfHits({0, 1, 2, 4, 5, 6}, 4),
              (std::vector<RowSpan>{{0, 0, 1}, {0, 3, 3}, {1, 0, 1}}));
    EXPECT_TRUE(SpansOfHits({0}, 4).empty());
}

} // namespace
} // namespace vardenix
