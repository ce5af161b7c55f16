#include "bineditor/BinCommands.h"

#include "bineditor/MadeCatalogue.h"
#include "program/ChangeLog.h"
#include "support/PictureMaker.h"
#include "support/ScriptedDialogs.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

namespace vardenix {
namespace {

using tests::BlockTile;
using tests::NamesByLookup;

constexpr const char* Question =
    "This action is going to change the tile number order, but the option to "
    "automaticaly correct the L2 file is not enabled. Do you want to enable it now? "
    "(Press Cancel to abort the operation).";
constexpr const char* AppendTitle =
    "Select ONLY normal tiles. Night tiles (if any) will be copied automatically.";

class RecordingWindow : public BinWindow {
public:
    std::string Story;
    bool Stop = false;

    void PrepareForm(bool enable) override { Story += enable ? " on" : " off"; }
    void NeedSave() override { Story += " save"; }
    void LevelTwoRenumbered(const TileRenumbering&, bool changed) override {
        Story += changed ? " pass" : " same";
    }
    bool StopWanted() override { return Stop; }
};

class BinCommandsTest : public testing::Test {
protected:
    BinCommandsTest() {
        std::filesystem::create_directory(folder_.File("dds"));
        std::filesystem::create_directory(folder_.File("Temp"));
        folders_.AppPath = folder_.File("");
        folders_.TempFolder = folder_.File("Temp/");
        settings_.MTile = 8;
        settings_.LTile = 4;
        Begin({2, 2});
    }
    void Begin(const std::vector<int>& counts) {
        catalogue_ = tests::CatalogueOf(counts, folder_.File("dds/"));
        terrain_ = tests::TerrainOf(16, {0, 1, 16, 17});
    }
    BinParts Parts() {
        return {terrain_, catalogue_, settings_, folders_, dialogs_, progress_, window_};
    }
    std::string Chosen(const std::string& name) {
        return folder_.Write("from/" + name, BlockTile(8, 8, "DXT1"));
    }
    // Of the first four posts.
    std::string Posts() const {
        std::string text;
        for (int serial = 1; serial <= 4; ++serial) {
            const int32_t number = terrain_.LxArr(serial).TileOffset;
            text += (text.empty() ? "" : " ") + std::to_string(number);
        }
        return text;
    }

    tests::TestFolder folder_;
    Catalogue catalogue_;
    Terrain terrain_;
    Configuration settings_;
    ProgramFolders folders_;
    tests::ScriptedDialogs dialogs_;
    tests::RecordingProgress progress_;
    RecordingWindow window_;
};

// The catalogue stays unsaved by choice, but pictures take their places at once.
TEST_F(BinCommandsTest, TakingBackAnIntakeBringsTheReplacedPicturesBack) {
    MapFileRecord map;
    FeatureSet features;
    ChangeLog log(Papers{terrain_, catalogue_, map, features});
    const auto pictures = [&] {
        std::map<std::string, std::string> files;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.File("dds")))
            files[entry.path().filename()] = tests::Slurp(entry.path());
        return files;
    };
    const auto append = [&](const std::string& file) {
        Recording made(log, {Paper::Catalogue, Paper::Level2}, "Append a tile");
        std::shared_ptr<FileSwap> replaced;
        BinParts parts = Parts();
        parts.Replaced = &replaced;
        EXPECT_TRUE(TakeInTile(parts, {1, 0}, file));
        made.KeepPictures(replaced);
    };
    append(Chosen("lake.dds"));
    const auto before = pictures();
    EXPECT_EQ(before.size(), 6U);
    EXPECT_EQ(log.At(0).Pictures, nullptr);
    append(folder_.Write("other/lake.dds", BlockTile(8, 8, "DXT3")));
    ASSERT_EQ(log.Count(), 2U); // although the catalogue is the same
    const auto after = pictures();
    ASSERT_NE(after, before);
    log.Back();
    EXPECT_EQ(pictures(), before);
    EXPECT_EQ(catalogue_.Lookup[0].UseCount, 64); // counted anew
    log.Again();
    EXPECT_EQ(pictures(), after);
    log.Back();
    log.Back();
    EXPECT_EQ(pictures(), before); // those that came stay

    log.Again();
    folder_.Write("dds/Hlake.dds", "by somebody else");
    const auto changed = pictures();
    EXPECT_THROW(log.Again(), RuntimeError);
    EXPECT_EQ(pictures(), changed);
    EXPECT_EQ(log.Position(), 1U);
}

TEST_F(BinCommandsTest, ASetIsAppendedBeforeTheSelectedOneAndPostsFollow) {
    dialogs_.ExpectOpen(AppendTitle, Chosen("a.dds"));
    const auto place = cmdAppendSet(Parts(), {2, 0}, 9);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->Set, 2);
    EXPECT_EQ(NamesByLookup(catalogue_, 18), "1A.PCX 1B.PCX - - - - - - - - - - - - - - "
                                             "HA.PCX -");
    EXPECT_EQ(catalogue_.Lookup[16].HasImage, 1);
    EXPECT_EQ(catalogue_.Lookup[16].DayFile, "HA.dds");
    EXPECT_EQ(catalogue_.Bin.Sets[2].Terrain, 9);
    EXPECT_EQ(Posts(), "0 1 32 33");
    EXPECT_EQ(window_.Story, " off save pass on");
    EXPECT_EQ(progress_.Story().substr(0, 10), "show|bar 0");
    EXPECT_TRUE(progress_.Story().ends_with("bar 100|text |hide"));
    EXPECT_EQ(dialogs_.LastFilter(), "DDS File (*.dds)|*.dds");
}

TEST_F(BinCommandsTest, PicturesOfAnotherTileAreReplacedOnlyByWish) {
    ASSERT_TRUE(cmdAppendTile(Parts(), {1, 2}, {{Chosen("lake.dds")}})); // number 2
    catalogue_.Lookup[2].UseCount = 112;
    folder_.Write("dds/HLAKE.dds", "by hand");
    std::filesystem::remove(folder_.File("dds/Hlake.dds"));
    for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Yes}) {
        std::string text;
        dialogs_.ExpectAnyBox("Attention", answer, &text);
        const bool done =
            cmdAppendTile(Parts(), {2, 2}, {{Chosen("lake.dds")}}).has_value();
        EXPECT_EQ(done, answer == BoxAnswer::Yes);
        EXPECT_EQ(text,
                  "The pictures of tile 2 (HLAKE.PCX), which 112 posts show, would be "
                  "replaced, and there is no undo for it; give the new file "
                  "another name instead.\nDo you want to go on?");
        EXPECT_EQ(dialogs_.LastButtons(), BoxButtons::YesNo);
        EXPECT_EQ(tests::Slurp(folder_.File("dds/HLAKE.dds")) == "by hand", !done);
    }
    EXPECT_EQ(catalogue_.Bin.NumTiles, 6);
    // A tile's own pictures are its own.
    ASSERT_TRUE(cmdAppendTile(Parts(), {1, 1}, {{Chosen("1b.dds")}}));
}

TEST_F(BinCommandsTest, ANameThatIsCutIsAskedAboutBeforeAnythingIsWritten) {
    std::string text;
    dialogs_.ExpectAnyBox("Attention", BoxAnswer::No, &text);
    EXPECT_FALSE(cmdAppendSet(Parts(), {2, 0}, 9, {{Chosen("Habcdefghijklmnop.dds")}}));
    EXPECT_EQ(text.substr(0, 72), "Habcdefghijklmnop.dds: at most 16 letters in front of "
                                  "\".dds\" fit into th");
    EXPECT_TRUE(std::filesystem::is_empty(folder_.File("dds")));
    // Of sixteen letters with "H" in front all are kept.
    EXPECT_TRUE(cmdAppendSet(Parts(), {2, 0}, 9, {{Chosen("Habcdefghijklmno.dds")}}));
}

TEST_F(BinCommandsTest, TwoThatWouldBecomeOneTileOfTheCatalogueAreRefused) {
    // The catalogue keeps an "H" and nineteen letters.
    const std::string one = Chosen("abcdefghijklmnopqrst1.dds");
    const std::string other = Chosen("abcdefghijklmnopqrst2.dds");
    dialogs_.ExpectBox(
        {},
        "Bad file name or number\nabcdefghijklmnopqrst1.dds and "
        "abcdefghijklmnopqrst2.dds would both become the tile HABCDEFGHIJKLMNOPQRS, "
        "since the catalogue keeps 20 letters of a name; rename one of them",
        BoxAnswer::Ok);
    EXPECT_FALSE(cmdAppendSet(Parts(), {2, 0}, 9, {{one, other}}));
    EXPECT_TRUE(std::filesystem::is_empty(folder_.File("dds")));
}

TEST_F(BinCommandsTest, BehindTheLastSetNothingIsAskedAndNoNumberChanges) {
    settings_.AutoL2 = false;
    settings_.DefInsertAfter = true;
    const auto place = cmdAppendSet(Parts(), {2, 0}, 9, {{Chosen("a.dds")}});
    ASSERT_TRUE(place);
    EXPECT_EQ(place->Set, 3);
    EXPECT_EQ(Posts(), "0 1 16 17");
    EXPECT_EQ(window_.Story, " off save on");
    settings_.AutoL2 = true;
    window_.Story.clear();
    ASSERT_TRUE(cmdAppendSet(Parts(), {3, 0}, 9, {{Chosen("b.dds")}}));
    EXPECT_EQ(window_.Story, " off save same on");
}

TEST_F(BinCommandsTest, ACancelledQuestionOrDialogChangesNothing) {
    settings_.AutoL2 = false;
    dialogs_.ExpectBox("Attention", Question, BoxAnswer::Cancel);
    EXPECT_FALSE(cmdAppendSet(Parts(), {1, 0}, 9));
    EXPECT_EQ(window_.Story, "");
    settings_.AutoL2 = true;
    dialogs_.ExpectCancel();
    EXPECT_FALSE(cmdAppendSet(Parts(), {1, 0}, 9));
    EXPECT_EQ(window_.Story, " off on");
    EXPECT_TRUE(progress_.Story().ends_with("hide"));
    EXPECT_EQ(catalogue_.Bin.NumSets, 2);
}

TEST_F(BinCommandsTest, SeventeenFilesAreRefusedBeforeAnyIsCopiedAndSixteenPass) {
    std::vector<std::string> files;
    for (char c = 'a'; c < 'a' + 17; ++c)
        files.push_back(Chosen(std::string(1, c) + ".dds"));
    dialogs_.ExpectBox("Error",
                       "The maximum munber of tiles in a new set is 16. You selected 17 "
                       "pictures to be imported.",
                       BoxAnswer::Ok);
    EXPECT_FALSE(cmdAppendSet(Parts(), {1, 0}, 9, files));
    EXPECT_TRUE(std::filesystem::is_empty(folder_.File("dds")));
    files.pop_back();
    EXPECT_TRUE(cmdAppendSet(Parts(), {1, 0}, 9, files));
    EXPECT_EQ(catalogue_.Bin.Sets[1].TileCount, 16);
    EXPECT_EQ(catalogue_.Bin.NumTiles, 20);
}

TEST_F(BinCommandsTest, AFileThatIsNoDdsIsRefused) {
    dialogs_.ExpectBox(
        "Error", "The image a.tga you tried to load doesn't seem to be a valid image",
        BoxAnswer::Ok);
    EXPECT_FALSE(cmdAppendSet(Parts(), {1, 0}, 9, {{"/x/a.tga"}}));
    dialogs_.ExpectBox("", "Invalid extension for pcx or dds image", BoxAnswer::Ok);
    EXPECT_FALSE(cmdAppendTile(Parts(), {1, 0}, {{"/x/a.tga"}}));
    dialogs_.ExpectBox(
        "Error", "The image adds you tried to load doesn't seem to be a valid image",
        BoxAnswer::Ok);
    EXPECT_FALSE(cmdAppendTile(Parts(), {1, 0}, {{"/x/adds"}}));
}

TEST_F(BinCommandsTest, AFailureIsToldWithFileAndCauseAndTheFormCanBeUsedAgain) {
    const std::string bad = folder_.Write("from/b.dds", "no picture");
    const std::string names = NamesByLookup(catalogue_);
    dialogs_.ExpectBox(
        "", "Invalid picture\n" + bad + ": the file is cut: 128 bytes expected, found 10",
        BoxAnswer::Ok);
    EXPECT_FALSE(cmdAppendSet(Parts(), {1, 0}, 9, {{Chosen("a.dds"), bad}}));
    EXPECT_EQ(window_.Story, " off on");
    EXPECT_EQ(NamesByLookup(catalogue_), names);
    EXPECT_EQ(Posts(), "0 1 16 17");
}

TEST_F(BinCommandsTest, AStopBetweenTwoPicturesChangesNothing) {
    window_.Stop = true;
    EXPECT_FALSE(cmdAppendSet(Parts(), {1, 0}, 9, {{Chosen("a.dds")}}));
    EXPECT_EQ(catalogue_.Bin.NumSets, 2);
    EXPECT_EQ(window_.Story, " off on");
}

TEST_F(BinCommandsTest, TheFirstSetOfACatalogueMovesNoNumber) {
    Begin({});
    EXPECT_TRUE(cmdAppendSet(Parts(), {0, -1}, 9, {{Chosen("a.dds")}}));
    EXPECT_EQ(Posts(), "0 1 16 17");
}

TEST_F(BinCommandsTest, ATileLandsInTheFirstEmptySlotWhicheverWasClicked) {
    dialogs_.ExpectOpen("", Chosen("new.DDS"));
    const auto place = cmdAppendTile(Parts(), {2, 11});
    ASSERT_TRUE(place);
    EXPECT_EQ(place->Slot, 2);
    EXPECT_EQ(catalogue_.Bin.Sets[2].TileCount, 3);
    EXPECT_EQ(catalogue_.Bin.NumTiles, 5);
    const TileInfo& info = catalogue_.Lookup[18];
    // In the case that was chosen, until the next rebuild.
    EXPECT_EQ(info.Name + " " + info.DayFile + " " + info.NightFile,
              "HNEW.PCX Hnew.DDS HnewN.dds");
    EXPECT_EQ(info.Terrain, 4);
    EXPECT_EQ(info.UseCount, 0);
    EXPECT_EQ(info.HasImage, 1);
    EXPECT_EQ(catalogue_.Bin.Sets[2].Tiles[3].TileName, "HNEW.PCX            ");
    EXPECT_EQ(Posts(), "0 1 16 17");
}

// Other programs leave such sets behind.
TEST_F(BinCommandsTest, ASetWithoutTilesTakesATileMovesAndGoes) {
    Begin({2, 0, 1});
    terrain_.LxArr(4).TileOffset = 32;
    EXPECT_FALSE(CanDeleteTile(catalogue_.Bin, {2, 0}));
    ASSERT_TRUE(cmdAppendTile(Parts(), {2, 5}, {{Chosen("first.dds")}}));
    EXPECT_EQ(catalogue_.Lookup[16].Name, "HFIRST.PCX");
    EXPECT_EQ(catalogue_.Bin.NumTiles, 4);

    Begin({2, 0, 1});
    terrain_.LxArr(4).TileOffset = 32;
    settings_.AutoL2 = true;
    ASSERT_TRUE(MoveSetNow(Parts(), 2, 1, true));
    EXPECT_EQ(Posts(), "16 17 0 32");
    ASSERT_TRUE(cmdDeleteSet(Parts(), 1));
    EXPECT_EQ(Posts(), "0 1 0 16");
    EXPECT_EQ(catalogue_.Bin.NumSets, 2);
    EXPECT_EQ(catalogue_.Bin.NumTiles, 3);
}

// Two of the 18 tiles stand in TileLookup where the next set has slots.
TEST_F(BinCommandsTest, ASlotThatAnotherSetRunsIntoIsEmptyAllTheSame) {
    Begin({18, 1});
    ASSERT_EQ(catalogue_.Lookup[17].Terrain, 4);
    ASSERT_TRUE(cmdAppendTile(Parts(), {2, 1}, {{Chosen("a.dds")}}));
    EXPECT_EQ(catalogue_.Bin.Sets[2].TileCount, 2);
    EXPECT_EQ(catalogue_.Bin.Sets[2].Tiles[2].TileName, "HA.PCX              ");
    EXPECT_EQ(catalogue_.Lookup[17].Name, "HA.PCX");
    // All slots of the large one are taken.
    ASSERT_TRUE(cmdAppendTile(Parts(), {1, 15}, {{Chosen("b.dds")}}));
    EXPECT_EQ(catalogue_.Bin.Sets[1].TileCount, 18);
    EXPECT_EQ(catalogue_.Bin.Sets[1].Tiles[16].TileName, "HB.PCX              ");
}

TEST_F(BinCommandsTest, AReplacedTileKeepsItsAreasAndLosesItsCount) {
    TileRecord& tile = catalogue_.Bin.Sets[2].Tiles[1];
    tile.NumAreas = 1;
    tile.Areas.push_back({7, 1, 2, 3});
    catalogue_.Lookup[16].UseCount = 64;
    ASSERT_TRUE(cmdAppendTile(Parts(), {2, 0}, {{Chosen("r.dds")}}));
    EXPECT_EQ(catalogue_.Bin.Sets[2].TileCount, 2);
    EXPECT_EQ(catalogue_.Bin.NumTiles, 4);
    EXPECT_EQ(catalogue_.Bin.Sets[2].Tiles[1].TileName, "HR.PCX              ");
    EXPECT_EQ(catalogue_.Bin.Sets[2].Tiles[1].NumAreas, 1);
    EXPECT_EQ(catalogue_.Lookup[16].UseCount, 0);
    EXPECT_EQ(window_.Story, " off save on");
}

TEST_F(BinCommandsTest, WithoutASelectedSlotNothingHappens) {
    EXPECT_FALSE(cmdAppendTile(Parts(), {2, -1}));
    EXPECT_EQ(window_.Story, "");
}

TEST_F(BinCommandsTest, ADeletedSetZeroesItsPostsAndUsesAreCountedAnew) {
    ASSERT_TRUE(cmdDeleteSet(Parts(), 1));
    EXPECT_EQ(Posts(), "0 0 0 1");
    EXPECT_EQ(NamesByLookup(catalogue_, 3), "2A.PCX 2B.PCX -");
    EXPECT_EQ(tests::Uses(catalogue_, 3), "0:192 1:64 2:0");
    EXPECT_EQ(catalogue_.Bin.NumTiles, 2);
    EXPECT_EQ(window_.Story, " off save pass on");
}

TEST_F(BinCommandsTest, WithTheAnswerNoADeletedSetLeavesAllNumbersAlone) {
    settings_.AutoL2 = false;
    dialogs_.ExpectBox("Attention",
                       "This action is going to change the tile number order, or the "
                       "tiles affected are used by L2 but the option to automaticaly "
                       "correct the L2 file is not enabled. Do you want to enable it "
                       "now? (Press Cancel to abort the operation).\nIt is recommented "
                       "to enable the automatic correction of L2 file, otherwise there "
                       "might be errors when using the program (in case the selected "
                       "tile is used in L2 it will be replaced by tile #0)",
                       BoxAnswer::No);
    ASSERT_TRUE(cmdDeleteSet(Parts(), 1));
    EXPECT_EQ(Posts(), "0 1 16 17");
    EXPECT_EQ(tests::Uses(catalogue_, 2), "0:64 1:64");
    EXPECT_FALSE(settings_.AutoL2);
}

TEST_F(BinCommandsTest, TheSelectionStaysWithinTheSets) {
    EXPECT_EQ(cmdDeleteSet(Parts(), 2)->Set, 1);
    EXPECT_EQ(cmdDeleteSet(Parts(), 1)->Set, 0);
    EXPECT_EQ(catalogue_.Bin.NumSets, 0);
}

TEST_F(BinCommandsTest, AnUnusedLastTileGoesWithoutAQuestionOrAPass) {
    for (const bool autoL2 : {false, true}) {
        settings_.AutoL2 = autoL2;
        Begin({2, 2});
        terrain_ = tests::TerrainOf(16, {0, 1, 16, 16});
        window_.Story.clear();
        ASSERT_TRUE(cmdDeleteTile(Parts(), {2, 1}));
        EXPECT_EQ(Posts(), "0 1 16 16");
        EXPECT_EQ(window_.Story, " off save on");
    }
}

// Painting and appending leave the counts behind.
TEST_F(BinCommandsTest, UsesAreCountedBeforeASetIsDeleted) {
    Begin({2, 16});
    for (TileInfo& info : catalogue_.Lookup)
        info.UseCount = 0;
    settings_.AutoL2 = true;
    EXPECT_TRUE(cmdDeleteSet(Parts(), 2));
    EXPECT_EQ(Posts(), "0 1 0 0");
    EXPECT_EQ(window_.Story, " off save pass on");
}

TEST_F(BinCommandsTest, UsesAreCountedBeforeATileIsDeleted) {
    Begin({2, 3});
    for (TileInfo& info : catalogue_.Lookup)
        info.UseCount = 0;
    terrain_.LxArr(4).TileOffset = 18;
    settings_.AutoL2 = true;
    EXPECT_TRUE(cmdDeleteTile(Parts(), {2, 2}));
    EXPECT_EQ(Posts(), "0 1 16 0");
}

TEST_F(BinCommandsTest, ACountLeavesTheMinusOneOfAnEmptySlotThatNobodyUses) {
    Begin({2, 15});
    catalogue_.Lookup[20].UseCount = 5; // nobody's
    terrain_.LxArr(4).TileOffset = 31;
    CountUses(terrain_, catalogue_.Lookup);
    EXPECT_EQ(catalogue_.Lookup[2].UseCount, -1);
    EXPECT_EQ(catalogue_.Lookup[20].UseCount, 0);
    EXPECT_EQ(catalogue_.Lookup[31].UseCount, 1); // an empty slot in use
}

TEST_F(BinCommandsTest, ADeletedTileMovesTheLaterOnesOfItsSetAlone) {
    const auto place = cmdDeleteTile(Parts(), {1, 0});
    ASSERT_TRUE(place);
    EXPECT_EQ(Posts(), "0 0 16 17");
    EXPECT_EQ(NamesByLookup(catalogue_, 2), "1B.PCX -");
    EXPECT_EQ(place->Slot, 0);
    EXPECT_FALSE(CanDeleteTile(catalogue_.Bin, {1, 0})); // its last
    EXPECT_TRUE(CanDeleteTile(catalogue_.Bin, {2, 1}));
    EXPECT_FALSE(CanDeleteTile(catalogue_.Bin, {2, 2})); // empty
}

TEST_F(BinCommandsTest, AMoveAlwaysAsksAndItsPassGoesWithTheSets) {
    settings_.AutoL2 = false;
    dialogs_.ExpectBox("Attention", Question, BoxAnswer::Cancel);
    EXPECT_FALSE(MoveSetNow(Parts(), 1, 2, false));
    EXPECT_EQ(window_.Story, "");
    dialogs_.ExpectBox("Attention", Question, BoxAnswer::Yes);
    const auto place = MoveSetNow(Parts(), 1, 2, false);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->Set, 2);
    EXPECT_EQ(Posts(), "16 17 0 1");
    EXPECT_TRUE(settings_.AutoL2);
    EXPECT_EQ(window_.Story, " off save pass on");
    EXPECT_EQ(tests::Uses(catalogue_, 2), "0:0 1:0");
}

} // namespace
} // namespace vardenix
