#include "workspace/FirstLayout.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

constexpr PixelRect Room{0, 20, 1280, 880};
constexpr WindowSize Panel{300, 560};
constexpr WindowSize Map{658, 658};
constexpr WindowSize Preview{256, 300};
constexpr WindowSize Palette{618, 453};

bool Apart(const PixelRect& a, const PixelRect& b) {
    return a.Left + a.Width < b.Left || b.Left + b.Width < a.Left ||
           a.Top + a.Height < b.Top || b.Top + b.Height < a.Top;
}

bool Inside(const PixelRect& window) {
    return window.Left >= Room.Left && window.Top >= Room.Top &&
           window.Left + window.Width <= Room.Left + Room.Width &&
           window.Top + window.Height <= Room.Top + Room.Height;
}

void ExpectTidy(const FirstLayout& layout) {
    EXPECT_TRUE(Inside(layout.Panel));
    EXPECT_TRUE(Inside(layout.Map));
    EXPECT_TRUE(Inside(layout.Preview));
    EXPECT_TRUE(Apart(layout.Panel, layout.Map));
    EXPECT_TRUE(Apart(layout.Panel, layout.Preview));
    EXPECT_TRUE(Apart(layout.Map, layout.Preview));
}

TEST(FirstLayout, IsWantedWhenNothingWasEverStored) {
    Configuration settings;
    EXPECT_TRUE(NeverPlaced(settings));
    settings.PalWinPos.Left = 15;
    EXPECT_FALSE(NeverPlaced(settings));
    settings = {};
    settings.MainControlWinPos.Top = 15;
    EXPECT_FALSE(NeverPlaced(settings));
    settings = {};
    settings.ThPrevWinVis = true;
    EXPECT_FALSE(NeverPlaced(settings));
}

TEST(FirstLayout, WhatFitsKeepsItsSize) {
    const FirstLayout layout = LayOutFirst(Room, Panel, Map, {150, 120}, Palette);
    ExpectTidy(layout);
    EXPECT_EQ(layout.Map.Width, 658);
    EXPECT_EQ(layout.Map.Height, 658);
    EXPECT_EQ(layout.Preview.Width, 150);
    // Under the panel.
    EXPECT_EQ(layout.Preview.Left, 0);
    EXPECT_GT(layout.Preview.Top, 580);
}

TEST(FirstLayout, APreviewThatDoesNotFitUnderThePanelStandsAtTheRight) {
    const FirstLayout layout = LayOutFirst(Room, Panel, Map, Preview, Palette);
    ExpectTidy(layout);
    EXPECT_EQ(layout.Preview.Top, 20);
    EXPECT_GT(layout.Preview.Left, layout.Map.Left + layout.Map.Width);
}

TEST(FirstLayout, APreviewThatWouldCutTheMapStandsUnderItWhereThatFits) {
    const FirstLayout layout = LayOutFirst(Room, {424, 760}, Map, {252, 110}, Palette);
    ExpectTidy(layout);
    EXPECT_EQ(layout.Map.Width, 658);
    EXPECT_EQ(layout.Preview.Left, layout.Map.Left);
    EXPECT_GT(layout.Preview.Top, 20 + 658);
}

// 1024 by 700 pixels less the desktop's own.
TEST(FirstLayout, OnASmallScreenThePreviewGoesWhereItLeavesMoreOfTheMap) {
    const PixelRect room{0, 20, 1024, 680};
    const FirstLayout layout = LayOutFirst(room, {424, 630}, Map, {252, 110}, Palette);
    EXPECT_EQ(layout.Preview.Left, layout.Map.Left);
    EXPECT_GE(layout.Preview.Top, layout.Map.Top + layout.Map.Height + 30);
    EXPECT_LE(layout.Preview.Top + layout.Preview.Height, 700);
    EXPECT_EQ(layout.Map.Width, 1024 - 424 - 16 - 16);
    EXPECT_GT(layout.Map.Height, 450);
    // A low and wide preview costs the map less at its side.
    const FirstLayout beside =
        LayOutFirst(room, {424, 630}, {300, 640}, {252, 110}, Palette);
    EXPECT_EQ(beside.Map.Height, 640);
    EXPECT_GT(beside.Preview.Left, beside.Map.Left + beside.Map.Width);
}

void ExpectPlace(const PixelRect& place, const PixelRect& expected) {
    EXPECT_EQ(place.Left, expected.Left);
    EXPECT_EQ(place.Top, expected.Top);
    EXPECT_EQ(place.Width, expected.Width);
    EXPECT_EQ(place.Height, expected.Height);
}

// Frames take 16 pixels across and 34 down. The panel takes 316 by 594 of the room, the
// preview 272 by 334.
TEST(FirstLayout, EveryPlaceIsCountedToThePixel) {
    const PixelRect room{10, 20, 1000, 800};
    const FirstLayout beside = LayOutFirst(room, Panel, {500, 2000}, Preview, Palette);
    ExpectPlace(beside.Panel, {10, 20, 300, 560});
    ExpectPlace(beside.Map, {10 + 316, 20, 1000 - 316 - 272 - 16, 800 - 34});
    ExpectPlace(beside.Preview, {10 + 1000 - 272, 20, 256, 300});
    // Under the map it leaves 668 by 432 of it, beside it 396 by 766.
    const FirstLayout under = LayOutFirst(room, Panel, {668, 432}, Preview, Palette);
    ExpectPlace(under.Map, {10 + 316, 20, 668, 432});
    ExpectPlace(under.Preview, {10 + 316, 20 + 432 + 34, 256, 300});
    // Under the panel, where both are as high as the room.
    const FirstLayout left =
        LayOutFirst(room, Panel, {2000, 2000}, {330, 800 - 594 - 34}, Palette);
    ExpectPlace(left.Map, {10 + 346, 20, 1000 - 346 - 16, 800 - 34});
    ExpectPlace(left.Preview, {10, 20 + 594, 330, 172});
    // A line higher, and it does not fit there.
    const FirstLayout higher =
        LayOutFirst(room, Panel, {2000, 2000}, {330, 800 - 594 - 33}, Palette);
    EXPECT_NE(higher.Preview.Left, 10);
    // A third of the room at most.
    EXPECT_EQ(LayOutFirst(room, Panel, Map, {999, 172}, Palette).Preview.Width, 333);
}

// Where both ways leave the same of the map, the preview stands beside it.
TEST(FirstLayout, ThePreviewStandsBesideTheMapWhereThatCostsNothing) {
    const FirstLayout layout =
        LayOutFirst({0, 0, 1000, 800}, Panel, {300, 300}, {100, 200}, Palette);
    ExpectPlace(layout.Map, {316, 0, 300, 300});
    ExpectPlace(layout.Preview, {316 + 300 + 16, 0, 100, 200});
}

TEST(FirstLayout, LargeWindowsAreCutToTheScreen) {
    const FirstLayout layout =
        LayOutFirst(Room, Panel, {5140, 5140}, {2048, 2100}, Palette);
    ExpectTidy(layout);
    EXPECT_GE(layout.Map.Width, 240);
    EXPECT_EQ(layout.Panel.Width, 300);
}

// A panel, map and preview as they are on such a screen with thin frames.
TEST(FirstLayout, OnALaptopsScreenThinFramesLeaveTheMapWhole) {
    const PixelRect room{0, 0, 1366, 768};
    const WindowSize thin{2, 24};
    for (const WindowSize preview : {WindowSize{252, 75}, WindowSize{256, 296}}) {
        const FirstLayout layout =
            LayOutFirst(room, {424, 691}, {658, 658}, preview, Palette, thin);
        EXPECT_EQ(layout.Map.Width, 658);
        EXPECT_EQ(layout.Map.Height, 658);
        EXPECT_GT(layout.Map.Left, 424 + 2);
        EXPECT_GT(layout.Preview.Left, layout.Map.Left + 658 + 2);
        EXPECT_LE(layout.Preview.Left + preview.Width + 2, 1366);
    }
}

TEST(StoredLayout, WindowsWhereAFirstStartPutThemHaveTheSizesItGaveThem) {
    const PixelRect room{0, 20, 1024, 748};
    const FirstLayout first = LayOutFirst(room, {424, 670}, Map, {252, 110}, Palette);
    ASSERT_LT(first.Map.Width, Map.Width);
    FirstLayout stored = first;
    stored.Map.Width = Map.Width;
    stored.Map.Height = Map.Height;
    const FirstLayout second = LayOutStored(room, stored);
    for (const auto member : {&FirstLayout::Panel, &FirstLayout::Map,
                              &FirstLayout::Preview, &FirstLayout::Palette}) {
        EXPECT_EQ((second.*member).Left, (first.*member).Left);
        EXPECT_EQ((second.*member).Top, (first.*member).Top);
        EXPECT_EQ((second.*member).Width, (first.*member).Width);
        EXPECT_EQ((second.*member).Height, (first.*member).Height);
    }
}

TEST(StoredLayout, WhatFitsAtItsCornerKeepsItsSizeWhateverItLiesOver) {
    const FirstLayout stored{.Panel = {0, 20, 300, 560},
                             .Map = {250, 100, 658, 658},
                             .Preview = {500, 300, 256, 300},
                             .Palette = {}};
    const FirstLayout layout = LayOutStored(Room, stored);
    EXPECT_EQ(layout.Map.Left, 250);
    EXPECT_EQ(layout.Map.Width, 658);
    EXPECT_EQ(layout.Map.Height, 658);
    EXPECT_EQ(layout.Preview.Width, 256);
}

TEST(StoredLayout, WhatWouldBePulledOverAWindowBesideItIsCut) {
    const PixelRect room{0, 0, 1024, 768};
    // The preview was moved under the panel.
    FirstLayout stored{.Panel = {0, 0, 424, 560},
                       .Map = {440, 0, 658, 658},
                       .Preview = {10, 620, 252, 75},
                       .Palette = {}};
    FirstLayout layout = LayOutStored(room, stored, {2, 24});
    EXPECT_EQ(layout.Map.Left, 440);
    EXPECT_EQ(layout.Map.Width, 1024 - 440 - 2 - 6);
    EXPECT_EQ(layout.Map.Height, 658);
    EXPECT_EQ(layout.Preview.Width, 252);
    // And before a preview in its way, at its right or under it.
    stored.Preview = {760, 0, 252, 75};
    layout = LayOutStored(room, stored, {2, 24});
    EXPECT_EQ(layout.Map.Width, 760 - 440 - 2 - 6);
    stored.Preview = {445, 500, 252, 75};
    layout = LayOutStored(room, stored, {2, 24});
    EXPECT_EQ(layout.Map.Width, 1024 - 440 - 2 - 6);
    EXPECT_EQ(layout.Map.Height, 500 - 24 - 6);
}

TEST(StoredLayout, WhatCoversNothingWhenItIsPulledInKeepsItsSize) {
    FirstLayout stored{.Panel = {0, 20, 300, 560},
                       .Map = {900, 400, 658, 658},
                       .Preview = {20, 630, 256, 100},
                       .Palette = {}};
    EXPECT_EQ(LayOutStored(Room, stored).Map.Width, 658);
    EXPECT_EQ(LayOutStored(Room, stored).Map.Height, 658);
    // Nothing would be left of it at its corner.
    stored.Map = {6000, 100, 1200, 658};
    EXPECT_EQ(LayOutStored(Room, stored).Map.Width, 1200);
}

TEST(FirstLayout, APaletteThatFitsKeepsItsSizeAndCoversNothing) {
    const PixelRect room{0, 20, 1920, 1060};
    const FirstLayout layout = LayOutFirst(room, {424, 760}, Map, {252, 110}, Palette);
    EXPECT_EQ(layout.Palette.Width, 618);
    EXPECT_EQ(layout.Palette.Height, 453);
    // At the right of the map.
    EXPECT_GT(layout.Palette.Left, layout.Map.Left + 658);
    EXPECT_LE(layout.Palette.Left + 618, 1920);
    EXPECT_EQ(layout.Palette.Top, 20);
    EXPECT_TRUE(Apart(layout.Palette, layout.Preview));
}

TEST(FirstLayout, APaletteIsCutToTheLargestFreePlace) {
    const FirstLayout layout = LayOutFirst(Room, {424, 760}, Map, {252, 110}, Palette);
    ExpectTidy(layout);
    EXPECT_TRUE(Inside(layout.Palette));
    for (const PixelRect& other : {layout.Panel, layout.Map, layout.Preview})
        EXPECT_TRUE(Apart(layout.Palette, other));
    // Under the map, beside the preview, as high as there is room.
    EXPECT_GT(layout.Palette.Left, layout.Preview.Left + 252);
    EXPECT_GE(layout.Palette.Top, 20 + 658 + 34); // behind the map's frame
    EXPECT_GT(layout.Palette.Top + layout.Palette.Height, 820);
    EXPECT_GE(layout.Palette.Width, 500);
}

TEST(FirstLayout, APaletteWithoutAFreePlaceStandsOverTheMapsCorner) {
    const FirstLayout layout =
        LayOutFirst(Room, {300, 840}, {5140, 5140}, {252, 110}, Palette);
    EXPECT_TRUE(Inside(layout.Palette));
    // At most half the room across, and a third of it down, frames included.
    EXPECT_EQ(layout.Palette.Width, 618);
    EXPECT_EQ(layout.Palette.Height, Room.Height / 3 - 34);
    EXPECT_TRUE(Apart(layout.Palette, layout.Panel));
}

std::pair<int, int> CornerOf(const PixelRect& place) { return {place.Left, place.Top}; }

TEST(LeastCovering, IsTheLowerRightCornerWhileThatIsFree) {
    EXPECT_EQ(
        CornerOf(LeastCovering({0, 10, 1000, 700}, {300, 200}, {{0, 10, 400, 700}})),
        std::pair(700, 510));
}

TEST(LeastCovering, IsBesideWhatStandsThere) {
    const PixelRect features{700, 510, 300, 200};
    EXPECT_EQ(CornerOf(LeastCovering({0, 10, 1000, 700}, {300, 200},
                                     {{0, 10, 400, 700}, features})),
              std::pair(700, 310));
    // Above it another one: to the left of them.
    EXPECT_EQ(CornerOf(LeastCovering({0, 10, 1000, 700}, {300, 200},
                                     {{0, 10, 400, 700}, features, {700, 10, 300, 500}})),
              std::pair(400, 510));
}

TEST(LeastCovering, CoversLittleWhereAllIsTaken) {
    // 400 of the room's 500 pixels are taken at the left; 200 more lie over 100 of these.
    EXPECT_EQ(CornerOf(LeastCovering({0, 0, 500, 300}, {200, 300}, {{0, 0, 400, 300}})),
              std::pair(300, 0));
}

} // namespace
} // namespace vardenix
