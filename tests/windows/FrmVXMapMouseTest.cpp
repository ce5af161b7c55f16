#include "windows/MapWindowTest.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QSpinBox>

#include <set>

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
        FillPopup();
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
    // The same with the left button held.
    void Drag(int x, int y) {
        QMouseEvent event(QEvent::MouseMove, Middle(x, y),
                          PicShow().mapToGlobal(Middle(x, y)), Qt::NoButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&PicShow(), &event);
    }
    TerrainPost& Post(int x, int y) { return state_.Terrain.LxArr(y * 64 + x + 1); }
    int32_t Tile(int x, int y) { return Post(x, y).TileOffset; }
    QMenu& Popup() { return Find<QMenu>(window_, "mnupup1"); }
    // As app/ fills it: an empty menu does not come up.
    void FillPopup() { Popup().addAction("entry"); }
    QString Tip() { return PicShow().toolTip(); }
};

TEST_F(FrmVXMapMouseTest, ALeftPressPaintsTheChosenTile) {
    interaction_.SelectedTile = 5;
    Press(Qt::LeftButton, 2, 1);
    EXPECT_EQ(Tile(12, 21), 5);
    EXPECT_EQ(commands_.Story, "commands refresh L2");
}

TEST_F(FrmVXMapMouseTest, MovingWithoutTheButtonPaintsNothingMore) {
    interaction_.SelectedTile = 5;
    Press(Qt::LeftButton, 0, 0);
    MoveTo(1, 0);
    MoveTo(2, 0);
    EXPECT_EQ(Tile(10, 20), 5);
    EXPECT_EQ(Tile(11, 20), 0);
    EXPECT_EQ(Tile(12, 20), 0);
}

TEST_F(FrmVXMapMouseTest, AStrokePaintsOnlyWhatChangedAndIsOneStep) {
    interaction_.SelectedTile = 5;
    world_.View.ShowGrid = true;
    window_.RefreshPicArray();
    world_.View.GridColor = 0x0000FF; // so that what is painted anew can be told
    commands_.OnRefresh = {};
    QTest::mousePress(&PicShow(), Qt::LeftButton, {}, Middle(0, 0));
    commands_.Story.clear();
    Drag(2, 0);
    EXPECT_EQ(commands_.Story, "L2");
    EXPECT_EQ(window_.Picture2().Image().pixel(2 * 64, 224), qRgb(255, 0, 0));
    EXPECT_EQ(window_.Picture2().Image().pixel(2 * 64, 100), qRgb(0, 0, 0));
    QTest::mouseRelease(&PicShow(), Qt::LeftButton, {}, Middle(2, 0));
    for (const int x : {10, 11, 12})
        EXPECT_EQ(Tile(x, 20), 5);
    undo_.Undo(Layer::Posts);
    for (const int x : {10, 11, 12})
        EXPECT_EQ(Tile(x, 20), 0);
    Drag(3, 3); // a move whose press went to another window
    EXPECT_EQ(Tile(13, 23), 0);
}

TEST_F(FrmVXMapMouseTest, ARectangleIsFramedWhileItIsDrawn) {
    interaction_.SelectedTile = 5;
    interaction_.Tool = MapTool::Rectangle;
    world_.View.ExportColor = 0x0000FF;
    QTest::mousePress(&PicShow(), Qt::LeftButton, {}, Middle(0, 0));
    Drag(1, 1);
    const QImage drawn = PicShow().grab().toImage();
    EXPECT_EQ(drawn.pixel(1, 128), qRgb(255, 0, 0));
    EXPECT_EQ(Tile(10, 20), 0);
    QTest::mouseRelease(&PicShow(), Qt::LeftButton, {}, Middle(1, 1));
    EXPECT_EQ(Tile(10, 20), 5);
    EXPECT_EQ(Tile(11, 21), 5);
    EXPECT_EQ(Tile(12, 21), 0);
    EXPECT_NE(PicShow().grab().toImage().pixel(1, 128), qRgb(255, 0, 0));
}

TEST_F(FrmVXMapMouseTest, AMiddlePressScrollsToThePost) {
    Press(Qt::MiddleButton, 3, 2);
    EXPECT_EQ(commands_.Story, "scroll(13,22)");
}

TEST_F(FrmVXMapMouseTest, ARightPressShowsTheMenu) {
    Press(Qt::RightButton, 1, 1);
    ASSERT_TRUE(Popup().isVisible());
    EXPECT_EQ(interaction_.PopupSerial, 21 * 64 + 11 + 1);
    TerrainPost entered{};
    entered.Elevation = 321;
    map_.PostAnswer = entered;
    window_.mnuTileProperties();
    const int16_t elevation = Post(11, 21).Elevation;
    EXPECT_EQ(elevation, 321);
    Popup().close();
}

TEST_F(FrmVXMapMouseTest, SoDoesShiftF10) {
    QTest::keyClick(&window_, Qt::Key_F10);
    EXPECT_FALSE(Popup().isVisible());
    QTest::keyClick(&window_, Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_TRUE(Popup().isVisible());
    EXPECT_GT(interaction_.PopupSerial, 0); // of the view's middle
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

TEST_F(FrmVXMapMouseTest, EveryToolHasAPointer) {
    interaction_.SelectedTile = 5;
    std::set<qint64> pointers;
    for (const MapTool tool :
         {MapTool::Rectangle, MapTool::Fill, MapTool::Pick, MapTool::Brush}) {
        window_.ChooseTool(tool);
        EXPECT_EQ(interaction_.Tool, tool);
        pointers.insert(PicShow().cursor().pixmap().cacheKey());
    }
    EXPECT_EQ(pointers.size(), 4U);
}

TEST_F(FrmVXMapMouseTest, BracketsMakeTheBrushWiderAndSmaller) {
    auto& size = Find<QSpinBox>(window_, "spnBrushSize");
    QTest::keyClick(&window_, Qt::Key_BracketLeft);
    EXPECT_EQ(interaction_.BrushSize, 1);
    for (int i = 0; i < 9; ++i)
        QTest::keyClick(&window_, Qt::Key_BracketRight);
    EXPECT_EQ(interaction_.BrushSize, 9);
    EXPECT_EQ(size.value(), 9);
    QTest::keyClick(&window_, Qt::Key_BracketLeft);
    EXPECT_EQ(size.value(), 8);
    size.setValue(3);
    EXPECT_EQ(interaction_.BrushSize, 3);
    EXPECT_EQ(Find<QLabel>(window_, "lblTool").text(), "Brush 3: no tile chosen");
}

TEST_F(FrmVXMapMouseTest, HeightsHaveTheirBoxInL0ModeOnly) {
    auto& what = Find<QComboBox>(window_, "ComHeights");
    auto& feet = Find<QSpinBox>(window_, "spnFeet");
    EXPECT_FALSE(what.isVisible());
    world_.View.L0Mode = true;
    window_.RefreshPicArray();
    EXPECT_TRUE(what.isVisible());
    EXPECT_FALSE(feet.isVisible()); // tiles are painted still
    what.setCurrentIndex(2);
    EXPECT_EQ(interaction_.Heights, HeightTool::Raise);
    EXPECT_TRUE(feet.isVisible());
    feet.setValue(-70);
    EXPECT_EQ(interaction_.Feet, -70);
    EXPECT_EQ(Find<QLabel>(window_, "lblTool").text(), "Brush 1: raise by -70 ft");
    what.setCurrentIndex(4);
    EXPECT_EQ(interaction_.Heights, HeightTool::Smooth);
    EXPECT_FALSE(feet.isVisible());
}

TEST_F(FrmVXMapMouseTest, APickIsHandedOn) {
    Post(12, 21).TileOffset = 5;
    QTest::mouseClick(&PicShow(), Qt::LeftButton, Qt::AltModifier, Middle(2, 1));
    EXPECT_EQ(commands_.Story, " pick 5");
}

TEST_F(FrmVXMapMouseTest, EscGivesUpARectangle) {
    interaction_.SelectedTile = 5;
    interaction_.Tool = MapTool::Rectangle;
    QTest::mousePress(&PicShow(), Qt::LeftButton, {}, Middle(0, 0));
    Drag(1, 1);
    QTest::keyClick(&window_, Qt::Key_Escape);
    QTest::mouseRelease(&PicShow(), Qt::LeftButton, {}, Middle(1, 1));
    EXPECT_EQ(Tile(10, 20), 0);
    EXPECT_FALSE(undo_.CanUndo(Layer::Posts));
}

TEST_F(FrmVXMapMouseTest, TheLineUnderTheMapTellsThePost) {
    Post(12, 21).TileOffset = 5;
    MoveTo(2, 1);
    EXPECT_EQ(Find<QLabel>(window_, "lblPost").text(),
              "X 12  Y 21   0 ft   Tile 5 HRIVER05   Palette 0");
    window_.ShowWord("saved at 14:05");
    EXPECT_EQ(Find<QLabel>(window_, "lblWord").text(), "saved at 14:05");
}

TEST_F(FrmVXMapMouseTest, ADragOfTheMiddleButtonMovesTheMap) {
    QTest::mousePress(&PicShow(), Qt::MiddleButton, {}, Middle(1, 1));
    EXPECT_EQ(commands_.Story, "");
    const auto drag = [this](QPoint to) {
        QMouseEvent event(QEvent::MouseMove, to, PicShow().mapToGlobal(to), Qt::NoButton,
                          Qt::MiddleButton, Qt::NoModifier);
        QApplication::sendEvent(&PicShow(), &event);
    };
    drag(Middle(1, 1) + QPoint(3, 3)); // a hand shakes
    EXPECT_EQ(world_.View.MapLeftX, 10);
    drag(Middle(2, 0));
    EXPECT_EQ(world_.View.MapLeftX, 9);
    EXPECT_EQ(world_.View.MapBottomY, 21);
    drag(Middle(1, 1)); // back again is no click
    EXPECT_EQ(world_.View.MapLeftX, 10);
    QTest::mouseRelease(&PicShow(), Qt::MiddleButton, {}, Middle(1, 1));
    EXPECT_EQ(commands_.Story.find("scroll"), std::string::npos);
}

TEST_F(FrmVXMapMouseTest, WithTheBlankHeldTheLeftButtonMovesTheMap) {
    interaction_.SelectedTile = 5;
    QTest::keyPress(&window_, Qt::Key_Space);
    EXPECT_EQ(PicShow().cursor().shape(), Qt::OpenHandCursor);
    QTest::mousePress(&PicShow(), Qt::LeftButton, {}, Middle(1, 1));
    Drag(3, 1);
    QTest::mouseRelease(&PicShow(), Qt::LeftButton, {}, Middle(3, 1));
    QTest::keyRelease(&window_, Qt::Key_Space);
    EXPECT_EQ(world_.View.MapLeftX, 8);
    EXPECT_EQ(Tile(11, 21), 0);
    EXPECT_EQ(PicShow().cursor().shape(), Qt::BitmapCursor);
    Press(Qt::LeftButton, 1, 1);
    EXPECT_EQ(Tile(9, 21), 5);
}

TEST_F(FrmVXMapMouseTest, CtrlAndWheelZoomWhereThePointerIs) {
    map_.OnZoom = [this](int16_t zoom) { world_.View.ZoomPosts = zoom; };
    QWheelEvent away(Middle(2, 1), PicShow().mapToGlobal(Middle(2, 1)), {}, {0, -120},
                     Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
    // The pointer stands nowhere on this screen: the middle of the picture.
    QApplication::sendEvent(&PicShow(), &away);
    EXPECT_EQ(world_.View.ZoomPosts, 2);
    EXPECT_EQ(world_.View.MapLeftX, 8);
    EXPECT_EQ(world_.View.MapBottomY, 18);
    QTest::keyClick(&window_, Qt::Key_Plus);
    EXPECT_EQ(world_.View.ZoomPosts, 1);
    EXPECT_EQ(world_.View.MapLeftX, 10);
    QTest::keyClick(&window_, Qt::Key_Plus);
    EXPECT_EQ(world_.View.ZoomPosts, 1);
    QTest::keyClick(&window_, Qt::Key_Minus);
    EXPECT_EQ(world_.View.ZoomPosts, 2);
}

} // namespace
} // namespace vardenix
