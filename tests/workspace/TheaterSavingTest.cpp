#include "workspace/TheaterSaving.h"

#include "levels/TerrainStore.h"
#include "support/FixedClock.h"
#include "support/RecordingProgress.h"
#include "support/ScriptedDialogs.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vardenix {
namespace {

using tests::MadeLevel;
using tests::RecordingProgress;
using tests::Slurp;

constexpr const char* ElevationFilter = "L0 Files (*.l0)|*.l0|ELV files (*.elv)|*.elv";
constexpr const char* WrongWidth =
    "The size of L0 file doesn't appear to be valid for this theater";

// Writes down what happens on the panel: "lock unlock L0saved".
class ToldPanel : public SavingPanel {
public:
    std::string Story;
    bool L0Dirty = false;

    void LockPanel(bool locked) override { Say(locked ? "lock" : "unlock"); }
    bool L0NeedSaveFlag() const override { return L0Dirty; }
    void L2Saved() override { Say("L2saved"); }
    void L0Saved() override {
        L0Dirty = false;
        Say("L0saved");
    }
    void SetL0FileName(const std::string& fileName) override {
        Say("name(" + fileName + ")");
    }

private:
    void Say(const std::string& what) { Story += (Story.empty() ? "" : " ") + what; }
};

// A theater of 16 posts a side with a pair on the disk, and its elevations of 64 a side.
class TheaterSavingTest : public testing::Test {
protected:
    TheaterSavingTest() {
        terrain_.MapWidth = 16;
        terrain_.LxArr = PostArray(256);
        terrain_.LFilename = folder_.Write("theater.L2", "old L");
        terrain_.OFilename = folder_.Write("theater.O2", "old O");
    }

    std::string WriteElv(const std::string& name, int16_t value = 3,
                         int count = 64 * 64) {
        std::string bytes;
        for (int i = 0; i < count; ++i)
            bytes += tests::Int16Bytes(value);
        return folder_.Write(name, bytes);
    }
    std::string WriteL0(const std::string& name, int width, unsigned seed) {
        const auto pair = tests::ScatteredPair(MadeLevel::Random(width, seed));
        folder_.Write(name + ".O0", pair.O);
        return folder_.Write(name + ".L0", pair.L);
    }
    bool Load(const std::string& path, int filterIndex) {
        dialogs_.ExpectOpen("", path, filterIndex);
        return cmdLoadL0Elv(parts_).has_value();
    }
    // Loads heights of 3 feet everywhere and begins to edit them.
    void EditElv() {
        path_ = WriteElv("heights.elv");
        ASSERT_TRUE(Load(path_, 2));
        view_.L0Mode = true;
        panel_.Story.clear();
    }

    tests::TestFolder folder_;
    Terrain terrain_;
    MapView view_;
    tests::ScriptedDialogs dialogs_;
    RecordingProgress bar_;
    tests::FixedClock clock_;
    DebugLog log_{clock_};
    ToldPanel panel_;
    SavingParts parts_{terrain_, view_, dialogs_, bar_, log_, panel_};
    std::string path_;
};

TEST_F(TheaterSavingTest, SavesLevel2OverTheTheatersPair) {
    terrain_.LxArr(2).TileOffset = 99;
    bool busyInside = false;
    bar_.OnEvents = [&] { busyInside = view_.ScrollBusy; };
    EXPECT_TRUE(CmdSaveTheater(parts_, false));
    const MadeLevel read = tests::ReadPair(terrain_.LFilename, terrain_.OFilename);
    ASSERT_EQ(read.Width, 16);
    EXPECT_EQ(read.Posts[1].Tile, 99);
    EXPECT_EQ(panel_.Story, "lock unlock L2saved");
    EXPECT_TRUE(busyInside);
    EXPECT_FALSE(view_.ScrollBusy);
    EXPECT_NE(bar_.Story().find("show"), std::string::npos);
    EXPECT_TRUE(bar_.Story().ends_with("hide"));
}

// Opens what is there, as the program does; then another program saves its own.
class TheaterSavingOverOthers : public TheaterSavingTest {
protected:
    TheaterSavingOverOthers() {
        WriteTheirs(1);
        LoadLFile(terrain_, bar_, log_);
        terrain_.LxArr(2).TileOffset = 99;
        WriteTheirs(2);
    }
    void WriteTheirs(unsigned seed) {
        const auto pair = tests::ScatteredPair(MadeLevel::Random(48, seed));
        theirs_ = pair.L;
        for (const auto& [path, bytes] : {std::pair(terrain_.LFilename, pair.L),
                                          std::pair(terrain_.OFilename, pair.O)}) {
            std::filesystem::remove(path);
            tests::Spill(path, bytes);
        }
    }
    void ExpectQuestion(BoxAnswer answer) {
        dialogs_.ExpectBox(
            "Confirm",
            terrain_.LFilename +
                " was changed by another program since it was opened. Overwrite it?",
            answer);
    }

    std::string theirs_;
};

TEST_F(TheaterSavingOverOthers, IsAskedAboutAndNoKeepsTheirFile) {
    ExpectQuestion(BoxAnswer::No);
    EXPECT_FALSE(CmdSaveTheater(parts_, false));
    EXPECT_EQ(dialogs_.LastButtons(), BoxButtons::YesNo);
    EXPECT_EQ(Slurp(terrain_.LFilename), theirs_);
    EXPECT_EQ(panel_.Story, "lock unlock");
}

TEST_F(TheaterSavingOverOthers, YesWritesAndTheNextSaveIsNotAskedAbout) {
    ExpectQuestion(BoxAnswer::Yes);
    EXPECT_TRUE(CmdSaveTheater(parts_, false));
    EXPECT_EQ(tests::ReadPair(terrain_.LFilename, terrain_.OFilename).Posts[1].Tile, 99);
    terrain_.LxArr(2).TileOffset = 98;
    EXPECT_TRUE(CmdSaveTheater(parts_, false));
    EXPECT_EQ(tests::ReadPair(terrain_.LFilename, terrain_.OFilename).Posts[1].Tile, 98);
}

TEST_F(TheaterSavingOverOthers, ConcernsHeightsAsWell) {
    const std::string path = WriteElv("h.elv", 3, 192 * 192);
    ASSERT_TRUE(Load(path, 2));
    view_.L0Mode = true;
    const std::string other(Slurp(path).size(), '\7');
    std::filesystem::remove(path);
    tests::Spill(path, other);
    const std::string question =
        path + " was changed by another program since it was opened. Overwrite it?";
    dialogs_.ExpectBox("Confirm", question, BoxAnswer::No);
    EXPECT_FALSE(CmdSaveTheater(parts_, false));
    EXPECT_EQ(Slurp(path), other);
    dialogs_.ExpectBox("Confirm", question, BoxAnswer::Yes);
    EXPECT_TRUE(CmdSaveTheater(parts_, false));
    EXPECT_NE(Slurp(path), other);
    EXPECT_TRUE(CmdSaveTheater(parts_, false));
}

TEST_F(TheaterSavingTest, SaveAsAsksForAnL2File) {
    dialogs_.ExpectSave("", folder_.File("OTHER.L2"));
    EXPECT_TRUE(CmdSaveTheater(parts_, true));
    EXPECT_EQ(dialogs_.LastFilter(), "L2 Files (*.l2)|*.l2");
    EXPECT_EQ(tests::ReadPair(folder_.File("OTHER.L2"), folder_.File("OTHER.O2")).Width,
              16);
    EXPECT_EQ(Slurp(terrain_.LFilename), "old L");
    EXPECT_EQ(panel_.Story, "lock unlock L2saved");
}

TEST_F(TheaterSavingTest, SaveAsWritesTheFileThatTheDialogAskedAbout) {
    folder_.Write("out/x.l2", "old");
    folder_.Write("out/x.o2", "old");
    folder_.Write("OUT/X.L2", "another theater");
    dialogs_.ExpectSave("", folder_.File("out/x.l2"));
    EXPECT_TRUE(CmdSaveTheater(parts_, true));
    EXPECT_EQ(tests::ReadPair(folder_.File("out/x.l2"), folder_.File("out/x.o2")).Width,
              16);
    EXPECT_EQ(Slurp(folder_.File("OUT/X.L2")), "another theater");
    EXPECT_FALSE(std::filesystem::exists(folder_.File("out/X.L2")));
}

TEST_F(TheaterSavingTest, AnOFileWithoutItsLFileIsAskedAbout) {
    folder_.Write("LONE.O2", "precious");
    const std::string question =
        folder_.File("LONE.O2") + " already exists.\nDo you want to replace it?";
    dialogs_.ExpectSave("", folder_.File("lone.l2"));
    dialogs_.ExpectBox("", question, BoxAnswer::No);
    EXPECT_FALSE(CmdSaveTheater(parts_, true));
    EXPECT_EQ(Slurp(folder_.File("LONE.O2")), "precious");
    EXPECT_FALSE(std::filesystem::exists(folder_.File("LONE.L2")));
    EXPECT_EQ(panel_.Story, "");
    dialogs_.ExpectSave("", folder_.File("lone.l2"));
    dialogs_.ExpectBox("", question, BoxAnswer::Yes);
    EXPECT_TRUE(CmdSaveTheater(parts_, true));
    EXPECT_EQ(tests::ReadPair(folder_.File("LONE.L2"), folder_.File("LONE.O2")).Width,
              16);
}

TEST_F(TheaterSavingTest, ASaveNeverTakesANeighbourForTheTheatersOwnFile) {
    std::filesystem::remove(folder_.File("theater.L2"));
    folder_.Write("THEATER.L2", "a backup");
    dialogs_.ExpectBox(
        "Error...",
        "ERROR number 53\nFile not found\n" + folder_.File("theater.L2") +
            " is not there any more, and " + folder_.File("THEATER.L2") +
            " would be written in its place; save under another name, or put the file "
            "back",
        BoxAnswer::Ok);
    EXPECT_FALSE(CmdSaveTheater(parts_, false));
    EXPECT_EQ(Slurp(folder_.File("THEATER.L2")), "a backup");
    EXPECT_EQ(panel_.Story, "lock unlock");
}

TEST_F(TheaterSavingTest, HeightsStayInTheFileThatTheyWereReadFrom) {
    EditElv();
    folder_.Write("HEIGHTS.ELV", "a backup");
    terrain_.Elevations.At(1, 1) = 99;
    EXPECT_TRUE(CmdSaveTheater(parts_, false));
    EXPECT_EQ(Slurp(path_).substr(0, 2), tests::Int16Bytes(99));
    EXPECT_EQ(Slurp(folder_.File("HEIGHTS.ELV")), "a backup");
}

TEST_F(TheaterSavingTest, ACancelledDialogIsSilent) {
    dialogs_.ExpectCancel();
    EXPECT_FALSE(CmdSaveTheater(parts_, true));
    dialogs_.ExpectCancel();
    EXPECT_FALSE(cmdLoadL0Elv(parts_));
    EXPECT_EQ(panel_.Story, "");
    EXPECT_EQ(bar_.Story(), "");
}

TEST_F(TheaterSavingTest, AnErrorIsToldAndTheFlagStaysUp) {
    terrain_.LFilename = folder_.File("gone/theater.L2");
    terrain_.OFilename = folder_.File("gone/theater.O2");
    dialogs_.ExpectBox("Error...",
                       "ERROR number 76\nPath not found\nwriting " +
                           folder_.File("gone/theater.L2") + ": its folder is not there",
                       BoxAnswer::Ok);
    EXPECT_FALSE(CmdSaveTheater(parts_, false));
    EXPECT_EQ(panel_.Story, "lock unlock");
    EXPECT_FALSE(view_.ScrollBusy);
    EXPECT_EQ(dialogs_.LastIcon(), BoxIcon::Critical);
    // Room is made, and the next try works.
    std::filesystem::create_directory(folder_.File("gone"));
    EXPECT_TRUE(CmdSaveTheater(parts_, false));
    EXPECT_EQ(panel_.Story, "lock unlock lock unlock L2saved");
}

TEST_F(TheaterSavingTest, LoadsAnElvFile) {
    const std::string path = WriteElv("heights.elv", -7);
    EXPECT_TRUE(Load(path, 2));
    EXPECT_EQ(dialogs_.LastFilter(), ElevationFilter);
    EXPECT_EQ(terrain_.Elevations.EMapWidth, 64);
    EXPECT_EQ(terrain_.Elevations.At(64, 64), -7);
    EXPECT_EQ(terrain_.Elevations.Kind, ElevationKind::Elv);
    EXPECT_EQ(panel_.Story, "lock name(" + path + ") unlock");
    EXPECT_TRUE(bar_.Story().starts_with("show"));
    EXPECT_TRUE(bar_.Story().ends_with("hide"));
}

TEST_F(TheaterSavingTest, LoadsAL0File) {
    const std::string path = WriteL0("theater", 64, 5);
    EXPECT_TRUE(Load(path, 1));
    EXPECT_EQ(terrain_.Elevations.Kind, ElevationKind::L0);
    EXPECT_EQ(terrain_.Elevations.At(20, 30),
              MadeLevel::Random(64, 5).At(20, 30).Elevation);
}

TEST_F(TheaterSavingTest, TheFilterAndTheExtensionMustAgree) {
    for (const int filter : {1, 2, 3}) {
        const std::string path = WriteElv(filter == 1 ? "heights.elv" : "heights.l0");
        dialogs_.ExpectOpen("", path, filter);
        dialogs_.ExpectBox("Error!", "Not a valid extension.", BoxAnswer::Ok);
        EXPECT_FALSE(cmdLoadL0Elv(parts_));
    }
    EXPECT_EQ(terrain_.Elevations.Kind, ElevationKind::None);
    EXPECT_EQ(panel_.Story, "");
}

TEST_F(TheaterSavingTest, ExtensionsMindNoCase) {
    EXPECT_TRUE(Load(WriteElv("HEIGHTS.ElV"), 2));
}

TEST_F(TheaterSavingTest, AMissingO0FileLeavesEverythingAsItWas) {
    EditElv();
    dialogs_.ExpectOpen("", folder_.Write("lone.L0", "bytes"), 1);
    dialogs_.ExpectBox("Error...", ".O0 File not found\n" + folder_.File("lone.O0"),
                       BoxAnswer::Ok);
    EXPECT_FALSE(cmdLoadL0Elv(parts_));
    EXPECT_TRUE(view_.L0Mode);
    EXPECT_EQ(terrain_.Elevations.Path, path_);
    EXPECT_EQ(panel_.Story, "lock unlock");
}

TEST_F(TheaterSavingTest, AFileThatIsGoneIsToldOf) {
    dialogs_.ExpectOpen("", folder_.File("gone.elv"), 2);
    dialogs_.ExpectBox("Error...",
                       "ERROR number 53\nFile not found\nopening " +
                           folder_.File("gone.elv") + ": No such file or directory",
                       BoxAnswer::Ok);
    EXPECT_FALSE(cmdLoadL0Elv(parts_));
    EXPECT_EQ(panel_.Story, "lock unlock");
}

TEST_F(TheaterSavingTest, UnsavedHeightsAreAskedFor) {
    EditElv();
    terrain_.Elevations.At(1, 1) = 900;
    panel_.L0Dirty = true;
    const std::string other = WriteElv("other.elv", 44);
    const std::string question = "The L0/ELV file has changes that are not saved. Do you "
                                 "want to load another file and lose them?";
    dialogs_.ExpectOpen("", other, 2);
    dialogs_.ExpectBox("Confirm", question, BoxAnswer::No);
    EXPECT_FALSE(cmdLoadL0Elv(parts_));
    EXPECT_EQ(terrain_.Elevations.At(1, 1), 900);
    EXPECT_EQ(panel_.Story, "");
    dialogs_.ExpectOpen("", other, 2);
    dialogs_.ExpectBox("Confirm", question, BoxAnswer::Yes);
    EXPECT_TRUE(cmdLoadL0Elv(parts_));
    EXPECT_EQ(terrain_.Elevations.At(1, 1), 44);
    EXPECT_EQ(panel_.Story, "lock L0saved name(" + other + ") unlock");
}

TEST_F(TheaterSavingTest, SavesHeightsOverTheirOwnFile) {
    EditElv();
    terrain_.Elevations.At(2, 1) = -600;
    EXPECT_TRUE(CmdSaveTheater(parts_, false));
    const std::string bytes = Slurp(path_);
    EXPECT_EQ(bytes.substr(0, 6), std::string("\3\0\xA8\xFD\3\0", 6));
    EXPECT_EQ(bytes.size(), 64u * 64 * 2);
    EXPECT_EQ(panel_.Story, "lock unlock L0saved");
    EXPECT_EQ(Slurp(terrain_.LFilename), "old L");
}

TEST_F(TheaterSavingTest, SavesHeightsUnderAnotherNameAndKind) {
    EditElv();
    terrain_.Elevations.At(2, 1) = -600;
    const MadeLevel level = MadeLevel::Random(64, 9);
    const std::string pathL = WriteL0("fine", 64, 9);
    dialogs_.ExpectSave("", pathL, 1);
    EXPECT_TRUE(CmdSaveTheater(parts_, true));
    EXPECT_EQ(dialogs_.LastFilter(), ElevationFilter);
    MadeLevel read = tests::ReadPair(pathL, folder_.File("fine.O0"));
    EXPECT_EQ(read.At(2, 1).Elevation, -600);
    EXPECT_EQ(read.At(30, 40).Elevation, 3);
    EXPECT_EQ(read.At(30, 40).Tile, MadeLevel(level).At(30, 40).Tile);
    EXPECT_EQ(terrain_.Elevations.Path, path_);
}

// A L0 over an .elv file would leave an empty file in its place.
TEST_F(TheaterSavingTest, ANameOfTheOtherKindIsRefused) {
    EditElv();
    dialogs_.ExpectSave("", path_, 1);
    dialogs_.ExpectBox("Error!", "Not a valid extension.", BoxAnswer::Ok);
    EXPECT_FALSE(CmdSaveTheater(parts_, true));
    EXPECT_EQ(Slurp(path_).size(), 64u * 64 * 2);
    EXPECT_EQ(panel_.Story, "");
}

// The answer is not looked at: the writer gives up, and the heights are still unsaved.
TEST_F(TheaterSavingTest, AL0OfAnotherSizeEndsTheSave) {
    EditElv();
    const std::string pathL = WriteL0("small", 32, 9);
    const std::string before = Slurp(pathL);
    dialogs_.ExpectSave("", pathL, 1);
    dialogs_.ExpectBox(
        "Error!",
        std::string(WrongWidth) +
            ". Do you want to overwite this file (all other terrain values "
            "will be overwritten)? ",
        BoxAnswer::Yes);
    EXPECT_FALSE(CmdSaveTheater(parts_, true));
    EXPECT_EQ(Slurp(pathL), before);
    EXPECT_EQ(panel_.Story, "lock unlock");
}

TEST_F(TheaterSavingTest, HeightsThatWentIntoTwoEmptyFilesAreStillUnsaved) {
    EditElv();
    dialogs_.ExpectSave("", folder_.File("new.l0"), 1);
    dialogs_.ExpectBox(
        "Confirm",
        "A L0 file keeps tiles and colors beside the heights, so heights can only be "
        "saved into one that is there together with its O0 file.\n" +
            folder_.File("new.l0") +
            " and its O0 file will be two empty files, and the heights stay unsaved. "
            "Copy a L0 file of this theater and its O0 file to that name first, or save "
            "an ELV file.\n"
            "Do you want to write two empty files?",
        BoxAnswer::Yes);
    EXPECT_FALSE(CmdSaveTheater(parts_, true));
    EXPECT_EQ(Slurp(folder_.File("new.l0")), "");
    EXPECT_EQ(Slurp(folder_.File("new.O0")), "");
    EXPECT_EQ(panel_.Story, "lock unlock");
}

} // namespace
} // namespace vardenix
