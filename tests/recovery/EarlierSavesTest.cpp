#include "recovery/EarlierSaves.h"

#include "catalogue/TextureBinFile.h"
#include "files/InPlace.h"
#include "levels/ElevationFiles.h"
#include "levels/TerrainStore.h"
#include "recovery/EditedTheater.h"
#include "support/ErrorOf.h"
#include "support/FixedClock.h"
#include "support/RecordingProgress.h"
#include "support/ScriptedDialogs.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace vardenix {
namespace {

using tests::EditedTheater;
using tests::ErrorOf;
using tests::Spill;
using tests::TestFolder;
using tests::WholePapers;

// A theater that is saved to real files, by the program's own savers.
class EarlierSavesTest : public testing::Test {
protected:
    EarlierSavesTest() {
        for (const Paper paper :
             {Paper::Level2, Paper::Heights, Paper::Catalogue, Paper::MapFile})
            WriteToDisk(paper);
        keeper_ = std::make_unique<SaveKeeper>(State(), saves_);
    }

    ProgramState& State() { return *theater_.State; }

    void WriteToDisk(Paper paper) {
        switch (paper) {
        case Paper::Level2:
            return SaveTheater(State().Terrain, "", progress_);
        case Paper::Heights:
            ASSERT_EQ(SaveElevationData(State().Terrain, ElevationKind::Elv, "",
                                        progress_, dialogs_),
                      ElevationSave::Done);
            return;
        case Paper::Catalogue:
            return SaveBinFile(State().Catalogue, log_);
        default:
            State().MAPFileRead = WriteInPlace(
                State().MAPFile, std::as_bytes(std::span(&State().MapFileRecord, 1)),
                State().MAPFileRead);
        }
    }
    void Save(Paper paper) {
        WriteToDisk(paper);
        State().Changes.Saved(paper);
    }

    // A change of one paper.
    void Edit(Paper paper, int to) {
        const Recording made(State().Changes, {paper}, "Edit");
        if (paper == Paper::Level2)
            State().Terrain.LxArr(theater_.UpTo(1000) + 1).TileOffset = to;
        else if (paper == Paper::Heights)
            State().Terrain.Elevations.L0ElvArr(theater_.UpTo(9000) + 1) =
                static_cast<int16_t>(to);
        else if (paper == Paper::Catalogue)
            theater_.AppendSet("N" + std::to_string(to) + ".pcx");
        else
            State().MapFileRecord.Palette[to % 256].Red = static_cast<uint8_t>(to);
    }

    std::vector<EarlierSave> SavesOf(Paper paper) {
        return EarlierSavesOf(State(), paper, saves_);
    }

    TestFolder folder_;
    std::string saves_ = folder_.File("data/saves");
    EditedTheater theater_{folder_};
    tests::RecordingProgress progress_;
    tests::ScriptedDialogs dialogs_;
    tests::FixedClock clock_;
    DebugLog log_{clock_};
    std::unique_ptr<SaveKeeper> keeper_;
};

TEST_F(EarlierSavesTest, TheLastTenOfEachPaperCanBeBroughtBack) {
    for (const Paper paper :
         {Paper::Level2, Paper::Heights, Paper::Catalogue, Paper::MapFile}) {
        SCOPED_TRACE(NameOfPaper(paper));
        std::vector<WholePapers> states;
        for (int save = 1; save <= 13; ++save) {
            states.push_back(theater_.Copy());
            Edit(paper, 3 + save);
            Save(paper);
        }
        ASSERT_EQ(SavesOf(paper).size(), MostSaves);
        const WholePapers now = theater_.Copy();
        for (size_t number = 0; number < MostSaves; ++number) {
            BringBack(State(), paper, number, saves_);
            EXPECT_EQ(theater_.Copy(), states[states.size() - 1 - number]) << number;
            EXPECT_TRUE(State().Changes.Unsaved(paper));
            State().Changes.Back();
            EXPECT_EQ(theater_.Copy(), now);
        }
        EXPECT_EQ(
            ErrorOf([&] { BringBack(State(), paper, MostSaves, saves_); }).NumberValue(),
            9);
    }
}

TEST_F(EarlierSavesTest, WhatIsUnsavedGoesWithABringingBackAndComesBackByAStep) {
    const WholePapers first = theater_.Copy();
    Edit(Paper::Level2, 5);
    Save(Paper::Level2);
    Edit(Paper::Level2, 6);
    const WholePapers unsaved = theater_.Copy();
    BringBack(State(), Paper::Level2, 0, saves_);
    EXPECT_EQ(theater_.Copy(), first);
    State().Changes.Back();
    EXPECT_EQ(theater_.Copy(), unsaved);
}

TEST_F(EarlierSavesTest, ABroughtBackSaveThatIsSavedIsOneMore) {
    const WholePapers first = theater_.Copy();
    Edit(Paper::Catalogue, 5);
    Save(Paper::Catalogue);
    const WholePapers second = theater_.Copy();
    BringBack(State(), Paper::Catalogue, 0, saves_);
    Save(Paper::Catalogue);
    ASSERT_EQ(SavesOf(Paper::Catalogue).size(), 2U);
    BringBack(State(), Paper::Catalogue, 0, saves_);
    EXPECT_EQ(theater_.Copy(), second);
    BringBack(State(), Paper::Catalogue, 1, saves_);
    EXPECT_EQ(theater_.Copy(), first);
}

TEST_F(EarlierSavesTest, AnotherProgramsSaveIsTheEndOfTheWay) {
    Edit(Paper::MapFile, 5);
    Save(Paper::MapFile);
    EXPECT_EQ(SavesOf(Paper::MapFile).size(), 1U);
    Spill(State().MAPFile, std::string(1112, 'x'));
    State().MAPFileRead = IdentityOfRealPath(State().MAPFile);
    EXPECT_TRUE(SavesOf(Paper::MapFile).empty());
    EXPECT_EQ(
        ErrorOf([&] { BringBack(State(), Paper::MapFile, 0, saves_); }).NumberValue(), 9);
}

TEST_F(EarlierSavesTest, ADamagedOneIsTheEndOfTheWay) {
    for (const int tile : {5, 6, 7}) {
        Edit(Paper::Level2, tile);
        Save(Paper::Level2);
    }
    const std::vector<EarlierSave> saves = SavesOf(Paper::Level2);
    ASSERT_EQ(saves.size(), 3U);
    std::string bytes = tests::Slurp(saves[1].File);
    bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 1);
    Spill(saves[1].File, bytes);
    EXPECT_EQ(SavesOf(Paper::Level2).size(), 1U);
}

// A folder that cannot be made keeps no save from being made.
TEST_F(EarlierSavesTest, NothingKeepsASaveFromBeingMade) {
    folder_.Write("data", "in the way");
    Edit(Paper::Level2, 5);
    Save(Paper::Level2);
    EXPECT_FALSE(State().Changes.AnyUnsaved());
    EXPECT_TRUE(SavesOf(Paper::Level2).empty());
}

} // namespace
} // namespace vardenix
