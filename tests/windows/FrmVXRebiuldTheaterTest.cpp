#include "builder/windows/FrmVXRebiuldTheater.h"

#include "builder/RebuildWorld.h"
#include "levels/ElevationFiles.h"
#include "support/FakePlatform.h"
#include "windows/WindowTest.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QTest>

namespace vardenix::tests {
namespace {

class Verbs : public RebuildVerbs {
public:
    std::string Story;
    bool Saves = true;

    bool SaveL2() override {
        Story += "save ";
        return Saves;
    }
    bool SaveHeights() override {
        Story += "save heights ";
        return Saves;
    }
    void ForgetSteps(bool heights) override {
        Story += heights ? "forget all " : "forget ";
    }
    void ReadAnew(bool heights) override { Story += heights ? "all anew " : "anew "; }
    void LeaveRebuild() override { Story += "leave "; }
};

// The window over a theater that can be rebuilt.
class FrmVXRebiuldTheaterTest : public testing::Test {
protected:
    FrmVXRebiuldTheaterTest() {
        world_.OldLevels();
        state_.Terrain = std::move(world_.Terrain);
        state_.Catalogue = world_.Catalogue;
        window_ = std::make_unique<FrmVXRebiuldTheater>(state_, platform_.All, world_.Log,
                                                        verbs_);
        window_->Form_Load();
        window_->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
    }
    std::string Text(const char* name) {
        return Find<QLabel>(*window_, name).text().toStdString();
    }
    void Click(const char* name) { Find<QAbstractButton>(*window_, name).click(); }
    bool Enabled(const char* name) { return Find<QWidget>(*window_, name).isEnabled(); }
    void ChooseMaster() {
        platform_.Dialogs.ExpectOpen(
            "", world_.Folder.Write("Master.elv", std::string(512 * 512 * 2, '\1')), 2);
        Click("cmdBrowse");
    }

    RebuildWorld world_;
    ProgramState state_;
    FakePlatform platform_;
    Verbs verbs_;
    NoProgress quiet_;
    std::unique_ptr<FrmVXRebiuldTheater> window_;
};

TEST_F(FrmVXRebiuldTheaterTest, FitsTheScreenWhateverTheSizeOfItsTexts) {
    for (const int points : {9, 40}) {
        QFont font = window_->font();
        font.setPointSize(points);
        window_->setFont(font);
        window_->hide();
        window_->Form_Load();
        window_->show();
        QCoreApplication::processEvents();
        const QRect room = window_->screen()->availableGeometry();
        EXPECT_LT(window_->height(), room.height()) << points;
        for (const char* name : {"cmdExit", "PB2", "LblStatus"}) {
            const QWidget& control = Find<QWidget>(*window_, name);
            const QPoint corner =
                control.mapTo(window_.get(), QPoint(control.width(), control.height()));
            EXPECT_LE(corner.y(), window_->height()) << name << ", " << points;
            EXPECT_LE(corner.x(), window_->width()) << name << ", " << points;
        }
        // Nothing is cut on the right, where nobody could scroll to it.
        EXPECT_GE(Find<QScrollArea>(*window_, "scroll").viewport()->width(),
                  Find<QWidget>(*window_, "frames").minimumSizeHint().width())
            << points;
    }
}

TEST_F(FrmVXRebiuldTheaterTest, ShowsItsTextsAndFolders) {
    EXPECT_EQ(window_->windowTitle(), "Rebuild Theater");
    EXPECT_EQ(Find<QCheckBox>(*window_, "chkMakeL3").text(),
              "Make L3-L5 and fartiles (very slow, 3-5 hours!!!).");
    EXPECT_FALSE(Find<QCheckBox>(*window_, "chkMakeL3").isChecked());
    EXPECT_EQ(Find<QLineEdit>(*window_, "txtFarSize").text(), "32");
    EXPECT_EQ(Text("Label1"), "Fartile Size (default 32x32 px):");
    EXPECT_EQ(Text("LblStatus"), "Press the start button to begin...");
    EXPECT_EQ(Text("lblElevationFile"), "Elevation File: NONE SELECTED");
    EXPECT_EQ(Text("lblWithThis"),
              "With this option all Lx Files (except L2) are created, along with a new "
              "set of fartiles. All Lx files (and Ox of course) are saved at the same "
              "folder as L2 file and fartiles are saved at the same folder as "
              "texture.bin. If a file that is going to be build allready exists, it "
              "will be overwritten. \n\nNo elevation data are corrected here. If Lx "
              "files exist, their elevation data will be maintained, if they don't "
              "exist they will be created and 0s will be put for elevation data. "
              "Recomend you run this script first and then run the script below if you "
              "have changed elevation data, to fix them.");
    EXPECT_TRUE(Text("lblWithThis2").ends_with("Simple Mean Value and Max."));
    for (const char* name : {"lblLxFolder", "lblTextureFolder", "lblElevationFile"})
        EXPECT_EQ(Find<QLabel>(*window_, name).toolTip().toStdString(), Text(name));
    EXPECT_TRUE(Text("lblLxFolder").starts_with("Lx Folder: /"));
    EXPECT_TRUE(Text("lblLxFolder").ends_with("/TERRAIN/"));
    EXPECT_TRUE(Text("lblTextureFolder").ends_with("/TEXTURE/"));
    EXPECT_TRUE(Find<QRadioButton>(*window_, "Option1_0").isChecked());
    EXPECT_FALSE(Enabled("cmdStartElv"));
    EXPECT_TRUE(Enabled("cmdStart"));
}

TEST_F(FrmVXRebiuldTheaterTest, IsHighEnoughForItsTexts) {
    for (const char* name : {"lblWithThis", "lblWithThis2"}) {
        const auto& label = Find<QLabel>(*window_, name);
        EXPECT_GE(label.height(), label.heightForWidth(label.width())) << name;
    }
}

TEST_F(FrmVXRebiuldTheaterTest, TheSizeTakesDigitsAlone) {
    auto& box = Find<QLineEdit>(*window_, "txtFarSize");
    box.clear();
    QTest::keyClicks(&box, "1a-6.");
    EXPECT_EQ(box.text(), "16");
}

TEST_F(FrmVXRebiuldTheaterTest, IsLockedWhileARunIsAtWorkAndTellsWhatWasMade) {
    Click("chkMakeL3");
    bool seenLocked = false;
    std::string seenRun;
    window_->OnEvents = [&] {
        seenLocked = !Enabled("cmdStart") && !Enabled("cmdExit") && !Enabled("cmdBrowse");
        seenRun = Text("lblRun");
    };
    std::string report;
    platform_.Dialogs.ExpectAnyBox("Rebuild Theater", BoxAnswer::Ok, &report);
    Click("cmdStart");
    EXPECT_TRUE(seenLocked);
    EXPECT_NE(seenRun.find(" of 6, 0:0"), std::string::npos) << seenRun;
    EXPECT_NE(report.find("theater.L0: "), std::string::npos) << report;
    EXPECT_NE(report.find("fartilesN.dds: "), std::string::npos) << report;
    EXPECT_EQ(Text("LblStatus"), "All done...");
    EXPECT_TRUE(Enabled("cmdStart"));
    EXPECT_EQ(Find<QProgressBar>(*window_, "PB2").value(), 6375);
    // The last far tile by day and by night stays to be looked at.
    EXPECT_EQ(Find<QLabel>(*window_, "PicFT").pixmap().width(), 32);
    EXPECT_EQ(Find<QLabel>(*window_, "PicFTN").pixmap().width(), 32);
}

TEST_F(FrmVXRebiuldTheaterTest, EscStopsARunAfterAQuestion) {
    const auto before = world_.Files();
    bool pressed = false;
    window_->OnEvents = [&] {
        if (!std::exchange(pressed, true))
            QTest::keyClick(window_.get(), Qt::Key_Escape);
    };
    const std::string question =
        "Do you want to stop the rebuild? No file has changed yet, and all files of the "
        "theater stay as they are.";
    Click("chkMakeL3");
    platform_.Dialogs.ExpectBox("Rebuild Theater", question, BoxAnswer::Yes);
    Click("cmdStart");
    EXPECT_TRUE(platform_.Dialogs.AllAnswered());
    EXPECT_EQ(Text("LblStatus"), "Stopped. No file has changed.");
    EXPECT_EQ(world_.Files() == before, true);
    EXPECT_TRUE(Enabled("cmdStart"));
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(verbs_.Story, "");
}

TEST_F(FrmVXRebiuldTheaterTest, TheCloseBoxAsksTooAndNoGoesOn) {
    bool closed = false;
    window_->OnEvents = [&] {
        if (!std::exchange(closed, true))
            window_->close();
    };
    Click("chkMakeL3");
    platform_.Dialogs.ExpectBox(
        "Rebuild Theater",
        "Do you want to stop the rebuild? No file has changed yet, and all files of the "
        "theater stay as they are.",
        BoxAnswer::No);
    platform_.Dialogs.ExpectAnyBox("Rebuild Theater", BoxAnswer::Ok, nullptr);
    Click("cmdStart");
    EXPECT_EQ(Text("LblStatus"), "All done...");
    EXPECT_TRUE(window_->isVisible());
}

// Nothing of the last run is there when the window comes up again.
TEST_F(FrmVXRebiuldTheaterTest, ComesUpAsItDidTheFirstTime) {
    const auto open = [this] {
        window_->hide();
        window_->Form_Load();
        window_->show();
        QCoreApplication::processEvents();
        return window_->size();
    };
    const QSize before = window_->size();
    Click("chkMakeL3");
    platform_.Dialogs.ExpectAnyBox("Rebuild Theater", BoxAnswer::Ok, nullptr);
    Click("cmdStart");
    EXPECT_EQ(Text("LblStatus"), "All done...");
    Find<QLabel>(*window_, "lblTime").setText("About 00mins remaining.");
    EXPECT_EQ(open(), before);
    EXPECT_EQ(Text("LblStatus"), "Press the start button to begin...");
    EXPECT_EQ(Text("lblTime"), "");
    EXPECT_EQ(Text("Label2"), "");
    EXPECT_TRUE(Find<QLabel>(*window_, "PicFT").pixmap().isNull());
}

// The system ends the program, or somebody does: there is nobody to be asked.
TEST_F(FrmVXRebiuldTheaterTest, TheEndOfTheProgramStopsARunWithoutAQuestion) {
    const auto before = world_.Files();
    window_->OnEvents = [&] {
        state_.Exiting = true;
        window_->close();
    };
    Click("chkMakeL3");
    Click("cmdStart");
    EXPECT_EQ(Text("LblStatus"), "Stopped. No file has changed.");
    EXPECT_EQ(world_.Files() == before, true);
    EXPECT_EQ(verbs_.Story, "");
}

TEST_F(FrmVXRebiuldTheaterTest, AnErrorIsReportedAndTheWindowCanBeUsedAgain) {
    BarrierAnswers answers;
    answers.ExpectAnyBox("Vardenix", BoxAnswer::Continue, nullptr);
    Click("chkMakeL3");
    Find<QLineEdit>(*window_, "txtFarSize").setText("4");
    Click("cmdStart");
    EXPECT_TRUE(Enabled("cmdStart"));
    EXPECT_EQ(Text("LblStatus"), "Failed. No file has changed.");
}

TEST_F(FrmVXRebiuldTheaterTest, AChosenMasterIsShownInUpperCase) {
    ChooseMaster();
    EXPECT_TRUE(Text("lblElevationFile").ends_with("/MASTER.ELV"));
    EXPECT_TRUE(Enabled("cmdStartElv"));
    platform_.Dialogs.ExpectCancel();
    Click("cmdBrowse");
    EXPECT_EQ(Text("lblElevationFile"), "Elevation File: NONE SELECTED");
    EXPECT_FALSE(Enabled("cmdStartElv"));
}

TEST_F(FrmVXRebiuldTheaterTest, AnElevationRebuildReadsLevel2Back) {
    ChooseMaster();
    Click("Option1_2");
    platform_.Dialogs.ExpectAnyBox("Rebuild Theater", BoxAnswer::Ok, nullptr);
    Click("cmdStartElv");
    EXPECT_EQ(verbs_.Story, "forget anew ");
    EXPECT_EQ(state_.Terrain.LxArr(1).Elevation, 0x0101);
}

TEST_F(FrmVXRebiuldTheaterTest, UnsavedEditsOfLevel2AreAskedAboutFirst) {
    const std::string question =
        "The L2 file has changes that this run would replace. Do "
        "you want to save it first?";
    state_.Flags.L2 = true;
    ChooseMaster();
    const auto before = world_.Files();
    platform_.Dialogs.ExpectBox("Rebuild Theater", question, BoxAnswer::Cancel);
    Click("cmdStartElv");
    EXPECT_EQ(verbs_.Story, "");
    verbs_.Saves = false;
    platform_.Dialogs.ExpectBox("Rebuild Theater", question, BoxAnswer::Yes);
    Click("cmdStartElv");
    EXPECT_EQ(verbs_.Story, "save ");
    EXPECT_EQ(world_.Files() == before, true);
    platform_.Dialogs.ExpectBox("Rebuild Theater", question, BoxAnswer::No);
    platform_.Dialogs.ExpectAnyBox("Rebuild Theater", BoxAnswer::Ok, nullptr);
    Click("cmdStartElv");
    EXPECT_EQ(verbs_.Story, "save forget anew ");
}

// Heights of the theater's own L0 file, one of them changed.
TEST_F(FrmVXRebiuldTheaterTest, UnsavedHeightsOfTheFileThatIsWrittenAreAskedAboutFirst) {
    ASSERT_TRUE(LoadElevationData(state_.Terrain, ElevationKind::L0,
                                  world_.PathOf("theater.l0"), quiet_, platform_.Dialogs,
                                  world_.Log));
    int16_t& height = state_.Terrain.Elevations.At(5, 7);
    const auto changed = static_cast<int16_t>(height + 1);
    {
        const Recording made(state_.Changes, {Paper::Heights}, "Change 1 height");
        height = changed;
    }
    const std::string question =
        "The L0/ELV file has changes that this run would replace. Do you want to save "
        "it first?";
    ChooseMaster();
    const auto before = world_.Files();
    platform_.Dialogs.ExpectBox("Rebuild Theater", question, BoxAnswer::Cancel);
    Click("cmdStartElv");
    EXPECT_EQ(verbs_.Story, "");
    EXPECT_EQ(world_.Files() == before, true);
    platform_.Dialogs.ExpectBox("Rebuild Theater", question, BoxAnswer::No);
    platform_.Dialogs.ExpectAnyBox("Rebuild Theater", BoxAnswer::Ok, nullptr);
    Click("cmdStartElv");
    EXPECT_EQ(verbs_.Story, "forget all all anew ");
    EXPECT_EQ(state_.Terrain.Elevations.At(5, 7), 0x0101);
    EXPECT_EQ(state_.Changes.NextBack()->Name,
              "Level 2 and heights read anew after a rebuild");
    state_.Changes.Back();
    EXPECT_EQ(state_.Terrain.Elevations.At(5, 7), changed);
}

TEST_F(FrmVXRebiuldTheaterTest, UnsavedHeightsOfTheMasterAreAskedAboutFirst) {
    ChooseMaster();
    ASSERT_TRUE(LoadElevationData(state_.Terrain, ElevationKind::Elv,
                                  world_.Folder.File("Master.elv"), quiet_,
                                  platform_.Dialogs, world_.Log));
    state_.Flags.L0ELV = true;
    platform_.Dialogs.ExpectBox(
        "Rebuild Theater",
        "The L0/ELV file has changes that this run would leave out, since it reads that "
        "file from the disk. Do you want to save it first?",
        BoxAnswer::Yes);
    platform_.Dialogs.ExpectAnyBox("Rebuild Theater", BoxAnswer::Ok, nullptr);
    Click("cmdStartElv");
    EXPECT_EQ(verbs_.Story, "save heights forget anew ");
}

TEST_F(FrmVXRebiuldTheaterTest, HeightsAreSavedOverTheFileThatOurOwnRunHasWritten) {
    ASSERT_TRUE(LoadElevationData(state_.Terrain, ElevationKind::L0,
                                  world_.PathOf("theater.l0"), quiet_, platform_.Dialogs,
                                  world_.Log));
    platform_.Dialogs.ExpectAnyBox("Rebuild Theater", BoxAnswer::Ok, nullptr);
    Click("cmdStart");
    state_.Terrain.Elevations.At(5, 7) = 1234;
    EXPECT_EQ(SaveElevationData(state_.Terrain, ElevationKind::L0, "", quiet_,
                                platform_.Dialogs),
              ElevationSave::Done);
}

TEST_F(FrmVXRebiuldTheaterTest, ExitBringsTheWorkspaceBack) {
    Click("cmdExit");
    EXPECT_FALSE(window_->isVisible());
    EXPECT_EQ(verbs_.Story, "leave ");
}

} // namespace
} // namespace vardenix::tests
