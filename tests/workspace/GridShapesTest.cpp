#include "workspace/GridShapes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>
#include <utility>

namespace vardenix {
namespace {

using Squares = std::set<std::pair<int, int>>;

Squares SetOf(const std::vector<PostPlace>& line) {
    Squares squares;
    for (const PostPlace& at : line)
        squares.insert({at.X, at.Y});
    return squares;
}

Squares SetOf(const std::vector<RowSpan>& spans) {
    Squares squares;
    for (const RowSpan& span : spans)
        for (int x = span.X1; x <= span.X2; ++x)
            EXPECT_TRUE(squares.insert({x, span.Y}).second) << x << ", " << span.Y;
    return squares;
}

// Straight from the words: in every column (row) the square nearest to the line, the
// lower one (the one at the left) of two, found by trying all.
Squares SlowLine(PostPlace a, PostPlace b) {
    const bool wide = std::abs(b.X - a.X) >= std::abs(b.Y - a.Y);
    Squares squares;
    if (a.X == b.X && a.Y == b.Y)
        return {{a.X, a.Y}};
    const int first = wide ? std::min(a.X, b.X) : std::min(a.Y, b.Y);
    const int last = wide ? std::max(a.X, b.X) : std::max(a.Y, b.Y);
    for (int at = first; at <= last; ++at) {
        const double part =
            wide ? 1.0 * (at - a.X) / (b.X - a.X) : 1.0 * (at - a.Y) / (b.Y - a.Y);
        const double exact = wide ? a.Y + part * (b.Y - a.Y) : a.X + part * (b.X - a.X);
        int best = -1000;
        for (int try_ = -60; try_ <= 60; ++try_)
            if (std::abs(try_ - exact) < std::abs(best - exact) - 1e-9)
                best = try_;
        squares.insert(wide ? std::pair(at, best) : std::pair(best, at));
    }
    return squares;
}

TEST(GridShapes, ALineIsThatOfASlowSearch) {
    for (int x = -7; x <= 9; ++x)
        for (int y = -8; y <= 7; ++y) {
            const PostPlace a{2, -3};
            const PostPlace b{x, y};
            const auto line = LineBetween(a, b);
            EXPECT_EQ(SetOf(line), SlowLine(a, b)) << x << ", " << y;
            EXPECT_EQ(SetOf(LineBetween(b, a)), SetOf(line)) << x << ", " << y;
            EXPECT_EQ(line.front().X, a.X);
            EXPECT_EQ(line.back().X, b.X);
            EXPECT_EQ(line.back().Y, b.Y);
        }
}

// Every square touches the one before it, so a stroke has no gap.
TEST(GridShapes, ALineHangsTogether) {
    std::mt19937 random(3);
    std::uniform_int_distribution<int> at(-40, 40);
    for (int round = 0; round < 200; ++round) {
        const auto line = LineBetween({at(random), at(random)}, {at(random), at(random)});
        for (size_t i = 1; i < line.size(); ++i) {
            EXPECT_LE(std::abs(line[i].X - line[i - 1].X), 1);
            EXPECT_LE(std::abs(line[i].Y - line[i - 1].Y), 1);
        }
    }
}

TEST(GridShapes, AnEvenBrushReachesFartherToTheRightAndUp) {
    const auto brush = [](int32_t size) {
        const PostBox box = BrushAt({10, 20}, size);
        return std::vector{box.X1, box.Y1, box.X2, box.Y2};
    };
    EXPECT_EQ(brush(1), (std::vector{10, 20, 10, 20}));
    EXPECT_EQ(brush(2), (std::vector{10, 20, 11, 21}));
    EXPECT_EQ(brush(3), (std::vector{9, 19, 11, 21}));
    EXPECT_EQ(brush(8), (std::vector{7, 17, 14, 24}));
    EXPECT_EQ(brush(9), (std::vector{6, 16, 14, 24}));
}

TEST(GridShapes, ABrushedLineIsTheBrushAtEverySquareOfIt) {
    std::mt19937 random(4);
    std::uniform_int_distribution<int> at(-4, 24);
    for (int round = 0; round < 100; ++round) {
        const auto line = LineBetween({at(random), at(random)}, {at(random), at(random)});
        const int size = 1 + round % 9;
        Squares expected;
        for (const PostPlace& middle : line)
            for (int x = middle.X - (size - 1) / 2; x <= middle.X + size / 2; ++x)
                for (int y = middle.Y - (size - 1) / 2; y <= middle.Y + size / 2; ++y)
                    if (x >= 0 && y >= 0 && x < 20 && y < 20)
                        expected.insert({x, y});
        EXPECT_EQ(SetOf(BrushedSpans(line, size, 20)), expected) << round;
    }
}

TEST(GridShapes, ABoxIsCutToTheGridWhicheverCornerCameFirst) {
    EXPECT_EQ(SpansOf(CutToGrid({5, 3, -2, 1}, 5)),
              (std::vector<RowSpan>{{1, 0, 4}, {2, 0, 4}, {3, 0, 4}}));
    EXPECT_TRUE(SpansOf(CutToGrid({5, 0, 9, 9}, 5)).empty());
    EXPECT_TRUE(SpansOf(CutToGrid({0, -9, 3, -1}, 5)).empty());
}

// One square after the other asks its four neighbours.
void SlowFill(const std::vector<std::string>& map, int x, int y, char wanted,
              const PostBox& limits, Squares& filled) {
    if (x < limits.X1 || x > limits.X2 || y < limits.Y1 || y > limits.Y2 ||
        map[static_cast<size_t>(y)][static_cast<size_t>(x)] != wanted ||
        !filled.insert({x, y}).second)
        return;
    SlowFill(map, x + 1, y, wanted, limits, filled);
    SlowFill(map, x - 1, y, wanted, limits, filled);
    SlowFill(map, x, y + 1, wanted, limits, filled);
    SlowFill(map, x, y - 1, wanted, limits, filled);
}

std::vector<RowSpan> Fill(const std::vector<std::string>& map, const PostBox& limits,
                          PostPlace start) {
    const char wanted = map[static_cast<size_t>(start.Y)][static_cast<size_t>(start.X)];
    return FilledSpans(limits, start, [&](int32_t x, int32_t y) {
        return map[static_cast<size_t>(y)][static_cast<size_t>(x)] == wanted;
    });
}

TEST(GridShapes, AFillIsThatOfASlowSearch) {
    std::mt19937 random(5);
    std::uniform_int_distribution<int> die(0, 9);
    for (int round = 0; round < 200; ++round) {
        std::vector<std::string> map(17, std::string(19, '.'));
        for (std::string& row : map)
            for (char& square : row)
                square = die(random) < 2 + round % 6 ? '#' : '.';
        const PostPlace start{die(random), die(random)};
        const PostBox limits{0, round % 3, 18 - round % 5, 16};
        Squares expected;
        if (Contains(limits, start))
            SlowFill(map, start.X, start.Y,
                     map[static_cast<size_t>(start.Y)][static_cast<size_t>(start.X)],
                     limits, expected);
        EXPECT_EQ(SetOf(Fill(map, limits, start)), expected) << round;
    }
}

TEST(GridShapes, AFillGoesRoundCornersButNotThroughThem) {
    const std::vector<std::string> map{"..#.", "##.#", "...#", ".##."};
    EXPECT_EQ(Fill(map, {0, 0, 3, 3}, {0, 0}), (std::vector<RowSpan>{{0, 0, 1}}));
    EXPECT_EQ(Fill(map, {0, 0, 3, 3}, {0, 3}),
              (std::vector<RowSpan>{{1, 2, 2}, {2, 0, 2}, {3, 0, 0}}));
}

TEST(GridShapes, FourMillionSquaresAreARunForEachRow) {
    const auto spans = FilledSpans({0, 0, 2047, 2047}, {1000, 1000},
                                   [](int32_t, int32_t) { return true; });
    ASSERT_EQ(spans.size(), 2048U);
    for (int32_t y = 0; y < 2048; ++y)
        ASSERT_EQ(spans[static_cast<size_t>(y)], (RowSpan{y, 0, 2047}));
}

} // namespace
} // namespace vardenix
