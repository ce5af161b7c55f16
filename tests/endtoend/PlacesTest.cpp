// Where windows come up, on desktops that make that hard.
#include "endtoend/WorkspaceOnDesktop.h"

namespace vardenix::tests {
namespace {

bool Apart(const Place& a, const Place& b) {
    return a.Left + a.Width <= b.Left || b.Left + b.Width <= a.Left ||
           a.Top + a.Height <= b.Top || b.Top + b.Height <= a.Top;
}

class SmallScreen : public WorkspaceOnDesktop {
protected:
    SmallScreen() : WorkspaceOnDesktop(1024, 768) {}

    // As far as a part of a painted map.
    void StartCut() {
        program_ = desktop_.StartEditor(folder_.File("program/vardenix"));
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(StartUp); }));
        desktop_.Key("Return");
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Map); }));
        ASSERT_TRUE(WaitFor([&] {
            const Picture map = desktop_.Look(Map);
            return map.Width > 100 && map.Height > 100 && map.At(1, Strip + 1) != 0;
        }));
    }
};

class LaptopScreen : public WorkspaceOnDesktop {
protected:
    LaptopScreen() : WorkspaceOnDesktop(1366, 768) {}
};

using StoppedManager = WorkspaceOnDesktop;

TEST_F(SmallScreen, ASecondStartLaysNoWindowOverAnother) {
    StartCut();
    const Place first = desktop_.WhereIs(Map);
    EXPECT_TRUE(Apart(first, desktop_.WhereIs(Panel)));
    Leave();
    StartCut();
    // Places are right a moment after the windows came up.
    EXPECT_TRUE(WaitFor([&] {
        const Place map = desktop_.WhereIs(Map);
        return Apart(map, desktop_.WhereIs(Panel)) &&
               Apart(map, desktop_.WhereIs(Preview)) &&
               Apart(desktop_.WhereIs(Panel), desktop_.WhereIs(Preview)) && map == first;
    }));
    EXPECT_LE(first.Left + first.Width, 1024);
    EXPECT_LE(first.Top + first.Height, 768);
}

TEST_F(LaptopScreen, AFirstStartShowsTheWholePicture) {
    Start();
    const Place map = desktop_.WhereIs(Map);
    // The picture and one scroll bar, a second one would take as much again.
    EXPECT_GE(map.Width, Side);
    EXPECT_LT(map.Width, Side + 25);
    constexpr int edges = Strip + 22; // tools above, a line below
    EXPECT_GE(map.Height, Side + edges);
    EXPECT_LT(map.Height, Side + edges + 25);
    EXPECT_TRUE(Apart(map, desktop_.WhereIs(Panel)));
    EXPECT_TRUE(Apart(map, desktop_.WhereIs(Preview)));
    EXPECT_LE(desktop_.WhereIs(Preview).Left + desktop_.WhereIs(Preview).Width, 1366);
}

TEST_F(StoppedManager, WindowsFramedLateHaveTheirTitlesOnTheScreen) {
    UseTheater(SAMPLE_FOLDER, {{"MAIN_WIN_VIS", "-1"},
                               {"MAIN_WIN_POS_L", "6600"},
                               {"THPREV_WIN_VIS", "-1"},
                               {"THPREV_WIN_POS_L", "16800"}});
    program_ = desktop_.StartEditor(folder_.File("program/vardenix"));
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active(StartUp); }));
    desktop_.Key("Return");
    desktop_.StopManagerFor(800);
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Map); }));
    for (const char* title : {Panel, Map, Preview})
        EXPECT_TRUE(
            WaitFor([&] { return desktop_.TopOf(title) >= 15; })) // under its title
            << title << " " << desktop_.TopOf(title);
}

} // namespace
} // namespace vardenix::tests
