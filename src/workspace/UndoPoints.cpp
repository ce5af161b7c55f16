#include "workspace/UndoPoints.h"

namespace vardenix {

void UndoPoints::AddPostUndo(const TerrainPost& oldPost, const TerrainPost& newPost,
                             int32_t serial) {
    undoPosts_.Add({serial, oldPost, newPost});
    StepPostUndo(0, true);
}

void UndoPoints::AddElvUndo(int16_t oldValue, int16_t newValue, int32_t y, int32_t x) {
    undoElv_.Add({x, y, newValue, oldValue});
    StepElvUndo(0, true);
}

void UndoPoints::StepPostUndo(int16_t position, bool buttonsOnly) {
    if (!buttonsOnly) {
        const bool undo = position > undoPosts_.Position();
        const int entry = undo ? position : position + 1;
        const UndoPostEntry& edit = undoPosts_.At(static_cast<int16_t>(entry));
        terrain_.LxArr(edit.Serial) = undo ? edit.OldPost : edit.NewPost;
    }
    undoPosts_.SetPosition(position);
    ShowStep();
}

void UndoPoints::StepElvUndo(int16_t position, bool buttonsOnly) {
    if (!buttonsOnly) {
        const bool undo = position > undoElv_.Position();
        const int entry = undo ? position : position + 1;
        const UndoElvEntry& edit = undoElv_.At(static_cast<int16_t>(entry));
        terrain_.Elevations.At(edit.X, edit.Y) = undo ? edit.OldValue : edit.NewValue;
    }
    undoElv_.SetPosition(position);
    ShowStep();
}

void UndoPoints::ShowStep() {
    workspace_.CommandsChanged();
    workspace_.RefreshPicArray();
}

void UndoPoints::Undo(bool l0Mode) {
    if (CanUndo(l0Mode))
        Step(l0Mode, 1);
}

void UndoPoints::Redo(bool l0Mode) {
    if (CanRedo(l0Mode))
        Step(l0Mode, -1);
}

void UndoPoints::Step(bool l0Mode, int16_t by) {
    const int position = (l0Mode ? UndoElvPos() : UndoPostPos()) + by;
    if (l0Mode) {
        StepElvUndo(static_cast<int16_t>(position), false);
        workspace_.L0NeedSave();
    } else {
        StepPostUndo(static_cast<int16_t>(position), false);
        workspace_.L2NeedSave();
    }
}

void UndoPoints::ShowButtons(bool l0Mode) {
    if (l0Mode)
        StepElvUndo(UndoElvPos(), true);
    else
        StepPostUndo(UndoPostPos(), true);
}

void UndoPoints::TilesRenumbered(const TileRenumbering& numbers) {
    undoPosts_.ForEach([&numbers](UndoPostEntry& edit) {
        edit.OldPost.TileOffset = numbers.Of(edit.OldPost.TileOffset);
        edit.NewPost.TileOffset = numbers.Of(edit.NewPost.TileOffset);
    });
}

bool UndoPoints::CanUndo(bool l0Mode) const {
    return l0Mode ? undoElv_.CanUndo() : undoPosts_.CanUndo();
}

bool UndoPoints::CanRedo(bool l0Mode) const {
    return l0Mode ? undoElv_.CanRedo() : undoPosts_.CanRedo();
}

} // namespace vardenix
