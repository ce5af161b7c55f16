// What takes few gestures, by real mouse and keys, compared on the disk with an
// independent reader.
#include "endtoend/EditingOnDesktop.h"
#include "make_sample_theater/Catalogue.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace vardenix::tests {
namespace {

constexpr int Post = 32; // pixels, with four posts to a cell
constexpr int Land = 40; // X and Y of the view's lower left post

// What the sample's own maker knows of its tiles: whether one may stand west, or south,
// of another.
class TrueTiles {
public:
    bool Fit(int32_t first, int32_t second, bool eastward) const {
        const sample::TileLook& a = LookOf(first);
        const sample::TileLook& b = LookOf(second);
        // South west, south east, north west, north east.
        const auto corners = eastward ? std::array{1, 0, 3, 2} : std::array{2, 0, 3, 1};
        if (GroundAt(a, corners[0]) != GroundAt(b, corners[1]) ||
            GroundAt(a, corners[2]) != GroundAt(b, corners[3]))
            return false;
        const uint8_t one = eastward ? sample::East : sample::North;
        const uint8_t other = eastward ? sample::West : sample::South;
        const auto alike = [&](uint8_t sample::TileLook::*edges) {
            return ((a.*edges & one) != 0) == ((b.*edges & other) != 0);
        };
        return alike(&sample::TileLook::Roads) && alike(&sample::TileLook::Rivers) &&
               alike(&sample::TileLook::Rails);
    }
    bool HasWay(int32_t tile) const {
        const sample::TileLook& look = LookOf(tile);
        return look.Roads != 0 || look.Rivers != 0 || look.Rails != 0 ||
               look.Special != sample::Extra::None;
    }
    bool HasWater(int32_t tile) const {
        const sample::TileLook& look = LookOf(tile);
        return sample::IsWater(look.Low) || sample::IsWater(look.High);
    }
    bool IsDeep(int32_t tile) const {
        const sample::TileLook& look = LookOf(tile);
        return look.Low == sample::Ground::Deep && look.HighCorners == 0;
    }

private:
    const sample::TileLook& LookOf(int32_t tile) const {
        const auto number = static_cast<size_t>(tile);
        return catalogue_.Sets().at(number / 16).Tiles.at(number % 16).Look;
    }
    static sample::Ground GroundAt(const sample::TileLook& look, int corner) {
        return (look.HighCorners >> corner & 1) != 0 ? look.High : look.Low;
    }

    sample::Catalogue catalogue_;
};

class HandOnDesktop : public EditingOnDesktop {
protected:
    void SetUp() override {
        EditingOnDesktop::SetUp();
        UseEdited({{"X", std::to_string(Land)},
                   {"Y", std::to_string(Land)},
                   {"ZOOM", "4"},
                   {"PAL_WIN_POS_T", "10200"},
                   {"PAL_WIN_SIZE_H", "2700"}});
    }

    static Point PixelOf(int x, int y) {
        return {x * Post + Post / 2, Strip + Side - y * Post - Post / 2};
    }
    void Drag(int x1, int y1, int x2, int y2, const std::string& key = {}) {
        ++gestures_;
        desktop_.DragIn(Map, PixelOf(x1, y1), PixelOf(x2, y2), key);
    }
    void Key(const std::string& key) {
        ++gestures_;
        desktop_.Key(key);
    }
    void Click(int x, int y, int button = 1) {
        ++gestures_;
        const Point at = PixelOf(x, y);
        desktop_.ClickIn(Map, at.X, at.Y, button);
    }
    static size_t IndexOf(int x, int y) {
        const int column = Land + x;
        const int row = Land + y;
        return SerialOf(static_cast<size_t>(column), static_cast<size_t>(row), Posts) - 1;
    }

    int gestures_ = 0;
};

TEST_F(HandOnDesktop, AHillOfFiveByFiveTakesThreeGestures) {
    const MadeLevel before = Level2();
    Start();
    const Picture untouched = MapPicture();
    Key("h");
    Key("r");
    Drag(4, 4, 8, 8);
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
    EXPECT_LE(gestures_, 3);
    ASSERT_NO_FATAL_FAILURE(Save());
    const MadeLevel saved = Level2();
    MadeLevel expected = before;
    for (int y = 4; y <= 8; ++y)
        for (int x = 4; x <= 8; ++x)
            expected.Posts[IndexOf(x, y)].Elevation += 100;
    EXPECT_TRUE(Differences(expected, saved).empty());
    desktop_.Key("ctrl+z");
    ASSERT_TRUE(Await([&](const Picture& map) { return map == untouched; }));
    ASSERT_NO_FATAL_FAILURE(Save());
    EXPECT_TRUE(Differences(before, Level2()).empty());
    Leave();
}

TEST_F(HandOnDesktop, ARegionComesToAnotherPlaceInFiveGesturesWithoutADialog) {
    const MadeLevel before = Level2();
    Start();
    Key("s");
    Drag(1, 1, 6, 4);
    Key("ctrl+c");
    Key("ctrl+v");
    Click(10, 12);
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
    EXPECT_LE(gestures_, 5);
    desktop_.Keys({"Escape", "Escape"});
    ASSERT_NO_FATAL_FAILURE(Save());
    const MadeLevel saved = Level2();
    MadeLevel expected = before;
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 6; ++x)
            expected.Posts[IndexOf(10 + x, 12 + y)] = before.Posts[IndexOf(1 + x, 1 + y)];
    EXPECT_TRUE(Differences(expected, saved).empty());
    EXPECT_FALSE(Differences(before, saved).empty());
    Leave();
}

// A lake is to lie where no way is cut by it, nor by its shores.
TEST_F(HandOnDesktop, ALakeOfSixBySixHasItsShoreInThreeGestures) {
    const TrueTiles tiles;
    const MadeLevel before = Level2();
    const auto at = [](const MadeLevel& level, int x, int y) {
        return level
            .Posts[SerialOf(static_cast<size_t>(x), static_cast<size_t>(y), Posts) - 1]
            .Tile;
    };
    // The lake, and as many posts round it as its shores may take.
    constexpr int Lake = 6;
    constexpr int Shore = 5;
    const auto isFree = [&](int left, int bottom) {
        for (int y = bottom - Shore; y < bottom + Lake + Shore; ++y)
            for (int x = left - Shore; x < left + Lake + Shore; ++x)
                if (tiles.HasWay(at(before, x, y)) || tiles.HasWater(at(before, x, y)))
                    return false;
        return true;
    };
    int left = 0;
    int bottom = 0;
    for (int y = Shore; left == 0 && y < Posts - Lake - Shore; ++y)
        for (int x = Shore; left == 0 && x < Posts - Lake - Shore; ++x)
            if (isFree(x, y)) {
                left = x;
                bottom = y;
            }
    ASSERT_GT(left, 0);
    const int viewX = left - Shore;
    const int viewY = bottom - Shore;
    UseEdited({{"X", std::to_string(viewX)},
               {"Y", std::to_string(viewY)},
               {"ZOOM", "4"},
               {"PAL_WIN_POS_T", "10200"},
               {"PAL_WIN_SIZE_H", "2700"}});
    Start();
    const Picture untouched = MapPicture();
    Key("t");
    ASSERT_NO_FATAL_FAILURE(ChooseFirstTile()); // the sea
    ++gestures_;
    Drag(Shore, Shore, Shore + Lake - 1, Shore + Lake - 1);
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
    EXPECT_LE(gestures_, 3);
    ASSERT_NO_FATAL_FAILURE(Save());

    const MadeLevel saved = Level2();
    for (int y = bottom + 1; y < bottom + Lake - 1; ++y)
        for (int x = left + 1; x < left + Lake - 1; ++x)
            EXPECT_TRUE(tiles.IsDeep(at(saved, x, y))) << x << ", " << y;
    int bad = 0;
    int changed = 0;
    for (int y = 0; y + 1 < Posts; ++y)
        for (int x = 0; x + 1 < Posts; ++x) {
            const int32_t tile = at(saved, x, y);
            const bool here = tile != at(before, x, y);
            changed += here ? 1 : 0;
            if (here || at(saved, x + 1, y) != at(before, x + 1, y))
                bad += tiles.Fit(tile, at(saved, x + 1, y), true) ? 0 : 1;
            if (here || at(saved, x, y + 1) != at(before, x, y + 1))
                bad += tiles.Fit(tile, at(saved, x, y + 1), false) ? 0 : 1;
        }
    EXPECT_GE(changed, Lake * Lake);
    EXPECT_EQ(bad, 0);
    desktop_.Key("ctrl+z");
    EXPECT_TRUE(Await([&](const Picture& map) { return map == untouched; }));
    ASSERT_NO_FATAL_FAILURE(Save());
    EXPECT_TRUE(Differences(before, Level2()).empty());
    Leave();
}

} // namespace
} // namespace vardenix::tests
