// Real clicks on the control panel; what they did is read from the screen, and from
// VX.ini when the program has gone.
#include "endtoend/ControlsOnDesktop.h"
#include "endtoend/WorkspaceOnDesktop.h"

#include <algorithm>
#include <optional>

namespace vardenix::tests {
namespace {

class PanelEndToEnd : public WorkspaceOnDesktop {
protected:
    // On the island, the panel at the size that it comes up with.
    void StartOnLand() {
        UseTheater(SAMPLE_FOLDER, {{"MAIN_WIN_VIS", "-1"},
                                   {"X", "60"},
                                   {"Y", "62"},
                                   {"MAIN_WIN_POS_L", "9000"},
                                   {"PAL_WIN_POS_L", "9000"}});
        Start();
        ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Panel); }));
        panel_.emplace(desktop_, folder_.File("desktop"), "FrmVXMain", Panel);
    }

    // At a share of the control's width.
    void Press(const std::string& control, double share = 0.5) {
        panel_->Press(control, share);
    }
    void PressTillChanged(const std::string& control, Picture& map, double share = 0.5) {
        SCOPED_TRACE(control);
        Press(control, share);
        ASSERT_TRUE(Await([&](const Picture& now) { return now != map; }));
        map = MapPicture();
    }
    // Into a box that a press selects.
    void TypeInto(const std::string& box, const std::string& text) {
        Press(box);
        desktop_.Type(text);
    }

    std::optional<ControlsOnDesktop> panel_;
};

unsigned Channel(unsigned color, int shift) { return color >> shift & 0xFF; }

TEST_F(PanelEndToEnd, ZoomButtonsShowMoreAndFewerPosts) {
    StartOnLand();
    const Picture near = MapPicture();
    Picture map = near;
    PressTillChanged("cmdminus", map);
    // A cell of two posts by two: about the middle is all that was seen before, two posts
    // from the left and from below, and every other pixel of it is left.
    for (int y = 0; y < Side / 2; ++y)
        for (int x = 0; x < Side / 2; ++x)
            ASSERT_EQ(map.At(Cell + x, Side / 2 - Cell + y), near.At(2 * x, 2 * y))
                << x << ", " << y;
    PressTillChanged("cmdplus", map);
    EXPECT_TRUE(map == near);
    PressTillChanged("ZoomScroll", map, 0.0); // a page of five posts to the far side
    Leave();
    EXPECT_EQ(Setting("ZOOM"), 6);
}

TEST_F(PanelEndToEnd, GridAndTileSizeChangeTheWindow) {
    StartOnLand();
    const Picture before = MapPicture();
    const int width = desktop_.WhereIs(Map).Width;
    Press("cmdZoomin");
    ASSERT_TRUE(WaitFor([&] { return desktop_.WhereIs(Map).Width == width - Cell; }));
    // The upper row and the right column have gone.
    ASSERT_TRUE(WaitFor([&] {
        const Picture now = desktop_.Look(Map);
        return now.Width == width - Cell && now.Height >= Strip + Side - Cell &&
               now.Part({0, Strip, Side - Cell, Side - Cell}) ==
                   before.Part({0, Cell, Side - Cell, Side - Cell});
    }));
    Press("cmdZoomOut");
    ASSERT_TRUE(WaitFor([&] { return desktop_.WhereIs(Map).Width == width; }));
    Press("ComTileWidth");
    desktop_.Keys({"Up", "Return"}); // of 128 pixels 64
    ASSERT_TRUE(WaitFor([&] { return desktop_.WhereIs(Map).Width == width - Side / 2; }));
    Leave();
    EXPECT_EQ(Setting("GRID_SIZE"), 5);
    EXPECT_EQ(Setting("TILE_SIZE"), 2);
}

TEST_F(PanelEndToEnd, LayersAndBrightnessChangeTheirPixelsOnly) {
    StartOnLand();
    const Picture plain = MapPicture();
    Picture map = plain;
    PressTillChanged("chkShowGrid", map);
    for (int y = 0; y < Side; ++y)
        for (int x = 0; x < Side; ++x)
            ASSERT_EQ(map.At(x, y), x % Cell == 0 || y % Cell == 0 ? 0 : plain.At(x, y))
                << x << ", " << y;
    PressTillChanged("chkShowGrid", map);
    ASSERT_TRUE(map == plain);
    PressTillChanged("sldrBrightness", map, 1.0); // a page of 20 percent
    for (int y = 0; y < Side; y += 5)
        for (int x = 0; x < Side; x += 5)
            for (const int shift : {0, 8, 16}) {
                const double bright = Channel(plain.At(x, y), shift) * 1.2;
                ASSERT_NEAR(Channel(map.At(x, y), shift), std::min(bright, 255.0), 1);
            }
    PressTillChanged("cmdBrightReset", map);
    EXPECT_TRUE(map == plain);
    PressTillChanged("cmdBMinus", map);
    PressTillChanged("chkShowSegments", map);
    Leave();
    EXPECT_EQ(Setting("OPTION_SHOW_GRID"), 0);
    EXPECT_EQ(Setting("OPTION_SHOW_SEGMENTS"), -1);
    EXPECT_EQ(Setting("OPTION_BRIGHTNESS"), -20);
}

TEST_F(PanelEndToEnd, ATypedPositionIsGoneTo) {
    StartOnLand();
    Picture map = MapPicture();
    const Picture before = map;
    TypeInto("LabelX", "62");
    TypeInto("LabelY", "61");
    PressTillChanged("cmdGoXY", map);
    ExpectMoved(before, map, 2, -1);
    TypeInto("LabelX", "4444444444"); // as far as there are posts
    desktop_.Key("Return");
    ASSERT_TRUE(
        Await([&](const Picture& now) { return now.At(Side - 9, 9) == Background; }));
    Leave();
    EXPECT_EQ(Setting("X"), Posts - 1);
    EXPECT_EQ(Setting("Y"), 61);
}

TEST_F(PanelEndToEnd, ATickedBoxBringsTheMapBackFromItsIcon) {
    StartOnLand();
    desktop_.MakeIcon(Map);
    ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Map); }));
    Press("chkShowTile");
    EXPECT_TRUE(
        WaitFor([&] { return desktop_.Visible(Map) && desktop_.Visible(Palette); }));
    // Hidden as an icon, it does not come back as one.
    desktop_.MakeIcon(Map);
    ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Map); }));
    desktop_.Activate(Panel);
    Press("chkShowMain");
    EXPECT_TRUE(WaitFor([&] { return desktop_.Visible(Palette); }));
    EXPECT_FALSE(desktop_.Visible(Map));
    Press("chkShowMain");
    EXPECT_TRUE(WaitFor([&] { return desktop_.Visible(Map); }));
    Leave();
    EXPECT_EQ(Setting("MAIN_WIN_VIS"), -1);
}

TEST_F(PanelEndToEnd, ATipIsShownWhileTheMapHasTheKeyboard) {
    StartOnLand();
    constexpr unsigned tip = 0xFFF7A1; // 10614783
    ASSERT_TRUE(desktop_.Active(Map));
    EXPECT_EQ(desktop_.Screen().Count(tip), 0);
    const Place load = panel_->At("cmdLoadL0Elv");
    desktop_.HoverIn(Panel, load.Left + 10, load.Top + 10);
    EXPECT_TRUE(WaitFor([&] { return desktop_.Screen().Count(tip) > 500; }));
    EXPECT_TRUE(desktop_.Active(Map));
}

TEST_F(PanelEndToEnd, ShiftF10CallsTheMapsMenu) {
    StartOnLand();
    desktop_.Key("shift+F10");
    desktop_.Keys({"Down", "Return"}); // the post's properties
    EXPECT_TRUE(WaitFor([&] { return desktop_.Active("^Tile Details$"); }));
}

TEST_F(PanelEndToEnd, SettingsOutOfEveryRangeOpenAndPaint) {
    UseTheater(SAMPLE_FOLDER, {{"MAIN_WIN_VIS", "-1"},
                               // Off the upper left of a map that fills the screen.
                               {"MAINCONTROL_WIN_POS_L", "12000"},
                               {"ZOOM", "0"},
                               {"GRID_SIZE", "99"},
                               {"TILE_SIZE", "7"},
                               {"X", "-50"},
                               {"Y", "-1"},
                               {"OPTION_BRIGHTNESS", "not a number"},
                               {"OPTION_SHOW_HEIGHTS", "7"},
                               {"FEAT_WIN_VIS", "-1"},
                               {"SEARCHRES_WIN_VIS", "-1"}});
    Start();
    Leave();
    EXPECT_EQ(Setting("X"), 0);
    EXPECT_EQ(Setting("Y"), 0);
    EXPECT_EQ(Setting("OPTION_SHOW_HEIGHTS"), -1);
    // Windows that did not come up in this run are still wanted in the next one.
    EXPECT_EQ(Setting("FEAT_WIN_VIS"), -1);
    EXPECT_EQ(Setting("SEARCHRES_WIN_VIS"), -1);
}

} // namespace
} // namespace vardenix::tests
