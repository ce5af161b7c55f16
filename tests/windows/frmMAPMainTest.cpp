#include "windows/frmMAPMainTest.h"

#include <QAction>
#include <QClipboard>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QTimer>

namespace vardenix {
namespace {

using tests::Find;
using tests::Slurp;

TEST_F(frmMAPMainTest, ShowsEveryEntryWithItsTip) {
    for (int i = 0; i < 256; ++i) {
        const int red = PatternAt(i, 0);
        const int green = PatternAt(i, 1);
        const int blue = PatternAt(i, 2);
        EXPECT_EQ(Shown(i), static_cast<uint32_t>(red + 256 * green + 65536 * blue)) << i;
        EXPECT_EQ(Tip(i), "#:" + std::to_string(i) + " {R:" + std::to_string(red) +
                              ", G:" + std::to_string(green) +
                              ", B:" + std::to_string(blue) +
                              ", A:" + std::to_string(PatternAt(i, 3)) + "}");
    }
    EXPECT_EQ(Title(), CleanTitle());
    EXPECT_FALSE(CanSave());
    EXPECT_FALSE(window_.MAPDirty());
    EXPECT_EQ(Box(0).text().toStdString(), "117835012"); // bytes 4 5 6 7
}

TEST_F(frmMAPMainTest, HasItsCaptions) {
    for (const auto& [name, caption] : {std::pair{"cmdSaveMAP", "Save MAP File"},
                                        {"cmdRestoreDefaults", "Restore Defaults"},
                                        {"Command2", "Set all Same Color"},
                                        {"Command5", "Change  all Alpha"},
                                        {"Command3", "Export Colors"},
                                        {"Command4", "Import Colors"},
                                        {"Check1", "Black To Color"},
                                        {"Option1_0", "Red"},
                                        {"Option1_1", "Green"},
                                        {"Option1_2", "Blue"}})
        EXPECT_EQ(Find<QAbstractButton>(window_, name).text().remove('&'), caption);
    QStringList words;
    for (const QLabel* label : window_.findChildren<QLabel*>())
        words += label->text();
    for (const QGroupBox* frame : window_.findChildren<QGroupBox*>())
        words += frame->title();
    for (const char* word :
         {"Pallette", "MEA Map", "L0 Map", "L1 Map", "L2 Map", "L3 Map", "L4 Map",
          "L5 Map", "Width", "Height", "Longtitude", "Latitude",
          "Feet between MEA Points", "Feet between L0 Tiles", "Last Near Tiled LOD",
          "Last Far Tiled LOD", "Flags", "Number of LODs"})
        EXPECT_TRUE(words.contains(word)) << word;
    EXPECT_TRUE(Find<QAbstractButton>(window_, "Option1_0").isChecked());
    EXPECT_FALSE(Find<QAbstractButton>(window_, "Check1").isChecked());
}

TEST_F(frmMAPMainTest, ButtonsAreSquaresRowByRow) {
    window_.resize(1000, 700);
    QCoreApplication::processEvents();
    const QRect first = Entry(0).geometry();
    EXPECT_EQ(first.width(), first.height());
    EXPECT_GE(first.width(), 18);
    EXPECT_EQ(Entry(15).geometry().topLeft(),
              first.topLeft() + QPoint(15 * first.width(), 0));
    EXPECT_EQ(Entry(17).geometry().topLeft(),
              first.topLeft() + QPoint(first.width(), first.height()));
    const QImage seen = Entry(100).grab().toImage();
    EXPECT_EQ(seen.pixelColor(seen.width() / 2, seen.height() / 2),
              QColor(PatternAt(100, 0), PatternAt(100, 1), PatternAt(100, 2)));
}

TEST_F(frmMAPMainTest, OpenAndSaveKeepsEveryByteAndTheTail) {
    // The pattern's floats are of every size; the tail belongs to somebody else.
    folder_.Write("theater.map", Pattern(1500));
    window_.OpenMapFile(state_.MAPFile);
    Box(20).setText(Box(20).text() + "0");
    Box(20).setText(Box(20).text().chopped(1));
    EXPECT_TRUE(CanSave());
    Click("cmdSaveMAP");
    EXPECT_EQ(OnDisk(), Pattern(1500));
    EXPECT_EQ(folder_.Names(), "theater.map");
    EXPECT_FALSE(CanSave());
    EXPECT_EQ(Title(), CleanTitle());
}

TEST_F(frmMAPMainTest, ATypedNumberIsTakenWhenItIsSaved) {
    Box(2).setFocus();
    Box(2).selectAll();
    QTest::keyClicks(&Box(2), "1x2y.6");
    EXPECT_EQ(Box(2).text().toStdString(), "12.6");
    EXPECT_EQ(Title(), "*" + CleanTitle());
    EXPECT_TRUE(window_.MAPDirty());
    EXPECT_EQ(Record(), Pattern(1112)); // not before
    Click("cmdSaveMAP");
    EXPECT_EQ(OnDisk(),
              Pattern(1112).replace(1052, 4, std::string("\x0D\0\0\0", 4))); // 13
    EXPECT_EQ(Box(2).text().toStdString(), "13");
    EXPECT_FALSE(window_.MAPDirty());
}

TEST_F(frmMAPMainTest, AKeyThatIsTakenCountsAsAChange) {
    Box(2).setFocus();
    QTest::keyClick(&Box(2), Qt::Key_X);
    EXPECT_FALSE(window_.MAPDirty());
    Box(2).setText("5");
    Click("cmdSaveMAP");
    Box(2).selectAll();
    QTest::keyClick(&Box(2), Qt::Key_5);
    EXPECT_TRUE(window_.MAPDirty());
}

TEST_F(frmMAPMainTest, AFloatWithAnExponentCanBeCorrected) {
    state_.MapFileRecord.Latitude = 1e20F;
    window_.MapFileOpened();
    EXPECT_EQ(Box(15).text().toStdString(), "1e+20");
    Box(15).setFocus();
    Box(15).setCursorPosition(5);
    QTest::keyClick(&Box(15), Qt::Key_Backspace);
    QTest::keyClicks(&Box(15), "1f");
    EXPECT_EQ(Box(15).text().toStdString(), "1e+21");
    EXPECT_EQ(Box(14).text().contains('e'), true); // the pattern's
    Box(13).setFocus();
    Box(13).selectAll();
    QTest::keyClicks(&Box(13), "1e+2");
    EXPECT_EQ(Box(13).text().toStdString(), "12");
}

TEST_F(frmMAPMainTest, AnEmptiedBoxBecomesZero) {
    Activate();
    Box(7).setFocus();
    Box(7).clear();
    Box(8).setFocus();
    EXPECT_EQ(Box(7).text().toStdString(), "0");
}

TEST_F(frmMAPMainTest, ANumberThatIsNoneIsToldAndNothingIsWritten) {
    Activate();
    Box(0).setText("77");
    Box(3).setText("1-2");
    platform_.Dialogs.ExpectBox("Error...",
                                "ERROR number 13\nType mismatch\nL0 Map Height: '1-2' is "
                                "not a number",
                                BoxAnswer::Ok);
    Click("cmdSaveMAP");
    EXPECT_EQ(OnDisk(), Pattern(1112));
    EXPECT_EQ(Record(), Pattern(1112));
    EXPECT_TRUE(window_.MAPDirty() && CanSave());
    EXPECT_EQ(Box(3).palette().color(QPalette::Base), QColor(0xFF, 0xC0, 0xC0));
    EXPECT_TRUE(Box(3).hasFocus());
    Box(3).setText("12");
    EXPECT_EQ(Box(3).palette().color(QPalette::Base), QColor(Qt::white));
    Click("cmdSaveMAP");
    EXPECT_EQ(OnDisk().substr(1056, 4), std::string("\x0C\0\0\0", 4));
}

TEST_F(frmMAPMainTest, ALeftClickAsksForTheColour) {
    platform_.Dialogs.ExpectColor(Shown(3), 0x0C0B0A);
    Entry(3).click();
    EXPECT_EQ(Numbers(3), "10 11 12 " + std::to_string(PatternAt(3, 3)));
    EXPECT_EQ(Shown(3), 0x0C0B0AU);
    EXPECT_EQ(Tip(3),
              "#:3 {R:10, G:11, B:12, A:" + std::to_string(PatternAt(3, 3)) + "}");
    EXPECT_EQ(Title(), "*" + CleanTitle());
    Click("cmdSaveMAP");
    EXPECT_EQ(OnDisk(), Pattern(1112).replace(28 + 3 * 4, 3, "\x0A\x0B\x0C"));
    platform_.Dialogs.ExpectCancel();
    Entry(4).click();
    EXPECT_FALSE(window_.MAPDirty());
}

TEST_F(frmMAPMainTest, ARightClickShowsTheFourNumbers) {
    tests::WhenModal<QDialog>([](QDialog& details) {
        EXPECT_EQ(details.windowTitle().toStdString(), "Palete Details - #:200");
        std::string labels;
        for (const QLabel* label : details.findChildren<QLabel*>())
            labels += label->text().toStdString();
        EXPECT_EQ(labels, "RED:GREEN:BLUE:ALPHA:");
        EXPECT_EQ(Find<QAbstractButton>(details, "Command2").text(), "CANCEL");
        EXPECT_EQ(Find<QLineEdit>(details, "Text1").text().toInt(), PatternAt(200, 0));
        EXPECT_EQ(Find<QLineEdit>(details, "Text4").text().toInt(), PatternAt(200, 3));
        Find<QLineEdit>(details, "Text1").clear();
        QTest::keyClicks(&Find<QLineEdit>(details, "Text1"), "-2.x5");
        Find<QLineEdit>(details, "Text4").setText("255");
        Find<QAbstractButton>(details, "Command1").click();
    });
    RightClick(200);
    EXPECT_EQ(Numbers(200), "25 " + std::to_string(PatternAt(200, 1)) + " " +
                                std::to_string(PatternAt(200, 2)) + " 255");
    EXPECT_EQ(Tip(200).substr(0, 11), "#:200 {R:25");
    EXPECT_TRUE(window_.MAPDirty());
}

TEST_F(frmMAPMainTest, ANumberAbove255IsToldAndChangesNothing) {
    platform_.Dialogs.ExpectBox("Error...",
                                "ERROR number 6\nOverflow\nGREEN: 256; give a number "
                                "from 0 to 255",
                                BoxAnswer::Ok);
    tests::WhenModal<QDialog>([](QDialog& details) {
        Find<QLineEdit>(details, "Text2").setText("256");
        Find<QAbstractButton>(details, "Command1").click();
        EXPECT_TRUE(details.isVisible());
        Find<QAbstractButton>(details, "Command2").click();
    });
    RightClick(0);
    EXPECT_EQ(Record(), Pattern(1112));
    EXPECT_FALSE(window_.MAPDirty());
}

TEST_F(frmMAPMainTest, SetAllSameColorKeepsAlpha) {
    platform_.Dialogs.ExpectCancel();
    Click("Command2");
    EXPECT_FALSE(window_.MAPDirty());
    platform_.Dialogs.ExpectColor(Shown(0), 0x030201);
    Click("Command2");
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(Numbers(i), "1 2 3 " + std::to_string(PatternAt(i, 3)));
        EXPECT_EQ(Shown(i), 0x030201U);
    }
    EXPECT_TRUE(window_.MAPDirty());
}

TEST_F(frmMAPMainTest, ChangeAllAlphaClampsAndCancels) {
    const auto answer = [this](const QString& text, const char* button) {
        tests::WhenModal<QDialog>([=](QDialog& alpha) {
            Find<QLineEdit>(alpha, "Text1").setText(text);
            Find<QAbstractButton>(alpha, button).click();
            if (alpha.isVisible())
                alpha.reject();
        });
        Click("Command5");
    };
    answer("7", "Command2");
    answer("", "Command1"); // cannot be pressed
    EXPECT_FALSE(window_.MAPDirty());
    answer("300", "Command1");
    EXPECT_EQ(state_.MapFileRecord.Palette[0].Alpha, 255);
    answer("0", "Command1");
    for (int i = 0; i < 256; ++i)
        EXPECT_EQ(Numbers(i), std::to_string(PatternAt(i, 0)) + " " +
                                  std::to_string(PatternAt(i, 1)) + " " +
                                  std::to_string(PatternAt(i, 2)) + " 0");
    EXPECT_EQ(Tip(9).substr(Tip(9).size() - 4), "A:0}");
    EXPECT_TRUE(window_.MAPDirty());
}

TEST_F(frmMAPMainTest, PalettesGoOutByTheFilterAndComeInAgain) {
    struct Row {
        int Filter;
        const char* Name;
        size_t Size;
    };
    for (const Row& row :
         {Row{1, "a.act", 768}, {2, "b.pal", 1048}, {3, "c.bmp", 786486}}) {
        window_.OpenMapFile(state_.MAPFile);
        platform_.Dialogs.ExpectSave("", folder_.File(row.Name), row.Filter);
        Click("Command3");
        EXPECT_EQ(platform_.Dialogs.LastFilter(),
                  "ACT File (*.act)|*.act|PAL File (*.pal)|*.pal|Bitmap (*.bmp)|*.bmp");
        EXPECT_EQ(Slurp(folder_.File(row.Name)).size(), row.Size);
        EXPECT_FALSE(window_.MAPDirty());
        platform_.Dialogs.ExpectColor(Shown(0), 0);
        Click("Command2"); // all black
        platform_.Dialogs.ExpectOpen("", folder_.File(row.Name), row.Filter);
        Click("Command4");
        EXPECT_EQ(Record(), Pattern(1112)) << row.Name;
        EXPECT_EQ(Shown(99), EntryColor(state_.MapFileRecord.Palette[99]));
        EXPECT_TRUE(window_.MAPDirty());
    }
}

TEST_F(frmMAPMainTest, PaletteFilesThatCannotBeReadChangeNothing) {
    platform_.Dialogs.ExpectCancel();
    Click("Command3");
    platform_.Dialogs.ExpectCancel();
    Click("Command4");
    const std::string shortFile = folder_.Write("short", "x");
    platform_.Dialogs.ExpectOpen("", shortFile, 1);
    platform_.Dialogs.ExpectBox("Error...",
                                "ERROR number 62\nInput past end of file\n" + shortFile +
                                    ": 768 bytes expected, found 1; the palette was left "
                                    "as it was",
                                BoxAnswer::Ok);
    Click("Command4");
    // No box for a bitmap: the bottom line tells it.
    platform_.Dialogs.ExpectOpen("", shortFile, 3);
    Click("Command4");
    EXPECT_NE(Status().find("Nothing imported: "), std::string::npos) << Status();
    EXPECT_NE(Status().find(shortFile), std::string::npos) << Status();
    EXPECT_EQ(Record(), Pattern(1112));
    EXPECT_FALSE(window_.MAPDirty());
}

TEST_F(frmMAPMainTest, RestoreDefaultsAsksWhenSomethingIsUnsaved) {
    Click("cmdRestoreDefaults"); // nothing to lose, no question
    platform_.Dialogs.ExpectColor(Shown(0), 0xFFFFFF);
    Entry(0).click();
    Box(0).setText("5");
    const std::string question = "The MAP data have changed. Are you sure you want to "
                                 "discard the changes and reload the MAP file?";
    platform_.Dialogs.ExpectBox("Confirm", question, BoxAnswer::No);
    Click("cmdRestoreDefaults");
    EXPECT_TRUE(window_.MAPDirty());
    EXPECT_EQ(Box(0).text().toStdString(), "5");
    platform_.Dialogs.ExpectBox("Confirm", question, BoxAnswer::Yes);
    Click("cmdRestoreDefaults");
    EXPECT_EQ(Record(), Pattern(1112));
    EXPECT_EQ(Shown(0), EntryColor(state_.MapFileRecord.Palette[0]));
    EXPECT_FALSE(window_.MAPDirty() || CanSave());
    EXPECT_EQ(Title(), CleanTitle());
}

TEST_F(frmMAPMainTest, AnotherFileIsOnlyReadAndMAPFileIsWritten) {
    const std::string other = folder_.Write("other.map", std::string(1112, '\x11'));
    const auto open = [this] { window_.findChild<QAction*>("mnuOpen")->trigger(); };
    platform_.Dialogs.ExpectCancel();
    open();
    platform_.Dialogs.ExpectOpen("", other);
    open();
    EXPECT_EQ(Record(), std::string(1112, '\x11'));
    EXPECT_EQ(Title(), "*MapEditor v3.0.1-" + other);
    EXPECT_TRUE(CanSave());
    // What is unsaved is not given up unasked.
    platform_.Dialogs.ExpectOpen("", state_.MAPFile);
    platform_.Dialogs.ExpectBox("Confirm",
                                "The MAP data have changed. Are you sure you want to "
                                "discard the changes and reload the MAP file?",
                                BoxAnswer::No);
    open();
    EXPECT_EQ(Record(), std::string(1112, '\x11'));
    Click("cmdSaveMAP");
    EXPECT_EQ(OnDisk(), std::string(1112, '\x11'));
    EXPECT_EQ(Slurp(other), std::string(1112, '\x11'));
    EXPECT_EQ(Title(), CleanTitle());
    folder_.Write("theater.map", Pattern(1112));
    platform_.Dialogs.ExpectOpen("", state_.MAPFile);
    open();
    EXPECT_FALSE(window_.MAPDirty() || CanSave());
    platform_.Dialogs.ExpectOpen("", folder_.File("gone.map"));
    platform_.Dialogs.ExpectBox("Error...",
                                "ERROR number 53\nFile not found\nopening " +
                                    folder_.File("gone.map") +
                                    ": No such file or directory",
                                BoxAnswer::Ok);
    open();
    EXPECT_EQ(Record(), Pattern(1112));
    EXPECT_EQ(Title(), CleanTitle());
}

TEST_F(frmMAPMainTest, ASaveThatFailsLosesNothing) {
    state_.MAPFile = folder_.File("no folder/theater.map");
    Box(0).setText("5");
    platform_.Dialogs.ExpectBox("Error...",
                                "ERROR number 76\nPath not found\nwriting " +
                                    state_.MAPFile + ": its folder is not there",
                                BoxAnswer::Ok);
    Click("cmdSaveMAP");
    EXPECT_TRUE(window_.MAPDirty() && CanSave());
    EXPECT_EQ(Title().front(), '*');
}

TEST_F(frmMAPMainTest, WhatAnotherProgramHasWrittenIsAskedFor) {
    folder_.Write("theater.map", std::string(2000, '\x22'));
    Box(0).setText("5");
    const std::string question =
        state_.MAPFile +
        " was changed by another program since it was opened. Overwrite it?";
    platform_.Dialogs.ExpectBox("Confirm", question, BoxAnswer::No);
    Click("cmdSaveMAP");
    EXPECT_EQ(OnDisk(), std::string(2000, '\x22'));
    EXPECT_TRUE(window_.MAPDirty() && CanSave());
    platform_.Dialogs.ExpectBox("Confirm", question, BoxAnswer::Yes);
    Click("cmdSaveMAP");
    const std::string saved = Pattern(1112).replace(4, 4, std::string("\5\0\0\0", 4)) +
                              std::string(2000 - 1112, '\x22');
    EXPECT_EQ(OnDisk(), saved);
    // From now on what stands there is ours.
    Box(0).setText("6");
    Click("cmdSaveMAP");
    EXPECT_EQ(OnDisk()[4], 6);
    EXPECT_FALSE(window_.MAPDirty());
    // Another file that was opened is not what is compared.
    platform_.Dialogs.ExpectOpen("", folder_.Write("other.map", Pattern(1112)));
    window_.findChild<QAction*>("mnuOpen")->trigger();
    Click("cmdSaveMAP");
    EXPECT_EQ(OnDisk().substr(0, 1112), Pattern(1112));
}

TEST_F(frmMAPMainTest, AnEntryFlashesAndShowsItsColourAgain) {
    const uint32_t own = Shown(5);
    window_.StartFlashing(5, 1, 400); // 2 ticks a second
    EXPECT_EQ(Find<QTimer>(window_, "Timer1").interval(), 400);
    Tick();
    EXPECT_EQ(Shown(5), 0xFFFFFF - own);
    Tick();
    EXPECT_EQ(Shown(5), own);
    Tick();
    EXPECT_EQ(Shown(5), 0xFFFFFF - own);
    EXPECT_TRUE(Find<QTimer>(window_, "Timer1").isActive());
    Tick();
    EXPECT_EQ(Shown(5), own);
    EXPECT_FALSE(Find<QTimer>(window_, "Timer1").isActive());
}

TEST_F(frmMAPMainTest, WhateverComesDuringAFlashSeesTheEntrysOwnColour) {
    const uint32_t own = Shown(5);
    const auto flash = [this, own] {
        window_.StartFlashing(5);
        Tick();
        EXPECT_EQ(Shown(5), 0xFFFFFF - own);
    };
    flash();
    flash(); // another one
    platform_.Dialogs.ExpectColor(own, own);
    Entry(5).click();
    EXPECT_FALSE(Find<QTimer>(window_, "Timer1").isActive());
    flash();
    Click("cmdSaveMAP");
    EXPECT_EQ(OnDisk(), Pattern(1112));
    flash();
    platform_.Dialogs.ExpectSave("", folder_.File("a.act"), 1);
    Click("Command3");
    EXPECT_EQ(Slurp(folder_.File("a.act"))[15], static_cast<char>(own & 255));
    flash();
    Click("cmdVardenix");
    EXPECT_EQ(Shown(5), own);
    EXPECT_FALSE(Find<QTimer>(window_, "Timer1").isActive());
}

TEST_F(frmMAPMainTest, ALocatedEntryIsTheCurrentOneAndFlashes) {
    window_.hide();
    window_.LocateColor(231);
    EXPECT_TRUE(window_.isVisible());
    EXPECT_EQ(Find<PaletteGrid>(window_, "Command1").Current(), 231);
    EXPECT_EQ(Find<QTimer>(window_, "Timer1").interval(), 100);
    EXPECT_EQ(Find<QLabel>(window_, "lblEntry").text().toStdString(), Tip(231));
}

TEST_F(frmMAPMainTest, KeysMoveThroughTheGridAndOpenItsDialogs) {
    PaletteGrid& grid = Find<PaletteGrid>(window_, "Command1");
    Activate();
    grid.GoTo(17);
    const auto press = [&](Qt::Key key) { QTest::keyClick(&Entry(grid.Current()), key); };
    for (const auto& [key, to] : {std::pair{Qt::Key_Right, 18},
                                  {Qt::Key_Down, 34},
                                  {Qt::Key_Left, 33},
                                  {Qt::Key_Up, 17},
                                  {Qt::Key_End, 31},
                                  {Qt::Key_Home, 16},
                                  {Qt::Key_PageDown, 240},
                                  {Qt::Key_PageUp, 0}}) {
        press(key);
        EXPECT_EQ(grid.Current(), to);
        EXPECT_TRUE(Entry(to).hasFocus());
        EXPECT_EQ(Find<QLabel>(window_, "lblEntry").text().toStdString(), Tip(to));
    }
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
        platform_.Dialogs.ExpectColor(Shown(0), Shown(0));
        press(key);
        EXPECT_TRUE(platform_.Dialogs.AllAnswered());
    }
    // Tab leads to one of the squares only.
    int stops = 0;
    for (int i = 0; i < 256; ++i)
        stops += (Entry(i).focusPolicy() & Qt::TabFocus) != 0;
    EXPECT_EQ(stops, 1);
}

TEST_F(frmMAPMainTest, ColoursAreCopiedAndPasted) {
    const auto press = [this](int index, Qt::Key key) {
        QTest::keyClick(&Entry(index), key, Qt::ControlModifier);
    };
    press(3, Qt::Key_C);
    const int red = PatternAt(3, 0);
    EXPECT_EQ(QApplication::clipboard()->text(),
              QColor(red, red + 1, red + 2).name().toUpper());
    EXPECT_FALSE(window_.MAPDirty());
    press(8, Qt::Key_V);
    EXPECT_EQ(Numbers(8), std::to_string(red) + " " + std::to_string(red + 1) + " " +
                              std::to_string(red + 2) + " " +
                              std::to_string(PatternAt(8, 3)));
    EXPECT_EQ(Shown(8), Shown(3));
    EXPECT_TRUE(window_.MAPDirty());
    QApplication::clipboard()->setText("#0A14FF");
    press(9, Qt::Key_V);
    EXPECT_EQ(Shown(9), 0xFF140AU);
    QApplication::clipboard()->setText("no colour");
    const std::string before = Record();
    press(10, Qt::Key_V);
    EXPECT_EQ(Record(), before);
    EXPECT_EQ(Status(), "There is no color to paste.");
}

TEST_F(frmMAPMainTest, TheWayBackShowsTheWorkspaceWithWhatIsUnsaved) {
    platform_.Dialogs.ExpectColor(Shown(0), 0x010101);
    Entry(0).click();
    Click("cmdVardenix");
    EXPECT_EQ(workspace_.Story, "show");
    EXPECT_FALSE(window_.isVisible());
    EXPECT_EQ(Numbers(0).substr(0, 5), "1 1 1");
    EXPECT_TRUE(window_.MAPDirty());
}

TEST_F(frmMAPMainTest, ClosingAndExitGoThroughTheExitGuard) {
    window_.close();
    window_.findChild<QAction*>("mnuExit")->trigger();
    EXPECT_EQ(workspace_.Story, "leave leave");
    EXPECT_TRUE(window_.isVisible());
    state_.Exiting = true;
    window_.close();
    EXPECT_EQ(workspace_.Story, "leave leave");
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(frmMAPMainTest, HelpOpensTheHelpAddress) {
    Click("cmdDocs");
    EXPECT_EQ(platform_.Processes.Story, "open http://help.example/");
}

TEST_F(frmMAPMainTest, TheFieldsOfGradientsChangeNothing) {
    for (const char* name : {"Check1", "Option1_1", "Option1_2", "Command6"})
        Click(name);
    EXPECT_FALSE(window_.MAPDirty());
    EXPECT_EQ(Record(), Pattern(1112));
}

} // namespace
} // namespace vardenix
