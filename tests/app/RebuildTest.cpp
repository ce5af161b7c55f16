// The way to the rebuild window and back.
#include "app/BuilderWindows.h"
#include "app/OpenedWorkspace.h"

namespace vardenix::tests {
namespace {

class RebuildFromPanel : public OpenedWorkspace {
protected:
    void OpenWithBuilder() {
        Open();
        builder_ =
            std::make_unique<BuilderWindows>(state_, platform_.All, log_, *workspace_);
        static_cast<WorkspaceCommands&>(*workspace_).CommandsChanged();
    }
    ~RebuildFromPanel() override { builder_.reset(); }
    static void ChooseRebuild() {
        Window("FrmVXMain").findChild<QAction*>("mnuRebuildTheater")->trigger();
    }

    std::unique_ptr<BuilderWindows> builder_;
};

TEST_F(RebuildFromPanel, TheWorkspaceGoesAndComesBack) {
    OpenWithBuilder();
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
