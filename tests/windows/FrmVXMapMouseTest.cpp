#include "windows/MapWindowTest.h"

#include <QLabel>
#include <QMenu>
#include <QMouseEvent>

namespace vardenix {
namespace {

using tests::Find;

// The view begins at post (10, 20); the middle of its post (x, y) is (x * 64 + 32, 256 -
// y
// * 64 - 32).
class FrmVXMapMouseTest : public tests::MapWindowTest {
protected:
    FrmVXMapMouseTest() : MapWindowTest(1) {
        state_.Catalogue.Lookup.resize(16);
        state_.Catalogue.Lookup[5].Name = "HRIVER05";
        state_.Configuration.X = 10;
        state_.Configuration.Y = 20;
        Open();
    }

    static QPoint Middle(int x, int y) { return {x * 64 + 32, 256 - y * 64 - 32}; }
    void Press(Qt::MouseButton button, int x, int y) {
        QTest::mousePress(&PicShow(), button, {}, Middle(x, y));
        QTest::mouseRelease(&PicShow(), button, {}, Middle(x, y));
    }
    // By an event of our own: the platform says nothing when the pointer stands there.
    void MoveTo(int x, int y) {
        QMouseEvent event(QEvent::MouseMove, Middle(x, y),
                          PicShow().mapToGlobal(Middle(x, y)), Qt::NoButton, Qt::NoButton,
                          Qt::NoModifier);
        QApplication::sendEvent(&PicShow(), &event);
    }
    TerrainPost& Post(int x, int y) { return state_.Terrain.LxArr(y * 64 + x + 1); }
    int32_t Tile(int x, int y) { return Post(x, y).TileOffset; }
    QMenu& Popup() { return Find<QMenu>(window_, "mnupup1"); }
    QAction& Entry(const char* name) { return Find<QAction>(window_, name); }
    QString Tip() { return PicShow().toolTip(); }
};

TEST_F(FrmVXMapMouseTest, ALeftPressPaintsTheChosenTile) {
    interaction_.SelectedTile = 5;
    Press(Qt::LeftButton, 2, 1);
    EXPECT_EQ(Tile(12, 21), 5);
    EXPECT_EQ(commands_.Story, "commands refresh L2");
}

TEST_F(FrmVXMapMouseTest, DraggingPaintsNothingMore) {
    interaction_.SelectedTile = 5;
    QTest::mousePress(&PicShow(), Qt::LeftButton, {}, Middle(0, 0));
    MoveTo(1, 0);
    MoveTo(2, 0);
    QTest::mouseRelease(&PicShow(), Qt::LeftButton, {}, Middle(2, 0));
    EXPECT_EQ(Tile(10, 20), 5);
    EXPECT_EQ(Tile(11, 20), 0);
    EXPECT_EQ(Tile(12, 20), 0);
}

TEST_F(FrmVXMapMouseTest, AMiddlePressScrollsToThePost) {
    Press(Qt::MiddleButton, 3, 2);
    EXPECT_EQ(commands_.Story, "scroll(13,22)");
}

TEST_F(FrmVXMapMouseTest, ARightPressShowsTheMenu) {
    Press(Qt::RightButton, 1, 1);
    ASSERT_TRUE(Popup().isVisible());
    EXPECT_EQ(interaction_.PopupSerial, 21 * 64 + 11 + 1);
    EXPECT_TRUE(Entry("mnuTileProperties").isEnabled());
    // The editors are not there yet.
    EXPECT_FALSE(Entry("mnuLocInBIN").isEnabled());
    EXPECT_FALSE(Entry("mnuLocColMAP").isEnabled());
    TerrainPost entered{};
    entered.Elevation = 321;
    map_.PostAnswer = entered;
    Entry("mnuTileProperties").trigger();
    const int16_t elevation = Post(11, 21).Elevation;
    EXPECT_EQ(elevation, 321);
    Popup().close();
}

TEST_F(FrmVXMapMouseTest, WithTheEditorsTheMenuLeadsToThem) {
    map_.Locates = true;
    Post(11, 21).TileOffset = 5;
    Post(11, 21).Palette = 99;
    Press(Qt::RightButton, 1, 1);
    Entry("mnuLocInBIN").trigger();
    Entry("mnuLocColMAP").trigger();
    EXPECT_EQ(commands_.Story, " bin 5 map 99");
    Popup().close();
}

TEST_F(FrmVXMapMouseTest, BeyondTheEdgeTheMenuOffersNothing) {
    map_.Locates = true;
    world_.View.MapLeftX = 62;
    Press(Qt::RightButton, 3, 0);
    for (const QAction* entry : Popup().actions())
        EXPECT_FALSE(entry->isEnabled());
    Popup().close();
}

TEST_F(FrmVXMapMouseTest, SoDoesShiftF10) {
    QTest::keyClick(&window_, Qt::Key_F10);
    EXPECT_FALSE(Popup().isVisible());
    QTest::keyClick(&window_, Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_TRUE(Popup().isVisible());
    EXPECT_TRUE(Entry("mnuTileProperties").isEnabled()); // of the view's middle
    Popup().hide();
}

TEST_F(FrmVXMapMouseTest, TheMenuKeyShowsTheMenuToo) {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {5, 5},
                            window_.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&window_, &event);
    EXPECT_TRUE(Popup().isVisible());
    Popup().close();
}

TEST_F(FrmVXMapMouseTest, InL0ModeARightPressEditsAHeight) {
    state_.Terrain.Elevations.EMapWidth = 256;
    state_.Terrain.Elevations.L0ElvArr = HeightArray(256 * 256);
    world_.View.L0Mode = true;
    map_.ElevationAnswer = int16_t{77};
    Press(Qt::RightButton, 0, 0); // pixel (32, 224): third quarter, third row
    EXPECT_EQ(state_.Terrain.Elevations.At(10 * 4 + 3, 20 * 4 + 3), 77);
    EXPECT_FALSE(Popup().isVisible());
    EXPECT_EQ(commands_.Story, " height 0? commands refresh L0");
}

TEST_F(FrmVXMapMouseTest, WhileBusyNothingIsPressed) {
    world_.View.ScrollBusy = true;
    interaction_.SelectedTile = 5;
    for (const auto button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton})
        Press(button, 1, 1);
    EXPECT_EQ(commands_.Story, "");
    EXPECT_FALSE(Popup().isVisible());
}

TEST_F(FrmVXMapMouseTest, ThePointerTellsWhatAClickWillDo) {
    MoveTo(1, 1);
    EXPECT_EQ(PicShow().cursor().shape(), Qt::ArrowCursor);
    interaction_.SelectedTile = 0;
    MoveTo(1, 2);
    EXPECT_EQ(PicShow().cursor().shape(), Qt::BitmapCursor);
    EXPECT_FALSE(PicShow().cursor().pixmap().isNull());
    interaction_.WaitImportCorner = true;
    MoveTo(2, 2);
    EXPECT_EQ(PicShow().cursor().shape(), Qt::CrossCursor);
    interaction_ = {};
    MoveTo(2, 1);
    EXPECT_EQ(PicShow().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(FrmVXMapMouseTest, MovingReadsThePostUnderTheCursor) {
    Post(12, 21).TileOffset = 5;
    Post(12, 21).Palette = 7;
    MoveTo(2, 1);
    EXPECT_EQ(Tip().toStdString(), "X:12    Y:21\r\nSegment:0,2\r\nTile #:5\r\nHRIVER05\r"
                                   "\nPalette #:7");
    world_.View.MapLeftX = 62;
    MoveTo(3, 1);
    EXPECT_EQ(Tip(), "Outside Terrain Area");
}

TEST_F(FrmVXMapMouseTest, TheReadOutIsATipInItsOwnColors) {
    Post(12, 21).TileOffset = 5;
    MoveTo(2, 1);
    QHelpEvent event(QEvent::ToolTip, Middle(2, 1), PicShow().mapToGlobal(Middle(2, 1)));
    QApplication::sendEvent(&PicShow(), &event);
    auto shown = [] {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == "ToolTip" && window->isVisible())
                return static_cast<QLabel*>(window);
        return static_cast<QLabel*>(nullptr);
    };
    ASSERT_NE(shown(), nullptr);
    EXPECT_TRUE(shown()->text().contains("HRIVER05"));
    EXPECT_EQ(shown()->palette().color(QPalette::Window), QColor(0xF0, 0xF0, 0xEE));
    // It goes along, and tells of what it comes to.
    const QPoint before = shown()->pos();
    MoveTo(3, 1);
    EXPECT_TRUE(shown()->text().contains("X:13"));
    EXPECT_EQ(shown()->pos() - before, QPoint(64, 0));
    QTest::mousePress(&PicShow(), Qt::LeftButton, {}, Middle(3, 1));
    EXPECT_EQ(shown(), nullptr);
}

} // namespace
} // namespace vardenix
