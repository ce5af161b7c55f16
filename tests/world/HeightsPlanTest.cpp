#include "world/HeightsPlan.h"

#include "support/ErrorOf.h"
#include "support/MemorySurface.h"
#include "texts/RuntimeError.h"
#include "world/HeightsGhost.h"

#include <gtest/gtest.h>

#include <limits>

namespace vardenix {
namespace {

constexpr float None = std::numeric_limits<float>::quiet_NaN();

HeightsWish InFeet(Layer into = Layer::Posts) {
    HeightsWish wish;
    wish.Into = into;
    wish.Units.Metres = false;
    return wish;
}

// Eight posts a side, each 100 ft high, of tile 3; heights 50 ft.
class HeightsPlanTest : public testing::Test {
protected:
    HeightsPlanTest() {
        terrain_.MapWidth = 8;
        terrain_.LxArr = PostArray(64);
        for (TerrainPost& post : terrain_.LxArr.Values()) {
            post.TileOffset = 3;
            post.Elevation = 100;
        }
        terrain_.Elevations.EMapWidth = 32;
        terrain_.Elevations.L0ElvArr = HeightArray(1024);
        for (int16_t& feet : terrain_.Elevations.L0ElvArr.Values())
            feet = 50;
    }
    int16_t FeetAt(int32_t x, int32_t y) {
        return terrain_.LxArr(y * 8 + x + 1).Elevation;
    }
    Terrain terrain_;
};

TEST_F(HeightsPlanTest, ChangesElevationsAloneAndComesBack) {
    const HeightsPlan plan =
        PlanHeights({2, 2, {10, None, 30, 100}}, {6, 3}, InFeet(), {});
    EXPECT_EQ(FeetAt(6, 3), 100); // nothing yet
    const PostDelta delta = PostsChangedBy(plan, terrain_);
    WriteNew(terrain_.LxArr, delta);
    EXPECT_EQ(FeetAt(6, 3), 10);
    EXPECT_EQ(FeetAt(7, 3), 100);
    EXPECT_EQ(FeetAt(6, 4), 30);
    EXPECT_EQ(FeetAt(5, 3), 100);
    EXPECT_EQ(int32_t{terrain_.LxArr(3 * 8 + 7).TileOffset}, 3);
    EXPECT_EQ(delta.Values.New.size(), 2U); // 100 ft stay 100 ft
    WriteOld(terrain_.LxArr, delta);
    EXPECT_EQ(FeetAt(6, 3), 100);
    EXPECT_EQ(FeetAt(6, 4), 100);
}

TEST_F(HeightsPlanTest, ChangesTheFinestHeights) {
    const HeightsPlan plan =
        PlanHeights({1, 2, {10, 20}}, {31, 30}, InFeet(Layer::Heights), {});
    const HeightDelta delta = HeightsChangedBy(plan, terrain_);
    WriteNew(terrain_.Elevations.L0ElvArr, delta);
    EXPECT_EQ(terrain_.Elevations.At(32, 31), 10);
    EXPECT_EQ(terrain_.Elevations.At(32, 32), 20);
    EXPECT_EQ(terrain_.Elevations.At(31, 31), 50);
    EXPECT_EQ(delta.Values.New.size(), 2U);
}

TEST_F(HeightsPlanTest, StaysWithinWhatIsSelectedAndCountsNothingElse) {
    const std::vector<RowSpan> within{{0, 0, 7}, {3, 5, 6}, {4, 7, 7}, {5, 6, 6}};
    const HeightsPlan plan =
        PlanHeights({2, 2, {40000, 40000, None, None}}, {6, 3}, InFeet(), within);
    EXPECT_EQ(plan.At(6, 3), 32767);
    EXPECT_EQ(plan.At(7, 3), std::nullopt);
    EXPECT_EQ(plan.Taken.Set, 1);
    EXPECT_EQ(plan.Taken.Clamped, 1);
    EXPECT_EQ(plan.Taken.Without, 1);
}

TEST_F(HeightsPlanTest, BeyondTheTerrainIsRefused) {
    const HeightsPlan plan = PlanHeights({2, 1, {1, 2}}, {7, 0}, InFeet(), {});
    EXPECT_EQ(tests::ErrorOf([&] { PostsChangedBy(plan, terrain_); }).Number(),
              ErrorNumber::SubscriptOutOfRange);
}

TEST_F(HeightsPlanTest, TellsWhatItComesTo) {
    const auto words = [](const WorldRaster& raster, WithoutData without) {
        HeightsWish wish = InFeet();
        wish.Without = without;
        return PlanWords(PlanHeights(raster, {0, 0}, wish, {}), without);
    };
    EXPECT_EQ(words({2, 1, {-7, 300}}, WithoutData::Leave), "2 heights, -7 to 300 ft");
    EXPECT_EQ(words({2, 1, {None, 70000}}, WithoutData::Leave),
              "1 height, 32767 to 32767 ft; 1 of them did not fit into 16 bits; 1 place "
              "has none and stays");
    EXPECT_EQ(words({2, 1, {None, None}}, WithoutData::Zero),
              "0 heights, 0 to 0 ft; 2 places have none and become 0");
}

// Cells of ten pixels; the middle of each is looked at.
TEST_F(HeightsPlanTest, GhostPaintsWhatWouldComeAndNothingElse) {
    Configuration settings;
    HeightsGhost ghost(terrain_, settings);
    MapView view;
    view.TilePixels = 10;
    view.GridCells = 8;
    tests::MemorySurface surface(80);
    const auto at = [&surface](int32_t x, int32_t y) {
        return surface.At(x * 10 + 5, 79 - y * 10 - 5);
    };
    surface.Clear(0x123456);
    ghost.DrawMarks(surface, view);
    EXPECT_EQ(at(2, 1), 0x563412U);
    // A plain of 100 ft, and a hill that is light in the north west.
    WorldRaster raster{5, 3, std::vector<float>(15, 100)};
    raster.Values[7] = 4000;
    raster.Values[14] = None;
    raster.Values[4] = -3;
    const HeightsPlan plan = PlanHeights(raster, {2, 1}, InFeet(), {});
    ghost.Show(&plan);
    ghost.DrawMarks(surface, view);
    const uint32_t color =
        ElevationClassColor(100, {settings.PreviewSeaColor, settings.PreviewLevelColors});
    const uint32_t flat =
        (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF); // 0x00RRGGBB
    EXPECT_EQ(at(2, 1), flat);
    const auto light = [](uint32_t pixel) {
        return (pixel & 0xFF) + (pixel >> 8 & 0xFF) + (pixel >> 16 & 0xFF);
    };
    EXPECT_GT(light(at(3, 2)), light(flat));
    EXPECT_LT(light(at(5, 2)), light(flat));
    const uint32_t sea = at(6, 1); // lit a little, as it falls to the east
    EXPECT_GT(sea & 0xFF, sea >> 16 & 0xFF);
    EXPECT_EQ(at(6, 3), 0x563412U); // has none
    EXPECT_EQ(at(1, 1), 0x563412U);
    EXPECT_EQ(at(7, 1), 0x563412U);
    EXPECT_EQ(at(2, 4), 0x563412U);
}

} // namespace
} // namespace vardenix
