#include "workspace/Selection.h"

#include <gtest/gtest.h>

#include <random>

namespace vardenix {
namespace {

using Spans = std::vector<RowSpan>;

TEST(Selection, JoinsWhatTouchesOrOverlaps) {
    const Selection selection(
        Spans{{1, 5, 7}, {0, 2, 3}, {1, 8, 9}, {1, 6, 6}, {2, 4, 3}});
    EXPECT_EQ(selection.Spans(), (Spans{{0, 2, 3}, {1, 5, 9}}));
    EXPECT_EQ(selection.Count(), 7);
    EXPECT_TRUE(selection.Has({2, 0}));
    EXPECT_TRUE(selection.Has({9, 1}));
    EXPECT_FALSE(selection.Has({4, 1}));
    EXPECT_FALSE(selection.Has({10, 1}));
    EXPECT_FALSE(selection.Has({2, 2}));
    const PostBox box = selection.Bounds();
    EXPECT_EQ(box.X1, 2);
    EXPECT_EQ(box.Y1, 0);
    EXPECT_EQ(box.X2, 9);
    EXPECT_EQ(box.Y2, 1);
    EXPECT_TRUE(Selection().Empty());
    EXPECT_LT(Selection().Bounds().X2, Selection().Bounds().X1);
}

TEST(Selection, ABoxIsCutToTheTerrain) {
    EXPECT_EQ(SelectedBox({2, 1, -3, 0}, 4).Spans(), (Spans{{0, 0, 2}, {1, 0, 2}}));
    EXPECT_TRUE(SelectedBox({4, 0, 9, 9}, 4).Empty());
    EXPECT_EQ(Inverted(SelectedBox({1, 0, 2, 0}, 4), 4).Spans(),
              (Spans{{0, 0, 0}, {0, 3, 3}, {1, 0, 3}, {2, 0, 3}, {3, 0, 3}}));
}

TEST(Selection, ALassoTakesPostsWhoseMiddlesLieInside) {
    // A triangle with its right angle at the lower left.
    const std::vector<PicturePoint> triangle{{0, 0}, {3.2, 0}, {0, 3.2}};
    EXPECT_EQ(SelectedLasso(triangle, 8).Spans(),
              (Spans{{0, 0, 2}, {1, 0, 1}, {2, 0, 0}}));
    // Two squares one in the other: a ring.
    const std::vector<PicturePoint> ring{{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0},
                                         {1, 1}, {1, 3}, {3, 3}, {3, 1}, {1, 1}};
    EXPECT_EQ(SelectedLasso(ring, 8).Spans(),
              (Spans{{0, 0, 3}, {1, 0, 0}, {1, 3, 3}, {2, 0, 0}, {2, 3, 3}, {3, 0, 3}}));
    const std::vector<PicturePoint> beyond{{-9, -9}, {99, -9}, {99, 99}, {-9, 99}};
    EXPECT_EQ(SelectedLasso(beyond, 3).Count(), 9);
    EXPECT_TRUE(SelectedLasso({}, 3).Empty());
}

TEST(Selection, HitsAreSelectedBySerial) {
    const std::vector<int32_t> hits{0, 1, 2, 4, 5};
    EXPECT_EQ(SelectedHits(hits, 4).Spans(), (Spans{{0, 0, 1}, {0, 3, 3}, {1, 0, 0}}));
}

// Post by post.
TEST(Selection, SetsAreThoseOfSinglePosts) {
    std::mt19937 random(3);
    const auto some = [&random] {
        Spans spans;
        for (int i = 0; i < 20; ++i) {
            const auto y = static_cast<int32_t>(random() % 8);
            const auto x = static_cast<int32_t>(random() % 12);
            spans.push_back({y, x, x + static_cast<int32_t>(random() % 4)});
        }
        return Selection(spans);
    };
    for (int round = 0; round < 50; ++round) {
        const Selection a = some();
        const Selection b = some();
        const Selection joined = Joined(a, b);
        const Selection without = Without(a, b);
        const Selection common = Common(a, b);
        for (int32_t y = 0; y < 8; ++y)
            for (int32_t x = 0; x < 16; ++x) {
                const PostPlace at{x, y};
                EXPECT_EQ(joined.Has(at), a.Has(at) || b.Has(at));
                EXPECT_EQ(without.Has(at), a.Has(at) && !b.Has(at));
                EXPECT_EQ(common.Has(at), a.Has(at) && b.Has(at));
            }
    }
}

} // namespace
} // namespace vardenix
