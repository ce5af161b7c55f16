// The history of changes, with the mouse and with keys.
#include "endtoend/EditingOnDesktop.h"

namespace vardenix::tests {
namespace {

constexpr const char* History = "^History$";

using HistoryEndToEnd = EditingOnDesktop;

TEST_F(HistoryEndToEnd, AClickGoesToAStateAndEnterShowsThePlace) {
    const MadeLevel before = Level2();
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(ChooseFirstTile());
    const Picture untouched = MapPicture();
    ClickPost(1, 2, 1);
    ASSERT_TRUE(Await([&](const Picture& map) { return map != untouched; }));
    const Picture once = MapAtRest();
    ClickPost(3, 3, 1);
    ASSERT_TRUE(Await([&](const Picture& map) { return map != once; }));
    desktop_.Key("ctrl+h");
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(History); }));
    desktop_.Move(History, 1110, 300); // beside the map, as far as it is on the screen
    ASSERT_TRUE(WaitFor([&] { return desktop_.WhereIs(History).Left > 1100; }));
    // The first row, below the headings: before these changes.
    desktop_.ClickIn(History, 90, 30);
    ASSERT_TRUE(Await([&](const Picture& map) { return map == untouched; }));
    // A row that is only chosen changes nothing; Enter frames its place for a moment.
    desktop_.Activate(History);
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active(History); }));
    desktop_.Keys({"Down", "Return"});
    ASSERT_TRUE(Await([&](const Picture& map) {
        return CellOf(map, 1, 2) != CellOf(untouched, 1, 2);
    }));
    ASSERT_TRUE(Await([&](const Picture& map) { return map == untouched; }));
    // The blank goes there.
    desktop_.Key("space");
    ASSERT_TRUE(Await([&](const Picture& map) { return map == once; }));
    desktop_.Activate(Map);
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Map); }));
    ASSERT_NO_FATAL_FAILURE(Save());
    EXPECT_EQ(Differences(before, Level2()),
              std::vector<size_t>{SerialOf(ViewX + 1, ViewY + 2, Posts)});
    Leave();
}

} // namespace
} // namespace vardenix::tests
