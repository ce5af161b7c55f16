// Which tile numbers level 2 and the catalogue have after passes, walks, saves and a
// reading of the file.
#include "program/NumberPasses.h"

#include "catalogue/TextureBin.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

class NumberPassesTest : public testing::Test {
protected:
    NumberPassesTest() {
        terrain_.MapWidth = 16;
        terrain_.LxArr = PostArray(256);
        terrain_.LxArr(1).TileOffset = 16;
    }

    // As an edit of the catalogue with its pass leaves the papers; a name of the map file
    // stands for what the catalogue holds.
    void Delete(int32_t firstNumber) {
        const Recording made(changes_, {Paper::Catalogue, Paper::Level2}, "Delete");
        const TileRenumbering numbers = TileRenumbering::SetDeleted(firstNumber, 64);
        TileSet set;
        set.Terrain = 4;
        catalogue_.Bin.Sets.push_back(set);
        ++catalogue_.Bin.NumSets;
        catalogue_.Lookup.resize(catalogue_.Lookup.size() + 16);
        int32_t& tile = terrain_.LxArr(1).TileOffset;
        const int32_t before = tile;
        tile = numbers.Of(tile);
        passes_.Passed(numbers, tile != before);
    }
    void Paint(int32_t tile) {
        const Recording made(changes_, {Paper::Level2}, "Paint");
        terrain_.LxArr(1).TileOffset = tile;
    }
    void ReadAnew(int32_t tile) {
        {
            const Recording made(changes_, {Paper::Level2}, "Read");
            terrain_.LxArr(1).TileOffset = tile;
            ++terrain_.LxArr(2).Elevation;
        }
        passes_.LevelTwoReadAnew();
        changes_.Saved(Paper::Level2);
    }
    std::string Unsaved() const {
        return std::string(passes_.Unsaved(Paper::Level2) ? "L2 " : "") +
               (passes_.Unsaved(Paper::Catalogue) ? "BIN" : "");
    }

    Terrain terrain_;
    Catalogue catalogue_;
    MapFileRecord map_{};
    FeatureSet features_;
    Papers papers_{terrain_, catalogue_, map_, features_};
    ChangeLog changes_{papers_};
    NumberPasses passes_{changes_};
};

TEST_F(NumberPassesTest, APassLeavesBothFilesWithOldNumbersUntilEachIsSaved) {
    EXPECT_EQ(Unsaved(), "");
    Delete(0);
    EXPECT_TRUE(passes_.Fits());
    EXPECT_EQ(Unsaved(), "L2 BIN");
    changes_.Saved(Paper::Level2);
    EXPECT_EQ(Unsaved(), "BIN");
    Paint(3); // has the new numbers, as its file
    EXPECT_EQ(Unsaved(), "BIN");
    changes_.Saved(Paper::Catalogue);
    EXPECT_EQ(Unsaved(), "");
}

TEST_F(NumberPassesTest, LevelTwoReadAnewLacksThePassesSinceItsFileWasWritten) {
    Delete(0); // 16 becomes 0
    Delete(32);
    ReadAnew(40);
    EXPECT_FALSE(passes_.Fits());
    const auto missing = passes_.Missing();
    ASSERT_EQ(missing.size(), 2U);
    EXPECT_EQ(missing[1].Of(missing[0].Of(40)), 24);
    Paint(missing[1].Of(missing[0].Of(40)));
    passes_.CaughtUp();
    EXPECT_TRUE(passes_.Fits());
    EXPECT_TRUE(passes_.Missing().empty());
    EXPECT_EQ(Unsaved(), "L2 BIN");
}

TEST_F(NumberPassesTest, LevelTwoReadAnewAfterItWasSavedLacksNone) {
    Delete(0);
    changes_.Saved(Paper::Level2);
    ReadAnew(0);
    EXPECT_TRUE(passes_.Fits());
    EXPECT_EQ(Unsaved(), "BIN");
}

TEST_F(NumberPassesTest, AWalkLeadsBackToTheNumbersOfThatState) {
    Delete(0);
    Paint(7);
    ReadAnew(16);
    EXPECT_FALSE(passes_.Fits());
    changes_.Back(); // the reading
    EXPECT_TRUE(passes_.Fits());
    EXPECT_EQ(Unsaved(), "L2 BIN");
    changes_.Back();
    changes_.Back(); // the pass
    EXPECT_TRUE(passes_.Fits());
    EXPECT_EQ(Unsaved(), "");
    Paint(5); // from here on the old numbers
    EXPECT_TRUE(passes_.Fits());
    EXPECT_EQ(Unsaved(), "");
}

TEST_F(NumberPassesTest, WhereACatalogueWasTakenBackBehindTheFileNothingIsMissing) {
    Delete(0);
    changes_.Saved(Paper::Level2);
    changes_.Back();
    ReadAnew(0); // of the later numbers
    EXPECT_FALSE(passes_.Fits());
    EXPECT_TRUE(passes_.Missing().empty());
}

TEST_F(NumberPassesTest, APassThatChangesNoPostIsMissingOnlyWhereItWouldChangeOne) {
    Paint(1);
    changes_.Saved(Paper::Level2);
    Delete(32);
    EXPECT_TRUE(passes_.Fits());
    EXPECT_EQ(Unsaved(), "");
    ReadAnew(1);
    EXPECT_TRUE(passes_.Fits());
    Paint(40); // painted over posts that the next pass would have moved
    changes_.Saved(Paper::Level2);
    Paint(1);
    Delete(32);
    ReadAnew(40);
    EXPECT_FALSE(passes_.Fits());
    EXPECT_EQ(passes_.Missing().size(), 1U);
}

// What leaves all as it is must not be taken for the numbering of the next change.
TEST_F(NumberPassesTest, AnEditThatMovesNoNumberBeginsNone) {
    passes_.Passed(TileRenumbering::SetsMoved({0, 1, 2}), false);
    Paint(3);
    EXPECT_TRUE(passes_.Fits());
    EXPECT_EQ(Unsaved(), "");
}

// As a restoring brings it back: one change of both papers.
TEST_F(NumberPassesTest, APassThatWasRestoredIsUnsavedLikeAnyOther) {
    {
        const Recording made(changes_, {Paper::Catalogue, Paper::Level2}, "Delete set 1");
        catalogue_.Bin.NumTiles = 5;
        terrain_.LxArr(1).TileOffset = 0;
    }
    EXPECT_TRUE(passes_.Fits());
    EXPECT_EQ(Unsaved(), "L2 BIN");
    ReadAnew(16);
    EXPECT_FALSE(passes_.Fits());
    EXPECT_TRUE(passes_.Missing().empty());
}

} // namespace
} // namespace vardenix
