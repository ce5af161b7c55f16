#include "grounds/TerrainBrush.h"

#include "grounds/BrushFigures.h"
#include "grounds/DrawnLand.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

namespace vardenix::tests {
namespace {

const LearnedLand& RedAndBlue() {
    static const LearnedLand land(RedAndBlueTiles(), RedAndBlueMap(40, 1));
    return land;
}

const SampleLand& Sample() {
    static const SampleLand land(256, 1, 64);
    return land;
}
const LearnedLand& LearnedSample() {
    static const LearnedLand land(Sample().Tiles, Sample().Map);
    return land;
}

Terrain AllRed(int32_t width) {
    Terrain terrain;
    terrain.MapWidth = width;
    terrain.LxArr = PostArray(int64_t{width} * width);
    for (TerrainPost& post : terrain.LxArr.Values())
        post.TileOffset = 100;
    return terrain;
}

// Rows from the south.
std::vector<std::vector<int32_t>> TilesAfter(Terrain& terrain,
                                             const std::vector<TileRun>& runs) {
    WriteNew(terrain.LxArr, runs);
    std::vector<std::vector<int32_t>> rows;
    for (int32_t y = 0; y < terrain.MapWidth; ++y) {
        rows.emplace_back();
        for (int32_t x = 0; x < terrain.MapWidth; ++x)
            rows.back().push_back(
                terrain.LxArr(int64_t{y} * terrain.MapWidth + x + 1).TileOffset - 100);
    }
    return rows;
}

const std::vector<RowSpan> ThreeByThree{{2, 2, 4}, {3, 2, 4}, {4, 2, 4}};

TEST(TerrainBrush, JoinsWhatItPaintsOutsideOfIt) {
    Terrain terrain = AllRed(7);
    const BrushResult result = PaintGround(RedAndBlue(), terrain, ThreeByThree, 115);
    EXPECT_EQ(TilesAfter(terrain, result.Runs),
              (std::vector<std::vector<int32_t>>{{0, 0, 0, 0, 0, 0, 0},
                                                 {0, 8, 12, 12, 12, 4, 0},
                                                 {0, 10, 15, 15, 15, 5, 0},
                                                 {0, 10, 15, 15, 15, 5, 0},
                                                 {0, 10, 15, 15, 15, 5, 0},
                                                 {0, 2, 3, 3, 3, 1, 0},
                                                 {0, 0, 0, 0, 0, 0, 0}}));
    EXPECT_EQ(result.Outside, 16);
    EXPECT_EQ(result.OpenSeams, 0);
    EXPECT_EQ(result.Unfilled, 0);
}

TEST(TerrainBrush, JoinsWhatItPaintsInsideOfItWhenAsked) {
    Terrain terrain = AllRed(7);
    const BrushResult result =
        PaintGround(RedAndBlue(), terrain, ThreeByThree, 115, {.Inside = true});
    EXPECT_EQ(TilesAfter(terrain, result.Runs),
              (std::vector<std::vector<int32_t>>{{0, 0, 0, 0, 0, 0, 0},
                                                 {0, 0, 0, 0, 0, 0, 0},
                                                 {0, 0, 8, 12, 4, 0, 0},
                                                 {0, 0, 10, 15, 5, 0, 0},
                                                 {0, 0, 2, 3, 1, 0, 0},
                                                 {0, 0, 0, 0, 0, 0, 0},
                                                 {0, 0, 0, 0, 0, 0, 0}}));
    EXPECT_EQ(result.Outside, 0);
    EXPECT_EQ(result.OpenSeams, 0);
}

TEST(TerrainBrush, PaintsUpToTheEdgeOfTheMap) {
    Terrain terrain = AllRed(4);
    const BrushResult result =
        PaintGround(RedAndBlue(), terrain, std::vector<RowSpan>{{0, 0, 1}}, 115);
    EXPECT_EQ(TilesAfter(terrain, result.Runs),
              (std::vector<std::vector<int32_t>>{
                  {15, 15, 5, 0}, {3, 3, 1, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}}));
}

TEST(TerrainBrush, MendsSeamsThatDoNotFit) {
    Terrain terrain = AllRed(6);
    terrain.LxArr(2 * 6 + 2 + 1).TileOffset = 115; // the post 2, 2
    const PostBox all{0, 0, 5, 5};
    const std::vector<Seam> seams{{{2, 1}, Meeting::Northward},
                                  {{1, 2}, Meeting::Eastward},
                                  {{2, 2}, Meeting::Eastward},
                                  {{2, 2}, Meeting::Northward}};
    EXPECT_EQ(BadSeams(RedAndBlue(), terrain, all), seams);
    EXPECT_EQ(BadSeams(RedAndBlue(), terrain, {3, 2, 3, 2}),
              (std::vector<Seam>{{{2, 2}, Meeting::Eastward}}));
    const BrushResult result =
        MendSeams(RedAndBlue(), terrain, std::vector<RowSpan>{{2, 2, 2}});
    EXPECT_EQ(result.Runs, (std::vector<TileRun>{{15, 1, 115, 100}}));
    EXPECT_EQ(result.OpenSeams, 0);
}

TEST(TerrainBrush, RefusesWhatItHasNotLearned) {
    const Terrain terrain = AllRed(7);
    const LearnedLand nothing(RedAndBlueTiles(), LandGrid());
    const auto numberOf = [&](const LearnedLand& land, int32_t tile) {
        return ErrorOf([&] { PaintGround(land, terrain, ThreeByThree, tile); }).Number();
    };
    EXPECT_EQ(numberOf(nothing, 115), ErrorNumber::InvalidCall);
    EXPECT_EQ(numberOf(RedAndBlue(), 5), ErrorNumber::InvalidCall);
    EXPECT_EQ(ErrorOf([&] { MendSeams(nothing, terrain, ThreeByThree); }).Number(),
              ErrorNumber::InvalidCall);
    EXPECT_TRUE(PaintGround(RedAndBlue(), terrain, {}, 115).Runs.empty());
}

TEST(TerrainBrush, FillsHiddenPostsOfTheSample) {
    const BrushFigures ring = HiddenWindows(Sample(), LearnedSample(), 60, false);
    EXPECT_GE(ring.FittingSeams(), 0.997);
    EXPECT_GE(ring.Clean(), 0.95);
    const BrushFigures middle = HiddenWindows(Sample(), LearnedSample(), 60, true);
    EXPECT_GE(middle.FittingSeams(), 0.995);
    EXPECT_GE(middle.Clean(), 0.9);
}

TEST(TerrainBrush, PaintsEveryGroundAnywhereOnTheSample) {
    const BrushFigures outside = Paints(Sample(), LearnedSample(), 33, false);
    EXPECT_GE(outside.FittingSeams(), 0.98);
    EXPECT_GE(outside.RightGround(), 0.9);
    const BrushFigures inside = Paints(Sample(), LearnedSample(), 33, true);
    EXPECT_GE(inside.FittingSeams(), 0.98);
    EXPECT_EQ(inside.ChangedOutside, 0);
}

// A lake in the plains, deep water in it, and an island in that.
TEST(TerrainBrush, ALakeWithAnIslandHasNoBadSeam) {
    LandGrid posts{40, 40, std::vector<int32_t>(1600, 0)};
    posts.Tiles.assign(1600, Sample().PlainTile(sample::Ground::Plains));
    const auto paint = [&](int from, int to, sample::Ground ground) {
        std::vector<uint8_t> marked(1600);
        for (int y = from; y <= to; ++y)
            for (int x = from; x <= to; ++x)
                marked[posts.At(x, y)] = 1;
        EXPECT_EQ(PaintGrid(LearnedSample(), posts, marked, Sample().PlainTile(ground),
                            {0, 0}, {}),
                  0);
        EXPECT_EQ(Sample().BadSeams(posts, 0, 0, 39, 39), 0);
    };
    paint(17, 22, sample::Ground::Shallow);
    paint(10, 28, sample::Ground::Deep);
    paint(18, 20, sample::Ground::Plains);
}

TEST(TerrainBrush, TheSameSeedGivesTheSameLand) {
    const auto painted = [](uint32_t seed) {
        LandGrid posts = Sample().Map;
        std::vector<uint8_t> marked(posts.Tiles.size());
        for (int y = 100; y < 110; ++y)
            for (int x = 100; x < 110; ++x)
                marked[posts.At(x, y)] = 1;
        PaintGrid(LearnedSample(), posts, marked,
                  Sample().PlainTile(sample::Ground::Plains), {0, 0}, {.Seed = seed});
        return posts.Tiles;
    };
    EXPECT_EQ(painted(1), painted(1));
    EXPECT_NE(painted(1), painted(2));
}

} // namespace
} // namespace vardenix::tests
