// What the menus lead to, and a pick with a key held, by real mouse and keys.
#include "endtoend/EditingOnDesktop.h"

namespace vardenix::tests {
namespace {

class MenusOnDesktop : public EditingOnDesktop {
protected:
    // Opens a menu of the panel with the mouse, and takes one of its entries by the
    // letter that is underlined in it.
    void Choose(int left, const std::vector<std::string>& letters) {
        desktop_.Activate(Panel);
        ASSERT_TRUE(WaitFor([this] { return desktop_.Active(Panel); }));
        desktop_.ClickIn(Panel, left, 10);
        desktop_.Keys(letters);
    }
    static constexpr int File = 15;
    static constexpr int Edit = 42;

    // A program that was started anew, which is nobody's child here, goes.
    void CloseStarted(const char* title) {
        desktop_.Activate(title);
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(title); }));
        desktop_.Key("alt+F4");
        EXPECT_TRUE(WaitFor([&] { return !desktop_.Visible(title); }));
    }
};

TEST_F(MenusOnDesktop, AnotherTheaterIsOpenedByAProgramStartedAnew) {
    const std::string level2 = Slurp(Terrain("theater.L2"));
    Start();
    const Picture untouched = MapPicture();
    ASSERT_NO_FATAL_FAILURE(ChooseFirstTile());
    ClickPost(1, 2, 1);
    ASSERT_TRUE(Await([&](const Picture& map) { return map != untouched; }));
    ASSERT_NO_FATAL_FAILURE(Choose(File, {"o"}));
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active("^Confirm$"); }));
    desktop_.Key("Escape"); // back to the program
    ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible("^Confirm$"); }));
    EXPECT_TRUE(program_.Running());
    EXPECT_FALSE(desktop_.Visible(StartUp));

    ASSERT_NO_FATAL_FAILURE(Choose(File, {"o"}));
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active("^Confirm$"); }));
    desktop_.Key("alt+y");
    ASSERT_TRUE(WaitFor([this] { return !program_.Running(); }));
    EXPECT_EQ(program_.ExitCode(), 0);
    ASSERT_TRUE(WaitFor([this] { return desktop_.Active(StartUp); }));
    EXPECT_TRUE(Slurp(Terrain("theater.L2")) == level2);
    ASSERT_NO_FATAL_FAILURE(CloseStarted(StartUp));
}

TEST_F(MenusOnDesktop, ARecentTheaterComesUpAtOnce) {
    Start();
    const Picture map = MapPicture();
    ASSERT_NO_FATAL_FAILURE(Choose(File, {"r", "1"}));
    ASSERT_TRUE(WaitFor([this] { return !program_.Running(); }));
    EXPECT_EQ(program_.ExitCode(), 0);
    ASSERT_TRUE(WaitFor([this] { return desktop_.Active(Map); }));
    EXPECT_TRUE(Await([&](const Picture& again) { return again == map; }));
    ASSERT_NO_FATAL_FAILURE(CloseStarted(Panel));
}

TEST_F(MenusOnDesktop, ToolsAreTakenFromTheMenu) {
    const MadeLevel before = Level2();
    Start();
    const Picture untouched = MapPicture();
    ASSERT_NO_FATAL_FAILURE(ChooseFirstTile());
    ASSERT_NO_FATAL_FAILURE(Choose(Edit, {"c"}));
    desktop_.StrokeIn(Map, {{Across(1), Down(1)}, {Across(2), Down(3)}});
    ASSERT_TRUE(Await([&](const Picture& map) { return map != untouched; }));
    ASSERT_NO_FATAL_FAILURE(Save());
    EXPECT_EQ(Differences(before, Level2()).size(), 6U);
    Leave();
}

// Many window managers keep Alt and a click for themselves; without one it comes through.
TEST_F(MenusOnDesktop, AltAndAClickPicksATileWithoutAWindowManager) {
    const MadeLevel before = Level2();
    const auto tileAt = [](const MadeLevel& level, size_t x, size_t y) {
        return level.Posts[SerialOf(ViewX + x, ViewY + y, Posts) - 1].Tile;
    };
    ASSERT_NE(tileAt(before, 4, 4), tileAt(before, 0, 1));
    Start();
    const Picture untouched = MapPicture();
    desktop_.EndManager();
    desktop_.DragIn(Map, {Across(4), Down(4)}, {Across(4), Down(4)}, "alt");
    ClickPost(0, 1, 1);
    ASSERT_TRUE(Await([&](const Picture& map) { return map != untouched; }));
    ASSERT_TRUE(WaitFor([&] {
        desktop_.GiveKeyboard(Map);
        desktop_.Key("ctrl+s");
        return !desktop_.Visible(Star);
    }));
    const MadeLevel saved = Level2();
    EXPECT_EQ(Differences(before, saved),
              std::vector<size_t>{SerialOf(ViewX, ViewY + 1, Posts)});
    EXPECT_EQ(tileAt(saved, 0, 1), tileAt(before, 4, 4));
    desktop_.GiveKeyboard(Panel);
    desktop_.Key("ctrl+q");
    ASSERT_TRUE(WaitFor([this] { return !program_.Running(); }));
    EXPECT_EQ(program_.ExitCode(), 0);
}

} // namespace
} // namespace vardenix::tests
