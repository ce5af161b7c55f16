// What edits the theater, through the windows that a user has for it.
#include "app/OpenedWorkspace.h"
#include "support/TheaterMaker.h"

#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTimer>

#include <filesystem>

namespace vardenix {
namespace {

using tests::Find;
using tests::Posts;

class EditingTest : public tests::OpenedWorkspace {
protected:
    EditingTest() {
        state_.Folders.SystemTempPath = folder_.Path() + "/";
        std::filesystem::create_directory(folder_.File("terrain"));
        state_.Terrain.LFilename = folder_.File("terrain/theater.L2");
        state_.Terrain.OFilename = folder_.File("terrain/theater.O2");
        state_.Catalogue.Lookup[1].Terrain = 1; // water, the palette's first class
        state_.Catalogue.Lookup[1].Name = "HSEA";
        state_.Configuration.PalWinVis = true;
    }

    // The view is of 5 by 5 posts of 128 pixels at the lower left.
    static void PressPost(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
        auto& picture = Find<QWidget>(Window("FrmVXMap"), "PicShow");
        QTest::mousePress(&picture, button, {}, {x * 128 + 64, 640 - y * 128 - 64});
    }
    static void ChooseTileOne() {
        Find<QAbstractButton>(Window("FrmVXTilePal"), "Op2_2").click();
    }
    int32_t Tile(int x, int y) {
        return state_.Terrain.LxArr(int64_t{y} * Posts + x + 1).TileOffset;
    }
    static bool Enabled(const char* control) {
        return Find<QWidget>(Window("FrmVXMain"), control).isEnabled();
    }
    static std::string Title(const char* window) {
        return Window(window).windowTitle().toStdString();
    }
    // 4 times as many heights a side as posts, all of 7 feet.
    std::string WriteElv() {
        std::string bytes;
        for (int i = 0; i < 16 * Posts * Posts; ++i)
            bytes += tests::Int16Bytes(7);
        return folder_.Write("heights.elv", bytes);
    }
    void LoadElv() {
        platform_.Dialogs.ExpectOpen("", WriteElv(), 2);
        Click("cmdLoadL0Elv");
        Click("chkL0ELV");
    }
    // Of the third post from the left, the third up.
    static void EnterHeight(const char* feet) {
        tests::WhenModal<QDialog>([feet](QDialog& details) {
            Find<QLineEdit>(details, "Text2").setText(feet);
            Find<QAbstractButton>(details, "Command2").click();
        });
        PressPost(1, 1, Qt::RightButton);
    }
    void ExpectQuestionAtTheEnd(const std::string& files) {
        platform_.Dialogs.ExpectBox(
            "Confirm",
            files + " changed. Are you sure you want to exit without saving it first?\n"
                    "Press Yes to exit whithout saving.\n"
                    "Press No to return to the program",
            BoxAnswer::No);
        Window("FrmVXMain").close();
        EXPECT_TRUE(platform_.Dialogs.AllAnswered()) << files;
        EXPECT_EQ(ends_, 0);
    }
};

TEST_F(EditingTest, APaintedTileIsSeenMarkedUndoneAndSaved) {
    Open();
    EXPECT_FALSE(Enabled("cmdUndo") || Enabled("CmdSaveTheater"));
    ChooseTileOne();
    const QImage before = Painted();
    PressPost(3, 2);
    EXPECT_EQ(Tile(3, 2), 1);
    EXPECT_NE(Painted(), before);
    EXPECT_TRUE(Title("FrmVXMap").starts_with("*"));
    EXPECT_EQ(Title("FrmVXMain"), "*Vardenix v3.0.1");
    EXPECT_TRUE(Enabled("cmdUndo") && Enabled("CmdSaveTheater"));
    Click("cmdUndo");
    EXPECT_EQ(Painted(), before);
    EXPECT_FALSE(Enabled("cmdUndo"));
    Click("cmdRedo");
    EXPECT_EQ(Tile(3, 2), 1);
    Click("CmdSaveTheater");
    tests::MadeLevel saved =
        tests::ReadPair(state_.Terrain.LFilename, state_.Terrain.OFilename);
    EXPECT_EQ(saved.At(4, 3).Tile, 1);
    EXPECT_EQ(Title("FrmVXMain"), "Vardenix v3.0.1");
    EXPECT_FALSE(Enabled("CmdSaveTheater"));
    // What is saved can still be undone, and then differs from the disk.
    Click("cmdUndo");
    EXPECT_EQ(Title("FrmVXMain"), "*Vardenix v3.0.1");
    EXPECT_TRUE(Enabled("CmdSaveTheater"));
}

TEST_F(EditingTest, ARestoreBringsAllPostsBackAndMarksNothing) {
    Open();
    Click("Command3");
    ChooseTileOne();
    PressPost(3, 2);
    PressPost(4, 2);
    Click("CmdSaveTheater");
    const std::string title = Title("FrmVXMain");
    const QImage painted = Painted();
    Click("Command4");
    EXPECT_EQ(Tile(3, 2), 0);
    EXPECT_EQ(Tile(4, 2), 0);
    EXPECT_NE(Painted(), painted);
    EXPECT_EQ(Title("FrmVXMain"), title);
    EXPECT_FALSE(Enabled("CmdSaveTheater"));
    // The steps are still there, and write their old posts whatever is there now.
    state_.Terrain.LxArr(int64_t{2} * Posts + 4 + 1).TileOffset = 9;
    Click("cmdUndo");
    EXPECT_EQ(Tile(4, 2), 0);
}

TEST_F(EditingTest, APointTellsItsTheaterAndOfAnotherOneIsAskedAbout) {
    Open();
    const auto tip = [] {
        return Find<QWidget>(Window("FrmVXMain"), "Command4").toolTip().toStdString();
    };
    EXPECT_EQ(tip().find(state_.Terrain.LFilename), std::string::npos);
    Click("Command3");
    EXPECT_NE(tip().find(state_.Terrain.LFilename), std::string::npos) << tip();
    folder_.Write("VXUndo.txt", "noon\n/other/theater.L2");
    ChooseTileOne();
    PressPost(3, 2);
    std::string text;
    platform_.Dialogs.ExpectAnyBox("Attention", BoxAnswer::No, &text);
    Click("Command4");
    EXPECT_NE(text.find("/other/theater.L2"), std::string::npos) << text;
    EXPECT_EQ(Tile(3, 2), 1);
    EXPECT_NE(tip().find("noon"), std::string::npos) << tip();
    platform_.Dialogs.ExpectAnyBox("Attention", BoxAnswer::Yes, &text);
    Click("Command4");
    EXPECT_EQ(Tile(3, 2), 0);
}

TEST_F(EditingTest, LeavingMentionsPostsOfARestoreThatAreNotSaved) {
    Open();
    Click("Command3");
    ChooseTileOne();
    PressPost(3, 2);
    Click("CmdSaveTheater");
    Click("Command4");
    std::string text;
    platform_.Dialogs.ExpectAnyBox("Attention", BoxAnswer::No, &text);
    Window("FrmVXMain").close();
    EXPECT_NE(text.find("restore point"), std::string::npos) << text;
    EXPECT_EQ(ends_, 0);
    // Marked work is asked for in the usual words, once.
    PressPost(4, 2);
    ExpectQuestionAtTheEnd("The L2 file has");
    Click("CmdSaveTheater");
    Window("FrmVXMain").close();
    EXPECT_EQ(ends_, 1);
}

TEST_F(EditingTest, WithoutAPointOrWithOneOfAnotherTheaterTheUserIsTold) {
    Open();
    platform_.Dialogs.ExpectBox("", "You must first create an Undo Point", BoxAnswer::Ok);
    Click("Command4");
    EXPECT_EQ(platform_.Dialogs.LastButtons(), BoxButtons::Ok);
    folder_.Write("VXUndo.tmp", "of another size");
    platform_.Dialogs.ExpectBox(
        "", "The restore point belongs to a theater of another size.", BoxAnswer::Ok);
    Click("Command4");
    EXPECT_EQ(Tile(1, 0), 1);
}

TEST_F(EditingTest, TheUndoButtonsAreThoseOfTheMode) {
    Open();
    EXPECT_FALSE(Enabled("chkL0ELV"));
    ChooseTileOne();
    PressPost(3, 2);
    LoadElv();
    EXPECT_EQ(Title("FrmVXMain"), "*Vardenix v3.0.1 - L0/ELV MODE"); // of level 2
    EXPECT_FALSE(Enabled("cmdUndo") || Enabled("cmdRedo"));
    EXPECT_FALSE(Enabled("Command3") || Enabled("Command4"));
    EnterHeight("-40");
    EXPECT_EQ(state_.Terrain.Elevations.At(7, 7), -40);
    EXPECT_TRUE(Enabled("cmdUndo") && Enabled("CmdSaveTheater"));
    EXPECT_EQ(Title("FrmVXMain"), "*Vardenix v3.0.1 - L0/ELV MODE");
    Click("cmdUndo");
    EXPECT_EQ(state_.Terrain.Elevations.At(7, 7), 7);
    EXPECT_EQ(Tile(3, 2), 1);
    Click("chkL0ELV");
    EXPECT_TRUE(Enabled("cmdUndo"));
    EXPECT_FALSE(Enabled("cmdRedo"));
    EXPECT_TRUE(Enabled("Command3") && Enabled("Command4"));
    EXPECT_EQ(Title("FrmVXMain"), "*Vardenix v3.0.1");
}

TEST_F(EditingTest, OfTwoUnsavedFilesEachIsSavedInItsOwnMode) {
    Open();
    ChooseTileOne();
    PressPost(3, 2);
    LoadElv();
    EnterHeight("-40");
    EXPECT_EQ(Title("FrmVXMap").substr(0, 1), "*");
    Click("CmdSaveTheater");
    EXPECT_EQ(Title("FrmVXMain"), "*Vardenix v3.0.1 - L0/ELV MODE");
    EXPECT_EQ(Title("FrmVXMap").substr(0, 1), "*");
    EXPECT_FALSE(std::filesystem::exists(state_.Terrain.LFilename));
    EXPECT_EQ(tests::Slurp(folder_.File("heights.elv")).substr(2 * (6 * 128 + 6), 2),
              tests::Int16Bytes(-40));
    EXPECT_FALSE(Enabled("CmdSaveTheater"));
    // The other one is still asked for at the end.
    ExpectQuestionAtTheEnd("The L2 file has");
    Click("chkL0ELV");
    Click("CmdSaveTheater");
    EXPECT_EQ(Title("FrmVXMain"), "Vardenix v3.0.1");
    EXPECT_TRUE(std::filesystem::exists(state_.Terrain.LFilename));
    Window("FrmVXMain").close();
    EXPECT_EQ(ends_, 1);
}

TEST_F(EditingTest, OtherHeightsTakeNoStarOffLevel2) {
    Open();
    ChooseTileOne();
    PressPost(3, 2);
    LoadElv();
    EnterHeight("-40");
    platform_.Dialogs.ExpectOpen("", folder_.File("heights.elv"), 2);
    platform_.Dialogs.ExpectBox("Confirm",
                                "The L0/ELV file has changes that are not saved. Do you "
                                "want to load another file and lose them?",
                                BoxAnswer::Yes);
    Click("cmdLoadL0Elv");
    EXPECT_EQ(Title("FrmVXMain"), "*Vardenix v3.0.1 - L0/ELV MODE");
    EXPECT_EQ(Title("FrmVXMap").substr(0, 1), "*");
    ExpectQuestionAtTheEnd("The L2 file has");
}

TEST_F(EditingTest, HeightsThatNoL0FileTookAreStillUnsaved) {
    Open();
    LoadElv();
    EnterHeight("-40");
    const auto saveAs = [&](const char* name, const std::string& title,
                            const std::string& words, BoxAnswer answer) {
        platform_.Dialogs.ExpectSave("", folder_.File(name), 1);
        platform_.Dialogs.ExpectBox(title, words, answer);
        QTest::keyPress(&Window("FrmVXMain"), Qt::Key_Shift);
        Click("CmdSaveTheater");
        QTest::keyRelease(&Window("FrmVXMain"), Qt::Key_Shift);
        EXPECT_TRUE(platform_.Dialogs.AllAnswered());
        EXPECT_EQ(Title("FrmVXMain"), "*Vardenix v3.0.1 - L0/ELV MODE") << name;
        EXPECT_TRUE(Enabled("CmdSaveTheater")) << name;
        ExpectQuestionAtTheEnd("The L0/ELV file has");
    };
    folder_.Write("small.l0", "old");
    folder_.Write("small.O0", "four");
    saveAs("small.l0", "Error!",
           "The size of L0 file doesn't appear to be valid for this theater. Do you want "
           "to overwite this file (all other terrain values will be overwritten)? ",
           BoxAnswer::Yes);
    EXPECT_EQ(tests::Slurp(folder_.File("small.l0")), "old");
    saveAs("new.l0", "Confirm",
           "A L0 file keeps tiles and colors beside the heights, so heights can only be "
           "saved into one that is there together with its O0 file.\n" +
               folder_.File("new.l0") +
               " and its O0 file will be two empty files, and the heights stay unsaved. "
               "Copy a L0 file of this theater and its O0 file to that name first, or "
               "save an ELV file.\nDo you want to write two empty files?",
           BoxAnswer::Yes);
    EXPECT_EQ(tests::Slurp(folder_.File("new.l0")), "");
    EXPECT_EQ(tests::Slurp(folder_.File("new.O0")), "");
    // Their own file takes them.
    Click("CmdSaveTheater");
    EXPECT_EQ(Title("FrmVXMain"), "Vardenix v3.0.1 - L0/ELV MODE");
    Window("FrmVXMain").close();
    EXPECT_EQ(ends_, 1);
}

TEST_F(EditingTest, AFailedSaveKeepsTheMarkAndASecondTryWorks) {
    Open();
    ChooseTileOne();
    PressPost(3, 2);
    std::filesystem::remove_all(folder_.File("terrain"));
    platform_.Dialogs.ExpectBox("Error...",
                                "ERROR number 76\nPath not found\nwriting " +
                                    state_.Terrain.LFilename +
                                    ": its folder is not there",
                                BoxAnswer::Ok);
    Click("CmdSaveTheater");
    EXPECT_EQ(Title("FrmVXMain"), "*Vardenix v3.0.1");
    EXPECT_TRUE(Window("FrmVXMain").isEnabled());
    EXPECT_TRUE(Enabled("CmdSaveTheater"));
    std::filesystem::create_directory(folder_.File("terrain"));
    Click("CmdSaveTheater");
    EXPECT_EQ(Title("FrmVXMain"), "Vardenix v3.0.1");
    EXPECT_TRUE(std::filesystem::exists(state_.Terrain.OFilename));
}

// Both come in where the writer lets events through.
TEST_F(EditingTest, WhileASaveRunsThePanelCannotBeClosedNorTheMapPainted) {
    Open();
    ChooseTileOne();
    PressPost(3, 2);
    bool locked = false;
    QTimer::singleShot(0, [&] {
        locked = !Window("FrmVXMain").isEnabled();
        Window("FrmVXMain").close();
        PressPost(0, 0);
    });
    Click("CmdSaveTheater");
    EXPECT_TRUE(locked);
    EXPECT_EQ(ends_, 0);
    EXPECT_TRUE(Window("FrmVXMain").isVisible());
    EXPECT_EQ(Tile(0, 0), 0);
    EXPECT_TRUE(Window("FrmVXMain").isEnabled());
}

TEST_F(EditingTest, LoadedHeightsAreShownAtOnceAndHaveNoStepsYet) {
    Open();
    Click("chkShowHeights");
    LoadElv();
    const QImage sevens = Painted();
    std::string bytes;
    for (int i = 0; i < 16 * Posts * Posts; ++i)
        bytes += tests::Int16Bytes(88);
    platform_.Dialogs.ExpectOpen("", folder_.Write("other.elv", bytes), 2);
    Click("cmdLoadL0Elv");
    EXPECT_NE(Painted(), sevens);
    EXPECT_FALSE(Enabled("cmdUndo"));
    EXPECT_EQ(Find<QWidget>(Window("FrmVXMain"), "chkL0ELV").toolTip().toStdString(),
              folder_.File("other.elv"));
}

} // namespace
} // namespace vardenix
