#include "bineditor/RenumberQuestion.h"

#include "bineditor/MadeCatalogue.h"
#include "support/ScriptedDialogs.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

using tests::CatalogueOf;

constexpr const char* MoveText =
    "This action is going to change the tile number order, but the option to "
    "automaticaly correct the L2 file is not enabled. Do you want to enable it now? "
    "(Press Cancel to abort the operation).";
const std::string Tail =
    "\nIt is recommented to enable the automatic correction of L2 file, otherwise there "
    "might be errors when using the program (in case the selected tile is used in L2 it "
    "will be replaced by tile #0)";
const std::string DeleteSetText =
    "This action is going to change the tile number order, or the tiles affected are "
    "used by L2 but the option to automaticaly correct the L2 file is not enabled. Do "
    "you want to enable it now? (Press Cancel to abort the operation)." +
    Tail;
const std::string DeleteTileText =
    "This action is going to change the tile number order, or the tile is used by L2 but "
    "the option to automaticaly correct the L2 file is not enabled. Do you want to "
    "enable it now? (Press Cancel to abort the operation)." +
    Tail;

TEST(RenumberQuestion, AnAppendBehindTheLastSetNeverMatters) {
    const Catalogue catalogue = CatalogueOf({1, 1});
    EXPECT_FALSE(AppendMatters(catalogue.Bin, 2, true));
    EXPECT_TRUE(AppendMatters(catalogue.Bin, 2, false));
    EXPECT_TRUE(AppendMatters(catalogue.Bin, 1, true));
    EXPECT_TRUE(AppendMatters(CatalogueOf({1}).Bin, 1, false));
    EXPECT_FALSE(AppendMatters(TextureBin(), 0, false));
}

TEST(RenumberQuestion, TheLastFullSetThatNobodyUsesDoesNotMatter) {
    Catalogue catalogue = CatalogueOf({16, 16});
    EXPECT_TRUE(DeleteSetMatters(catalogue, 1));
    EXPECT_FALSE(DeleteSetMatters(catalogue, 2));
    catalogue.Lookup[31].UseCount = 1;
    EXPECT_TRUE(DeleteSetMatters(catalogue, 2));
}

TEST(RenumberQuestion, TheMinusOneOfAnEmptySlotCountsAsUsed) {
    const Catalogue catalogue = CatalogueOf({16, 15});
    EXPECT_TRUE(DeleteSetMatters(catalogue, 2));
}

TEST(RenumberQuestion, TheLastTileOfASetThatNobodyUsesDoesNotMatter) {
    Catalogue catalogue = CatalogueOf({3});
    EXPECT_FALSE(DeleteTileMatters(catalogue, 1, 2));
    EXPECT_TRUE(DeleteTileMatters(catalogue, 1, 1));
    catalogue.Lookup[2].UseCount = 4;
    EXPECT_TRUE(DeleteTileMatters(catalogue, 1, 2));
}

TEST(RenumberQuestion, NothingIsAskedWhenTheCorrectionIsOnOrNothingMatters) {
    tests::ScriptedDialogs dialogs;
    bool autoL2 = true;
    EXPECT_TRUE(MayRenumber(NumberEdit::MoveSet, true, autoL2, dialogs));
    autoL2 = false;
    EXPECT_TRUE(MayRenumber(NumberEdit::DeleteTile, false, autoL2, dialogs));
    EXPECT_FALSE(autoL2);
}

TEST(RenumberQuestion, YesSwitchesTheCorrectionOnNoLeavesItAndCancelEnds) {
    tests::ScriptedDialogs dialogs;
    bool autoL2 = false;
    dialogs.ExpectBox("Attention", MoveText, BoxAnswer::Cancel);
    EXPECT_FALSE(MayRenumber(NumberEdit::MoveSet, true, autoL2, dialogs));
    EXPECT_FALSE(autoL2);
    dialogs.ExpectBox("Attention", DeleteSetText, BoxAnswer::No);
    EXPECT_TRUE(MayRenumber(NumberEdit::DeleteSet, true, autoL2, dialogs));
    EXPECT_FALSE(autoL2);
    dialogs.ExpectBox("Attention", MoveText, BoxAnswer::No);
    EXPECT_TRUE(MayRenumber(NumberEdit::AppendSet, true, autoL2, dialogs));
    dialogs.ExpectBox("Attention", DeleteTileText, BoxAnswer::Yes);
    EXPECT_TRUE(MayRenumber(NumberEdit::DeleteTile, true, autoL2, dialogs));
    EXPECT_TRUE(autoL2);
    EXPECT_EQ(dialogs.LastButtons(), BoxButtons::YesNoCancel);
}

} // namespace
} // namespace vardenix
