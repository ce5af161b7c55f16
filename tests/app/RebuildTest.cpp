// The way to the rebuild window and back.
#include "app/OpenedWorkspace.h"

namespace vardenix::tests {
namespace {

class RebuildFromPanel : public OpenedWorkspace {
protected:
    static void ChooseRebuild() {
        Window("FrmVXMain").findChild<QAction*>("mnuRebuildTheater")->trigger();
    }
};

TEST_F(RebuildFromPanel, TheWorkspaceGoesAndComesBack) {
    Open();
    ChooseRebuild();
    QWidget& rebuild = Window("FrmVXRebiuldTheater");
    EXPECT_TRUE(rebuild.isVisible());
    for (const char* name : {"FrmVXMain", "FrmVXMap", "FrmVXTheaterPreview"})
        EXPECT_FALSE(Window(name).isVisible()) << name;
    Find<QAbstractButton>(rebuild, "cmdExit").click();
    EXPECT_FALSE(rebuild.isVisible());
    for (const char* name : {"FrmVXMain", "FrmVXMap", "FrmVXTheaterPreview"})
        EXPECT_TRUE(Window(name).isVisible()) << name;
}

} // namespace
} // namespace vardenix::tests
