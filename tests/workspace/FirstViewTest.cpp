#include "workspace/FirstView.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

// 64 posts a side, four segments, all sea; tile 2 is a plain.
class FirstViewTest : public testing::Test {
protected:
    FirstViewTest() {
        terrain_.MapWidth = 64;
        terrain_.LxArr = PostArray(64 * 64);
        lookup_.resize(16);
        for (TileInfo& entry : lookup_)
            entry.Terrain = -1;
        lookup_[0].Terrain = 1;
        lookup_[2].Terrain = 4;
    }
    TerrainPost& Post(int x, int y) { return terrain_.LxArr(y * 64 + x + 1); }
    void Land(int x1, int y1, int x2, int y2) {
        for (int y = y1; y <= y2; ++y)
            for (int x = x1; x <= x2; ++x)
                Post(x, y).TileOffset = 2;
    }

    Terrain terrain_;
    TileLookup lookup_;
};

TEST_F(FirstViewTest, AllSeaBeginsAtTheCorner) {
    EXPECT_EQ(FirstView(terrain_, lookup_, 5), (PostPlace{0, 0}));
    terrain_ = {};
    EXPECT_EQ(FirstView(terrain_, lookup_, 5), (PostPlace{0, 0}));
}

TEST_F(FirstViewTest, ShowsTheOnlyIsland) {
    Post(50, 20).Elevation = 1; // segment (3, 1), whose middle is (56, 24)
    EXPECT_EQ(FirstView(terrain_, lookup_, 5), (PostPlace{54, 22}));
    EXPECT_EQ(FirstView(terrain_, lookup_, 200), (PostPlace{0, 0}));
}

TEST_F(FirstViewTest, TheFullestSegmentNearestToTheMiddleOfAllLandIsTaken) {
    Land(0, 0, 47, 15); // three full segments in a row; its middle is that of (1, 0)
    Post(60, 60).TileOffset = 2;
    EXPECT_EQ(FirstView(terrain_, lookup_, 6), (PostPlace{24 - 3, 8 - 3}));
}

TEST_F(FirstViewTest, UnknownTilesAndWaterAreNoLand) {
    Post(5, 5).TileOffset = 7;
    Post(6, 5).TileOffset = -1;
    Post(7, 5).TileOffset = 999;
    Post(8, 5).Elevation = -20;
    EXPECT_EQ(FirstView(terrain_, lookup_, 5), (PostPlace{0, 0}));
}

TEST_F(FirstViewTest, OnlySettingsThatNoRunHasStoredAreChanged) {
    Post(50, 20).Elevation = 1;
    Configuration settings;
    BeginWhereLandIs(settings, terrain_, lookup_, 5);
    EXPECT_EQ(settings.X, 54);
    EXPECT_EQ(settings.Y, 22);
    settings.X = 3;
    settings.Y = 0;
    BeginWhereLandIs(settings, terrain_, lookup_, 5);
    EXPECT_EQ(settings.X, 3);
    settings.X = 0;
    settings.MainControlWinPos.Left = 100;
    BeginWhereLandIs(settings, terrain_, lookup_, 5);
    EXPECT_EQ(settings.X, 0);
}

} // namespace
} // namespace vardenix
