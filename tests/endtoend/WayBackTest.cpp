// What one click beside the usual one costs comes back, and is saved, by keys that hold
// everywhere.
#include "endtoend/ControlsOnDesktop.h"
#include "endtoend/EditingOnDesktop.h"

namespace vardenix::tests {
namespace {

using WayBackEndToEnd = EditingOnDesktop;

// RESTORE leaves Save L2 grey, as it always has.
TEST_F(WayBackEndToEnd, ARestoredLevelIsSavedByAllAndTakenBack) {
    const MadeLevel before = Level2();
    ASSERT_NO_FATAL_FAILURE(Start());
    const ControlsOnDesktop panel(desktop_, folder_.File("desktop"), "FrmVXMain", Panel);
    ASSERT_NO_FATAL_FAILURE(ChooseFirstTile());
    panel.Press("Command3"); // "Create Restore Point"
    const Picture untouched = MapAtRest();
    ClickPost(1, 2, 1);
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
    ASSERT_NO_FATAL_FAILURE(Save());
    EXPECT_EQ(Differences(before, Level2()).size(), 1U);
    const Picture painted = MapAtRest();
    panel.Press("Command4"); // "RESTORE"
    ASSERT_TRUE(Await([&](const Picture& map) { return map == untouched; }));
    desktop_.Activate(Map);
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Map); }));
    desktop_.Key("ctrl+alt+s");
    ASSERT_TRUE(WaitFor([&] { return Differences(before, Level2()).empty(); }));
    desktop_.Key("ctrl+z");
    ASSERT_TRUE(Await([&](const Picture& map) { return map == painted; }));
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
    ASSERT_NO_FATAL_FAILURE(Save());
    EXPECT_EQ(Differences(before, Level2()).size(), 1U);
    Leave();
}

} // namespace
} // namespace vardenix::tests
