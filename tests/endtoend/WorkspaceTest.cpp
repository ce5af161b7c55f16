#include "endtoend/WorkspaceOnDesktop.h"

#include <set>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

using WorkspaceEndToEnd = WorkspaceOnDesktop;

bool Apart(const Place& a, const Place& b) {
    return a.Left + a.Width <= b.Left || b.Left + b.Width <= a.Left ||
           a.Top + a.Height <= b.Top || b.Top + b.Height <= a.Top;
}

std::set<unsigned> ColorsOf(const Picture& picture) {
    return {picture.Pixels.begin(), picture.Pixels.end()};
}

TEST_F(WorkspaceEndToEnd, AFirstStartShowsMapPanelAndPreviewSideBySide) {
    Start();
    const Place panel = desktop_.WhereIs(Panel);
    const Place map = desktop_.WhereIs(Map);
    const Place preview = desktop_.WhereIs(Preview);
    EXPECT_GE(map.Width, Side);
    EXPECT_TRUE(Apart(panel, map));
    EXPECT_TRUE(Apart(panel, preview));
    EXPECT_TRUE(Apart(map, preview));
    for (const Place& place : {panel, map, preview}) {
        EXPECT_GE(place.Left, 0);
        EXPECT_GE(place.Top, 0);
        EXPECT_LE(place.Left + place.Width, 1280);
        EXPECT_LE(place.Top + place.Height, 900);
    }
    // The lower left corner of the theater is open sea; the view begins where land is.
    const auto colors = ColorsOf(MapPicture());
    EXPECT_TRUE(std::any_of(colors.begin(), colors.end(), [](unsigned color) {
        return (color & 0xFF) < (color >> 16);
    }));
}

TEST_F(WorkspaceEndToEnd, AClickOnThePreviewMovesTheMap) {
    Start();
    GoToLand();
    EXPECT_GT(ColorsOf(MapPicture()).size(), 50U);
    Leave();
    // One pixel is four posts.
    EXPECT_NEAR(Setting("X"), Posts / 2.0, 4);
    EXPECT_NEAR(Setting("Y"), Posts / 2.0, 4);
}

TEST_F(WorkspaceEndToEnd, KeysAndWheelScrollByPosts) {
    Start();
    GoToLand();
    Picture before = MapPicture();
    const auto step = [&](auto act, int east, int north) {
        act();
        ASSERT_TRUE(Await([&](const Picture& map) { return map != before; }));
        const Picture after = MapPicture();
        ExpectMoved(before, after, east, north);
        before = after;
    };
    step([&] { desktop_.Key("Right"); }, 1, 0);
    step([&] { desktop_.Key("Up"); }, 0, 1);
    step([&] { desktop_.Key("Next"); }, 0, -3);
    step([&] { desktop_.ClickIn(Map, 300, 300, 4); }, 0, 1);
    step([&] { desktop_.ClickIn(Map, 300, 300, 5); }, 0, -1);
}

TEST_F(WorkspaceEndToEnd, TheNextStartShowsTheSameTheaterAtTheSamePlace) {
    Start();
    GoToLand();
    desktop_.Move(Map, 500, 120);
    desktop_.Move(Preview, 20, 700);
    const auto settled = [&](const char* title, int left, int top) {
        return WaitFor([&] {
            const Place place = desktop_.WhereIs(title);
            return std::abs(place.Left - left) < 60 && std::abs(place.Top - top) < 60;
        });
    };
    ASSERT_TRUE(settled(Map, 500, 120));
    ASSERT_TRUE(settled(Preview, 20, 700));
    const Place map = desktop_.WhereIs(Map);
    const Place preview = desktop_.WhereIs(Preview);
    const Place panel = desktop_.WhereIs(Panel);
    const Picture before = MapPicture();
    Leave();
    EXPECT_EQ(Setting("MAIN_WIN_POS_L") % 15, 0); // pixels become twips

    Start();
    EXPECT_TRUE(Await([&](const Picture& picture) { return picture == before; }));
    for (const auto& [title, place] :
         {std::pair{Map, map}, {Preview, preview}, {Panel, panel}}) {
        // A window may move a moment after it came up, when its frame is known.
        EXPECT_TRUE(WaitFor([&, title = title, place = place] {
            const Place now = desktop_.WhereIs(title);
            return now.Left == place.Left && now.Top == place.Top;
        })) << title;
    }
}

TEST_F(WorkspaceEndToEnd, AStoredPlaceOutsideTheScreenIsPulledIn) {
    UseTheater(SAMPLE_FOLDER, {{"MAIN_WIN_VIS", "-1"},
                               {"MAIN_WIN_POS_L", "90000"},
                               {"MAIN_WIN_POS_T", "-9000"}});
    Start();
    // Its frame is known, and its place right, a moment after it came up.
    EXPECT_TRUE(WaitFor([&] {
        const Place map = desktop_.WhereIs(Map);
        return map.Left >= 0 && map.Top >= 0 && map.Left + map.Width <= 1280;
    }));
    EXPECT_FALSE(desktop_.Visible(Preview)); // as it was stored
}

TEST_F(WorkspaceEndToEnd, TheMapsCloseBoxOnlyHidesIt) {
    Start();
    desktop_.Key("alt+F4");
    ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Map); }));
    EXPECT_TRUE(program_.Running());
    EXPECT_TRUE(desktop_.Visible(Preview));
    Leave();
    EXPECT_EQ(Setting("MAIN_WIN_VIS"), 0);
    EXPECT_EQ(Setting("THPREV_WIN_VIS"), -1);
}

TEST_F(WorkspaceEndToEnd, ThePaletteLiesOverTheMapAtItsStoredPlace) {
    UseTheater(SAMPLE_FOLDER, {{"MAIN_WIN_VIS", "-1"},
                               {"MAIN_WIN_POS_L", "6600"},
                               {"X", "60"},
                               {"Y", "60"},
                               {"PAL_WIN_VIS", "-1"},
                               {"PAL_WIN_POS_L", "9000"},
                               {"PAL_WIN_POS_T", "3000"},
                               {"PAL_WIN_SIZE_W", "6300"},
                               {"PAL_WIN_SIZE_H", "4500"}});
    Start();
    ASSERT_TRUE(WaitFor([&] {
        return desktop_.Visible(Palette) &&
               ColorsOf(desktop_.Look(Palette)).size() > 50; // pictures of tiles
    }));
    const Place place = desktop_.WhereIs(Palette);
    EXPECT_EQ(place.Width, 420);
    EXPECT_EQ(place.Height, 300);
    EXPECT_NEAR(place.Left, 600, 20);
    EXPECT_NEAR(place.Top, 200, 40);
    // Away from the pointer in the middle of the screen, which a button shows.
    const auto look = [&] { return desktop_.Look(Palette).Part({0, 0, 420, 200}); };
    const Picture before = look();
    desktop_.ClickIn(Map, 20, Strip + Side - 20); // which brings the map up
    const Picture map = MapPicture();
    desktop_.Key("Right");
    ASSERT_TRUE(Await([&](const Picture& now) { return now != map; }));
    EXPECT_TRUE(look() == before);

    desktop_.Activate(Palette);
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Palette); }));
    desktop_.Key("alt+F4");
    ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Palette); }));
    Leave();
    EXPECT_EQ(Setting("PAL_WIN_VIS"), 0);
    EXPECT_EQ(Setting("PAL_WIN_SIZE_W"), 6300);
    EXPECT_EQ(Setting("PAL_WIN_SIZE_H"), 4500);
}

// Every picture has changed on the disk, so the repaint has to read them all again, and
// Esc is pressed into that; a machine that was faster than the keys gets another go.
TEST_F(WorkspaceEndToEnd, EscStopsALongRepaint) {
    const std::string copy = folder_.File("copied theater");
    fs::copy(SAMPLE_FOLDER, copy, fs::copy_options::recursive);
    UseTheater(copy, {{"MAIN_WIN_VIS", "-1"},
                      {"MAIN_WIN_POS_L", "6600"},
                      {"ZOOM", "20"},
                      {"X", "10"},
                      {"Y", "10"}});
    Start();
    const auto unpainted = [](const Picture& map) {
        return std::count(map.Pixels.begin(), map.Pixels.end(), Background);
    };
    ASSERT_TRUE(Await([&](const Picture& map) { return unpainted(map) == 0; }));
    const auto changePictures = [&] {
        for (const auto& entry : fs::recursive_directory_iterator(copy))
            if (entry.path().extension() == ".dds")
                fs::last_write_time(entry.path(),
                                    entry.last_write_time() - std::chrono::hours(1));
    };
    bool east = true;
    EXPECT_TRUE(WaitFor([&] {
        changePictures();
        desktop_.Keys({east ? "Right" : "Left", "Escape", "Escape", "Escape", "Escape"});
        east = !east;
        const Picture map = MapPicture();
        return unpainted(map) > 0 && unpainted(map) < Side * Side;
    }));
    desktop_.Key("Up"); // the next one is whole again
    EXPECT_TRUE(Await([&](const Picture& map) { return unpainted(map) == 0; }));
}

TEST_F(WorkspaceEndToEnd, AnotherProgramTakesNoScratchFilesAway) {
    Start();
    const std::string scratch = folder_.Write("program/Temp/1/tile.tga", "x");
    Child other = desktop_.StartEditor(folder_.File("program/vardenix"));
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active(StartUp); }));
    EXPECT_EQ(folder_.Names("program/Temp"), "1 1.lock 2 2.lock");
    desktop_.Key("alt+F4");
    ASSERT_TRUE(WaitFor([&] { return !other.Running(); }));
    EXPECT_EQ(folder_.Names("program/Temp"), "1 1.lock");
    EXPECT_EQ(Slurp(scratch), "x");
    Leave();
    EXPECT_FALSE(fs::exists(folder_.File("program/Temp")));
}

TEST_F(WorkspaceEndToEnd, TheEndOfTheSessionEndsTheProgramCleanly) {
    const std::string copy = folder_.File("copied theater");
    fs::copy(SAMPLE_FOLDER, copy, fs::copy_options::recursive);
    UseTheater(copy, {{"X", "95"},
                      {"Y", "95"},
                      {"ZOOM", "1"},
                      {"MAIN_WIN_VIS", "-1"},
                      {"MAIN_WIN_POS_L", "6600"}});
    for (const int signal : {SIGTERM, SIGHUP}) {
        Start();
        const Picture before = MapPicture();
        desktop_.Key("Right");
        ASSERT_TRUE(Await([&](const Picture& map) { return map != before; }));
        EXPECT_TRUE(fs::exists(folder_.File("program/Temp")));
        program_.Signal(signal);
        ASSERT_TRUE(WaitFor([this] { return !program_.Running(); }));
        EXPECT_EQ(program_.ExitCode(), 0);
        EXPECT_FALSE(fs::exists(folder_.File("program/Temp")));
    }
    EXPECT_EQ(Setting("X"), 97);
}

} // namespace
} // namespace vardenix::tests
