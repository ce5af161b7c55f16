#include "levels/Posts.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

void ExpectBox(const PostBox& box, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
    EXPECT_EQ(box.X1, x1);
    EXPECT_EQ(box.Y1, y1);
    EXPECT_EQ(box.X2, x2);
    EXPECT_EQ(box.Y2, y2);
}

TEST(Posts, ABoxIsTheSameWhicheverCornersAreGiven) {
    ExpectBox(Ordered({2, 3, 5, 9}), 2, 3, 5, 9);
    ExpectBox(Ordered({5, 9, 2, 3}), 2, 3, 5, 9);
    ExpectBox(Ordered({5, 3, 2, 9}), 2, 3, 5, 9);
}

TEST(Posts, ABoxIsCutToTheGrid) {
    ExpectBox(CutToGrid({20, 7, -4, -1}, 16), 0, 0, 15, 7);
    const PostBox beside = CutToGrid({16, 3, 18, 4}, 16);
    EXPECT_LT(beside.X2, beside.X1);
}

TEST(Posts, BothCornersBelongToABox) {
    const PostBox box{2, 3, 5, 9};
    for (const PostPlace in : {PostPlace{2, 3}, {5, 9}, {2, 9}, {5, 3}, {4, 4}})
        EXPECT_TRUE(Contains(box, in)) << in.X << ", " << in.Y;
    for (const PostPlace out : {PostPlace{1, 4}, {6, 4}, {4, 2}, {4, 10}})
        EXPECT_FALSE(Contains(box, out)) << out.X << ", " << out.Y;
}

TEST(Posts, ABoxLiesOnTheGridWithAllFourSides) {
    EXPECT_TRUE(LiesOnGrid({0, 0, 15, 15}, 16));
    EXPECT_TRUE(LiesOnGrid({15, 0, 0, 15}, 16));
    for (const PostBox& past :
         {PostBox{-1, 0, 1, 1}, {0, -1, 1, 1}, {1, 1, 16, 1}, {1, 16, 1, 1}})
        EXPECT_FALSE(LiesOnGrid(past, 16)) << past.X1 << ", " << past.Y1;
}

} // namespace
} // namespace vardenix
