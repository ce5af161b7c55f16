// Which keys go to the map's tools, and where the keyboard is after a choice.
#include "app/OpenedWorkspace.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>

namespace vardenix {
namespace {

using tests::Find;
using tests::Int32Bytes;

class MapKeysTest : public tests::OpenedWorkspace {
protected:
    MapKeysTest() {
        state_.Catalogue.Lookup[1].Terrain = 1; // water, the palette's first class
        state_.Catalogue.Lookup[1].Name = "HSEA";
        state_.Configuration.PalWinVis = true;
    }

    void OpenInOne() {
        Open();
        workspace_->SetOneWindow(true);
        workspace_->Panel().FoldGroups({});
        QWidget* desk = workspace_->Map().window();
        desk->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(desk));
    }
    template <typename Control>
    Control& In(QWidget& window, const char* name) {
        auto& control = Find<Control>(window, name);
        control.setFocus();
        EXPECT_TRUE(control.hasFocus()) << name;
        return control;
    }
    QAbstractButton& TileOne() {
        return In<QAbstractButton>(*workspace_->Map().window(), "Op2_2");
    }
    MapTool Tool() const { return workspace_->Interaction().Tool; }
    bool MapHasKeyboard() const {
        return workspace_->Map().isAncestorOf(QApplication::focusWidget()) ||
               QApplication::focusWidget() == &workspace_->Map();
    }
    bool LooksPressed(const char* button) {
        return Find<QAbstractButton>(workspace_->Map(), button).isChecked();
    }
    QString ToolLine() { return Find<QLabel>(workspace_->Map(), "lblTool").text(); }
    void ImportTwoByOne() {
        platform_.Dialogs.ExpectOpen(
            "Open file to import...",
            folder_.Write("in.exp",
                          Int32Bytes(2) + Int32Bytes(1) + Int32Bytes(1) + Int32Bytes(1)));
        Find<QAbstractButton>(workspace_->Panel(), "CmdImport").click();
    }
};

TEST_F(MapKeysTest, ToolsAreTakenFromWhateverPartHasTheKeyboard) {
    OpenInOne();
    QTest::keyClick(&TileOne(), Qt::Key_R);
    EXPECT_EQ(Tool(), MapTool::Rectangle);
    EXPECT_TRUE(MapHasKeyboard());
    QTest::keyClick(&In<QWidget>(workspace_->Panel(), "CmdExport"), Qt::Key_F);
    EXPECT_EQ(Tool(), MapTool::Fill);
    QTest::keyClick(&In<QWidget>(workspace_->Panel(), "sldrBrightness"),
                    Qt::Key_BracketRight);
    EXPECT_EQ(workspace_->Interaction().BrushSize, 2);
}

TEST_F(MapKeysTest, ToolsAreTakenInWindowsOfTheirOwn) {
    Open();
    QWidget& palette = Window("FrmVXTilePal");
    palette.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&palette));
    QTest::keyClick(&In<QWidget>(palette, "Op2_2"), Qt::Key_I);
    EXPECT_EQ(Tool(), MapTool::Pick);
    EXPECT_TRUE(QTest::qWaitFor([this] { return MapHasKeyboard(); }));
}

TEST_F(MapKeysTest, WhatTakesTextOrFindsByLettersKeepsThem) {
    OpenInOne();
    QWidget& desk = *workspace_->Map().window();
    for (const char* name : {"LabelX", "txtFilter", "Combo1", "ComTileWidth"})
        QTest::keyClick(&In<QWidget>(desk, name), Qt::Key_R);
    EXPECT_EQ(Tool(), MapTool::Brush);
    EXPECT_EQ(Find<QLineEdit>(desk, "txtFilter").text(), "r");
}

TEST_F(MapKeysTest, ArrowsAndTheBlankStayWithTheirControl) {
    OpenInOne();
    const int32_t x = workspace_->View().MapLeftX;
    QTest::keyClick(&TileOne(), Qt::Key_Right);
    QTest::keyClick(&TileOne(), Qt::Key_Space);
    EXPECT_EQ(workspace_->View().MapLeftX, x);
    EXPECT_EQ(workspace_->Interaction().SelectedTile, 1);
}

TEST_F(MapKeysTest, ATileTakenByMouseOrEnterGivesTheKeyboardToTheMap) {
    OpenInOne();
    QTest::keyClick(&TileOne(), Qt::Key_Space);
    EXPECT_FALSE(MapHasKeyboard()); // more may be chosen
    QTest::keyClick(&TileOne(), Qt::Key_Escape);
    EXPECT_EQ(workspace_->Interaction().SelectedTile, -1);
    QTest::keyClick(&TileOne(), Qt::Key_Return);
    EXPECT_EQ(workspace_->Interaction().SelectedTile, 1);
    EXPECT_TRUE(MapHasKeyboard());
    TileOne();
    EXPECT_FALSE(MapHasKeyboard());
    QTest::mouseClick(&TileOne(), Qt::LeftButton);
    EXPECT_EQ(workspace_->Interaction().SelectedTile, -1);
    EXPECT_TRUE(MapHasKeyboard());
}

TEST_F(MapKeysTest, EscEndsAWaitingImportWhereverTheKeyboardIs) {
    OpenInOne();
    QWidget& desk = *workspace_->Map().window();
    for (const char* name : {"CmdImport", "txtFilter", "Combo1", "Op2_2", "LabelX"}) {
        ImportTwoByOne();
        ASSERT_TRUE(workspace_->Interaction().Waits());
        workspace_->Interaction().SelectedTile = 1;
        QTest::keyClick(&In<QWidget>(desk, name), Qt::Key_Escape);
        EXPECT_FALSE(workspace_->Interaction().Waits()) << name;
        EXPECT_FALSE(Find<QWidget>(workspace_->Panel(), "Frame7").isVisible()) << name;
        EXPECT_EQ(workspace_->Interaction().SelectedTile, 1) << name;
    }
}

TEST_F(MapKeysTest, NoToolLooksPressedWhileACornerIsWaitedFor) {
    OpenInOne();
    EXPECT_TRUE(LooksPressed("cmdBrush"));
    ImportTwoByOne();
    EXPECT_FALSE(LooksPressed("cmdBrush"));
    EXPECT_EQ(ToolLine(),
              "Import of 2 X 1 posts: click its lower left corner (Esc ends it)");
    QTest::keyClick(&workspace_->Map(), Qt::Key_B);
    EXPECT_FALSE(workspace_->Interaction().Waits());
    EXPECT_TRUE(LooksPressed("cmdBrush"));
    EXPECT_EQ(ToolLine(), "Brush 1: no tile chosen");
}

TEST_F(MapKeysTest, TheSearchWindowBelongsToTheWorkspaceToo) {
    OpenInOne();
    subsystems_->Search.ShowOptions();
    QWidget& options = Window("frmVXSearchOptions");
    options.activateWindow();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return QApplication::activeWindow() == &options; }));
    EXPECT_EQ(options.windowHandle()->transientParent(),
              workspace_->Map().window()->windowHandle());
    QTest::keyClick(&In<QWidget>(options, "Cells"), Qt::Key_F);
    EXPECT_EQ(Tool(), MapTool::Fill);
}

TEST_F(MapKeysTest, ThePanelIsHiddenByF4AndByItsHandle) {
    OpenInOne();
    QWidget& desk = *workspace_->Map().window();
    const int width = workspace_->Map().width();
    QTest::keyClick(&desk, Qt::Key_F4);
    EXPECT_FALSE(workspace_->ShowsPanel());
    EXPECT_FALSE(workspace_->Panel().isVisible());
    EXPECT_TRUE(ReadDesk(state_.Folders.AppPath).PanelHidden);
    QTest::keyClick(&desk, Qt::Key_2, Qt::ControlModifier);
    EXPECT_TRUE(workspace_->View().ShowGrid); // its keys go on
    workspace_->SetOneWindow(false);
    EXPECT_TRUE(workspace_->Panel().isVisible());
    workspace_->SetOneWindow(true);
    EXPECT_FALSE(workspace_->Panel().isVisible());
    Find<QAbstractButton>(*workspace_->Map().window(), "panelHandle").click();
    EXPECT_TRUE(workspace_->Panel().isVisible());
    EXPECT_FALSE(ReadDesk(state_.Folders.AppPath).PanelHidden);
    EXPECT_GT(width, 0);
}

} // namespace
} // namespace vardenix
