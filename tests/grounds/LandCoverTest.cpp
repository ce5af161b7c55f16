#include "grounds/LandCover.h"

#include "grounds/DrawnLand.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

namespace vardenix::tests {
namespace {

constexpr int32_t Red = 100;
constexpr int32_t Blue = 115;
constexpr int32_t Width = 7;

const LearnedLand& Land() {
    static const LearnedLand land(RedAndBlueTiles(), RedAndBlueMap(40, 1));
    return land;
}

Terrain AllOf(int32_t tile) {
    Terrain terrain;
    terrain.MapWidth = Width;
    terrain.LxArr = PostArray(int64_t{Width} * Width);
    for (TerrainPost& post : terrain.LxArr.Values())
        post.TileOffset = tile;
    return terrain;
}

// Three by three posts in the middle of one tile, all others of the other one.
std::vector<CoveredPosts> SquareIn(int32_t outer, int32_t inner) {
    CoveredPosts outside{outer, {}};
    CoveredPosts inside{inner, {}};
    for (int32_t y = 0; y < Width; ++y)
        if (y < 2 || y > 4) {
            outside.Posts.push_back({y, 0, Width - 1});
        } else {
            outside.Posts.push_back({y, 0, 1});
            outside.Posts.push_back({y, 5, Width - 1});
            inside.Posts.push_back({y, 2, 4});
        }
    return {inside, outside};
}

std::vector<std::vector<int32_t>> TilesOf(int32_t before, const BrushResult& result) {
    Terrain terrain = AllOf(before);
    WriteNew(terrain.LxArr, result.Runs);
    std::vector<std::vector<int32_t>> rows;
    for (int32_t y = 0; y < Width; ++y) {
        rows.emplace_back();
        for (int32_t x = 0; x < Width; ++x)
            rows.back().push_back(terrain.LxArr(int64_t{y} * Width + x + 1).TileOffset -
                                  Red);
    }
    return rows;
}

// Blue corners of the posts round a blue square; rows from the south.
const std::vector<std::vector<int32_t>> BlueSquare{
    {0, 0, 0, 0, 0, 0, 0},     {0, 8, 12, 12, 12, 4, 0},  {0, 10, 15, 15, 15, 5, 0},
    {0, 10, 15, 15, 15, 5, 0}, {0, 10, 15, 15, 15, 5, 0}, {0, 2, 3, 3, 3, 1, 0},
    {0, 0, 0, 0, 0, 0, 0}};

TEST(LandCover, NarrowGroundsKeepTheirShapeWhateverTheirOrder) {
    const Terrain terrain = AllOf(Blue);
    std::vector<CoveredPosts> cover = SquareIn(Red, Blue);
    const BrushResult result = PaintCover(Land(), terrain, cover);
    EXPECT_EQ(TilesOf(Blue, result), BlueSquare);
    EXPECT_EQ(result.OpenSeams, 0);
    EXPECT_EQ(result.Unfilled, 0);
    std::swap(cover[0], cover[1]);
    EXPECT_EQ(TilesOf(Blue, PaintCover(Land(), terrain, cover)), BlueSquare);
}

TEST(LandCover, TheNarrowerOneIsNotAlwaysTheSame) {
    const Terrain terrain = AllOf(Red);
    std::vector<std::vector<int32_t>> redSquare = BlueSquare;
    for (auto& row : redSquare)
        for (int32_t& tile : row)
            tile = 15 - tile;
    EXPECT_EQ(TilesOf(Red, PaintCover(Land(), terrain, SquareIn(Blue, Red))), redSquare);
}

TEST(LandCover, NothingIsPaintedWithoutPostsOrWithAnUnknownTile) {
    const Terrain terrain = AllOf(Red);
    EXPECT_TRUE(PaintCover(Land(), terrain, {}).Runs.empty());
    EXPECT_TRUE(
        PaintCover(Land(), terrain, std::vector<CoveredPosts>{{Blue, {}}}).Runs.empty());
    EXPECT_EQ(ErrorOf([&] { PaintCover(Land(), terrain, SquareIn(Blue, 7)); }).Number(),
              ErrorNumber::InvalidCall);
}

} // namespace
} // namespace vardenix::tests
