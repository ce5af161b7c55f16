// Selection, clipboard and what the tools give, as menus and keys have them.
#include "app/OpenedWorkspace.h"
#include "app/PostsMime.h"
#include "workspace/windows/FrmVXMap.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QMimeData>
#include <QToolButton>

namespace vardenix {
namespace {

using tests::Find;
using tests::Posts;

class HandTest : public tests::OpenedWorkspace {
protected:
    static void Trigger(const char* command) {
        Window("FrmVXMain").findChild<QAction*>(command)->trigger();
    }
    static bool Can(const char* command) {
        return Window("FrmVXMain").findChild<QAction*>(command)->isEnabled();
    }
    HandState& Hand() { return workspace_->Interaction().Hand; }
    void SelectPosts(const PostBox& box) { Hand().Selected = SelectedBox(box, Posts); }
    TerrainPost& Post(int x, int y) { return state_.Terrain.LxArr(y * Posts + x + 1); }
    static QWidget& PicShow() { return Find<QWidget>(Window("FrmVXMap"), "PicShow"); }
    // A click on a post of the view, from its lower left.
    void ClickPost(int x, int y) {
        const double cell = workspace_->View().CellSize();
        const QPoint at(
            static_cast<int>(cell * x + cell / 2),
            static_cast<int>(workspace_->View().PictureHeight() - cell * y - cell / 2));
        QTest::mouseClick(&PicShow(), Qt::LeftButton, {}, at);
    }
};

TEST_F(HandTest, TheMenuSelectsAllNothingAndWhatWasNot) {
    Open();
    Trigger("mnuSelectAll");
    EXPECT_EQ(Hand().Selected.Count(), Posts * Posts);
    EXPECT_TRUE(Can("mnuSelectNone"));
    Trigger("mnuSelectNone");
    EXPECT_TRUE(Hand().Selected.Empty());
    EXPECT_FALSE(Can("mnuSelectNone"));
    EXPECT_FALSE(Can("mnuCopy"));
    SelectPosts({0, 0, 3, 3});
    Trigger("mnuSelectInvert");
    EXPECT_EQ(Hand().Selected.Count(), Posts * Posts - 16);
    state_.Search.Results = {0, 5, 6};
    workspace_->CommandsChanged();
    Trigger("mnuSelectHits");
    EXPECT_EQ(Hand().Selected.Count(), 2);
    // Esc is nothing selected, too.
    QTest::keyClick(&Window("FrmVXMap"), Qt::Key_Escape);
    EXPECT_TRUE(Hand().Selected.Empty());
}

TEST_F(HandTest, ConnectedPostsAreSelectedFromTheMapsMenu) {
    Open();
    workspace_->Interaction().PopupSerial = 2; // the column of tile 1
    workspace_->CommandsChanged();
    Window("FrmVXMap").findChild<QAction*>("mnuSelectTile")->trigger();
    EXPECT_EQ(Hand().Selected.Count(), Posts);
    EXPECT_TRUE(Hand().Selected.Has({1, 5}));
    state_.Catalogue.Lookup[0].Terrain = state_.Catalogue.Lookup[1].Terrain = 3;
    Window("FrmVXMap").findChild<QAction*>("mnuSelectKind")->trigger();
    EXPECT_EQ(Hand().Selected.Count(), Posts * Posts);
}

TEST_F(HandTest, WhatIsCutIsPastedByClicksUntilEsc) {
    Open();
    Post(0, 0) = {1, 50, 2, 3, 4};
    SelectPosts({0, 0, 1, 0});
    workspace_->CommandsChanged();
    Hand().Fields.Elevation = false;
    Trigger("mnuCut");
    EXPECT_EQ(Post(0, 0), (TerrainPost{0, 50, 2, 3, 4}));
    EXPECT_EQ(Post(1, 0).TileOffset, 0);
    Trigger("mnuPaste");
    ASSERT_TRUE(Hand().Stamp.has_value());
    ClickPost(2, 2);
    const PostPlace corner{workspace_->View().MapLeftX, workspace_->View().MapBottomY};
    EXPECT_EQ(Post(corner.X + 2, corner.Y + 2), (TerrainPost{1, 0, 2, 3, 4}));
    EXPECT_EQ(Post(corner.X + 3, corner.Y + 2).TileOffset, 1);
    QTest::keyClick(&Window("FrmVXMap"), Qt::Key_Escape);
    EXPECT_FALSE(Hand().Stamp.has_value());
    Trigger("mnuUndo");
    Trigger("mnuUndo");
    EXPECT_EQ(Post(0, 0), (TerrainPost{1, 50, 2, 3, 4}));
    EXPECT_EQ(Post(corner.X + 2, corner.Y + 2), TerrainPost{});
}

// As another program would offer it.
TEST_F(HandTest, AForeignClipboardIsCheckedLikeAFile) {
    Open();
    SelectPosts({0, 0, 2, 1});
    workspace_->CommandsChanged();
    Trigger("mnuCopy");
    const QByteArray ours =
        QApplication::clipboard()->mimeData()->data("application/x-vardenix-posts");
    const QByteArray exp =
        QApplication::clipboard()->mimeData()->data("application/x-vardenix-exp");
    EXPECT_EQ(exp.size(), 8 + 6 * 4);
    const auto paste = [&](const char* type, const QByteArray& bytes) {
        auto* offered = new QMimeData;
        offered->setData(type, bytes);
        QApplication::clipboard()->setMimeData(offered);
        Hand().Stamp.reset();
        Trigger("mnuPaste");
    };
    paste("application/x-vardenix-posts", ours);
    ASSERT_TRUE(Hand().Stamp.has_value());
    EXPECT_EQ(Hand().Stamp->Clip.Width, 3);
    EXPECT_FALSE(Hand().Stamp->TilesOnly);
    paste("application/x-vardenix-exp", exp);
    ASSERT_TRUE(Hand().Stamp.has_value());
    EXPECT_TRUE(Hand().Stamp->TilesOnly);
    std::string said;
    platform_.Dialogs.ExpectAnyBox("Error...", BoxAnswer::Ok, &said);
    paste("application/x-vardenix-posts", ours.left(ours.size() - 1));
    EXPECT_FALSE(Hand().Stamp.has_value());
    EXPECT_NE(said.find("the clipboard's posts"), std::string::npos);
}

TEST_F(HandTest, AClipTurnsWhereElevationsAloneComeAlong) {
    Open();
    Post(0, 0).Elevation = 10;
    SelectPosts({0, 0, 2, 0});
    workspace_->CommandsChanged();
    Trigger("mnuCopy");
    Trigger("mnuPaste");
    auto& turn = Find<QAbstractButton>(Window("FrmVXMap"), "cmdTurn");
    EXPECT_FALSE(turn.isEnabled());
    for (const char* field :
         {"chkFieldTile", "chkFieldPalette", "chkFieldX1", "chkFieldX2"})
        Find<QCheckBox>(Window("FrmVXMap"), field).click();
    EXPECT_TRUE(turn.isEnabled());
    turn.click();
    EXPECT_EQ(Hand().Stamp->Clip.Height, 3);
    EXPECT_EQ(Hand().Stamp->Clip.Posts[0].Elevation, 10);
    Find<QAbstractButton>(Window("FrmVXMap"), "cmdMirror").click();
    EXPECT_EQ(Hand().Stamp->Clip.Width, 1);
    // Remembered for the next run.
    workspace_->StorePlaces();
    EXPECT_EQ(workspace_->Memory().Read().ClipFields, "E");
}

TEST_F(HandTest, WhereTheLandTellsNothingGroundsAreNotPainted) {
    Open();
    workspace_->Interaction().SelectedTile = 1;
    Trigger("mnuGround");
    EXPECT_EQ(Hand().Paints, Painting::Ground);
    EXPECT_EQ(workspace_->Interaction().Tool, MapTool::Rectangle);
    ClickPost(3, 3);
    EXPECT_EQ(state_.Changes.Count(), 0U);
    Trigger("mnuGround");
    EXPECT_EQ(Hand().Paints, Painting::Tile);
    EXPECT_EQ(workspace_->Interaction().Tool, MapTool::Brush);
    ClickPost(3, 3);
    EXPECT_EQ(state_.Changes.Count(), 1U);
}

TEST_F(HandTest, ACommandMeetsNoPostsThatTheLogDoesNotKnow) {
    Open();
    Trigger("mnuPostHeights");
    const QPoint at(20, 20);
    QTest::mousePress(&PicShow(), Qt::LeftButton, {}, at);
    const auto raised = [this] {
        int count = 0;
        for (const TerrainPost& post : state_.Terrain.LxArr.Values())
            count += post.Elevation != 0 ? 1 : 0;
        return count;
    };
    EXPECT_EQ(raised(), 1);
    Trigger("mnuSelectAll");
    EXPECT_EQ(raised(), 0);
    QTest::mouseRelease(&PicShow(), Qt::LeftButton, {}, at);
    EXPECT_EQ(state_.Changes.Count(), 0U);
}

} // namespace
} // namespace vardenix
