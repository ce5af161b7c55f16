#include "workspace/windows/FrmVXTilePal.h"

#include "pictures/Dxt1Writer.h"
#include "support/RecordingCommands.h"
#include "support/TestFolder.h"
#include "windows/WindowTest.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QStatusBar>
#include <QTest>
#include <QWheelEvent>

#include <vector>

namespace vardenix {
namespace {

using tests::Find;

constexpr int Side = 64; // of a button, 960 twips

// A picture of one colour; the numbers are such that the format keeps them.
std::string OneColor(int red, int green, int blue) {
    std::vector<uint8_t> rgba;
    for (int i = 0; i < 16 * 16; ++i)
        for (const int part : {red, green, blue, 255})
            rgba.push_back(static_cast<uint8_t>(part));
    const std::vector<uint8_t> file = Dxt1File(rgba, 16, 16);
    return {file.begin(), file.end()};
}

class FrmVXTilePalTest : public testing::Test {
protected:
    FrmVXTilePalTest() {
        state_.Catalogue.DDSFolder = folder_.File("tiles") + "/";
        state_.Folders.ShippedPath = folder_.File("program") + "/";
    }

    // Numbers from `from` on get this class.
    void AddTiles(int from, int count, int16_t terrain) {
        TileLookup& lookup = state_.Catalogue.Lookup;
        lookup.resize(std::max(lookup.size(), static_cast<size_t>(from + count)));
        for (int tile = from; tile < from + count; ++tile) {
            TileInfo& entry = lookup[static_cast<size_t>(tile)];
            entry.Name = "H" + std::to_string(tile) + ".PCX";
            entry.DayFile = "H" + std::to_string(tile) + ".dds";
            entry.Terrain = terrain;
            entry.HasImage = 1;
        }
    }
    void Open(int width = 400, int height = 300) {
        window_.resize(width, height);
        window_.Refresh_Pal(1);
        window_.show();
        window_.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    }

    // All white.
    void MakeNoTile() {
        QImage picture(8, 8, QImage::Format_RGB32);
        picture.fill(Qt::white);
        const std::string path = folder_.Write("program/NoTile.jpg", "");
        ASSERT_TRUE(picture.save(QString::fromStdString(path)));
    }

    QAbstractButton* Op2(int index) {
        return window_.findChild<QAbstractButton*>("Op2_" + QString::number(index));
    }
    void Click(int index) { QTest::mouseClick(Op2(index), Qt::LeftButton); }
    qsizetype ButtonCount() { return Frame1().findChildren<QAbstractButton*>().size(); }
    QWidget& Frame1() { return Find<QWidget>(window_, "Frame1"); }
    QWidget& Frame2() { return Find<QWidget>(window_, "Frame2"); }
    int Scrolled() { return -Frame1().y(); }
    QScrollBar& VScroll() { return Find<QScrollBar>(window_, "VScroll"); }
    QComboBox& Combo1() { return Find<QComboBox>(window_, "Combo1"); }
    QString Status() { return Find<QStatusBar>(window_, "StatusBar1").currentMessage(); }
    // The middle of a button as it is painted.
    QColor ColorOf(int index) {
        return Op2(index)->grab().toImage().pixelColor(Side / 2, Side / 2);
    }
    void Wheel(QWidget& over, QPoint eighths) {
        QWheelEvent event({20, 20}, {20, 20}, {}, eighths, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        // Only what comes from the desktop goes up from control to window.
        QSpontaneKeyEvent::setSpontaneous(&event);
        QApplication::instance()->notify(&over, &event);
    }
    static void Key(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
    static QString FocusName() {
        const QWidget* focused = QApplication::focusWidget();
        return focused == nullptr ? QString() : focused->objectName();
    }

    const tests::TestFolder folder_;
    ProgramState state_;
    MapInteraction interaction_;
    TilePictures pictures_;
    tests::RecordingCommands commands_;
    FrmVXTilePal window_{state_, interaction_, pictures_, commands_};
};

TEST_F(FrmVXTilePalTest, ListsTheClasses) {
    QStringList texts;
    for (int i = 0; i < Combo1().count(); ++i)
        texts.append(Combo1().itemText(i));
    EXPECT_EQ(texts.join(","),
              "Water,Swamp,Plains,Bush,Thin Forest,Thick Forest,Rocky,Urban");
    EXPECT_EQ(Combo1().currentIndex(), 0);
    EXPECT_EQ(interaction_.SelectedTile, -1);
}

TEST_F(FrmVXTilePalTest, TheButtonOfATileHasItsNumberAndOne) {
    AddTiles(16, 3, 1);
    AddTiles(32, 1, 4);
    Open();
    EXPECT_EQ(ButtonCount(), 3);
    ASSERT_NE(Op2(17), nullptr);
    EXPECT_EQ(Op2(17)->toolTip(), "H16.PCX | Tile #:16");
    EXPECT_EQ(Op2(17)->accessibleName(), "H16.PCX | Tile #:16");
    EXPECT_NE(Op2(19), nullptr);
    EXPECT_EQ(Op2(20), nullptr);
    EXPECT_EQ(Op2(33), nullptr); // of another class
    EXPECT_EQ(Find<QLabel>(window_, "lblCount").text(), "3 tiles");
}

TEST_F(FrmVXTilePalTest, ButtonsStandInRowsAcrossTheFrame) {
    AddTiles(0, 30, 1);
    Open(500);
    const int columns = Frame1().width() / Side;
    EXPECT_NEAR(Frame1().width(), Frame2().contentsRect().width(), 2);
    ASSERT_GE(columns, 6);
    for (int tile = 0; tile < 30; ++tile)
        EXPECT_EQ(Op2(tile + 1)->geometry(),
                  QRect(tile % columns * Side, tile / columns * Side, Side, Side))
            << tile;
}

TEST_F(FrmVXTilePalTest, AHiddenWindowIsLaidOutInItsWidthToo) {
    AddTiles(0, 30, 1);
    window_.resize(700, 300);
    window_.Refresh_Pal(1);
    EXPECT_GT(Frame1().width(), 600);
    EXPECT_EQ(Op2(9)->y(), 0);
}

TEST_F(FrmVXTilePalTest, ChoosingAClassShowsIt) {
    AddTiles(0, 2, 1);
    AddTiles(16, 5, 5);
    Open();
    Combo1().setCurrentIndex(3);
    EXPECT_EQ(ButtonCount(), 5);
    EXPECT_NE(Op2(21), nullptr);
    Combo1().setCurrentIndex(1);
    EXPECT_EQ(ButtonCount(), 0);
}

TEST_F(FrmVXTilePalTest, TheSameClassChosenAgainIsSeenFromItsBeginning) {
    AddTiles(0, 400, 1);
    Open();
    auto& bar = Find<QAbstractSlider>(window_, "VScroll");
    bar.setValue(7);
    Combo1().showPopup();
    QTest::keyClick(Combo1().view(), Qt::Key_Return);
    EXPECT_EQ(Combo1().currentIndex(), 0);
    EXPECT_EQ(bar.value(), 0);
}

TEST_F(FrmVXTilePalTest, ItsTipsAreShownWhileTheMapHasTheKeyboard) {
    EXPECT_TRUE(window_.testAttribute(Qt::WA_AlwaysShowToolTips));
}

TEST_F(FrmVXTilePalTest, ComboFollowsTheClassThatIsAskedFor) {
    AddTiles(16, 5, 5);
    Open();
    window_.Refresh_Pal(5);
    EXPECT_EQ(Combo1().currentText(), "Bush");
    EXPECT_EQ(ButtonCount(), 5);
    window_.Refresh_Pal(2);
    EXPECT_EQ(Combo1().currentIndex(), -1);
    EXPECT_EQ(ButtonCount(), 0);
}

TEST_F(FrmVXTilePalTest, RefreshReadsTheCatalogueAnew) {
    AddTiles(0, 2, 1);
    Open();
    AddTiles(16, 2, 1);
    EXPECT_EQ(ButtonCount(), 2);
    QTest::mouseClick(&Find<QPushButton>(window_, "Command1"), Qt::LeftButton);
    EXPECT_EQ(ButtonCount(), 4);
}

TEST_F(FrmVXTilePalTest, ButtonsShowTheDayPictures) {
    AddTiles(0, 2, 1);
    folder_.Write("tiles/H0.dds", OneColor(255, 0, 0));
    folder_.Write("tiles/h1.DDS", OneColor(0, 0, 255));
    Open();
    EXPECT_EQ(ColorOf(1), QColor(255, 0, 0));
    EXPECT_EQ(ColorOf(2), QColor(0, 0, 255));
}

// The catalogue's bytes are Windows-1252, the disk's names UTF-8.
TEST_F(FrmVXTilePalTest, LettersBeyondAsciiFindTheirPicture) {
    AddTiles(0, 1, 1);
    state_.Catalogue.Lookup[0].DayFile = "HS\xD6.dds";
    folder_.Write("tiles/HS\xC3\x96.dds", OneColor(255, 0, 0));
    Open();
    EXPECT_EQ(ColorOf(1), QColor(255, 0, 0));
}

TEST_F(FrmVXTilePalTest, MissingAndBrokenPicturesShowNoTile) {
    AddTiles(0, 2, 1);
    folder_.Write("tiles/H1.dds", OneColor(255, 0, 0).substr(0, 130));
    MakeNoTile();
    Open();
    EXPECT_EQ(ColorOf(1), QColor(Qt::white));
    EXPECT_EQ(ColorOf(2), QColor(Qt::white));
    Click(1);
    EXPECT_EQ(interaction_.SelectedTile, 0);
}

TEST_F(FrmVXTilePalTest, WithoutAnyPictureAButtonIsPlain) {
    AddTiles(0, 1, 1);
    Open();
    EXPECT_EQ(ColorOf(1).rgb(), window_.palette().color(QPalette::Mid).rgb());
}

TEST_F(FrmVXTilePalTest, RefreshShowsPicturesAsTheyAreNow) {
    AddTiles(0, 1, 1);
    folder_.Write("tiles/H0.dds", OneColor(255, 0, 0));
    Open();
    EXPECT_EQ(ColorOf(1), QColor(255, 0, 0));
    folder_.Write("tiles/H0.dds", OneColor(0, 0, 255) + "longer");
    window_.Command1_Click();
    EXPECT_EQ(ColorOf(1), QColor(0, 0, 255));
}

TEST_F(FrmVXTilePalTest, OnlyPicturesThatAreSeenAreRead) {
    AddTiles(0, 400, 1);
    for (int tile = 0; tile < 400; ++tile)
        folder_.Write("tiles/H" + std::to_string(tile) + ".dds", OneColor(255, 0, 0));
    Open();
    window_.grab();
    EXPECT_GT(pictures_.Decodes(), 5U);
    EXPECT_LT(pictures_.Decodes(), 40U);
}

TEST_F(FrmVXTilePalTest, AClickChoosesAndASecondOneChoosesNone) {
    AddTiles(16, 3, 1);
    Open();
    EXPECT_EQ(Status(), "No tile chosen");
    Click(17);
    EXPECT_EQ(interaction_.SelectedTile, 16);
    EXPECT_TRUE(Op2(17)->isChecked());
    EXPECT_EQ(Status(), "Chosen: H16.PCX | Tile #:16");
    Click(19);
    EXPECT_EQ(interaction_.SelectedTile, 18);
    EXPECT_FALSE(Op2(17)->isChecked());
    EXPECT_TRUE(Op2(19)->isChecked());
    Click(19);
    EXPECT_EQ(interaction_.SelectedTile, -1);
    EXPECT_FALSE(Op2(19)->isChecked());
    EXPECT_EQ(Status(), "No tile chosen");
}

TEST_F(FrmVXTilePalTest, AChosenButtonLooksChosen) {
    AddTiles(0, 1, 1);
    Open();
    const QColor highlight = window_.palette().color(QPalette::Highlight);
    EXPECT_NE(Op2(1)->grab().toImage().pixelColor(0, 0), highlight);
    Click(1);
    EXPECT_EQ(Op2(1)->grab().toImage().pixelColor(0, 0), highlight);
}

TEST_F(FrmVXTilePalTest, TheChoiceOutlivesOtherClasses) {
    AddTiles(0, 2, 1);
    AddTiles(16, 2, 3);
    Open();
    Click(2);
    window_.Refresh_Pal(3);
    EXPECT_EQ(interaction_.SelectedTile, 1);
    EXPECT_EQ(Status(), "Chosen: H1.PCX | Tile #:1");
    EXPECT_FALSE(Op2(17)->isChecked());
    window_.Refresh_Pal(4); // without tiles
    EXPECT_EQ(interaction_.SelectedTile, 1);
    window_.Refresh_Pal(1);
    EXPECT_TRUE(Op2(2)->isChecked());
    EXPECT_FALSE(Op2(1)->isChecked());
}

TEST_F(FrmVXTilePalTest, FollowsAChoiceMadeElsewhere) {
    AddTiles(0, 2, 1);
    Open();
    interaction_.SelectedTile = 1;
    window_.ShowSelectedTile();
    EXPECT_TRUE(Op2(2)->isChecked());
}

TEST_F(FrmVXTilePalTest, EscChoosesNone) {
    AddTiles(0, 2, 1);
    Open();
    Click(2);
    Key(Qt::Key_Escape);
    EXPECT_EQ(interaction_.SelectedTile, -1);
    EXPECT_FALSE(Op2(2)->isChecked());
    Click(2);
    Combo1().setFocus();
    Key(Qt::Key_Escape);
    EXPECT_EQ(interaction_.SelectedTile, -1);
}

TEST_F(FrmVXTilePalTest, TheScrollBarCountsRowsAndEndsWithTheLastOne) {
    AddTiles(0, 31, 1);
    Open(400, 300);
    const int columns = Frame1().width() / Side;
    const int rows = (31 + columns - 1) / columns;
    const int whole = Frame2().contentsRect().height() / Side;
    EXPECT_EQ(VScroll().minimum(), 0);
    EXPECT_EQ(VScroll().maximum(), rows - whole);
    EXPECT_EQ(Frame1().pos(), QPoint(0, 0));
    EXPECT_LE(Frame1().mapTo(&Frame2(), QPoint()).y(), 3); // at the top of Frame2
    VScroll().setValue(2);
    EXPECT_EQ(Scrolled(), 2 * Side);
    VScroll().setValue(1000);
    const QRect last(Op2(31)->mapTo(&Frame2(), QPoint(0, 0)), Op2(31)->size());
    EXPECT_TRUE(Frame2().contentsRect().contains(last));
    EXPECT_LT(Frame2().contentsRect().bottom() - last.bottom(), Side);
    // A higher window shows no emptiness either.
    window_.resize(400, 600);
    ASSERT_TRUE(QTest::qWaitFor([this] { return Frame2().height() > 500; }));
    EXPECT_EQ(VScroll().maximum(),
              std::max(0, rows - Frame2().contentsRect().height() / Side));
    EXPECT_LE(VScroll().value(), VScroll().maximum());
    EXPECT_EQ(Scrolled(), VScroll().value() * Side);
}

TEST_F(FrmVXTilePalTest, TheFramesBorderIsNeverCovered) {
    AddTiles(0, 100, 1);
    MakeNoTile();
    Open();
    for (const int row : {0, 3}) {
        VScroll().setValue(row);
        const QImage seen = Frame2().grab().toImage();
        for (const int y : {0, seen.height() - 1})
            EXPECT_NE(seen.pixelColor(Side / 2, y), QColor(Qt::white)) << row << y;
        EXPECT_EQ(seen.pixelColor(Side / 2, Side / 2), QColor(Qt::white));
    }
}

TEST_F(FrmVXTilePalTest, TheWheelMovesByOneRowWhereverItIsTurned) {
    AddTiles(0, 100, 1);
    Open();
    for (QWidget* over : std::initializer_list<QWidget*>{Op2(1), &Frame2(), &Combo1(),
                                                         &VScroll(), &window_}) {
        const int before = VScroll().value();
        Wheel(*over, {0, -120});
        EXPECT_EQ(VScroll().value(), before + 1) << over->objectName().toStdString();
    }
    EXPECT_EQ(Combo1().currentIndex(), 0);
    Wheel(Frame1(), {0, 120});
    EXPECT_EQ(VScroll().value(), 4);
    Wheel(Frame1(), {0, -360}); // a fast wheel
    EXPECT_EQ(VScroll().value(), 5);
    Wheel(Frame1(), {-120, 0});
    EXPECT_EQ(VScroll().value(), 5);
}

TEST_F(FrmVXTilePalTest, TheWheelStopsAtTheLimits) {
    AddTiles(0, 8, 1);
    Open();
    Wheel(Frame1(), {0, 120});
    EXPECT_EQ(VScroll().value(), 0);
    for (int i = 0; i < 9; ++i)
        Wheel(Frame1(), {0, -120});
    EXPECT_EQ(VScroll().value(), VScroll().maximum());
}

TEST_F(FrmVXTilePalTest, FineWheelsAddUpToNotches) {
    AddTiles(0, 100, 1);
    Open();
    Wheel(Frame1(), {0, -60});
    EXPECT_EQ(VScroll().value(), 0);
    Wheel(Frame1(), {0, -60});
    EXPECT_EQ(VScroll().value(), 1);
}

TEST_F(FrmVXTilePalTest, AnotherClassBeginsAtItsTop) {
    AddTiles(0, 100, 1);
    AddTiles(100, 100, 3);
    Open();
    VScroll().setValue(5);
    window_.Command1_Click();
    EXPECT_EQ(VScroll().value(), 5);
    EXPECT_EQ(Scrolled(), 5 * Side);
    window_.Refresh_Pal(3);
    EXPECT_EQ(VScroll().value(), 0);
    EXPECT_EQ(Scrolled(), 0);
}

TEST_F(FrmVXTilePalTest, FrameAndScrollBarFillTheWindowButForTheMargin) {
    AddTiles(0, 3, 1);
    Open();
    const auto check = [this] {
        const QRect frame = Frame2().geometry();
        const QRect bar = VScroll().geometry();
        const QRect status = Find<QStatusBar>(window_, "StatusBar1").geometry();
        EXPECT_EQ(status.top() - frame.bottom() - 1, 6); // 90 twips
        EXPECT_EQ(bar.top(), frame.top());
        EXPECT_EQ(bar.bottom(), frame.bottom());
        EXPECT_GT(bar.left(), frame.right());
        EXPECT_EQ(frame.left(), 6);
        EXPECT_EQ(window_.width() - bar.right() - 1, 6);
    };
    check();
    window_.resize(900, 600);
    ASSERT_TRUE(QTest::qWaitFor([this] { return Frame2().width() > 800; }));
    check();
}

TEST_F(FrmVXTilePalTest, AnotherWidthLaysTheSameButtonsOutAnew) {
    AddTiles(0, 30, 1);
    Open(400, 300);
    const QAbstractButton* button = Op2(8);
    ASSERT_GT(button->y(), 0);
    Click(2);
    window_.resize(900, 300);
    ASSERT_TRUE(QTest::qWaitFor([this] { return Frame1().width() > 800; }));
    EXPECT_EQ(Op2(8), button);
    EXPECT_EQ(button->geometry(), QRect(7 * Side, 0, Side, Side));
    EXPECT_TRUE(Op2(2)->isChecked());
    Op2(1)->setFocus();
    Key(Qt::Key_Down);
    EXPECT_EQ(FocusName(), "Op2_" + QString::number(1 + Frame1().width() / Side));
}

TEST_F(FrmVXTilePalTest, TheFilterShowsTheTilesOfThatName) {
    AddTiles(0, 300, 1);
    AddTiles(300, 20, 3);
    Open();
    VScroll().setValue(4);
    Click(13);
    auto& filter = Find<QLineEdit>(window_, "txtFilter");
    filter.setFocus();
    QTest::keyClicks(&filter, "h12");
    EXPECT_EQ(ButtonCount(), 11); // H12 and H120 to H129
    EXPECT_EQ(VScroll().value(), 0);
    EXPECT_EQ(Op2(13)->pos(), QPoint(0, 0));
    EXPECT_TRUE(Op2(13)->isChecked());
    EXPECT_EQ(Find<QLabel>(window_, "lblCount").text(), "11 tiles");
    EXPECT_EQ(FocusName(), "txtFilter");
    Combo1().setCurrentIndex(1);
    EXPECT_EQ(ButtonCount(), 11); // none of that kind, so those of all kinds
    filter.setFocus();
    Key(Qt::Key_Escape);
    EXPECT_EQ(ButtonCount(), 20);
    EXPECT_EQ(interaction_.SelectedTile, 12);
    Key(Qt::Key_Escape);
    EXPECT_EQ(interaction_.SelectedTile, -1);
}

TEST_F(FrmVXTilePalTest, ArrowKeysMoveAndScroll) {
    AddTiles(0, 100, 1);
    Open(400, 300);
    const int columns = Frame1().width() / Side;
    Op2(1)->setFocus();
    Key(Qt::Key_Right);
    EXPECT_EQ(FocusName(), "Op2_2");
    Key(Qt::Key_Down);
    EXPECT_EQ(FocusName(), "Op2_" + QString::number(2 + columns));
    EXPECT_EQ(VScroll().value(), 0);
    Key(Qt::Key_End);
    EXPECT_EQ(FocusName(), "Op2_100");
    const QRect button(Op2(100)->mapTo(&Frame2(), QPoint(0, 0)), Op2(100)->size());
    EXPECT_TRUE(Frame2().contentsRect().contains(button));
    Key(Qt::Key_Home);
    EXPECT_EQ(FocusName(), "Op2_1");
    EXPECT_EQ(VScroll().value(), 0);
    Key(Qt::Key_Left);
    EXPECT_EQ(FocusName(), "Op2_1");
    EXPECT_EQ(interaction_.SelectedTile, -1); // moving chooses nothing
}

TEST_F(FrmVXTilePalTest, PageKeysTurnWhatIsSeen) {
    AddTiles(0, 100, 1);
    Open(400, 300);
    const int columns = Frame1().width() / Side;
    const int rows = Frame2().contentsRect().height() / Side;
    ASSERT_GE(rows, 2);
    Op2(1)->setFocus();
    Key(Qt::Key_PageDown);
    EXPECT_EQ(FocusName(), "Op2_" + QString::number(1 + rows * columns));
    Key(Qt::Key_PageUp);
    EXPECT_EQ(FocusName(), "Op2_1");
}

TEST_F(FrmVXTilePalTest, SpaceAndEnterChoose) {
    AddTiles(0, 4, 1);
    Open();
    Op2(2)->setFocus();
    Key(Qt::Key_Space);
    EXPECT_EQ(interaction_.SelectedTile, 1);
    Key(Qt::Key_Right);
    Key(Qt::Key_Return);
    EXPECT_EQ(interaction_.SelectedTile, 2);
    Key(Qt::Key_Enter);
    EXPECT_EQ(interaction_.SelectedTile, -1);
}

TEST_F(FrmVXTilePalTest, TabReachesOneButtonOnly) {
    AddTiles(0, 50, 1);
    Open();
    Click(4);
    Combo1().setFocus();
    Key(Qt::Key_Tab);
    EXPECT_EQ(FocusName(), "txtFilter");
    Key(Qt::Key_Tab);
    EXPECT_EQ(FocusName(), "Command1");
    Key(Qt::Key_Tab);
    EXPECT_EQ(FocusName(), "Op2_4");
    Key(Qt::Key_Tab);
    EXPECT_EQ(FocusName(), "Combo1");
}

TEST_F(FrmVXTilePalTest, AMouseClickScrollsNothing) {
    AddTiles(0, 100, 1);
    Open(400, 300);
    const int rows = Frame2().contentsRect().height() / Side;
    const int columns = Frame1().width() / Side;
    // Partly seen.
    QTest::mouseClick(Op2(rows * columns + 1), Qt::LeftButton, {}, {30, 4});
    EXPECT_EQ(interaction_.SelectedTile, rows * columns);
    EXPECT_EQ(VScroll().value(), 0);
}

TEST_F(FrmVXTilePalTest, RefreshKeepsTheKeyboardOnItsTile) {
    AddTiles(0, 50, 1);
    Open();
    Op2(7)->setFocus();
    window_.Command1_Click();
    EXPECT_EQ(FocusName(), "Op2_7");
}

TEST_F(FrmVXTilePalTest, TheCloseBoxHidesTheWindow) {
    Open();
    EXPECT_FALSE(window_.close());
    EXPECT_FALSE(window_.isVisible());
    EXPECT_EQ(commands_.Story, "hidden(chkShowTile)");
    window_.show();
    state_.Exiting = true;
    EXPECT_TRUE(window_.close());
    EXPECT_EQ(commands_.Story, "hidden(chkShowTile)");
}

TEST_F(FrmVXTilePalTest, ALargeClassComesUp) {
    AddTiles(0, 2000, 1);
    Open(618, 453);
    QElapsedTimer timer;
    timer.start();
    window_.Refresh_Pal(1);
    window_.grab();
    RecordProperty("milliseconds", static_cast<int>(timer.elapsed()));
    EXPECT_EQ(ButtonCount(), 2000);
    EXPECT_NE(Op2(2000), nullptr);
    VScroll().setValue(VScroll().maximum());
    Click(2000);
    EXPECT_EQ(interaction_.SelectedTile, 1999);
}

} // namespace
} // namespace vardenix
