// The MAP editor and the workspace, which have the screen in turn.
#include "app/OpenedWorkspace.h"
#include "mapeditor/windows/PaletteGrid.h"

#include <QLabel>
#include <QMenu>

namespace vardenix {
namespace {

using tests::Find;

class MapEditorTest : public tests::OpenedWorkspace {
protected:
    void OpenWithEditor() {
        state_.MAPFile = folder_.Write("theater.map", std::string(1112, '\0'));
        Open();
        static_cast<OpeningWindows&>(subsystems_->Opening).LoadMapEditor();
        workspace_->CommandsChanged();
    }
    static QWidget& Editor() { return Window("frmMAPMain"); }
    void GiveColor(int index, uint32_t from, uint32_t to) {
        platform_.Dialogs.ExpectColor(from, to);
        Find<QAbstractButton>(Editor(), ("Command1_" + std::to_string(index)).c_str())
            .click();
    }
    static void ExpectScreen(bool editor) {
        EXPECT_EQ(Editor().isVisible(), editor);
        for (const char* name : {"FrmVXMain", "FrmVXMap", "FrmVXTheaterPreview"})
            EXPECT_EQ(Window(name).isVisible(), !editor) << name;
    }
};

TEST_F(MapEditorTest, WithoutAnEditorItsWaysAreClosed) {
    Open();
    EXPECT_FALSE(Find<QAbstractButton>(Window("FrmVXMain"), "cmdOpenMap").isEnabled());
}

TEST_F(MapEditorTest, ColoursAreSeenOnTheMapBeforeTheyAreSaved) {
    OpenWithEditor();
    Click("chkApplyMAP");
    const QImage before = Painted();
    Click("cmdOpenMap");
    ExpectScreen(true);
    GiveColor(0, 0, 0xFFFFFF); // of every post
    Find<QAbstractButton>(Editor(), "cmdVardenix").click();
    ExpectScreen(false);
    const QImage after = Painted();
    for (const int x : {5, 300, 600}) {
        // Half of black less, half of white more: 127 of 255 stands for white now.
        const int old = before.pixelColor(x, 300).green();
        EXPECT_NEAR(after.pixelColor(x, 300).green(), old + 127, 1) << x;
    }
}

TEST_F(MapEditorTest, APartOfTheMapHasTheColoursBesideThem) {
    OpenWithEditor();
    Click("cmdOpenMap");
    const auto part = [] {
        return Find<QLabel>(Editor(), "picMap").pixmap(Qt::ReturnByValue).toImage();
    };
    const QImage before = part();
    ASSERT_EQ(before.size(), QSize(256, 192));
    GiveColor(0, 0, 0xFFFFFF); // of every post
    const QImage after = part();
    for (const int x : {5, 130, 250})
        EXPECT_NEAR(after.pixelColor(x, 100).green(),
                    before.pixelColor(x, 100).green() + 127, 1)
            << x;
    Window("FrmVXMain").findChild<QAction*>("mnuUndo")->trigger();
    EXPECT_EQ(part(), before);
}

TEST_F(MapEditorTest, TheMapsMenuLeadsToThePostsColour) {
    state_.Terrain.LxArr(1).Palette = 203; // the lower left post
    OpenWithEditor();
    QWidget& map = Window("FrmVXMap");
    QTest::mouseClick(&Find<QWidget>(map, "PicShow"), Qt::RightButton, {}, {3, 636});
    auto* menu = map.findChild<QMenu*>("mnupup1");
    QAction* entry = map.findChild<QAction*>("mnuLocColMAP");
    ASSERT_TRUE(entry->isEnabled());
    menu->close();
    entry->trigger();
    ExpectScreen(true);
    EXPECT_EQ(Find<PaletteGrid>(Editor(), "Command1").Current(), 203);
    auto& timer = Find<QTimer>(Editor(), "Timer1");
    EXPECT_TRUE(timer.isActive());
    EXPECT_EQ(timer.interval(), 100);
}

TEST_F(MapEditorTest, LeavingAsksForUnsavedColours) {
    OpenWithEditor();
    Click("cmdOpenMap");
    GiveColor(4, 0, 0x030201);
    const std::string question =
        "The MAP file has changed. Are you sure you want to exit "
        "without saving it first?\nPress Yes to exit whithout "
        "saving.\nPress No to return to the program";
    platform_.Dialogs.ExpectBox("Confirm", question, BoxAnswer::No);
    Editor().close();
    EXPECT_EQ(ends_, 0);
    ExpectScreen(true);
    Find<QAbstractButton>(Editor(), "cmdSaveMAP").click();
    EXPECT_EQ(tests::Slurp(state_.MAPFile),
              std::string(1112, '\0').replace(28 + 4 * 4, 3, "\1\2\3"));
    Editor().close();
    EXPECT_EQ(ends_, 1);
}

} // namespace
} // namespace vardenix
