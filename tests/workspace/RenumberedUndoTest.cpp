#include "support/RecordingCommands.h"
#include "support/ScriptedDialogs.h"
#include "workspace/RestorePoint.h"
#include "workspace/UndoPoints.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

TEST(RenumberedUndo, AStepGivesBackThePostsUnderTheirNewNumbers) {
    Terrain terrain;
    terrain.MapWidth = 16;
    terrain.LxArr = PostArray(256);
    tests::RecordingCommands workspace;
    UndoPoints undo(terrain, workspace);
    const TerrainPost before{20, 100, 1, 2, 3};
    const TerrainPost after{3, 100, 1, 2, 3};
    terrain.LxArr(7) = after;
    undo.AddPostUndo(before, after, 7);
    // A set comes in before number 16: 20 becomes 36, 3 stays.
    undo.TilesRenumbered(TileRenumbering::SetInserted(16, 32));
    undo.Undo(Layer::Posts);
    EXPECT_TRUE(terrain.LxArr(7) == (TerrainPost{36, 100, 1, 2, 3}));
    // The first set goes, also while the step is undone: 36 becomes 20, 3 falls to 0.
    undo.TilesRenumbered(TileRenumbering::SetDeleted(0, 48));
    undo.Redo(Layer::Posts);
    EXPECT_TRUE(terrain.LxArr(7) == (TerrainPost{0, 100, 1, 2, 3}));
    undo.Undo(Layer::Posts);
    EXPECT_TRUE(terrain.LxArr(7) == (TerrainPost{20, 100, 1, 2, 3}));
}

TEST(RenumberedUndo, ARestorePointOfOldNumbersIsAskedAbout) {
    tests::ScriptedDialogs dialogs;
    const std::string question =
        "Tile numbers have changed in the BIN editor since the restore point was made, "
        "so its posts would show other tiles. Do you want to restore it all the same?";
    dialogs.ExpectBox("Attention", question, BoxAnswer::No);
    EXPECT_FALSE(MayRestoreOldNumbers(dialogs));
    dialogs.ExpectBox("Attention", question, BoxAnswer::Yes);
    EXPECT_TRUE(MayRestoreOldNumbers(dialogs));
}

} // namespace
} // namespace vardenix
