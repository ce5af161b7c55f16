// Leaving for another theater, and what is remembered of those that were opened.
#include "app/OpenedWorkspace.h"
#include "program/DeskFile.h"
#include "workspace/windows/FrmVXMain.h"

#include <QAction>
#include <QMenu>
#include <QScreen>

#include <filesystem>

namespace vardenix {
namespace {

class DeskTest : public tests::OpenedWorkspace {
protected:
    void UseTheaterIn(const std::string& theater) {
        state_.Terrain.LFilename =
            folder_.Write(theater + "/terrain/theater.L2", "not looked into");
        state_.Catalogue.BinPath = folder_.File(theater + "/texture/Texture.bin");
        state_.MAPFile = folder_.File(theater + "/terrain/theater.map");
        state_.Catalogue.DDSFolder = folder_.File(theater + "/texture/texture/");
    }
    static void Choose(const char* entry) {
        Window("FrmVXMain").findChild<QAction*>(entry)->trigger();
    }
    static QList<QAction*> Recent() {
        auto* menu = Window("FrmVXMain").findChild<QMenu*>("mnuRecent");
        emit menu->aboutToShow();
        return menu->actions();
    }
    static std::string Program() {
        return "\"" + std::filesystem::read_symlink("/proc/self/exe").string() + "\"";
    }
};

TEST_F(DeskTest, AnotherTheaterIsOpenedByStartingAnew) {
    Open();
    Choose("mnuOpenTheater");
    EXPECT_EQ(ends_, 1);
    EXPECT_EQ(workspace_->NextProgram(), Program());
}

TEST_F(DeskTest, WhoStaysForUnsavedWorkStartsNothing) {
    Open();
    workspace_->L2NeedSave();
    std::string question;
    platform_.Dialogs.ExpectAnyBox("Confirm", BoxAnswer::No, &question);
    Choose("mnuOpenTheater");
    EXPECT_NE(question.find("L2"), std::string::npos);
    EXPECT_EQ(ends_, 0);
    EXPECT_EQ(workspace_->NextProgram(), "");
    platform_.Dialogs.ExpectAnyBox("Confirm", BoxAnswer::Yes, &question);
    Choose("mnuOpenTheater");
    EXPECT_EQ(ends_, 1);
    EXPECT_EQ(workspace_->NextProgram(), Program());
}

TEST_F(DeskTest, TheatersAreRememberedWhenTheyAreOpened) {
    UseTheaterIn("Sorre \"lund\"");
    Open();
    UseTheaterIn("b");
    Open();
    EXPECT_EQ(
        ReadDesk(state_.Folders.AppPath).Recent,
        (std::vector<std::string>{folder_.File("b"), folder_.File("Sorre \"lund\"")}));
    ASSERT_EQ(Recent().size(), 2);
    Recent().at(1)->trigger();
    EXPECT_EQ(ends_, 1);
    EXPECT_EQ(workspace_->NextProgram(),
              Program() + " \"" + folder_.File("Sorre \"\"lund\"\"") + "\"");
}

TEST_F(DeskTest, ATheaterThatHasGoneIsToldOfAndNothingIsLeft) {
    UseTheaterIn("a");
    Open();
    std::filesystem::remove_all(folder_.File("a"));
    platform_.Dialogs.ExpectBox(
        "Error...", "L2 File not found\n" + folder_.File("a/terrain/theater.L2"),
        BoxAnswer::Ok);
    Recent().at(0)->trigger();
    EXPECT_EQ(ends_, 0);
}

TEST_F(DeskTest, AFileThatCannotBeWrittenCostsNothingButTheMemory) {
    UseTheaterIn("a");
    std::filesystem::remove(folder_.File("Desk.ini"));
    folder_.Write("Desk.ini/inside", "x");
    state_.Configuration.MainWinPos = {.Top = 600, .Left = 600}; // no first start
    Open();
    EXPECT_TRUE(Recent().empty());
    Choose("mnuOpenTheater");
    EXPECT_EQ(ends_, 1);
}

// On a desk with a much larger screen they stood far out.
TEST_F(DeskTest, EveryWindowComesBackWhereItCanBeSeen) {
    Configuration& settings = state_.Configuration;
    for (WindowPosition* place :
         {&settings.MainControlWinPos, &settings.MainWinPos, &settings.ThPrevWinPos,
          &settings.PalWinPos, &settings.FeatWinPos, &settings.SearchResWinPos})
        *place = {.Top = 60000, .Left = 90000}; // twips: 4000 and 6000 pixels
    settings.PalWinSizeW = settings.PalWinSizeH = 60000;
    settings.PalWinVis = settings.FeatWinVis = settings.SearchResWinVis = true;
    Open();
    const QRect room = workspace_->Panel().screen()->availableGeometry();
    const auto expectSeen = [&room](const char* name) {
        const QWidget& window = Window(name);
        EXPECT_TRUE(window.isVisible()) << name;
        EXPECT_TRUE(room.contains(window.pos())) << name;
        EXPECT_LE(window.x() + std::min(window.width(), room.width()), room.right() + 1)
            << name;
        EXPECT_LE(window.y() + std::min(window.height(), room.height()),
                  room.bottom() + 1)
            << name;
    };
    for (const char* name : {"FrmVXMain", "FrmVXMap", "FrmVXTheaterPreview",
                             "FrmVXTilePal", "FrmVXFeatures", "frmVXSearchResults"})
        expectSeen(name);
    workspace_->SetOneWindow(true);
    expectSeen("FrmVXDesk");
    workspace_->SetOneWindow(false);
    for (const char* name : {"FrmVXMain", "FrmVXMap", "FrmVXTilePal"})
        expectSeen(name);
}

TEST_F(DeskTest, SearchResultsComeUpBesideTheFeatures) {
    state_.Configuration.FeatWinVis = state_.Configuration.SearchResWinVis = true;
    Open();
    const QRect features = Window("FrmVXFeatures").frameGeometry();
    const QRect results = Window("frmVXSearchResults").frameGeometry();
    EXPECT_NE(features.topLeft(), results.topLeft());
}

TEST_F(DeskTest, WindowsOfAFirstStartPartSideBySide) {
    std::filesystem::remove(folder_.File("Desk.ini"));
    state_.Configuration.MainWinVis = state_.Configuration.ThPrevWinVis = false;
    Open();
    ASSERT_TRUE(workspace_->IsOneWindow());
    workspace_->SetOneWindow(false);
    const QRect panel = workspace_->Panel().frameGeometry();
    EXPECT_GT(Window("FrmVXMap").x(), panel.x() + 200);
    EXPECT_NE(Window("FrmVXTilePal").pos(), panel.topLeft());
    EXPECT_NE(Window("FrmVXTheaterPreview").pos(), panel.topLeft());
}

} // namespace
} // namespace vardenix
