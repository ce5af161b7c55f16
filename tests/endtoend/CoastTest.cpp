// How many gestures a user needs for a coast, by real mouse and keys.
#include "endtoend/EditingOnDesktop.h"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <utility>

namespace vardenix::tests {
namespace {

constexpr int Post = 8; // pixels
constexpr int InView = Side / Post;

using SomePosts = std::set<std::pair<int, int>>; // of the view, from its lower left

// Strokes go along rows, columns and diagonals, where nobody can be in doubt of the posts
// between two places.
class CoastOnDesktop : public EditingOnDesktop {
protected:
    void SetUp() override {
        EditingOnDesktop::SetUp();
        // The palette below the picture's middle would be in the way of the mouse.
        UseEdited({{"X", std::to_string(West)},
                   {"Y", std::to_string(South)},
                   {"ZOOM", "16"},
                   {"PAL_WIN_POS_T", "10200"},
                   {"PAL_WIN_SIZE_H", "2700"}});
    }

    void Stroke(int brush, const std::vector<std::pair<int, int>>& places) {
        ++gestures_;
        std::vector<Point> pixels(places.size());
        for (size_t i = 0; i < places.size(); ++i)
            pixels[i] = PixelOf(places[i].first, places[i].second);
        desktop_.StrokeIn(Map, pixels);
        for (size_t i = 1; i < places.size(); ++i) {
            const auto [x, y] = places[i - 1];
            const int across = places[i].first - x;
            const int up = places[i].second - y;
            const int length = std::max(std::abs(across), std::abs(up));
            for (int step = 0; step <= length; ++step)
                Add(x + across * step / length - brush / 2,
                    y + up * step / length - brush / 2, brush, brush);
        }
    }

    void Rectangle(int x, int y, int width, int height) {
        ++gestures_;
        desktop_.StrokeIn(Map, {PixelOf(x, y), PixelOf(x + width - 1, y + height - 1)});
        Add(x, y, width, height);
    }

    // What the coast looks like on the disk, and nothing else.
    void ExpectOnDisk(const MadeLevel& before) {
        const MadeLevel saved = Level2();
        ASSERT_EQ(saved.Posts.size(), before.Posts.size());
        const int32_t tile = saved.Posts[IndexOf(*painted_.begin())].Tile;
        MadeLevel expected = before;
        for (const auto& place : painted_)
            expected.Posts[IndexOf(place)].Tile = tile;
        for (const size_t serial : Differences(expected, saved))
            ADD_FAILURE() << "post " << (serial - 1) % Posts - West << ", "
                          << (serial - 1) / Posts - South << " of the view";
    }

    static constexpr int West = 24;
    static constexpr int South = 24;
    int gestures_ = 0;
    SomePosts painted_;

private:
    static Point PixelOf(int x, int y) {
        return {x * Post + Post / 2, Strip + Side - y * Post - Post / 2};
    }
    // In a level's posts.
    static size_t IndexOf(std::pair<int, int> place) {
        const int index = (South + place.second) * Posts + West + place.first;
        return static_cast<size_t>(index);
    }
    void Add(int left, int bottom, int width, int height) {
        for (int y = bottom; y < bottom + height; ++y)
            for (int x = left; x < left + width; ++x)
                if (x >= 0 && y >= 0 && x < InView && y < InView)
                    painted_.insert({x, y});
    }
};

TEST_F(CoastOnDesktop, FiveHundredPostsTakeFewGestures) {
    const MadeLevel before = Level2();
    Start();
    ASSERT_NO_FATAL_FAILURE(ChooseFirstTile());
    const Picture untouched = MapPicture();

    Stroke(1, {{2, 40}, {14, 52}, {30, 52}, {38, 60}, {38, 72}, {55, 72}});
    Stroke(1, {{55, 72}, {70, 57}, {70, 40}, {77, 33}});
    desktop_.Keys({"bracketright", "bracketright"}); // a brush of three posts
    Stroke(3, {{5, 30}, {20, 30}, {28, 22}, {28, 10}, {45, 10}});
    Stroke(3, {{45, 10}, {60, 25}, {60, 33}});
    desktop_.Key("r");
    Rectangle(60, 25, 12, 7);
    Rectangle(66, 12, 5, 9);
    ASSERT_TRUE(Await([&](const Picture& map) {
        return map.Part({66 * Post, Side - 20 * Post, Post, Post}) !=
               untouched.Part({66 * Post, Side - 20 * Post, Post, Post});
    }));
    ASSERT_NO_FATAL_FAILURE(Save());
    ASSERT_NO_FATAL_FAILURE(ExpectOnDisk(before));
    EXPECT_GE(painted_.size(), 500U);
    EXPECT_LT(gestures_, 20);

    // Each is one step of undo: as many steps as gestures lead back to the first picture.
    for (int step = 0; step < gestures_; ++step)
        desktop_.Key("ctrl+z");
    desktop_.HoverIn(Palette, 200, 20); // what a click would paint goes with the pointer
    EXPECT_TRUE(Await([&](const Picture& map) { return map == untouched; }));
    desktop_.Key("ctrl+z"); // there is nothing more
    ASSERT_NO_FATAL_FAILURE(Save());
    EXPECT_TRUE(Differences(before, Level2()).empty());
    Leave();
}

} // namespace
} // namespace vardenix::tests
