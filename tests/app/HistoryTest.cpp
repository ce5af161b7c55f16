// The window with the changes of the log, and other heights as one of them.
#include "app/OpenedWorkspace.h"
#include "workspace/windows/FrmVXMap.h"

#include <QDockWidget>
#include <QTreeView>

namespace vardenix {
namespace {

using tests::Find;

class HistoryTest : public tests::OpenedWorkspace {
protected:
    void Change(int32_t serial, int32_t tile, const char* name) {
        const Recording made(state_.Changes, {Paper::Level2}, name);
        state_.Terrain.LxArr(serial).TileOffset = tile;
    }
    static void Choose(const char* entry) {
        Window("FrmVXMain").findChild<QAction*>(entry)->trigger();
    }
    static QTreeView& List() {
        return Find<QTreeView>(Window("FrmVXHistory"), "lstHistory");
    }
    static std::string Row(int row) {
        std::string text;
        for (const int column : {1, 2, 3})
            text +=
                List().model()->index(row, column).data().toString().toStdString() + "|";
        return text;
    }
    static void ClickRow(int row) {
        const QRect place = List().visualRect(List().model()->index(row, 1));
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, place.center());
    }
    int32_t Tile(int32_t serial) { return state_.Terrain.LxArr(serial).TileOffset; }
};

TEST_F(HistoryTest, ShowsEveryChangeWithItsFileAndWhereThatWasSaved) {
    Open();
    Change(1, 7, "Set 1 post");
    state_.Changes.Saved(Paper::Level2);
    Choose("mnuWinHistory");
    ASSERT_TRUE(Window("FrmVXHistory").isVisible());
    Change(2, 8, "Import coast.exp at 1, 0");
    ASSERT_EQ(List().model()->rowCount(), 3);
    EXPECT_EQ(Row(0), "Before these changes|||");
    EXPECT_EQ(Row(1), "Set 1 post|L2|L2|");
    EXPECT_EQ(Row(2), "Import coast.exp at 1, 0|L2||");
    EXPECT_EQ(List().currentIndex().row(), 2);
    Choose("mnuWinHistory");
    EXPECT_FALSE(Window("FrmVXHistory").isVisible());
}

TEST_F(HistoryTest, AClickGoesToThatState) {
    Open();
    Choose("mnuWinHistory");
    Change(1, 7, "First");
    Change(1, 8, "Second");
    Change(1, 9, "Third");
    ClickRow(1);
    EXPECT_EQ(Tile(1), 7);
    EXPECT_EQ(state_.Changes.Position(), 1U);
    ClickRow(0);
    EXPECT_EQ(Tile(1), 0);
    ClickRow(3);
    EXPECT_EQ(Tile(1), 9);
    EXPECT_EQ(List().currentIndex().row(), 3);
}

TEST_F(HistoryTest, EnterShowsThePlaceAndChangesNothing) {
    Open();
    workspace_->ScrollTo(0, 0);
    Choose("mnuWinHistory");
    Change(32 * 30 + 31, 7, "Far away"); // post (30, 30), out of view
    Change(1, 7, "Near");
    List().setCurrentIndex(List().model()->index(1, 0));
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_EQ(state_.Changes.Position(), 2U);
    const MapView& view = workspace_->View();
    EXPECT_LE(30, view.MapLeftX + view.ViewColumns() - 1);
    EXPECT_LE(30, view.MapBottomY + view.ViewRows() - 1);
}

TEST_F(HistoryTest, IsADockInTheOneWindow) {
    Open();
    Choose("mnuWinHistory");
    workspace_->SetOneWindow(true);
    auto* dock = qobject_cast<QDockWidget*>(
        Window("FrmVXDesk").findChild<QWidget*>("dockFrmVXHistory"));
    ASSERT_NE(dock, nullptr);
    EXPECT_TRUE(dock->isVisible());
    dock->close();
    EXPECT_FALSE(dock->isVisible());
    EXPECT_FALSE(subsystems_->History.Shown());
    workspace_->SetOneWindow(false);
}

TEST_F(HistoryTest, ComesUpWithTheTheaterWhereItWasOpenLast) {
    Open();
    Choose("mnuWinHistory");
    Open();
    EXPECT_TRUE(Window("FrmVXHistory").isVisible());
    Window("FrmVXHistory").close();
    Open();
    EXPECT_FALSE(subsystems_->History.Shown());
}

TEST_F(HistoryTest, EarlierSavesStandAboveTheChangesAndCanBeBroughtBack) {
    state_.Terrain.LFilename = folder_.File("theater.L2");
    state_.Terrain.OFilename = folder_.File("theater.O2");
    state_.Folders.SavesFolder = folder_.File("saves");
    Open();
    const auto save = [this] {
        workspace_->L2NeedSave();
        Click("CmdSaveTheater");
    };
    save();
    subsystems_->Recovery.OfferSoon();
    Change(1, 7, "Set 1 post");
    Choose("mnuWinHistory");
    EXPECT_EQ(List().model()->rowCount(), 2);
    save();
    ASSERT_EQ(List().model()->rowCount(), 3);
    EXPECT_EQ(Row(0).substr(0, 20), "Level 2 as saved on ");
    EXPECT_EQ(Row(0).substr(Row(0).find('|')), "|L2|L2|");
    EXPECT_EQ(Row(2), "Set 1 post|L2|L2|");
    EXPECT_EQ(List().currentIndex().row(), 2);
    ClickRow(0); // once is not enough
    EXPECT_EQ(Tile(1), 7);
    const QRect place = List().visualRect(List().model()->index(0, 1));
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, place.center());
    EXPECT_EQ(Tile(1), 0);
    EXPECT_TRUE(state_.Changes.Unsaved(Paper::Level2));
    ASSERT_EQ(List().model()->rowCount(), 4);
    EXPECT_EQ(Row(3).substr(0, 20), "Level 2 as saved at ");
    Choose("mnuUndo");
    EXPECT_EQ(Tile(1), 7);
    ClickRow(1);
    EXPECT_EQ(Tile(1), 0);
}

// Two files of heights: an edit of the first, the second, an edit of that.
TEST_F(HistoryTest, OtherHeightsHaveAWayBack) {
    const std::string size(128 * 128 * 2, '\1');
    const std::string first = folder_.Write("first.elv", size);
    const std::string second =
        folder_.Write("second.elv", std::string(size.size(), '\2'));
    Open();
    const auto load = [this](const std::string& path) {
        platform_.Dialogs.ExpectOpen("", path, 2);
        Click("cmdLoadL0Elv");
    };
    const auto edit = [this](int16_t height) {
        const Recording made(state_.Changes, {Paper::Heights}, "Change 1 height");
        state_.Terrain.Elevations.At(1, 1) = height;
    };
    const auto height = [this] { return int{state_.Terrain.Elevations.At(1, 1)}; };
    load(first);
    edit(5);
    load(second);
    ASSERT_EQ(state_.Changes.Count(), 2U);
    EXPECT_EQ(state_.Changes.At(1).Name, "Load second.elv");
    EXPECT_FALSE(state_.Changes.Unsaved(Paper::Heights));
    edit(6);
    EXPECT_EQ(height(), 6);
    Choose("mnuUndo");
    EXPECT_EQ(height(), 0x0202);
    EXPECT_FALSE(state_.Changes.Unsaved(Paper::Heights));
    Choose("mnuUndo");
    EXPECT_EQ(height(), 5);
    EXPECT_EQ(state_.Terrain.Elevations.Path, first);
    EXPECT_TRUE(state_.Changes.Unsaved(Paper::Heights));
    Choose("mnuUndo");
    EXPECT_EQ(height(), 0x0101);
    EXPECT_FALSE(state_.Changes.Unsaved(Paper::Heights));
    for (int i = 0; i < 3; ++i)
        Choose("mnuRedo");
    EXPECT_EQ(height(), 6);
    EXPECT_EQ(state_.Terrain.Elevations.Path, second);
    EXPECT_TRUE(state_.Changes.Unsaved(Paper::Heights));
}

} // namespace
} // namespace vardenix
