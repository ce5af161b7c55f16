#include "workspace/HeightShaping.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace vardenix {
namespace {

// Seven heights a side with 10 * x + y at (x, y), from 0.
class HeightShapingTest : public testing::Test {
protected:
    HeightShapingTest() {
        layer_.EMapWidth = Width;
        layer_.L0ElvArr = HeightArray(Width * Width);
        for (int y = 0; y < Width; ++y)
            for (int x = 0; x < Width; ++x)
                layer_.At(x + 1, y + 1) = static_cast<int16_t>(10 * x + y);
    }
    std::vector<HeightRun> Shape(const RowSpan& span, HeightTool tool, int16_t feet,
                                 const HeightsBefore& before = {}) {
        return ShapedRuns(layer_, std::span(&span, 1), tool, feet, before);
    }

    static constexpr int Width = 7;
    ElevationLayer layer_;
};

TEST_F(HeightShapingTest, SetRaisesAndLowers) {
    EXPECT_EQ(Shape({2, 1, 1}, HeightTool::Set, -40),
              (std::vector<HeightRun>{{2 * 7 + 2, 1, 12, -40}}));
    EXPECT_EQ(Shape({2, 1, 1}, HeightTool::Raise, 5),
              (std::vector<HeightRun>{{2 * 7 + 2, 1, 12, 17}}));
    EXPECT_EQ(Shape({2, 1, 1}, HeightTool::Lower, 13),
              (std::vector<HeightRun>{{2 * 7 + 2, 1, 12, -1}}));
}

TEST_F(HeightShapingTest, HeightsThatAreAlikeMakeOneRun) {
    layer_.At(3, 1) = layer_.At(2, 1) = 7;
    EXPECT_EQ(Shape({0, 1, 3}, HeightTool::Set, 50),
              (std::vector<HeightRun>{{2, 2, 7, 50}, {4, 1, 30, 50}}));
}

TEST_F(HeightShapingTest, WhatDoesNotChangeIsLeftOut) {
    EXPECT_EQ(Shape({0, 0, 2}, HeightTool::Set, 10),
              (std::vector<HeightRun>{{1, 1, 0, 10}, {3, 1, 20, 10}}));
    EXPECT_TRUE(Shape({0, 0, 6}, HeightTool::Raise, 0).empty());
}

TEST_F(HeightShapingTest, FeetStopAtTheEndsOf16Bits) {
    layer_.At(1, 1) = 32000;
    layer_.At(2, 1) = -32000;
    EXPECT_EQ(Shape({0, 0, 0}, HeightTool::Raise, 1000)[0].NewValue, 32767);
    EXPECT_EQ(Shape({0, 1, 1}, HeightTool::Lower, 1000)[0].NewValue, -32768);
}

TEST_F(HeightShapingTest, AStrokeChangesAHeightOnce) {
    const HeightsBefore before{{2, 3}}; // (1, 0) was 3
    EXPECT_EQ(Shape({0, 0, 2}, HeightTool::Raise, 1, before),
              (std::vector<HeightRun>{{1, 1, 0, 1}, {3, 1, 20, 21}}));
}

// The mean of nine, over a copy, in numbers of another kind.
int SlowMean(const std::map<std::pair<int, int>, int>& heights, int x, int y) {
    int sum = 0;
    int count = 0;
    for (int dx = -1; dx <= 1; ++dx)
        for (int dy = -1; dy <= 1; ++dy)
            if (const auto at = heights.find({x + dx, y + dy}); at != heights.end()) {
                sum += at->second;
                ++count;
            }
    // Halves to the even number.
    int down = sum / count;
    if (sum % count < 0)
        --down;
    const int rest = sum - down * count;
    if (2 * rest > count || (2 * rest == count && down % 2 != 0))
        ++down;
    return down;
}

TEST_F(HeightShapingTest, SmoothingIsThatOfASlowMean) {
    std::mt19937 random(6);
    std::uniform_int_distribution<int> feet(-300, 300);
    for (int round = 0; round < 20; ++round) {
        std::map<std::pair<int, int>, int> heights;
        for (int y = 0; y < Width; ++y)
            for (int x = 0; x < Width; ++x)
                layer_.At(x + 1, y + 1) =
                    static_cast<int16_t>(heights[{x, y}] = feet(random));
        // The first rows are smoothed already, as a stroke does it.
        HeightsBefore before;
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < Width; ++x)
                before[y * Width + x + 1] = static_cast<int16_t>(heights[{x, y}]);
        for (int y = 0; y < Width; ++y) {
            if (y < 3)
                continue;
            std::map<int, int> smoothed;
            for (const HeightRun& run :
                 Shape({y, 0, Width - 1}, HeightTool::Smooth, 0, before))
                for (int i = 0; i < run.Count; ++i)
                    smoothed[run.Serial + i - 1 - y * Width] = run.NewValue;
            for (int x = 0; x < Width; ++x) {
                const int expected = SlowMean(heights, x, y);
                if (expected == heights[{x, y}])
                    EXPECT_FALSE(smoothed.contains(x));
                else
                    EXPECT_EQ(smoothed[x], expected) << x << ", " << y;
            }
        }
        if (round == 0)
            for (int x = 0; x < Width; ++x) // a stroke has changed them
                layer_.At(x + 1, 3) = 9999;
    }
}

} // namespace
} // namespace vardenix
