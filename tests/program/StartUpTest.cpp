#include "program/StartUp.h"

#include "support/Environment.h"
#include "support/FakePlatform.h"
#include "support/JournalMaker.h"
#include "support/RecordingProgress.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

namespace vardenix {
namespace {

using tests::MadeLevel;
using tests::Slurp;
using tests::TestFolder;

TEST(StartUp, ADriveRootHasItsBackslashAlready) {
    EXPECT_EQ(AppPathOf("C:\\"), "C:\\");
    EXPECT_EQ(AppPathOf("/"), "/");
    EXPECT_EQ(AppPathOf("/vx"), "/vx\\");
    EXPECT_EQ(AppPathOf("/opt/vardenix"), "/opt/vardenix\\");
}

TEST(StartUp, TheUpdateQuestionComesOnlyWhileUndecided) {
    tests::ScriptedDialogs dialogs;
    Configuration configuration;
    const std::string question = "This program has an autoupdate feature. Since the "
                                 "usage or not of this feature is "
                                 "not defined in the ini file, you have the option to "
                                 "enable or disable it. Do you "
                                 "want to enable the autoupdate feature? (You can "
                                 "enable/disable it later from the "
                                 "startup window)\n\nThe address that is asked: "
                                 "http://www.vardenix.example/Vardenix/Version/"
                                 "Version.php";
    for (const auto& [answer, stored] :
         {std::pair{BoxAnswer::Yes, 1}, {BoxAnswer::No, 0}}) {
        configuration.AutoCheckForUpdates = 2;
        dialogs.ExpectBox("Confirm", question, answer);
        DecideUpdateCheck(configuration, dialogs);
        EXPECT_EQ(configuration.AutoCheckForUpdates, stored);
        DecideUpdateCheck(configuration, dialogs);
    }
}

TEST(StartUp, TempIsMadeAnewAndUpdateTempGoes) {
    const TestFolder folder;
    folder.Write("Temp/old/file", "x");
    folder.Write("UpdateTemp/file", "x");
    ProgramState state;
    state.Folders.AppPath = folder.Path() + "\\";
    PrepareFolders(state);
    EXPECT_EQ(folder.Names(), "Temp");
    EXPECT_EQ(folder.Names("Temp"), "1 1.lock");
    EXPECT_TRUE(std::filesystem::is_empty(folder.File("Temp/1")));
    EXPECT_EQ(state.Folders.TempFolder, folder.Path() + "\\Temp\\1\\");
    EXPECT_EQ(state.Folders.UpdateTempFolder, folder.Path() + "\\UpdateTemp\\1\\");
}

TEST(StartUp, EachRunHasAFolderOfItsOwnAndLeavesThoseOfLivingRuns) {
    const TestFolder folder;
    ProgramState first;
    first.Folders.AppPath = folder.Path() + "\\";
    PrepareFolders(first);
    folder.Write("Temp/1/tile.tga", "x");
    folder.Write("UpdateTemp/1/update.7z", "x");
    folder.Write("UpdateTemp/stray", "x");
    {
        ProgramState second;
        second.Folders.AppPath = first.Folders.AppPath;
        PrepareFolders(second);
        EXPECT_EQ(second.Folders.TempFolder, folder.Path() + "\\Temp\\2\\");
        EXPECT_EQ(folder.Names("Temp"), "1 1.lock 2 2.lock");
        EXPECT_EQ(folder.Names("UpdateTemp"), "1");
    }
    ProgramState third;
    third.Folders.AppPath = first.Folders.AppPath;
    PrepareFolders(third);
    EXPECT_EQ(folder.Names("Temp"), "1 1.lock 2 2.lock");
    EXPECT_EQ(Slurp(folder.File("Temp/1/tile.tga")), "x");
}

TEST(StartUp, TempIsOursAndNeitherALinkNorAUsersOwnFolder) {
    const TestFolder folder;
    folder.Write("temp/of the user", "x");
    folder.Write("updatetemp/of the user", "x");
    folder.Write("elsewhere/precious", "x");
    for (const char* name : {"Temp", "UpdateTemp"})
        std::filesystem::create_directory_symlink(folder.File("elsewhere"),
                                                  folder.File(name));
    ProgramState state;
    state.Folders.AppPath = folder.Path() + "\\";
    PrepareFolders(state);
    EXPECT_EQ(folder.Names(), "Temp elsewhere temp updatetemp");
    EXPECT_FALSE(std::filesystem::is_symlink(folder.File("Temp")));
    EXPECT_EQ(folder.Names("Temp"), "1 1.lock");
    EXPECT_EQ(std::filesystem::status(folder.File("Temp")).permissions(),
              static_cast<std::filesystem::perms>(0700));
    for (const char* name : {"temp", "updatetemp"})
        EXPECT_EQ(Slurp(folder.File(name) + "/of the user"), "x");
    EXPECT_EQ(Slurp(folder.File("elsewhere/precious")), "x");
}

TEST(StartUp, TheTemporaryFolderIsTheUsersOwn) {
    const TestFolder folder;
    const tests::Environment temporary("TMPDIR", folder.Path().c_str());
    ProgramFolders folders;
    FindSystemTempPath(folders);
    EXPECT_EQ(folders.SystemTempPath,
              folder.File("vardenix-" + std::to_string(geteuid())) + "\\");
    EXPECT_TRUE(std::filesystem::is_directory(folder.File(folder.Names())));
}

TEST(StartUp, TheProgramHasTwoPlaces) {
    const TestFolder folder;
    folder.Write("own/VX.ini", "[LAST_SETT]\r\nZOOM=7\r\n");
    ProgramState state;
    BeginProgram(state, folder.File("own"), "/vx");
    EXPECT_EQ(state.Folders.AppPath, folder.File("own") + "\\");
    EXPECT_EQ(state.Folders.ShippedPath, "/vx\\");
    EXPECT_EQ(state.Configuration.Zoom, 7);
    // Nobody's settings are those of a first start, wherever the program is started.
    ProgramState homeless;
    BeginProgram(homeless, "", "/vx");
    EXPECT_EQ(homeless.Folders.AppPath, "");
    EXPECT_EQ(homeless.Configuration.AutoCheckForUpdates, 2);
}

Discovery TwoTheaters() {
    Discovery discovery;
    discovery.FalconBaseDir = "/games/f4\\";
    discovery.FalconState = FalconListed;
    discovery.TheaterList.resize(3);
    discovery.TheaterList[1].Name = "North";
    discovery.TheaterList[1].TerrainDir = "terrdata\\north";
    discovery.TheaterList[2].Name = "S\xFC"
                                    "d";
    discovery.TheaterList[2].TerrainDir = "terrdata\\s\xFC"
                                          "d";
    return discovery;
}

TEST(StartUp, TheatersAreOfferedOnlyInState1) {
    Discovery discovery = TwoTheaters();
    EXPECT_EQ(TheaterChoices(discovery),
              (std::vector<std::string>{"MANUALLY OPEN PATH", "North",
                                        "S\xC3\xBC"
                                        "d"}));
    discovery.FalconState = FalconUnlisted;
    EXPECT_EQ(TheaterChoices(discovery),
              (std::vector<std::string>{"MANUALLY OPEN PATH"}));
    EXPECT_EQ(TheaterChoices({}), (std::vector<std::string>{"MANUALLY OPEN PATH"}));
}

TEST(StartUp, AStoredIndexBeyondTheListFallsBackTo0) {
    Configuration configuration;
    configuration.OptionTheaterListIndex = 2;
    EXPECT_EQ(StoredTheaterIndex(configuration, 3), 2);
    EXPECT_EQ(StoredTheaterIndex(configuration, 2), 0);
    EXPECT_EQ(configuration.OptionTheaterListIndex, 0);
    configuration.OptionTheaterListIndex = -4;
    EXPECT_EQ(StoredTheaterIndex(configuration, 3), 0);
}

TEST(StartUp, ATheaterGivesItsFourPathsAndIsRemembered) {
    Configuration configuration;
    const TheaterPaths paths = ChooseTheater(2, TwoTheaters(), configuration);
    const std::string base = "/games/f4\\terrdata\\s\xC3\xBC"
                             "d";
    EXPECT_EQ(paths.L2File, base + "\\terrain\\theater.l2");
    EXPECT_EQ(paths.BinFile, base + "\\texture\\texture.bin");
    EXPECT_EQ(paths.MapFile, base + "\\terrain\\theater.map");
    EXPECT_EQ(paths.DDSFolder, base + "\\texture\\texture\\");
    EXPECT_EQ(configuration.OptionTheaterListIndex, 2);
}

TEST(StartUp, Entry0GivesTheLastManualPaths) {
    Configuration configuration;
    configuration.OptionTheaterListIndex = 2;
    configuration.L2File = "a";
    configuration.BinFile = "b";
    configuration.MapFile = "c";
    configuration.DdsPath = "d\\";
    const TheaterPaths paths = ChooseTheater(0, TwoTheaters(), configuration);
    EXPECT_EQ(paths.L2File + paths.BinFile + paths.MapFile + paths.DDSFolder, "abcd\\");
    EXPECT_EQ(configuration.OptionTheaterListIndex, 0);
}

// Writes down what it is asked.
class FakeWindows : public OpeningWindows, public ProgramEnd {
public:
    std::string Story;
    void PreviewChanged() override { Story += "preview "; }
    void LoadMapEditor() override { Story += "mapeditor "; }
    void LoadMap() override { Story += "map "; }
    void ShowMainPanel() override { Story += "main "; }
    void RestoreChildWindows() override { Story += "children "; }
    void RefreshPalette() override { Story += "palette "; }
    void InitForm() override { Story += "init "; }
    void UnloadWindows() override { Story += "unload "; }
    void EndProcess() override { Story += "end "; }
};

class TheaterOpening : public testing::Test {
protected:
    void SetUp() override {
        state_.Folders.AppPath = folder_.Path() + "\\";
        const tests::PairBytes pair = tests::ScatteredPair(MadeLevel::Empty(32));
        folder_.Write("terrain/theater.L2", pair.L);
        folder_.Write("terrain/theater.O2", pair.O);
        folder_.Write("terrain/theater.map", std::string(1112, '\0'));
        folder_.Write("texture/Texture.bin", tests::CatalogueBytes({{1, {{"A.PCX"}}}}));
        folder_.Write("texture/texture/A.dds", "x");
        paths_ = PathsOfTheater(folder_.Path() + "\\", "");
    }
    bool Check() { return CheckTheaterPaths(state_, paths_, platform_.Dialogs, log_); }
    void Load() { LoadTheater(state_, progress_, platform_.All, log_, windows_); }

    TestFolder folder_;
    tests::FakePlatform platform_;
    DebugLog log_{platform_.Clock};
    tests::RecordingProgress progress_;
    FakeWindows windows_;
    ProgramState state_;
    TheaterPaths paths_;
};

TEST_F(TheaterOpening, ChecksThePathsInOrder) {
    const auto expectComplaint = [&](const std::string& words) {
        platform_.Dialogs.ExpectBox("Error...", words, BoxAnswer::Ok);
        EXPECT_FALSE(Check());
        EXPECT_EQ(platform_.Dialogs.LastIcon(), BoxIcon::Critical);
    };
    const auto remove = [&](const char* name) {
        std::filesystem::remove(folder_.File(name));
    };
    EXPECT_TRUE(Check());
    remove("terrain/theater.map");
    expectComplaint("Theater.map File not found\n" + folder_.File("terrain/theater.map"));
    remove("texture/Texture.bin");
    std::filesystem::create_directory(folder_.File("texture/Texture.bin"));
    expectComplaint("Texture.bin File not found\n" + folder_.File("texture/Texture.bin"));
    remove("terrain/theater.O2");
    expectComplaint("O2 File not found\n" + folder_.File("terrain/theater.O2"));
    remove("terrain/theater.L2");
    expectComplaint("L2 File not found\n" + folder_.File("terrain/theater.l2"));
    paths_.L2File = "";
    expectComplaint("L2 File not found");
}

TEST_F(TheaterOpening, EveryFileIsKnownByItsRealPathFromNowOn) {
    paths_.DDSFolder = "/no such folder\\";
    ASSERT_TRUE(Check());
    EXPECT_EQ(state_.Terrain.LFilename, folder_.File("terrain/theater.L2"));
    EXPECT_EQ(state_.Terrain.OFilename, folder_.File("terrain/theater.O2"));
    EXPECT_EQ(state_.Catalogue.BinPath, folder_.File("texture/Texture.bin"));
    EXPECT_EQ(state_.MAPFile, folder_.File("terrain/theater.map"));
    EXPECT_EQ(state_.Catalogue.DDSFolder, "/no such folder/");
    paths_.DDSFolder = folder_.File("TEXTURE\\Texture\\");
    ASSERT_TRUE(Check());
    EXPECT_EQ(state_.Catalogue.DDSFolder, folder_.File("texture/texture/"));
}

TEST_F(TheaterOpening, TheLogHasTheL2PathInUpperCase) {
    log_.DebugFlag = true;
    log_.StartDebugLog(state_.Folders.AppPath);
    ASSERT_TRUE(Check());
    const std::string upper = UpperCase(folder_.File("terrain/theater."));
    const std::string text = Slurp(folder_.File("Debug.txt"));
    EXPECT_NE(text.find("LFilename to open: " + upper + "L2\r\n"), std::string::npos);
    EXPECT_NE(text.find("OFilename to open: " + upper + "O2\r\n"), std::string::npos);
}

TEST_F(TheaterOpening, EveryOccurrenceInTheFilesNameIsReplaced) {
    EXPECT_EQ(OffsetFileOfL2("/THEATER.L WORK/THEATER.L2"), "/THEATER.L WORK/THEATER.O2");
    EXPECT_EQ(OffsetFileOfL2("/a/Theater.l work theater.L2"),
              "/a/Theater.o work theater.O2");
    EXPECT_EQ(OffsetFileOfL2("/ISLAND.L2"), "/ISLAND.L2");
}

TEST_F(TheaterOpening, AL2FileOfAnotherNameIsItsOwnOFile) {
    paths_.L2File = folder_.Write("terrain/island.l2", tests::Int32Bytes(0));
    ASSERT_TRUE(Check());
    EXPECT_EQ(state_.Terrain.OFilename, state_.Terrain.LFilename);
    Load();
    EXPECT_EQ(state_.Terrain.MapWidth, 16);
}

TEST_F(TheaterOpening, AnOFileThatAKilledSaveOwesIsThereAtTheCheck) {
    // The first save of a new pair, killed between the two renames.
    const std::string pathO = folder_.File("terrain/theater.O2");
    const std::string bytesO = Slurp(pathO);
    std::filesystem::rename(pathO, pathO + "x");
    tests::JournalMaker journal;
    journal.Add("theater.L2", Slurp(folder_.File("terrain/theater.L2")), pathO);
    journal.Add("theater.O2", bytesO, pathO);
    folder_.Write("terrain/vardenix.journal", journal.Text());
    EXPECT_TRUE(Check());
    EXPECT_EQ(Slurp(pathO), bytesO);
}

TEST_F(TheaterOpening, AnIntakeThatWasKilledHalfWayIsFinished) {
    const std::string picture = folder_.Write("texture/texture/HSEA.dds", "old");
    folder_.Write("texture/texture/HSEA.ddsx", "new");
    tests::JournalMaker journal;
    journal.Add("HSEA.dds", "new", picture);
    folder_.Write("texture/texture/vardenix.journal", journal.Text());
    EXPECT_TRUE(Check());
    EXPECT_EQ(Slurp(picture), "new");
    EXPECT_FALSE(
        std::filesystem::exists(folder_.File("texture/texture/vardenix.journal")));
}

TEST_F(TheaterOpening, LoadsInItsOrderAndThenShowsTheWindows) {
    log_.DebugFlag = true;
    log_.StartDebugLog(state_.Folders.AppPath);
    ASSERT_TRUE(Check());
    Load();
    log_.DebugFlag = false;
    EXPECT_EQ(windows_.Story, "preview mapeditor map main children palette init ");
    EXPECT_EQ(state_.Preview.Side, 32);
    EXPECT_EQ(state_.Catalogue.Lookup[0].UseCount, 1024);
    std::string steps;
    const std::string text = Slurp(folder_.File("Debug.txt"));
    for (const char* line :
         {"LFilename to open: ", "OFilename to open: ", "BinPath to open: ",
          "MAPFile to open: ", "DDSFolder to open: ", "Starting LoadLfile...\r\n",
          "Exiting LoadLFile...\r\n", "Starting OpenBinFile...\r\n",
          "Exiting OpenBinFile...\r\n", "Starting ShowLFile...\r\n",
          "Exiting ShowLfile...\r\n", "Comparing L2 Tiles\r\n",
          "Initiating FrmVXMap...\r\n", "Showing FrmVXMain...\r\n"}) {
        const size_t at = text.find(line, steps.size());
        ASSERT_NE(at, std::string::npos) << line;
        steps = text.substr(0, at + 1);
    }
    const std::string& story = progress_.Story();
    EXPECT_LT(story.find("text Loading L2 File..."), story.find("text Loading Tiles..."));
    EXPECT_LT(story.find("text Loading Tiles..."), story.find("text Making Image..."));
    EXPECT_LT(story.find("text Making Image..."), story.find("hide|text Almost done..."));
}

TEST_F(TheaterOpening, ANegativeTileNumberEndsTheOpening) {
    MadeLevel level = MadeLevel::Empty(32);
    level.At(3, 4).Tile = -2;
    const tests::PairBytes pair = tests::ScatteredPair(level);
    folder_.Write("terrain/theater.L2", pair.L);
    folder_.Write("terrain/theater.O2", pair.O);
    ASSERT_TRUE(Check());
    EXPECT_THROW(Load(), RuntimeError);
    EXPECT_EQ(windows_.Story, "preview ");
}

class Ending : public TheaterOpening {};

TEST_F(Ending, GoesThroughItsStepsInOrder) {
    log_.DebugFlag = true;
    log_.StartDebugLog(state_.Folders.AppPath);
    PrepareFolders(state_);
    folder_.Write("VXUndo.tmp", "x");
    ExitProgram(state_, "Loader.exe now", platform_.All, log_, windows_);
    EXPECT_TRUE(state_.Exiting);
    EXPECT_EQ(windows_.Story, "unload end ");
    EXPECT_EQ(platform_.Processes.Story, "start Loader.exe now|sleep 1000");
    EXPECT_EQ(folder_.Names(), "Debug.txt VX.ini terrain texture");
    EXPECT_NE(Slurp(folder_.File("Debug.txt")).find("Debug Terminated at "),
              std::string::npos);
}

TEST_F(Ending, LeavesTheScratchFilesOfAnotherRun) {
    ProgramState other;
    other.Folders.AppPath = state_.Folders.AppPath;
    PrepareFolders(other);
    PrepareFolders(state_);
    folder_.Write("Temp/1/tile.tga", "x");
    folder_.Write("Temp/2/tile.tga", "x");
    ExitProgram(state_, "", platform_.All, log_, windows_);
    EXPECT_EQ(folder_.Names("Temp"), "1 1.lock");
    EXPECT_EQ(Slurp(folder_.File("Temp/1/tile.tga")), "x");
}

TEST_F(Ending, AnUnwritableSettingsFileIsToldAndTheProgramEnds) {
    state_.Folders.TempFolder = folder_.Path() + "\\Temp\\";
    std::filesystem::create_directory(folder_.File("VX.ini"));
    folder_.Write("VX.ini/in the way", "x");
    platform_.Dialogs.WhileBoxIsUp = [this] { EXPECT_EQ(windows_.Story, ""); };
    platform_.Dialogs.ExpectBox(
        "Vardenix",
        "Run-time error '75':\n\nPath/File access error\nwriting " + folder_.Path() +
            "/VX.ini: Is a directory",
        BoxAnswer::Ok);
    ExitProgram(state_, "", platform_.All, log_, windows_);
    EXPECT_EQ(windows_.Story, "unload end ");
    EXPECT_EQ(platform_.Processes.Story, "sleep 1000");
}

PreviewColors NumberedColors() { return {100, {1, 2, 3, 4, 5, 6, 7, 8}}; }

TEST(HeightPicture, ClassesEndWhereTheyShould) {
    const PreviewColors colors = NumberedColors();
    const std::pair<int, uint32_t> expected[] = {
        {-32768, 1}, {-1, 1},   {0, 1},    {49, 1},   {50, 2},   {100, 2},
        {101, 3},    {500, 3},  {501, 4},  {1000, 4}, {1001, 5}, {1500, 5},
        {1501, 6},   {3000, 6}, {3001, 7}, {5000, 7}, {5001, 8}, {32767, 8}};
    for (const auto& [elevation, level] : expected)
        EXPECT_EQ(ElevationClassColor(static_cast<int16_t>(elevation), colors), level)
            << elevation;
}

TEST(HeightPicture, SitsOneRowLow) {
    Terrain terrain;
    terrain.MapWidth = 3;
    terrain.LxArr = PostArray(9);
    terrain.LxArr(1).Elevation = 5001; // (1, 1): falls off the bottom
    terrain.LxArr(5).Elevation = 60;   // (2, 2): the last row
    terrain.LxArr(9).Elevation = -1;   // (3, 3): row 1
    const tests::FixedClock clock;
    DebugLog log(clock);
    tests::RecordingProgress progress;
    const HeightPicture picture = ShowLFile(terrain, NumberedColors(), progress, log);
    const uint32_t none = HeightPicture::Unpainted;
    EXPECT_EQ(picture.Pixels,
              (std::vector<uint32_t>{none, none, none, 100, 100, 1, 100, 2, 100}));
    EXPECT_EQ(progress.Story(), "bar 33|events|bar 67|events|bar 100|events|events");
}

} // namespace
} // namespace vardenix
