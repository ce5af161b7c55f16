#include "bineditor/windows/FrmBINTileDet.h"

#include "bineditor/windows/FloatBox.h"
#include "bineditor/windows/FrmBINAreasEdit.h"
#include "bineditor/windows/FrmBINOPtions.h"
#include "bineditor/windows/FrmBINPathEdit.h"
#include "bineditor/windows/FrmBINWorking.h"
#include "bineditor/windows/TilePicture.h"
#include "pictures/ImageLayer.h"
#include "platform/windows/PinkBox.h"
#include "support/ScriptedDialogs.h"
#include "windows/WindowTest.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QTreeWidget>

namespace vardenix {
namespace {

using tests::Find;
constexpr const char* Discard =
    "You have made some changes. Are you sure you want to discard them?\n"
    "Press Yes to discard them.\nPress No to return to the form.";

class FrmBINTileDetTest : public testing::Test {
protected:
    FrmBINTileDetTest() {
        catalogue_.Bin.NumSets = 1;
        TileSet set;
        set.TileCount = 1;
        TileRecord tile;
        tile.TileName = "HSEA.PCX            ";
        tile.NumAreas = 1;
        tile.Areas.push_back({3, 1640.42F, 820.21F, 2460.63F});
        set.Tiles.push_back(tile);
        catalogue_.Bin.Sets.push_back(set);
        catalogue_.Lookup.resize(16);
        catalogue_.Lookup[0].Name = "HSEA.PCX";
        Open();
    }
    void Open() {
        window_ = std::make_unique<FrmBINTileDet>(
            FrmBINTileDet::Parts{catalogue_, settings_, dialogs_}, 0,
            AllocateEx(256, 256, 0x404040));
        window_->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
    }
    TileRecord& Tile() { return catalogue_.Bin.Sets[1].Tiles[1]; }
    TilePicture& Picture() { return Find<TilePicture>(*window_, "TilePic"); }
    QTreeWidget& List(const char* name) { return Find<QTreeWidget>(*window_, name); }
    void Click(const char* name) { Find<QAbstractButton>(*window_, name).click(); }
    std::string Label(const char* name) {
        return Find<QLabel>(*window_, name).text().toStdString();
    }
    void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers keys) {
        QTest::mousePress(&Picture(), Qt::LeftButton, keys, from);
        QMouseEvent move(QEvent::MouseMove, QPointF(to),
                         Picture().mapToGlobal(QPointF(to)), Qt::NoButton, Qt::LeftButton,
                         keys);
        QApplication::sendEvent(&Picture(), &move);
        QTest::mouseRelease(&Picture(), Qt::LeftButton, keys, to);
    }

    Catalogue catalogue_;
    Configuration settings_;
    tests::ScriptedDialogs dialogs_;
    std::unique_ptr<FrmBINTileDet> window_;
};

TEST_F(FrmBINTileDetTest, ShowsTheTileItsAreasAndTheZoom) {
    EXPECT_EQ(window_->windowTitle(), "Tile #: 0 - Size: 256x256 - HSEA.PCX");
    EXPECT_EQ(Label("lblZoom"), "1.000");
    EXPECT_EQ(List("ListAreas").topLevelItem(0)->text(0), "Swamp");
    EXPECT_EQ(List("ListAreas").topLevelItem(0)->text(3), "2460.62988");
    EXPECT_EQ(List("ListPaths").topLevelItemCount(), 0);
}

TEST_F(FrmBINTileDetTest, HasItsCaptionsAndTips) {
    const auto headings = [&](const char* list) {
        std::string text;
        for (int column = 0; column < List(list).columnCount(); ++column)
            text += List(list).headerItem()->text(column).toStdString() + "|";
        return text;
    };
    EXPECT_EQ(headings("ListAreas"), "Type|Radius|CenterX|CenterY|");
    EXPECT_EQ(headings("ListPaths"), "Type|Width|StartX|StartY|EndX|EndY|");
    for (const auto& [name, caption, tip] :
         {std::tuple{"cmdAddArea", "Add Area", "Or press \"Control\" on the picture"},
          {"cmdAddPath", "Add Path", "Or press \"Shift\" on the picture"},
          {"cmdAreaEdit", "Edit", "Or DoubleClick an item in the above list"},
          {"cmdPathEdit", "Edit", "Or DoubleClick an item in the above list"},
          {"cmdAreaDelete", "Delete", "No shortcut for this one ;P)"},
          {"cmdPathDelete", "Delete", "No shortcut for this one ;P)"},
          {"chkShowAreas", "Show Areas", ""},
          {"chkShowPaths", "Show Paths", ""},
          {"cmdZoomOut", "-", "Or press either \"-\" keys"},
          {"cmdCancel", "Cancel", ""}}) {
        const auto& button = Find<QAbstractButton>(*window_, name);
        EXPECT_EQ(button.text().remove('&'), caption) << name;
        EXPECT_EQ(button.toolTip(), tip) << name;
    }
    // The words stand beside these.
    for (const auto& [name, caption] : {std::pair{"cmdAreaCol", "Areas Color"},
                                        {"CmdAreaColSel", "Selected Areas Color"},
                                        {"cmdPathCol", "Paths Color"},
                                        {"CmdPathColSel", "Selected Paths Color"}}) {
        EXPECT_EQ(Find<QWidget>(*window_, name).accessibleName(), caption);
        bool found = false;
        for (const QLabel* label : window_->findChildren<QLabel*>())
            found = found || label->text() == caption;
        EXPECT_TRUE(found) << caption;
    }
}

TEST_F(FrmBINTileDetTest, TheCursorShowsWhatTheNextDragMakes) {
    const auto cursor = [&](Qt::KeyboardModifiers keys) {
        QMouseEvent move(QEvent::MouseMove, QPointF(9, 9), QPointF(), Qt::NoButton,
                         Qt::NoButton, keys);
        QApplication::sendEvent(&Picture(), &move);
        return Picture().cursor().pixmap().toImage();
    };
    const QImage plain = cursor({});
    const QImage area = cursor(Qt::ControlModifier);
    const QImage path = cursor(Qt::ShiftModifier);
    EXPECT_NE(plain, area);
    EXPECT_NE(plain, path);
    EXPECT_NE(area, path);
    Click("cmdAddArea");
    EXPECT_EQ(cursor({}), area);
    EXPECT_EQ(cursor(Qt::ShiftModifier), path);
    Click("cmdAddPath");
    EXPECT_EQ(cursor({}), path);
}

TEST_F(FrmBINTileDetTest, TheRubberBandIsSeenWhileAnAreaIsDragged) {
    const QImage before = Picture().grab().toImage();
    QTest::mousePress(&Picture(), Qt::LeftButton, Qt::ControlModifier, {100, 100});
    QMouseEvent move(QEvent::MouseMove, QPointF(100, 60), QPointF(), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Picture(), &move);
    const QImage band = Picture().grab().toImage();
    const auto changed = [&](const QRect& part) {
        return before.copy(part) != band.copy(part);
    };
    EXPECT_TRUE(changed({98, 135, 5, 10}));  // the circle's lowest point
    EXPECT_TRUE(changed({136, 98, 10, 5}));  // and its right one
    EXPECT_TRUE(changed({98, 70, 5, 20}));   // its radius
    EXPECT_FALSE(changed({98, 110, 5, 20})); // no more of the line
    QTest::mouseRelease(&Picture(), Qt::LeftButton, {}, {100, 60});
    EXPECT_EQ(List("ListAreas").topLevelItemCount(), 2);
}

TEST_F(FrmBINTileDetTest, TheOtherMouseButtonsDrawNothing) {
    QTest::mouseClick(&Picture(), Qt::RightButton, Qt::ControlModifier, {9, 9});
    QTest::mouseClick(&Picture(), Qt::MiddleButton, Qt::ShiftModifier, {9, 9});
    EXPECT_EQ(List("ListAreas").topLevelItemCount(), 1);
    EXPECT_EQ(List("ListPaths").topLevelItemCount(), 0);
}

TEST_F(FrmBINTileDetTest, UntickedAreasAndPathsAreNotDrawn) {
    Tile().NumPaths = 1;
    Tile().Paths.push_back({2, 200, 0, 0, 3000, 3000});
    Open();
    const QImage all = Picture().grab().toImage();
    Click("chkShowAreas");
    const QImage paths = Picture().grab().toImage();
    EXPECT_NE(paths, all);
    Click("chkShowPaths");
    const QImage none = Picture().grab().toImage();
    EXPECT_NE(none, paths);
    EXPECT_EQ(none.pixelColor(100, 150), QColor(0x40, 0x40, 0x40));
}

TEST_F(FrmBINTileDetTest, WithoutAPictureTheGroundIsGrey) {
    window_ = std::make_unique<FrmBINTileDet>(
        FrmBINTileDet::Parts{catalogue_, settings_, dialogs_}, 0, Bitmap());
    Click("chkShowAreas");
    EXPECT_EQ(Picture().grab().toImage().pixelColor(9, 9), QColor(Qt::gray));
}

TEST_F(FrmBINTileDetTest, AreasAreDrawnWhereTheyLieAtEveryZoom) {
    settings_.TileAreasSelectedColor = 0x0000FF; // red
    Tile().Areas[1].Radius = 410.105F;           // an eighth of the tile
    Open();
    for (const double zoom : {1.0, 2.0, 0.5}) {
        while (Picture().width() != 256 * zoom)
            Click(Picture().width() < 256 * zoom ? "cmdZoomin" : "cmdZoomOut");
        const QImage seen = Picture().grab().toImage();
        // X 820 up, Y 2460 to the right: three quarters across, three quarters down; the
        // circle's lowest point an eighth below.
        const QPoint centre(static_cast<int>(192 * zoom), static_cast<int>(192 * zoom));
        bool red = false;
        for (int y = -2; y <= 2; ++y)
            red = red || seen.pixelColor(centre.x(),
                                         centre.y() + static_cast<int>(32 * zoom) + y) ==
                             QColor(Qt::red);
        EXPECT_TRUE(red) << zoom;
        EXPECT_EQ(seen.pixelColor(centre), QColor(0x40, 0x40, 0x40)) << zoom;
    }
}

TEST_F(FrmBINTileDetTest, KeysZoomBetweenAnEighthAndEight) {
    for (int i = 0; i < 6; ++i)
        QTest::keyClick(window_.get(), Qt::Key_Plus);
    EXPECT_EQ(Label("lblZoom"), "8.000");
    for (int i = 0; i < 9; ++i)
        QTest::keyClick(window_.get(), Qt::Key_Minus);
    EXPECT_EQ(Label("lblZoom"), "0.125");
    QTest::keyClick(window_.get(), Qt::Key_Equal);
    EXPECT_EQ(Label("lblZoom"), "0.250");
}

TEST_F(FrmBINTileDetTest, TheMiddleOfWhatIsSeenStaysThere) {
    window_->resize(700, 500);
    for (int i = 0; i < 3; ++i)
        Click("cmdZoomin");
    const auto& ground = Find<QScrollArea>(*window_, "ground");
    const auto middle = [&] {
        const QPointF at =
            Picture().mapFrom(ground.viewport(), ground.viewport()->rect().center());
        return at / Picture().width();
    };
    ground.horizontalScrollBar()->setValue(1100);
    ground.verticalScrollBar()->setValue(300);
    const QPointF before = middle();
    Click("cmdZoomOut");
    EXPECT_NEAR(middle().x(), before.x(), 0.003);
    EXPECT_NEAR(middle().y(), before.y(), 0.003);
    Click("cmdZoomin");
    EXPECT_NEAR(middle().x(), before.x(), 0.003);
    EXPECT_NEAR(middle().y(), before.y(), 0.003);
}

TEST_F(FrmBINTileDetTest, AControlDragMakesAnArea) {
    Drag({64, 192}, {64, 128}, Qt::ControlModifier);
    ASSERT_EQ(List("ListAreas").topLevelItemCount(), 2);
    EXPECT_EQ(List("ListAreas").topLevelItem(1)->text(0), "Water");
    EXPECT_EQ(List("ListAreas").topLevelItem(1)->text(1), "820.21002");
    EXPECT_EQ(List("ListAreas").topLevelItem(1)->text(2), "820.21002");
    EXPECT_EQ(List("ListAreas").topLevelItem(1)->text(3), "820.21002");
    EXPECT_TRUE(window_->windowTitle().startsWith("*"));
    EXPECT_EQ(Tile().NumAreas, 1); // not yet
    Click("cmdOK");
    EXPECT_EQ(Tile().NumAreas, 2);
    EXPECT_TRUE(window_->Changed());
}

TEST_F(FrmBINTileDetTest, AButtonIsGoodForOneDragAndAClickMakesAPathOfNoLength) {
    Find<QComboBox>(*window_, "ComboPathType").setCurrentIndex(3);
    Click("cmdAddArea");
    Click("cmdAddPath");
    Drag({0, 255}, {0, 255}, {});
    Drag({9, 9}, {99, 99}, {});
    EXPECT_EQ(List("ListAreas").topLevelItemCount(), 1);
    ASSERT_EQ(List("ListPaths").topLevelItemCount(), 1);
    EXPECT_EQ(List("ListPaths").topLevelItem(0)->text(0), "Bridge");
    EXPECT_EQ(List("ListPaths").topLevelItem(0)->text(1), "50.00000");
    EXPECT_EQ(List("ListPaths").topLevelItem(0)->text(2), "12.81578");
}

TEST_F(FrmBINTileDetTest, TheReadOutRunsUpThePicture) {
    QMouseEvent move(QEvent::MouseMove, QPointF(128, 64), QPointF(), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&Picture(), &move);
    EXPECT_EQ(Label("lblX"), "X: 2460.63");
    EXPECT_EQ(Label("lblY"), "Y: 1640.42");
}

TEST_F(FrmBINTileDetTest, ADeleteIsConfirmed) {
    const char* question = "Are you sure you want to delete the selected Area?";
    dialogs_.ExpectBox("Please Confirm", question, BoxAnswer::No);
    Click("cmdAreaDelete");
    EXPECT_EQ(List("ListAreas").topLevelItemCount(), 1);
    dialogs_.ExpectBox("Please Confirm", question, BoxAnswer::Yes);
    Click("cmdAreaDelete");
    EXPECT_EQ(List("ListAreas").topLevelItemCount(), 0);
    // Nothing is left to edit or to delete.
    Click("cmdAreaDelete");
    Click("cmdAreaEdit");
    Click("cmdPathDelete");
}

TEST_F(FrmBINTileDetTest, LeavingWithChangesIsAsked) {
    window_->close();
    EXPECT_FALSE(window_->isVisible());
    Open();
    Drag({9, 9}, {9, 9}, Qt::ShiftModifier);
    dialogs_.ExpectBox("Please Confirm", Discard, BoxAnswer::No);
    window_->close();
    EXPECT_TRUE(window_->isVisible());
    dialogs_.ExpectBox("Please Confirm", Discard, BoxAnswer::Yes);
    Click("cmdCancel");
    EXPECT_FALSE(window_->isVisible());
    EXPECT_EQ(Tile().NumPaths, 0);
}

TEST_F(FrmBINTileDetTest, AColorIsStoredAndACancelLeavesIt) {
    dialogs_.ExpectColor(settings_.TilePathsColor, 0x123456);
    Click("cmdPathCol");
    EXPECT_EQ(settings_.TilePathsColor, 0x123456U);
    dialogs_.ExpectCancel();
    Click("CmdPathColSel");
    EXPECT_EQ(settings_.TilePathsSelectedColor, Configuration().TilePathsSelectedColor);
}

TEST_F(FrmBINTileDetTest, TheDialogsNumbersComeIntoTheRow) {
    tests::WhenModal<FrmBINAreasEdit>([](FrmBINAreasEdit& dialog) {
        EXPECT_EQ(Find<FloatBox>(dialog, "txtCenterX").text(), "820.21002");
        Find<FloatBox>(dialog, "txtCenterX").setText("10.5");
        Find<QComboBox>(dialog, "ComType").setCurrentIndex(1);
        Find<QAbstractButton>(dialog, "cmdOK").click();
    });
    Click("cmdAreaEdit");
    EXPECT_EQ(List("ListAreas").topLevelItem(0)->text(0), "Thick Forest");
    EXPECT_EQ(List("ListAreas").topLevelItem(0)->text(2), "10.50000");
    EXPECT_TRUE(window_->windowTitle().startsWith("*"));
}

TEST(FrmBINPathEdit, ABadBoxIsPinkAndThoseBeforeItAreWritten) {
    TilePath path{2, 1, 1, 1, 1, 1};
    FrmBINPathEdit dialog(path);
    dialog.show();
    Find<FloatBox>(dialog, "txtStartX").setText("7");
    Find<FloatBox>(dialog, "txtStartY").clear();
    Find<FloatBox>(dialog, "txtEndX").setText("9");
    Find<QAbstractButton>(dialog, "cmdOK").click();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(IsPink(Find<FloatBox>(dialog, "txtStartX")));
    EXPECT_TRUE(IsPink(Find<FloatBox>(dialog, "txtStartY")));
    EXPECT_EQ(Find<FloatBox>(dialog, "txtStartY").palette().color(QPalette::Base),
              QColor(0xFF, 0xC0, 0xC0));
    EXPECT_EQ(path.StartX, 7);
    EXPECT_EQ(path.EndX, 1);
    EXPECT_TRUE(dialog.Changed());
    Find<FloatBox>(dialog, "txtStartY").setText("8");
    Find<QAbstractButton>(dialog, "cmdOK").click();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(path.StartY, 8);
    EXPECT_EQ(path.EndX, 9);
    EXPECT_EQ(path.Type, 2);
}

TEST(FrmBINPathEdit, BoxesTakeDigitsDotAndMinusAlone) {
    TilePath path;
    FrmBINPathEdit dialog(path);
    auto& box = Find<FloatBox>(dialog, "txtWidth");
    box.clear();
    QTest::keyClicks(&box, "-1a2,.e5");
    EXPECT_EQ(box.text(), "-12.5");
}

TEST(FrmBINAreasEdit, AnUnknownTypeStaysUnlessAnotherIsChosen) {
    TileArea area{3, 1, 2.123456789F, 3};
    FrmBINAreasEdit dialog(area);
    Find<QAbstractButton>(dialog, "cmdOK").click();
    EXPECT_EQ(area.Type, 3);
    EXPECT_EQ(area.CenterX, 2.123456789F); // to the last bit
}

TEST(FrmBINOPtions, OkStoresTheFiveValuesAndABadSizeNone) {
    Configuration settings;
    tests::ScriptedDialogs dialogs;
    FrmBINOPtions dialog(settings, dialogs);
    EXPECT_EQ(Find<QLineEdit>(dialog, "txtM").text(), "64");
    EXPECT_EQ(Find<QLineEdit>(dialog, "txtL").text(), "32");
    EXPECT_EQ(Find<QLineEdit>(dialog, "txtT").text(), "16");
    EXPECT_EQ(dialog.windowTitle(), "BIN Editor Options");
    EXPECT_EQ(Find<QGroupBox>(dialog, "FraSetOptions").title(), "Set Options");
    EXPECT_EQ(Find<QGroupBox>(dialog, "FraPictureOptions").title(), "Picture Options");
    const auto caption = [&](const char* name) {
        return Find<QAbstractButton>(dialog, name).text().remove('&');
    };
    EXPECT_EQ(caption("chkAutomaticallyCorrect"),
              "Automatically correct L2 Tile numbers");
    EXPECT_EQ(caption("OptAfterSelected_0"), "After Selected Set");
    EXPECT_EQ(caption("OptAfterSelected_1"), "Before Selected Set");
    const auto label = [&](const char* name) {
        return Find<QLabel>(dialog, name).text().remove('&').toStdString();
    };
    EXPECT_EQ(label("Label1"), "Default Insert Set:");
    EXPECT_EQ(label("lblMTile") + label("lblLTile") + label("lblTTile"),
              "M Tile Size (Default 64px)L Tile Size (Default 32px)T Tile Size (Default "
              "16px)");
    Find<QAbstractButton>(dialog, "chkAutomaticallyCorrect").setChecked(false);
    Find<QAbstractButton>(dialog, "OptAfterSelected_0").setChecked(true);
    Find<QLineEdit>(dialog, "txtM").setText("128");
    Find<QLineEdit>(dialog, "txtT").setText("32768");
    dialogs.ExpectBox("Error...",
                      "ERROR number 6\nOverflow\nT Tile Size: 32768 does not fit; the "
                      "largest is 32767",
                      BoxAnswer::Ok);
    Find<QAbstractButton>(dialog, "cmdOK").click();
    EXPECT_TRUE(IsPink(Find<QLineEdit>(dialog, "txtT")));
    Find<QLineEdit>(dialog, "txtT").clear();
    dialogs.ExpectBox("Error...",
                      "ERROR number 13\nType mismatch\nT Tile Size is empty: type a size",
                      BoxAnswer::Ok);
    Find<QAbstractButton>(dialog, "cmdOK").click();
    EXPECT_FALSE(IsPink(Find<QLineEdit>(dialog, "txtM")));
    EXPECT_TRUE(settings.AutoL2);
    EXPECT_EQ(settings.MTile, 64);
    Find<QLineEdit>(dialog, "txtT").setText("8");
    Find<QAbstractButton>(dialog, "cmdOK").click();
    EXPECT_FALSE(settings.AutoL2);
    EXPECT_TRUE(settings.DefInsertAfter);
    EXPECT_EQ(settings.MTile, 128);
    EXPECT_EQ(settings.LTile, 32);
    EXPECT_EQ(settings.TTile, 8);
}

TEST(FrmBINWorking, DotsComeUntilSevenAndBeginAnew) {
    FrmBINWorking window;
    auto& label = Find<QLabel>(window, "lblWorking");
    EXPECT_EQ(label.text(), "Working");
    for (int i = 0; i < 7; ++i)
        window.Timer1_Timer();
    EXPECT_EQ(label.text(), "Working.......");
    window.Timer1_Timer();
    EXPECT_EQ(label.text(), "Working");
}

} // namespace
} // namespace vardenix
