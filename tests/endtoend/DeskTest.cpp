// Windows over, in and after one another, with a real window manager.
#include "endtoend/WorkspaceOnDesktop.h"

namespace vardenix::tests {
namespace {

// What the panel's frames lie on.
constexpr unsigned Ground = 0xE7E7E5;
constexpr const char* Search = "^Search For a Tile";
// A title of the one window: the map's, and the program's behind it.
constexpr const char* OneWindow = "^\\*?sorrelund - Vardenix";

class DeskOnDesktop : public WorkspaceOnDesktop {
protected:
    // Nothing of the map lies over the panel, whose place has been told.
    bool PanelIsSeen(const Place& place) const {
        const Picture seen = desktop_.Screen().Part(place);
        return seen.Count(Ground) > place.Width * place.Height / 3;
    }
};

TEST_F(DeskOnDesktop, AClickOnTheMapBuriesNoPanel) {
    UseTheater(SAMPLE_FOLDER, {{"MAIN_WIN_VIS", "-1"},
                               {"MAIN_WIN_POS_L", "6600"},
                               {"THPREV_WIN_VIS", "-1"},
                               {"MAINCONTROL_WIN_POS_L", "9000"}});
    Start();
    const Place panel{650, 60, 250, 500}; // a part of it
    ASSERT_TRUE(WaitFor([&] { return PanelIsSeen(panel); }));
    desktop_.ClickIn(Map, 20, 300);
    ASSERT_TRUE(WaitFor([this] { return desktop_.Active(Map); }));
    EXPECT_TRUE(WaitFor([&] { return PanelIsSeen(panel); }));
    // The map comes anew, and back as what it was.
    desktop_.Keys({"F5", "F5"});
    ASSERT_TRUE(WaitFor([this] { return desktop_.Active(Map); }));
    EXPECT_TRUE(WaitFor([&] { return PanelIsSeen(panel); }));
    desktop_.Key("F11");
    ASSERT_TRUE(WaitFor([this] { return desktop_.Active(OneWindow); }));
    desktop_.Key("F11");
    ASSERT_TRUE(WaitFor([this] { return desktop_.Visible(Map); }));
    EXPECT_TRUE(WaitFor([&] { return PanelIsSeen(panel); }));
    // A dialog lies over both.
    desktop_.Key("ctrl+f");
    ASSERT_TRUE(WaitFor([this] { return desktop_.Active(Search); }));
    EXPECT_TRUE(
        WaitFor([this] { return desktop_.Look(Search).Count(0xFFFFC0) > 30000; }));
    desktop_.ClickIn(Map, 20, 300);
    EXPECT_TRUE(
        WaitFor([this] { return desktop_.Look(Search).Count(0xFFFFC0) > 30000; }));
    desktop_.Activate(Search);
    desktop_.Key("Escape");
    ASSERT_TRUE(WaitFor([this] { return desktop_.Active(Map); }));
    // An icon of the map leaves the panel where it is.
    desktop_.MakeIcon(Map);
    ASSERT_TRUE(WaitFor([this] { return !desktop_.Visible(Map); }));
    EXPECT_TRUE(desktop_.Visible(Panel));
    EXPECT_FALSE(desktop_.Visible(Preview));
    EXPECT_TRUE(WaitFor([&] { return PanelIsSeen(panel); }));
}

TEST_F(DeskOnDesktop, AMapThatFillsTheScreenHasItAllAndGivesItBack) {
    Start();
    const Place before = desktop_.WhereIs(Map);
    const Picture picture = MapPicture();
    desktop_.DoubleClickIn(Map, 60, -10);
    ASSERT_TRUE(WaitFor([this] { return desktop_.WhereIs(Map).Width > 1200; }));
    // Nothing of it is blank.
    EXPECT_TRUE(WaitFor([this] { return desktop_.Look(Map).Count(Background) < 9000; }));
    desktop_.DoubleClickIn(Map, 700, -10); // the panel lies over the left of it
    ASSERT_TRUE(WaitFor([&] { return desktop_.WhereIs(Map).Width == before.Width; }));
    EXPECT_TRUE(Await([&](const Picture& map) { return map == picture; }));
    EXPECT_EQ(desktop_.WhereIs(Map).Height, before.Height);
    Leave();
    EXPECT_EQ(Setting("TILE_SIZE"), 3);
    EXPECT_EQ(Setting("GRID_SIZE"), 5);
}

// The lower right corner of the frame is taken, and drawn to one cell less and a bit.
TEST_F(DeskOnDesktop, AnEdgeIsDrawnToWholeCells) {
    Start();
    const Place before = desktop_.WhereIs(Map);
    const Picture picture = MapPicture();
    // In the first second sizes are the desktop's own: drawn again, a little otherwise.
    int looks = 0;
    const auto drawn = [&] {
        const Place now = desktop_.WhereIs(Map);
        if (now.Width == before.Width - Cell)
            return true;
        if (constexpr int enough = 30; looks++ % enough == 0)
            desktop_.DragIn(Map, {now.Width, now.Height + 2},
                            {before.Width - 150 - looks, before.Height - 130 - looks});
        return false;
    };
    ASSERT_TRUE(WaitFor(drawn));
    EXPECT_EQ(desktop_.WhereIs(Map).Height, before.Height - Cell);
    // The lower left post stays where it is.
    const Picture smaller = desktop_.Look(Map).Part({0, Strip, Side - Cell, Side - Cell});
    EXPECT_TRUE(smaller == picture.Part({0, Cell, Side - Cell, Side - Cell}));
    Leave();
    EXPECT_EQ(Setting("GRID_SIZE"), 4);
}

TEST_F(DeskOnDesktop, AllInOneWindowIsRemembered) {
    Start();
    desktop_.Key("F11");
    ASSERT_TRUE(WaitFor([this] { return desktop_.Active(OneWindow); }));
    EXPECT_FALSE(desktop_.Visible(Panel));
    EXPECT_FALSE(desktop_.Visible(Preview));
    desktop_.Key("F8"); // the palette joins
    desktop_.Key("alt+F4");
    ASSERT_TRUE(WaitFor([this] { return !program_.Running(); }));
    EXPECT_EQ(program_.ExitCode(), 0);
    program_ = desktop_.StartEditor(folder_.File("program/vardenix"));
    ASSERT_TRUE(WaitFor([this] { return desktop_.Active(StartUp); }));
    desktop_.Key("Return");
    ASSERT_TRUE(WaitFor([this] { return desktop_.Active(OneWindow); }));
    desktop_.Key("F11");
    ASSERT_TRUE(WaitFor([this] { return desktop_.Visible(Panel); }));
    EXPECT_TRUE(WaitFor([this] { return desktop_.Visible(Palette); }));
    EXPECT_FALSE(desktop_.Visible(OneWindow));
    Leave();
}

} // namespace
} // namespace vardenix::tests
