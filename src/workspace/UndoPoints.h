#pragma once

#include "theater/Terrain.h"
#include "theater/TileRenumbering.h"
#include "theater/WorkspaceCommands.h"

#include <cstdint>
#include <vector>

namespace vardenix {

// One edit of a level 2 post.
struct UndoPostEntry {
    int32_t Serial = 0;
    TerrainPost OldPost{};
    TerrainPost NewPost{};
};

// One edit of a height of the finest elevations; X and Y are indices of L0ElvArr, from 1.
struct UndoElvEntry {
    int32_t X = 0;
    int32_t Y = 0;
    int16_t NewValue = 0; // feet
    int16_t OldValue = 0;
};

// The last edits of one kind, the newest first, and how many of them are undone.
template <typename Entry>
class UndoStack {
public:
    static constexpr int16_t Capacity = 100;

    // Entries that are undone go for good; at the capacity the oldest falls off.
    void Add(const Entry& entry) {
        entries_.erase(entries_.begin(), entries_.begin() + position_);
        if (UpperBound() == Capacity)
            entries_.pop_back();
        entries_.insert(entries_.begin(), entry);
        position_ = 0;
    }
    void Clear() { *this = {}; }

    int16_t UpperBound() const { return static_cast<int16_t>(entries_.size()); }
    int16_t Position() const { return position_; }
    void SetPosition(int16_t position) { position_ = position; }
    template <typename Change>
    void ForEach(Change change) {
        for (Entry& entry : entries_)
            change(entry);
    }
    // From 1, the newest; std::out_of_range outside.
    const Entry& At(int16_t index) const {
        return entries_.at(static_cast<size_t>(index) - 1);
    }
    bool CanUndo() const { return position_ < UpperBound(); }
    bool CanRedo() const { return position_ > 0; }

private:
    std::vector<Entry> entries_;
    int16_t position_ = 0;
};

// Undo of single edits: a stack for the posts of level 2 and one for the finest
// elevations. What changes posts in any other way (a stamped region, a restore point)
// leaves the stacks alone, and an undo then writes its old value regardless.
class UndoPoints : public RenumberingFollower {
public:
    // Both are borrowed. Every step ends with the panel's buttons and a repaint.
    UndoPoints(Terrain& terrain, WorkspaceCommands& workspace)
        : terrain_(terrain), workspace_(workspace) {}

    // Remembers an edit that the caller has made.
    void AddPostUndo(const TerrainPost& oldPost, const TerrainPost& newPost,
                     int32_t serial);
    void AddElvUndo(int16_t oldValue, int16_t newValue, int32_t y, int32_t x);

    // Moves to a position of the stack, one step from the present one: a higher position
    // undoes, any other does again. With `buttonsOnly` the terrain is left alone.
    void StepPostUndo(int16_t position, bool buttonsOnly);
    void StepElvUndo(int16_t position, bool buttonsOnly);

    // cmdUndo and cmdRedo, one step of what the mode edits. The terrain then differs from
    // what is on the disk, whatever was saved meanwhile, and is marked so. Nothing when
    // there is no such step.
    void Undo(bool l0Mode);
    void Redo(bool l0Mode);
    // Another mode is entered: the buttons are those of its stack.
    void ShowButtons(bool l0Mode);

    bool CanUndo(bool l0Mode) const;
    bool CanRedo(bool l0Mode) const;

    // Posts before and after each edit get the numbers that theirs have become, so that a
    // step still shows the same pictures.
    void TilesRenumbered(const TileRenumbering& numbers) override;

    // Level 2 has been read anew: an undo would write whole posts of before into it.
    void ForgetPosts() { undoPosts_.Clear(); }
    // Other elevations have been loaded: edits of the former ones mean nothing there.
    void ForgetElevations() { undoElv_.Clear(); }

    const UndoStack<UndoPostEntry>& UndoPostStack() const { return undoPosts_; }
    const UndoStack<UndoElvEntry>& UndoElvStack() const { return undoElv_; }
    int16_t UndoPostPos() const { return undoPosts_.Position(); }
    int16_t UndoElvPos() const { return undoElv_.Position(); }

private:
    void Step(bool l0Mode, int16_t by);
    void ShowStep();

    Terrain& terrain_;
    WorkspaceCommands& workspace_;
    UndoStack<UndoPostEntry> undoPosts_;
    UndoStack<UndoElvEntry> undoElv_;
};

} // namespace vardenix
