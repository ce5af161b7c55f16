#include "grounds/WayStroke.h"

#include "grounds/DrawnLand.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

#include <numeric>

namespace vardenix::tests {
namespace {

constexpr int32_t FirstRoad = 116; // of 15 tiles of red ground; 115 + the roads' sides
constexpr uint8_t Sides = 16;      // of a road's sides there are so many sets

// Two grounds, and roads on the red one: a tile for each set of sides.
LearnedTiles TilesWithRoads() {
    LearnedTiles tiles = RedAndBlueTiles();
    tiles.Indices.assign(FirstRoad + Sides, -1);
    std::iota(tiles.Indices.begin() + 100, tiles.Indices.begin() + 116, 0);
    for (uint8_t sides = 1; sides < Sides; ++sides) {
        Raster picture(32, 32);
        for (int32_t y = 0; y < 32; ++y)
            for (int32_t x = 0; x < 32; ++x) {
                const bool across = y >= 14 && y < 18;
                const bool up = x >= 14 && x < 18;
                const bool road = (up && y < 18 && (sides >> North & 1) != 0) ||
                                  (across && x >= 14 && (sides >> East & 1) != 0) ||
                                  (up && y >= 14 && (sides >> South & 1) != 0) ||
                                  (across && x < 18 && (sides >> West & 1) != 0);
                picture.Row(y)[x] = road ? 0xFF202020U : 0xFFFF0000U;
            }
        const int32_t number = FirstRoad - 1 + sides;
        tiles.Indices[static_cast<size_t>(number)] =
            static_cast<int32_t>(tiles.Numbers.size());
        tiles.Numbers.push_back(number);
        tiles.Sides.push_back(SidesOf(picture.View()));
        tiles.Ways.push_back({0, sides, 0});
    }
    return tiles;
}

// Roads here and there between neighbours that are red.
LandGrid MapWithRoads(int32_t side) {
    LandGrid map = RedAndBlueMap(side, 1);
    for (int32_t y = 12; y < side; ++y)
        for (int32_t x = 0; x < side; ++x)
            map(x, y) = 0;
    std::vector<uint8_t> sides(map.Tiles.size());
    std::mt19937 random(3);
    for (int32_t y = 13; y + 1 < side; ++y)
        for (int32_t x = 0; x + 1 < side; ++x) {
            if (random() % 2 == 0) {
                sides[map.At(x, y)] |= 1 << East;
                sides[map.At(x + 1, y)] |= 1 << West;
            }
            if (random() % 2 == 0) {
                sides[map.At(x, y)] |= 1 << North;
                sides[map.At(x, y + 1)] |= 1 << South;
            }
        }
    for (size_t i = 0; i < sides.size(); ++i)
        if (sides[i] != 0)
            map.Tiles[i] = 15 + sides[i];
    return map;
}

const LearnedLand& WithRoads() {
    static const LearnedLand land(TilesWithRoads(), MapWithRoads(40));
    return land;
}

Terrain RedLand(int32_t width) {
    Terrain terrain;
    terrain.MapWidth = width;
    terrain.LxArr = PostArray(int64_t{width} * width);
    for (TerrainPost& post : terrain.LxArr.Values())
        post.TileOffset = 100;
    return terrain;
}

int32_t Road(std::initializer_list<Side> sides) {
    int32_t set = 0;
    for (const Side side : sides)
        set |= 1 << side;
    return FirstRoad - 1 + set;
}

// What a stroke has made of the posts, row by row from the south.
std::vector<int32_t> After(Terrain& terrain, const BrushResult& result) {
    WriteNew(terrain.LxArr, result.Runs);
    std::vector<int32_t> tiles;
    for (const TerrainPost& post : terrain.LxArr.Values())
        tiles.push_back(post.TileOffset);
    return tiles;
}

TEST(WayStroke, LeadsFromPostToPostWithAnEndAtBothEnds) {
    ASSERT_EQ(WithRoads().Refusal(), "");
    EXPECT_EQ(WayOf(WithRoads(), Road({North})), WayKind::Road);
    EXPECT_FALSE(WayOf(WithRoads(), 100).has_value());
    Terrain terrain = RedLand(4);
    const std::vector<PostPlace> chain{{0, 0}, {1, 0}, {1, 1}, {2, 1}};
    const BrushResult result = PaintWay(WithRoads(), terrain, chain, Road({East, West}));
    EXPECT_EQ(After(terrain, result),
              (std::vector<int32_t>{Road({East}), Road({West, North}), 100, 100, //
                                    100, Road({South, East}), Road({West}), 100, //
                                    100, 100, 100, 100, 100, 100, 100, 100}));
    EXPECT_EQ(result.OpenSeams, 0);
    EXPECT_EQ(result.Unfilled, 0);
    EXPECT_EQ(result.Outside, 0);
}

TEST(WayStroke, JoinsWaysThatComeFromBeside) {
    Terrain terrain = RedLand(4);
    terrain.LxArr(1 + 4 * 1).TileOffset = Road({East, West}); // leads to 1, 1
    terrain.LxArr(2 + 4 * 1).TileOffset = 100;
    const std::vector<PostPlace> chain{{1, 0}, {1, 1}, {1, 2}};
    const BrushResult result = PaintWay(WithRoads(), terrain, chain, Road({North}));
    const std::vector<int32_t> tiles = After(terrain, result);
    EXPECT_EQ(tiles[1], Road({North}));
    EXPECT_EQ(tiles[5], Road({North, South, West}));
    EXPECT_EQ(tiles[9], Road({South}));
    EXPECT_EQ(tiles[4], Road({East, West}));
}

TEST(WayStroke, AStrokeThatCrossesItselfMakesACrossing) {
    Terrain terrain = RedLand(4);
    const std::vector<PostPlace> chain{{0, 1}, {1, 1}, {2, 1}, {2, 2},
                                       {1, 2}, {1, 1}, {1, 0}};
    const std::vector<int32_t> tiles =
        After(terrain, PaintWay(WithRoads(), terrain, chain, Road({North})));
    EXPECT_EQ(tiles[5], Road({North, East, South, West}));
}

TEST(WayStroke, ATileWithoutAWayLeadsNone) {
    const Terrain terrain = RedLand(4);
    const std::vector<PostPlace> chain{{0, 0}, {1, 0}};
    EXPECT_EQ(ErrorOf([&] { PaintWay(WithRoads(), terrain, chain, 100); }).Number(),
              ErrorNumber::InvalidCall);
    const std::vector<PostPlace> beyond{{-1, 0}, {-2, 0}};
    EXPECT_TRUE(PaintWay(WithRoads(), terrain, beyond, Road({North})).Runs.empty());
}

} // namespace
} // namespace vardenix::tests
