#include "program/windows/FrmStartUp.h"

#include "support/FakePlatform.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"
#include "texts/RuntimeError.h"
#include "windows/WindowTest.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDropEvent>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTest>

#include <filesystem>
#include <set>

namespace vardenix {
namespace {

using tests::Find;
using tests::TestFolder;

class FakeWindows : public OpeningWindows {
public:
    std::string Story;
    std::function<void()> OnPreview;
    std::function<void()> OnMapEditor;

    void PreviewChanged() override {
        Story += "preview ";
        if (OnPreview)
            OnPreview();
    }
    void LoadMapEditor() override {
        Story += "mapeditor ";
        if (OnMapEditor)
            OnMapEditor();
    }
    void LoadMap() override { Story += "map "; }
    void ShowMainPanel() override { Story += "main "; }
    void RestoreChildWindows() override { Story += "children "; }
    void RefreshPalette() override { Story += "palette "; }
    void InitForm() override { Story += "init "; }
};

class FrmStartUpTest : public testing::Test {
protected:
    FrmStartUpTest() {
        state_.Folders.AppPath = folder_.Path() + "/";
        state_.Configuration.AutoCheckForUpdates = AutoCheckOff;
        state_.Configuration.P = "{1}";
    }

    // An install with one theater, Norrland.
    void MakeGame() {
        folder_.Write("game/theater.lst", "terrdata\\norrland\\norrland.tdf\r\n");
        folder_.Write("game/terrdata/norrland/norrland.tdf",
                      "NAME Norrland\r\nTERRAINDIR terrdata\\norrland\r\n");
        MakeTheater("game/terrdata/norrland");
        platform_.Registry.Values["SOFTWARE\\Microprose\\Falcon\\4.0|baseDir"] =
            folder_.Path() + "/game";
    }

    void MakeTheater(const std::string& name) {
        const tests::PairBytes pair = tests::ScatteredPair(tests::MadeLevel::Empty(32));
        folder_.Write(name + "/terrain/Theater.L2", pair.L);
        folder_.Write(name + "/terrain/Theater.O2", pair.O);
        folder_.Write(name + "/terrain/Theater.map", std::string(1112, '\0'));
        folder_.Write(name + "/texture/Texture.bin",
                      tests::CatalogueBytes({{1, {{"A.PCX"}}}}));
        folder_.Write(name + "/texture/texture/A.dds", "x");
    }

    void Open() {
        window_ = std::make_unique<FrmStartUp>(state_, platform_.All, log_, windows_);
        window_->Form_Load();
        window_->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    }

    // Opened on a theater whose paths stand in the boxes.
    void OpenOnTheater() {
        MakeTheater("my theater");
        const std::string base = folder_.Path() + "/my theater/";
        state_.Configuration.L2File = base + "terrain/theater.l2";
        state_.Configuration.BinFile = base + "texture/texture.bin";
        state_.Configuration.MapFile = base + "terrain/theater.map";
        state_.Configuration.DdsPath = base + "texture/texture/";
        Open();
    }

    QLineEdit& Box(const char* name) { return Find<QLineEdit>(*window_, name); }
    std::string Text(const char* name) { return Box(name).text().toStdString(); }
    void Click(const char* name) {
        QTest::mouseClick(&Find<QAbstractButton>(*window_, name), Qt::LeftButton);
    }
    bool Visible(const char* name) { return Find<QWidget>(*window_, name).isVisible(); }
    bool Enabled(const char* name) { return Find<QWidget>(*window_, name).isEnabled(); }

    void ExpectUsable() {
        EXPECT_TRUE(Visible("CmdShowTheater"));
        EXPECT_TRUE(Visible("Command1"));
        EXPECT_FALSE(Visible("PB1"));
        EXPECT_EQ(Find<QLabel>(*window_, "Label2").text(), "");
        for (const char* name : {"CmdShowTheater", "CheckDebug", "Combo1",
                                 "chkCheckupdate", "Text1", "Text5", "Image1"})
            EXPECT_TRUE(Enabled(name)) << name;
    }

    TestFolder folder_;
    tests::FakePlatform platform_;
    ProgramState state_;
    DebugLog log_{platform_.Clock};
    FakeWindows windows_;
    std::unique_ptr<FrmStartUp> window_;
};

TEST_F(FrmStartUpTest, WithoutAnInstallOnlyManualPathsAreOffered) {
    state_.Configuration.L2File = "/a b/theater.l2";
    state_.Configuration.BinFile = "/b";
    state_.Configuration.MapFile = "/c";
    state_.Configuration.DdsPath = "/d\\";
    Open();
    EXPECT_EQ(window_->windowTitle(), "Vardenix v3.0.1 - for those who shape theaters");
    const auto& combo = Find<QComboBox>(*window_, "Combo1");
    EXPECT_EQ(combo.count(), 1);
    EXPECT_EQ(combo.currentText(), "MANUALLY OPEN PATH");
    EXPECT_TRUE(Visible("Command1"));
    EXPECT_EQ(Text("Text1"), "/a b/theater.l2");
    EXPECT_EQ(Text("Text2"), "/b");
    EXPECT_EQ(Text("Text4"), "/c");
    EXPECT_EQ(Text("Text5"), "/d\\");
    EXPECT_TRUE(std::filesystem::is_directory(folder_.File("Temp")));
}

TEST_F(FrmStartUpTest, CaptionsAreThoseUsersKnow) {
    Open();
    const auto caption = [this](const char* name) {
        return Find<QLabel>(*window_, name).text().remove('&').toStdString();
    };
    EXPECT_EQ(caption("Label1"), "L2 File");
    EXPECT_EQ(caption("Label3"), "Texture.bin");
    EXPECT_EQ(caption("lblTheaterMap"), "Theater.map");
    EXPECT_EQ(caption("lblDDSFolder"), "DDS Folder");
    EXPECT_EQ(Find<QCheckBox>(*window_, "CheckDebug").text().remove('&'), "Debug");
}

TEST_F(FrmStartUpTest, ATheaterOfTheInstallFillsThePathsAndHidesBrowse) {
    MakeGame();
    Open();
    auto& combo = Find<QComboBox>(*window_, "Combo1");
    ASSERT_EQ(combo.count(), 2);
    EXPECT_EQ(combo.itemText(1), "Norrland");
    combo.setFocus();
    QTest::keyClick(&combo, Qt::Key_Down);
    EXPECT_FALSE(Visible("Command1"));
    const std::string base = folder_.Path() + "/game\\terrdata\\norrland";
    EXPECT_EQ(Text("Text1"), base + "\\terrain\\theater.l2");
    EXPECT_EQ(Text("Text2"), base + "\\texture\\texture.bin");
    EXPECT_EQ(Text("Text4"), base + "\\terrain\\theater.map");
    EXPECT_EQ(Text("Text5"), base + "\\texture\\texture\\");
    EXPECT_EQ(state_.Configuration.OptionTheaterListIndex, 1);
    QTest::keyClick(&combo, Qt::Key_Up);
    EXPECT_TRUE(Visible("Command1"));
    EXPECT_EQ(Text("Text1"), "");
    EXPECT_EQ(state_.Configuration.OptionTheaterListIndex, 0);
}

TEST_F(FrmStartUpTest, TheSameTheaterChosenAgainBringsItsPathsBack) {
    MakeGame();
    state_.Configuration.OptionTheaterListIndex = 1;
    Open();
    Find<QLineEdit>(*window_, "Text1").setText("/another/theater.L2");
    auto& combo = Find<QComboBox>(*window_, "Combo1");
    combo.showPopup();
    QTest::keyClick(combo.view(), Qt::Key_Return);
    EXPECT_EQ(combo.currentIndex(), 1);
    EXPECT_EQ(Text("Text1"),
              folder_.Path() + "/game\\terrdata\\norrland\\terrain\\theater.l2");
}

TEST_F(FrmStartUpTest, TheStoredTheaterIsChosen) {
    MakeGame();
    state_.Configuration.OptionTheaterListIndex = 1;
    Open();
    EXPECT_EQ(Find<QComboBox>(*window_, "Combo1").currentText(), "Norrland");
    EXPECT_FALSE(Visible("Command1"));
}

TEST_F(FrmStartUpTest, AStoredIndexBeyondTheListFallsBack) {
    state_.Configuration.OptionTheaterListIndex = 7;
    state_.Configuration.L2File = "/mine.l2";
    Open();
    EXPECT_EQ(Find<QComboBox>(*window_, "Combo1").currentIndex(), 0);
    EXPECT_EQ(Text("Text1"), "/mine.l2");
    EXPECT_TRUE(Visible("Command1"));
}

TEST_F(FrmStartUpTest, ABrokenInstallIsToldAndManualPathsStay) {
    platform_.Registry.Values["SOFTWARE\\Microprose\\Falcon\\4.0|baseDir"] =
        folder_.Path() + "/game";
    folder_.Write("game/theater.lst", "terrdata\\gone.tdf\r\n");
    std::string told;
    platform_.Dialogs.WhileBoxIsUp = [&told] { told += "box"; };
    RuntimeError error(ErrorNumber::FileNotFound);
    try {
        Discovery discovery;
        DiscoverTheaters(platform_.Registry, discovery);
        FAIL() << "the install reads";
    } catch (const RuntimeError& caught) {
        error = caught;
    }
    platform_.Dialogs.ExpectBox("", ReportText(error), BoxAnswer::Ok);
    Open();
    EXPECT_EQ(told, "box");
    EXPECT_EQ(Find<QComboBox>(*window_, "Combo1").count(), 1);
    EXPECT_TRUE(std::filesystem::is_directory(folder_.File("Temp")));
}

TEST_F(FrmStartUpTest, TheAnswerToTheUpdateQuestionIsShown) {
    state_.Configuration.AutoCheckForUpdates = AutoCheckUndecided;
    platform_.Dialogs.ExpectBox(
        "Confirm",
        "This program has an autoupdate feature. Since the usage or not of this feature "
        "is not defined in the ini file, you have the option to enable or disable it. "
        "Do you want to enable the autoupdate feature? (You can enable/disable it later "
        "from the startup window)\n\nThe address that is asked: "
        "http://www.vardenix.example/Vardenix/Version/Version.php",
        BoxAnswer::Yes);
    Open();
    EXPECT_TRUE(Find<QCheckBox>(*window_, "chkCheckupdate").isChecked());
    EXPECT_EQ(state_.Configuration.AutoCheckForUpdates, 1);
}

TEST_F(FrmStartUpTest, TheVersionCheckFollowsItsBox) {
    state_.Configuration.AutoCheckForUpdates = AutoCheckOn;
    window_ = std::make_unique<FrmStartUp>(state_, platform_.All, log_, windows_);
    QSignalSpy wanted(window_.get(), &FrmStartUp::CheckWanted);
    QSignalSpy ends(window_.get(), &FrmStartUp::CheckEnds);
    window_->Form_Load();
    window_->show();
    EXPECT_EQ(wanted.size(), 1);
    window_->ShowCheck("Checking for a new version...");
    const auto& label = Find<QLabel>(*window_, "Label2");
    EXPECT_TRUE(label.isVisible());
    EXPECT_EQ(label.text(), "Checking for a new version...");
    ends.clear();
    Click("chkCheckupdate");
    EXPECT_EQ(ends.size(), 1);
    EXPECT_EQ(label.text(), "");
    EXPECT_EQ(wanted.size(), 1);
    Click("chkCheckupdate");
    EXPECT_EQ(wanted.size(), 2);
}

TEST_F(FrmStartUpTest, TheVersionCheckEndsWhenATheaterIsReadOrTheWindowCloses) {
    OpenOnTheater();
    QSignalSpy ends(window_.get(), &FrmStartUp::CheckEnds);
    windows_.OnPreview = [this] {
        window_->ShowCheck("too late");
        EXPECT_NE(Find<QLabel>(*window_, "Label2").text(), "too late");
    };
    Click("CmdShowTheater");
    EXPECT_EQ(ends.size(), 1);
    Open();
    QSignalSpy more(window_.get(), &FrmStartUp::CheckEnds);
    window_->close();
    EXPECT_EQ(more.size(), 1);
}

TEST_F(FrmStartUpTest, TheCheckBoxesSwitchTheirSettings) {
    Open();
    EXPECT_FALSE(Find<QCheckBox>(*window_, "chkCheckupdate").isChecked());
    Click("chkCheckupdate");
    EXPECT_EQ(state_.Configuration.AutoCheckForUpdates, 1);
    Click("chkCheckupdate");
    EXPECT_EQ(state_.Configuration.AutoCheckForUpdates, 0);
    EXPECT_FALSE(log_.DebugFlag);
    Click("CheckDebug");
    EXPECT_TRUE(log_.DebugFlag);
    Click("CheckDebug");
    EXPECT_FALSE(log_.DebugFlag);
}

// How far the browse dialogs go before one of them is cancelled.
class Browsing : public FrmStartUpTest, public testing::WithParamInterface<int> {};

TEST_P(Browsing, TakesWhatCameBeforeTheCancel) {
    Configuration& stored = state_.Configuration;
    stored.L2File = stored.BinFile = stored.MapFile = stored.DdsPath = "old";
    Open();
    tests::ScriptedDialogs& dialogs = platform_.Dialogs;
    const int answered = GetParam();
    if (answered > 0)
        dialogs.ExpectOpen("Open theater's L2 file...", "/new 1.L2");
    if (answered > 1)
        dialogs.ExpectOpen("Open theater's Texture.bin file...", "/new 2.bin");
    if (answered > 2)
        dialogs.ExpectOpen("Open theater's MAP file...", "/new 3.map");
    if (answered == 3)
        dialogs.ExpectFolder("Select the DDS folder.", std::nullopt);
    else if (answered > 3)
        dialogs.ExpectFolder("Select the DDS folder.", "/new 4");
    else
        dialogs.ExpectCancel();
    Click("Command1");
    EXPECT_EQ(Text("Text1"), answered > 0 ? "/new 1.L2" : "old");
    EXPECT_EQ(Text("Text2"), answered > 1 ? "/new 2.bin" : "old");
    EXPECT_EQ(Text("Text4"), answered > 2 ? "/new 3.map" : "old");
    EXPECT_EQ(Text("Text5"), answered > 3 ? "/new 4\\" : "old");
    EXPECT_EQ(stored.L2File, Text("Text1"));
    EXPECT_EQ(stored.DdsPath, Text("Text5"));
    EXPECT_TRUE(dialogs.AllAnswered());
}

INSTANTIATE_TEST_SUITE_P(AllDialogs, Browsing, testing::Range(0, 5));

TEST_F(FrmStartUpTest, ATheaterThatIsLeftOutIsNamedAtTheList) {
    MakeGame();
    folder_.Write("game/theater.lst",
                  "../<b>far.tdf\r\nterrdata\\norrland\\norrland.tdf\r\n");
    Open();
    auto& list = Find<QComboBox>(*window_, "Combo1");
    ASSERT_EQ(list.count(), 2);
    EXPECT_EQ(list.itemText(1), "Norrland");
    EXPECT_EQ(list.toolTip().toStdString(),
              "<p>Left out: " + folder_.File("game/theater.lst") +
                  ": the line &quot;../&lt;b&gt;far.tdf&quot; leads outside the folder "
                  "of the game</p>");
}

TEST_F(FrmStartUpTest, MissingFilesAreToldOneByOne) {
    OpenOnTheater();
    const auto expect = [this](const std::string& text) {
        platform_.Dialogs.ExpectBox("Error...", text, BoxAnswer::Ok);
        Click("CmdShowTheater");
        EXPECT_EQ(platform_.Dialogs.LastIcon(), BoxIcon::Critical);
        EXPECT_TRUE(platform_.Dialogs.AllAnswered());
        ExpectUsable();
    };
    const auto at = [this](const char* name) { return folder_.File(name); };
    std::filesystem::remove(at("my theater/terrain/Theater.map"));
    // What was not found is named as the disk has it, as far as it is there.
    expect("Theater.map File not found\n" + at("my theater/terrain/theater.map"));
    std::filesystem::remove(at("my theater/texture/Texture.bin"));
    expect("Texture.bin File not found\n" + at("my theater/texture/texture.bin"));
    std::filesystem::remove(at("my theater/terrain/Theater.O2"));
    expect("O2 File not found\n" + at("my theater/terrain/Theater.O2"));
    Box("Text1").clear();
    expect("L2 File not found");
    EXPECT_EQ(windows_.Story, "");
}

TEST_F(FrmStartUpTest, EnterInAPathOpensTheTheater) {
    OpenOnTheater();
    QSignalSpy opened(window_.get(), &FrmStartUp::TheaterOpened);
    Box("Text2").setFocus();
    QTest::keyClick(&Box("Text2"), Qt::Key_Return);
    EXPECT_EQ(windows_.Story, "preview mapeditor map main children palette init ");
    EXPECT_EQ(opened.count(), 1);
    EXPECT_FALSE(window_->isVisible());
    EXPECT_FALSE(state_.Starting);
    EXPECT_EQ(state_.Terrain.MapWidth, 32);
}

TEST_F(FrmStartUpTest, WhileReadingItShowsHowFarItIsAndTakesNoInput) {
    OpenOnTheater();
    std::set<std::string> texts;
    std::set<int> bars;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        texts.insert(Find<QLabel>(*window_, "Label2").text().toStdString());
        bars.insert(Find<QProgressBar>(*window_, "PB1").value());
        EXPECT_FALSE(Visible("CmdShowTheater"));
        EXPECT_FALSE(Visible("Command1"));
        for (const char* name :
             {"CheckDebug", "Combo1", "chkCheckupdate", "Text1", "Image1", "Image3"})
            EXPECT_FALSE(Enabled(name)) << name;
    });
    watch.start(0);
    windows_.OnPreview = [this] { EXPECT_TRUE(Visible("PB1")); };
    windows_.OnMapEditor = [this] {
        EXPECT_FALSE(Visible("PB1"));
        EXPECT_EQ(Find<QLabel>(*window_, "Label2").text(), "Almost done...");
    };
    Click("CmdShowTheater");
    watch.stop();
    EXPECT_TRUE(texts.contains("Making Image..."));
    // Half of the 32 rows: half of the full width of 7020.
    EXPECT_TRUE(bars.contains(3510));
    EXPECT_TRUE(bars.contains(7020));
}

TEST_F(FrmStartUpTest, ClosingWhileReadingWaits) {
    OpenOnTheater();
    QSignalSpy exits(window_.get(), &FrmStartUp::ExitWanted);
    QSignalSpy opened(window_.get(), &FrmStartUp::TheaterOpened);
    windows_.OnPreview = [this] {
        window_->close();
        QTest::keyClick(window_.get(), Qt::Key_Escape);
        QTest::keyClick(window_.get(), Qt::Key_Return);
        EXPECT_TRUE(window_->isVisible());
    };
    Click("CmdShowTheater");
    EXPECT_EQ(exits.count(), 0);
    EXPECT_EQ(opened.count(), 1);
    EXPECT_EQ(windows_.Story, "preview mapeditor map main children palette init ");
}

TEST_F(FrmStartUpTest, AnErrorInReadingGivesTheControlsBack) {
    OpenOnTheater();
    tests::BarrierAnswers answers;
    answers.ExpectBox("Vardenix", "Run-time error '57':\n\nDevice I/O error\ntheater.map",
                      BoxAnswer::Continue);
    windows_.OnMapEditor = [] {
        throw RuntimeError(ErrorNumber::DeviceIo, "theater.map");
    };
    Click("CmdShowTheater");
    ExpectUsable();
    windows_.OnMapEditor = nullptr;
    Click("CmdShowTheater");
    EXPECT_FALSE(window_->isVisible());
}

TEST_F(FrmStartUpTest, AnErrorBeforeTheReadingIsAPlainMessage) {
    OpenOnTheater();
    Click("CheckDebug");
    state_.Folders.AppPath = folder_.Path() + "/no such folder/";
    std::string told;
    try {
        DebugLog other(platform_.Clock);
        other.DebugFlag = true;
        other.StartDebugLog(state_.Folders.AppPath);
        FAIL() << "a log in a missing folder";
    } catch (const RuntimeError& error) {
        told = "ERROR number " + std::to_string(error.NumberValue()) + "\n" +
               error.Description() + (error.Detail().empty() ? "" : "\n") +
               error.Detail();
    }
    platform_.Dialogs.ExpectBox("Error...", told, BoxAnswer::Ok);
    Click("CmdShowTheater");
    EXPECT_TRUE(platform_.Dialogs.AllAnswered());
    ExpectUsable();
}

TEST_F(FrmStartUpTest, TheDebugLogIsWrittenWhenAskedFor) {
    OpenOnTheater();
    Click("CheckDebug");
    Click("CmdShowTheater");
    log_.StopDebugLog();
    const std::string log = tests::Slurp(folder_.File("Debug.txt"));
    EXPECT_NE(log.find("BinPath to open: "), std::string::npos);
    EXPECT_NE(log.find("Showing FrmVXMain..."), std::string::npos);
}

TEST_F(FrmStartUpTest, ADroppedTheaterFillsTheFourPaths) {
    MakeGame();
    state_.Configuration.OptionTheaterListIndex = 1;
    MakeTheater("my theater");
    Open();
    const auto drop = [this](const std::string& path) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QString::fromStdString(path))});
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        enter.setAccepted(false);
        QApplication::sendEvent(window_.get(), &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent event({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window_.get(), &event);
    };
    const std::string base = folder_.File("my theater");
    drop(base);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return Text("Text1") == base + "/terrain/Theater.L2"; }));
    EXPECT_EQ(Text("Text2"), base + "/texture/Texture.bin");
    EXPECT_EQ(Text("Text4"), base + "/terrain/Theater.map");
    EXPECT_EQ(Text("Text5"), base + "/texture/texture/");
    EXPECT_EQ(Find<QComboBox>(*window_, "Combo1").currentText(), "MANUALLY OPEN PATH");
    EXPECT_EQ(state_.Configuration.OptionTheaterListIndex, 0);
    EXPECT_TRUE(Visible("Command1"));
    ExpectUsable();

    std::string text;
    platform_.Dialogs.ExpectAnyBox("Error...", BoxAnswer::Ok, &text);
    folder_.Write("empty/readme.txt", "x");
    drop(folder_.File("empty"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return platform_.Dialogs.AllAnswered(); }));
    EXPECT_NE(text.find(folder_.File("empty")), std::string::npos) << text;
    EXPECT_EQ(Text("Text1"), base + "/terrain/Theater.L2");
}

TEST_F(FrmStartUpTest, ATheaterThatIsNamedOpensAtOnce) {
    MakeTheater("my theater");
    Open();
    QSignalSpy opened(window_.get(), &FrmStartUp::TheaterOpened);
    window_->OpenTheater(folder_.File("my theater"));
    EXPECT_EQ(opened.count(), 1);
    EXPECT_EQ(state_.Terrain.MapWidth, 32);
}

TEST_F(FrmStartUpTest, AnInstallThatIsNamedListsItsTheaters) {
    MakeTheater("install/terrdata/north");
    folder_.Write("install/theater.lst", "north.tdf\n");
    folder_.Write("install/north.tdf", "NAME North\nTERRAINDIR terrdata\\north\n");
    Open();
    QSignalSpy opened(window_.get(), &FrmStartUp::TheaterOpened);
    window_->OpenTheater(folder_.File("install"));
    EXPECT_EQ(opened.count(), 0); // which one is the user's to say
    auto& list = Find<QComboBox>(*window_, "Combo1");
    ASSERT_EQ(list.count(), 2);
    EXPECT_EQ(list.currentIndex(), 1);
    EXPECT_TRUE(list.currentText().startsWith("North"));
    EXPECT_TRUE(Text("Text1").ends_with("\\north\\terrain\\theater.l2")) << Text("Text1");
}

TEST_F(FrmStartUpTest, EscAndTheCloseBoxAskForTheExit) {
    Open();
    QSignalSpy exits(window_.get(), &FrmStartUp::ExitWanted);
    QTest::keyClick(window_.get(), Qt::Key_Escape);
    EXPECT_EQ(exits.count(), 1);
    EXPECT_TRUE(window_->isVisible()); // whoever ends the program unloads it
    window_->close();
    EXPECT_EQ(exits.count(), 2);
    state_.Exiting = true;
    window_->close();
    EXPECT_FALSE(window_->isVisible());
    EXPECT_EQ(exits.count(), 2);
}

TEST_F(FrmStartUpTest, ThePicturesOpenTheMakersPages) {
    Open();
    Click("Image3");
    EXPECT_EQ(platform_.Processes.Story, "open http://www.vardenix.example/");
    platform_.Processes.Story.clear();
    Click("Image1");
    const std::string& story = platform_.Processes.Story;
    EXPECT_EQ(story.substr(story.rfind('|') + 1),
              "open http://www.vardenix.example/vardenix");
    // The sound that was picked lies in the run's own folder in Temp, for the player.
    std::string sound;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.File("Temp/1")))
        sound = entry.path().filename().string();
    ASSERT_TRUE(story.starts_with("start ")) << story;
    EXPECT_NE(story.find("/Temp/1/" + sound + '"'), std::string::npos) << story;
    QFile resource(QString::fromStdString(":/" + sound));
    ASSERT_TRUE(resource.open(QIODevice::ReadOnly));
    EXPECT_EQ(resource.readAll().toStdString(),
              tests::Slurp(folder_.File("Temp/1/" + sound)));
}

TEST_F(FrmStartUpTest, TheBarIsARatioOfItsFullWidth) {
    Open();
    auto& bar = Find<QProgressBar>(*window_, "PB1");
    for (const auto& [value, width] : {std::pair{0, 0}, {25, 1755}, {100, 7020}}) {
        window_->SetPB1(value);
        EXPECT_EQ(bar.value(), width);
    }
    EXPECT_EQ(bar.maximum(), 7020);
}

TEST_F(FrmStartUpTest, TabGoesFromTopToBottom) {
    Open();
    std::string order;
    for (int i = 0; i < 12; ++i) {
        order += QApplication::focusWidget()->objectName().toStdString() + " ";
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, "Combo1 Command1 Text1 Text2 Text4 Text5 CmdShowTheater "
                     "chkCheckupdate CheckDebug Image3 Image1 Combo1 ");
}

TEST_F(FrmStartUpTest, EveryControlHasANameForThoseWhoCannotSeeIt) {
    Open();
    for (const char* name :
         {"Combo1", "Text1", "Text2", "Text4", "Text5", "PB1", "Image1", "Image3"})
        EXPECT_FALSE(Find<QWidget>(*window_, name).accessibleName().isEmpty()) << name;
}

} // namespace
} // namespace vardenix
