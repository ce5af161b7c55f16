// The window of the pattern and the window of the hits.
#include "platform/windows/ColorImage.h"
#include "platform/windows/PinkBox.h"
#include "search/windows/SearchCells.h"
#include "search/windows/frmVXSearchOptions.h"
#include "search/windows/frmVXSearchResults.h"
#include "support/RecordingCommands.h"
#include "windows/WindowTest.h"

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>

namespace vardenix {
namespace {

class SearchOptionsTest : public testing::Test {
protected:
    SearchOptionsTest() { window_.show(); }

    template <typename Control>
    Control& The(const QString& name) {
        return tests::Find<Control>(window_, name.toLatin1().constData());
    }
    void Type(const char* box, const char* text) {
        The<QLineEdit>(box).clear();
        QTest::keyClicks(&The<QLineEdit>(box), text);
    }
    QString Label(const char* label, int cell) {
        return The<QLabel>(QString(label) + "_" + QString::number(cell)).text();
    }
    void ClickCell(int cell) {
        QTest::mouseClick(&The<QFrame>("Frame1_" + QString::number(cell)),
                          Qt::LeftButton);
    }
    // The cells with the ground of the chosen one.
    QString Green() {
        QString cells;
        for (int cell = 0; cell < 9; ++cell)
            if (The<QFrame>("Frame1_" + QString::number(cell))
                    .palette()
                    .color(QPalette::Window) == ColorOf(0xC0FFC0))
                cells += QString::number(cell);
        return cells;
    }

    SearchState search_;
    TileLookup lookup_{16};
    frmVXSearchOptions window_{search_, lookup_};
};

TEST_F(SearchOptionsTest, HasItsCaptions) {
    EXPECT_EQ(window_.windowTitle(), "Search For a Tile...");
    EXPECT_EQ(The<QAbstractButton>("cmdClearAll").text().remove('&'), "Clear All Tiles");
    EXPECT_EQ(The<QAbstractButton>("cmdSearch").text().remove('&'), "Search");
    EXPECT_EQ(The<QLabel>("lblUseAt").text(),
              "Use at the beginning of text: \n! (not equal) or < or > \n");
    const std::vector<std::pair<const char*, const char*>> boxes{
        {"Text1", "Tile Offset:"},
        {"Text2", "Elevation:"},
        {"Text3", "Palette:"},
        {"Text4", "X1:"},
        {"Text5", "X2:"}};
    for (const auto& [box, caption] : boxes)
        EXPECT_EQ(The<QLabel>(QString("label") + box).text(), caption);
}

TEST_F(SearchOptionsTest, TheFramesLieAsTheirPostsDo) {
    const auto place = [this](int cell) {
        return The<QFrame>("Frame1_" + QString::number(cell)).pos();
    };
    for (int cell = 0; cell < 9; ++cell) {
        const int across[] = {0, 0, 1, 1, 1, 0, -1, -1, -1};
        const int up[] = {0, 1, 1, 0, -1, -1, -1, 0, 1};
        const QPoint from = place(cell) - place(0);
        EXPECT_EQ((from.x() > 0) - (from.x() < 0), across[cell]) << cell;
        EXPECT_EQ((from.y() < 0) - (from.y() > 0), up[cell]) << cell;
    }
}

TEST_F(SearchOptionsTest, TheMiddleIsChosenWhenTheWindowOpens) {
    EXPECT_EQ(Green(), "0");
    ClickCell(4);
    EXPECT_EQ(Green(), "4");
    window_.hide();
    window_.show();
    EXPECT_EQ(Green(), "0");
    EXPECT_EQ(The<QFrame>("Frame1_1").palette().color(QPalette::Window),
              ColorOf(0xC0FFFF));
}

TEST_F(SearchOptionsTest, AClickOnALabelChoosesItsCell) {
    QTest::mouseClick(&The<QLabel>("lblPal_7"), Qt::LeftButton);
    EXPECT_EQ(Green(), "7");
}

TEST_F(SearchOptionsTest, ArrowKeysMoveBetweenCells) {
    auto& cells = The<SearchCells>("Cells");
    const auto press = [&](Qt::Key key) {
        QTest::keyClick(&cells, key);
        return Green();
    };
    EXPECT_EQ(press(Qt::Key_Up), "1");
    EXPECT_EQ(press(Qt::Key_Up), "1"); // there is nothing beyond
    EXPECT_EQ(press(Qt::Key_Right), "2");
    EXPECT_EQ(press(Qt::Key_Down), "3");
    EXPECT_EQ(press(Qt::Key_Down), "4");
    EXPECT_EQ(press(Qt::Key_Left), "5");
    EXPECT_EQ(press(Qt::Key_Left), "6");
}

TEST_F(SearchOptionsTest, TextsBecomeTheLabelsOfTheChosenCell) {
    Type("Text1", "!5");
    Type("Text2", "<-20");
    EXPECT_EQ(Label("lblTile", 0), "!5");
    EXPECT_EQ(Label("lblElv", 0), "<-20");
    ClickCell(3);
    EXPECT_EQ(The<QLineEdit>("Text1").text(), "");
    Type("Text3", "007");
    Type("Text4", "!");
    Type("Text5", ">9");
    EXPECT_EQ(Label("lblPal", 3), "7");
    EXPECT_EQ(Label("lblX1", 3), "");
    EXPECT_EQ(Label("lblX2", 3), ">9");
    ClickCell(0);
    EXPECT_EQ(The<QLineEdit>("Text1").text(), "!5");
    EXPECT_EQ(Label("lblTile", 0), "!5");
}

// A tile's name is no tile number: it finds the sea.
TEST_F(SearchOptionsTest, ATextThatIsNoNumberIsPinkAndToldWhatItCountsAs) {
    auto& box = The<QLineEdit>("Text1");
    Type("Text1", "HTHNE003");
    EXPECT_TRUE(IsPink(box));
    EXPECT_FALSE(IsPink(The<QLineEdit>("Text2")));
    EXPECT_EQ(box.toolTip(), "No number: counts as 0");
    EXPECT_EQ(The<QLabel>("lblNoNumber").text(), box.toolTip());
    EXPECT_EQ(Label("lblTile", 0), "H0");
    ClickCell(1);
    EXPECT_FALSE(IsPink(box));
    EXPECT_EQ(The<QLabel>("lblNoNumber").text(), "");
    ClickCell(0);
    EXPECT_TRUE(IsPink(box));
    Type("Text1", "<5");
    EXPECT_FALSE(IsPink(box));
    EXPECT_EQ(box.toolTip(), "");
}

TEST_F(SearchOptionsTest, ClearAllEmptiesEverything) {
    Type("Text1", "5");
    ClickCell(8);
    Type("Text5", "6");
    The<QAbstractButton>("cmdClearAll").click();
    for (int cell = 0; cell < 9; ++cell)
        EXPECT_EQ(Label("lblTile", cell) + Label("lblX2", cell), "");
    EXPECT_EQ(The<QLineEdit>("Text5").text(), "");
}

TEST_F(SearchOptionsTest, SearchHandsThePatternOverAndHides) {
    const QSignalSpy wanted(&window_, &frmVXSearchOptions::SearchWanted);
    Type("Text1", "5");
    ClickCell(1);
    Type("Text2", ">200");
    EXPECT_EQ(search_.Pattern[0].CellTile, "");
    QTest::keyClick(&The<QLineEdit>("Text2"), Qt::Key_Return);
    EXPECT_EQ(wanted.count(), 1);
    EXPECT_FALSE(window_.isVisible());
    EXPECT_EQ(search_.Pattern[0].CellTile, "5");
    EXPECT_EQ(search_.Pattern[1].CellElevation, ">200");
}

TEST_F(SearchOptionsTest, RemembersWhatWasSearchedFor) {
    auto& last = The<QComboBox>("comLast");
    EXPECT_FALSE(last.isEnabled());
    Type("Text1", "5");
    The<QAbstractButton>("cmdSearch").click();
    window_.show();
    Type("Text1", "6");
    The<QAbstractButton>("cmdSearch").click();
    window_.show();
    ASSERT_EQ(last.count(), 2);
    EXPECT_EQ(last.itemText(0), "Post: Tile 6");
    EXPECT_EQ(last.itemText(1), "Post: Tile 5");
    emit last.activated(1);
    EXPECT_EQ(Label("lblTile", 0), "5");
    EXPECT_EQ(The<QLineEdit>("Text1").text(), "5");
}

TEST_F(SearchOptionsTest, NamesAndKindsHaveABoxOfTheirOwn) {
    lookup_[3].Name = "Lake";
    lookup_[3].Terrain = 1;
    lookup_[4].Name = "Wheat";
    lookup_[4].Terrain = 1;
    auto& box = The<QLineEdit>("txtNamed");
    QTest::keyClicks(&box, "lak");
    EXPECT_EQ(The<QLabel>("lblNamed").text(), "1 tile");
    Type("txtNamed", "water");
    EXPECT_EQ(The<QLabel>("lblNamed").text(), "2 tiles");
    EXPECT_FALSE(IsPink(box));
    Type("txtNamed", "rye");
    EXPECT_EQ(The<QLabel>("lblNamed").text(), "0 tiles");
    EXPECT_TRUE(IsPink(box));
    Type("txtNamed", " lake ");
    The<QAbstractButton>("cmdSearch").click();
    EXPECT_EQ(search_.Named, "lake");
    EXPECT_EQ(search_.Pattern, SearchPattern());
    window_.show();
    EXPECT_EQ(The<QComboBox>("comLast").itemText(0), "named lake");
    The<QAbstractButton>("cmdClearAll").click();
    EXPECT_EQ(box.text(), "");
    emit The<QComboBox>("comLast").activated(0);
    EXPECT_EQ(box.text(), "lake");
}

TEST_F(SearchOptionsTest, TheCloseBoxOnlyHides) {
    Type("Text1", "5");
    window_.close();
    window_.show();
    EXPECT_EQ(Label("lblTile", 0), "5");
}

class SearchResultsTest : public testing::Test {
protected:
    SearchResultsTest() {
        state_.Starting = false;
        state_.Terrain.MapWidth = 16;
        state_.Terrain.LxArr = PostArray(256);
        for (int serial = 1; serial <= 256; ++serial)
            Post(serial).Elevation = static_cast<int16_t>(1000 - serial);
        window_.show();
    }

    void Fill(SearchResults hits) {
        window_.PopulateResList([&] {
            EXPECT_EQ(Model().rowCount(), 0);
            state_.Search.Results = std::move(hits);
            state_.Search.Milliseconds = 12;
        });
    }
    TerrainPost& Post(int serial) { return state_.Terrain.LxArr(serial); }
    template <typename Control>
    Control& The(const QString& name) {
        return tests::Find<Control>(window_, name.toLatin1().constData());
    }
    QTreeView& List() { return The<QTreeView>("ListRes"); }
    QAbstractItemModel& Model() { return *List().model(); }
    QString Cell(int row, int column) {
        return Model().index(row, column).data().toString();
    }
    // "1 2 3" of a column.
    QString Column(int column) {
        QStringList texts;
        for (int row = 0; row < Model().rowCount(); ++row)
            texts += Cell(row, column);
        return texts.join(' ');
    }
    void Tick(int row) {
        Model().setData(Model().index(row, 0), Qt::Checked, Qt::CheckStateRole);
    }
    QString Ticked() {
        QStringList hits;
        for (int row = 0; row < Model().rowCount(); ++row)
            if (Model().index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked)
                hits += Cell(row, 0);
        return hits.join(' ');
    }
    void Click(int row, int column) {
        const QRect cell = List().visualRect(Model().index(row, column));
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, cell.center());
    }
    std::string Story() { return std::exchange(commands_.Story, {}); }
    QString Status() { return The<QLabel>("lblHits").text(); }

    ProgramState state_;
    tests::RecordingCommands commands_;
    frmVXSearchResults window_{state_, commands_};
};

TEST_F(SearchResultsTest, HasItsCaptions) {
    EXPECT_EQ(window_.windowTitle(), "Search Results");
    EXPECT_EQ(The<QCheckBox>("chkSelectAll").text().remove('&'), "Select All");
    EXPECT_EQ(The<QAbstractButton>("Command1").text(), "Set All Selected");
    const char* captions[] = {"Tile Offset:", "Elevation:", "Palette:", "X1:", "X2:"};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(The<QCheckBox>("Check1_" + QString::number(i)).text(), captions[i]);
}

TEST_F(SearchResultsTest, ListsNumberXAndYFromZero) {
    Fill({0, 1, 18, 256});
    EXPECT_EQ(Column(HitModel::Number), "1 2 3");
    EXPECT_EQ(Column(HitModel::X), "0 1 15");
    EXPECT_EQ(Column(HitModel::Y), "0 1 15");
    EXPECT_EQ(Column(HitModel::Elevation), "999 982 744");
    EXPECT_EQ(Status(), "3 hits in 12 ms");
    Fill({0, 5});
    EXPECT_EQ(Status(), "1 hit in 12 ms");
    Fill({0});
    EXPECT_EQ(Status(), "0 hits in 12 ms");
}

TEST_F(SearchResultsTest, TheModelKeepsTheToolkitsRules) {
    const QAbstractItemModelTester tester(
        &Model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    Fill({0, 1, 18, 256});
    Model().sort(HitModel::Y, Qt::DescendingOrder);
    Tick(0);
    Fill({0, 7});
    EXPECT_EQ(Model().rowCount(), 1);
}

TEST_F(SearchResultsTest, SortsByAnyField) {
    Fill({0, 1, 18, 33, 256});
    Post(1).TileOffset = 9;
    Post(33).TileOffset = 4;
    Model().sort(HitModel::TileOffset, Qt::AscendingOrder);
    EXPECT_EQ(Column(HitModel::TileOffset), "0 0 4 9");
    EXPECT_EQ(Column(HitModel::Number), "2 4 3 1"); // equal ones stay as they stood
    Model().sort(HitModel::X, Qt::DescendingOrder);
    EXPECT_EQ(Column(HitModel::X), "15 1 0 0");
    Model().sort(HitModel::Number, Qt::AscendingOrder);
    EXPECT_EQ(Column(HitModel::Number), "1 2 3 4");
}

TEST_F(SearchResultsTest, MarksAndTheCurrentRowGoWithTheirHits) {
    Fill({0, 1, 18, 33, 256});
    Tick(1);
    List().setCurrentIndex(Model().index(3, 0));
    Model().sort(HitModel::Elevation, Qt::AscendingOrder);
    EXPECT_EQ(Column(HitModel::Number), "4 3 2 1");
    EXPECT_EQ(Ticked(), "2");
    EXPECT_EQ(List().currentIndex().row(), 0);
}

TEST_F(SearchResultsTest, AClickGoesToTheHit) {
    Fill({0, 1, 18, 33});
    Click(1, HitModel::X);
    EXPECT_EQ(Story(), "scroll(1,1)");
    QTest::keyClick(&List(), Qt::Key_Down);
    EXPECT_EQ(Story(), "");
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_EQ(Story(), "scroll(0,2)");
    Model().sort(HitModel::Y, Qt::DescendingOrder);
    Click(0, HitModel::Number);
    EXPECT_EQ(Story(), "scroll(0,2)");
}

TEST_F(SearchResultsTest, AClickOnAMarkTicksAndGoesNowhere) {
    Fill({0, 1, 18});
    const QRect cell = List().visualRect(Model().index(1, HitModel::Number));
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {},
                      QPoint(cell.left() + 10, cell.center().y()));
    EXPECT_EQ(Ticked(), "2");
    EXPECT_EQ(Story(), "");
    Click(1, HitModel::X);
    EXPECT_EQ(Story(), "scroll(1,1)");
    QTest::keyClick(&List(), Qt::Key_Space);
    EXPECT_EQ(Ticked(), "");
}

TEST_F(SearchResultsTest, SelectAllTicksEveryHit) {
    Fill({0, 1, 18, 33});
    The<QCheckBox>("chkSelectAll").click();
    EXPECT_EQ(Ticked(), "1 2 3");
    The<QCheckBox>("chkSelectAll").click();
    EXPECT_EQ(Ticked(), "");
    The<QCheckBox>("chkSelectAll").click();
    Fill({0, 4});
    EXPECT_EQ(Ticked(), "");
    EXPECT_FALSE(The<QCheckBox>("chkSelectAll").isChecked());
}

TEST_F(SearchResultsTest, ACheckedFieldCanBeSet) {
    EXPECT_FALSE(The<QAbstractButton>("Command1").isEnabled());
    The<QCheckBox>("Check1_1").click();
    EXPECT_TRUE(The<QAbstractButton>("Command1").isEnabled());
    EXPECT_TRUE(The<QLineEdit>("Text1_1").isEnabled());
    EXPECT_FALSE(The<QLineEdit>("Text1_0").isEnabled());
    The<QCheckBox>("Check1_1").click();
    EXPECT_FALSE(The<QAbstractButton>("Command1").isEnabled());
}

TEST_F(SearchResultsTest, ValuesThatDoNotFitBecomeZero) {
    auto& elevation = The<QLineEdit>("Text1_1");
    elevation.setText("32767");
    EXPECT_EQ(elevation.text(), "32767");
    elevation.setText("32768");
    EXPECT_EQ(elevation.text(), "0");
    elevation.setText("");
    EXPECT_EQ(elevation.text(), "0");
    auto& palette = The<QLineEdit>("Text1_2");
    palette.setText("256");
    EXPECT_EQ(palette.text(), "0");
    The<QCheckBox>("Check1_2").click();
    palette.selectAll();
    QTest::keyClicks(&palette, "x-1");
    EXPECT_EQ(palette.text(), "1");
}

TEST_F(SearchResultsTest, SetAllSelectedChangesTheTickedHits) {
    Fill({0, 1, 18, 33});
    Model().sort(HitModel::Number, Qt::DescendingOrder);
    Tick(0); // hit 3
    Tick(2); // hit 1
    The<QCheckBox>("Check1_0").click();
    The<QCheckBox>("Check1_4").click();
    The<QLineEdit>("Text1_0").setText("77");
    The<QLineEdit>("Text1_4").setText("5");
    The<QLineEdit>("Text1_1").setText("9");
    The<QAbstractButton>("Command1").click();
    for (const int serial : {1, 18, 33}) {
        EXPECT_EQ(Post(serial).TileOffset, serial == 18 ? 0 : 77);
        EXPECT_EQ(Post(serial).X2, serial == 18 ? 0 : 5);
        EXPECT_EQ(Post(serial).Elevation, 1000 - serial);
    }
    EXPECT_EQ(Story(), "L2 refresh");
    EXPECT_EQ(Status(), "2 posts set");
    EXPECT_EQ(Cell(0, HitModel::TileOffset), "77");
    EXPECT_FALSE(The<QWidget>("PB8").isVisible());
}

TEST_F(SearchResultsTest, WithoutATickNothingIsSet) {
    Fill({0, 1});
    The<QCheckBox>("Check1_0").click();
    The<QAbstractButton>("Command1").click();
    EXPECT_EQ(Story(), "");
    EXPECT_EQ(Status(), "Tick the hits that are to be set.");
}

TEST_F(SearchResultsTest, TheUserIsToldBeforeThatItCannotBeUndone) {
    EXPECT_TRUE(The<QLabel>("lblNoUndo").text().contains("Ctrl+Z takes"));
    EXPECT_TRUE(The<QWidget>("Command1").toolTip().contains("Ctrl+Z takes"));
    const QSignalSpy wanted(&window_, &frmVXSearchResults::RestorePointWanted);
    const QString before = Status();
    The<QAbstractButton>("cmdRestorePoint").click();
    EXPECT_EQ(wanted.count(), 1);
    EXPECT_EQ(Status(), before); // it may have failed
    window_.RestorePointMade();
    EXPECT_EQ(Status(), "The restore point is made.");
}

TEST_F(SearchResultsTest, TheCloseBoxOnlyHides) {
    EXPECT_FALSE(window_.close());
    EXPECT_EQ(Story(), "hidden(chkShowResults)");
    state_.Exiting = true;
    EXPECT_TRUE(window_.close());
}

} // namespace
} // namespace vardenix
