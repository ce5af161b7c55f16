#pragma once

#include "catalogue/TileRenumbering.h"
#include "levels/Posts.h"
#include "levels/Terrain.h"
#include "mapview/MapView.h"
#include "program/WorkspaceCommands.h"
#include "workspace/ValueRuns.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace vardenix {

// Finest elevations along a side of a post.
constexpr int32_t HeightsPerPost = 4;

// One step of level 2: an edit of one post, or everything that one stroke or shape has
// painted.
struct UndoPostEntry {
    int32_t Serial = 0; // of the post, or of the first one of the stroke
    TerrainPost OldPost{};
    TerrainPost NewPost{};
    std::vector<TileRun> Stroke{}; // further posts, of which the tile number changed
};

// One step of the finest elevations; X and Y are indices of L0ElvArr, from 1.
struct UndoElvEntry {
    int32_t X = 0;
    int32_t Y = 0;
    int16_t NewValue = 0; // feet
    int16_t OldValue = 0;
    std::vector<HeightRun> Stroke{};
};

// The last steps of one kind, the newest first, and how many of them are undone.
template <typename Entry>
class UndoStack {
public:
    static constexpr int16_t Capacity = 100;
    // What all entries may remember together, in runs of a dozen bytes: 64 MiB. The
    // newest step is kept whatever it takes.
    static constexpr size_t MostRuns = size_t{4} << 20;

    // Entries that are undone go for good; at the capacity the oldest falls off.
    void Add(Entry entry) {
        steps_.erase(steps_.begin(), steps_.begin() + position_);
        if (UpperBound() == Capacity)
            DropOldest();
        steps_.insert(steps_.begin(), Step{std::move(entry), ++lastState_});
        position_ = 0;
        KeepWithinMemory();
    }
    // More belongs to the newest step, which is not undone.
    template <typename Change>
    void Extend(Change change) {
        change(steps_.front().What);
        steps_.front().State = ++lastState_;
        KeepWithinMemory();
    }
    void Clear() { *this = {}; }

    int16_t UpperBound() const { return static_cast<int16_t>(steps_.size()); }
    int16_t Position() const { return position_; }
    void SetPosition(int16_t position) { position_ = position; }
    template <typename Change>
    void ForEach(Change change) {
        for (Step& step : steps_)
            change(step.What);
    }
    // From 1, the newest; std::out_of_range outside.
    const Entry& At(int16_t index) const {
        return steps_.at(static_cast<size_t>(index) - 1).What;
    }
    bool CanUndo() const { return position_ < UpperBound(); }
    bool CanRedo() const { return position_ > 0; }

    // The values are on the disk as they are now. An empty stack begins so.
    void Saved() { saved_ = State(); }
    // They were changed in a way that no step takes back.
    void ChangedOtherwise() { saved_.reset(); }
    // Steps have led back to what was saved last.
    bool IsAsSaved() const { return saved_ == State(); }

private:
    struct Step {
        Entry What;
        uint64_t State; // that it led to, a number of its own
    };

    uint64_t State() const {
        return CanUndo() ? steps_[static_cast<size_t>(position_)].State : oldest_;
    }
    void DropOldest() {
        oldest_ = steps_.back().State;
        steps_.pop_back();
    }
    void KeepWithinMemory() {
        size_t runs = 0;
        for (const Step& step : steps_)
            runs += step.What.Stroke.size();
        while (runs > MostRuns && steps_.size() > 1) {
            runs -= steps_.back().What.Stroke.size();
            DropOldest();
        }
    }

    std::vector<Step> steps_;
    int16_t position_ = 0;
    uint64_t lastState_ = 0;
    uint64_t oldest_ = 0; // the state with every step undone
    std::optional<uint64_t> saved_ = 0;
};

// What a step has changed, in posts counted from 0, also of the finest elevations.
struct ChangedPosts {
    PostBox Box;
    // Whether one of them lies in a part of the terrain, in the same coordinates.
    bool AnyIn = false;
};

// Undo of edits: a stack for the posts of level 2 and one for the finest elevations. What
// changes posts in any other way (a stamped region, a restore point) leaves the stacks
// alone, and an undo then writes its old value regardless.
class UndoPoints : public RenumberingFollower {
public:
    // Both are borrowed. Every step ends with the panel's buttons and a repaint.
    UndoPoints(Terrain& terrain, WorkspaceCommands& workspace)
        : terrain_(terrain), workspace_(workspace) {}

    // Remembers an edit that the caller has made.
    void AddPostUndo(const TerrainPost& oldPost, const TerrainPost& newPost,
                     int32_t serial);
    void AddElvUndo(int16_t oldValue, int16_t newValue, int32_t y, int32_t x);

    // Remembers a stroke or shape as one step; nothing for one that changed nothing.
    void AddStroke(std::vector<TileRun> runs);
    void AddStroke(std::vector<HeightRun> runs);
    // The stroke that the newest step belongs to goes on, without a repaint. Where that
    // step has been undone meanwhile, or was none of a stroke, a new one begins.
    void ExtendStroke(std::vector<TileRun> runs);
    void ExtendStroke(std::vector<HeightRun> runs);
    // The newest step may be gone on with, until EndStroke or the next edit.
    void OpenStroke() { strokeOpen_ = true; }
    void EndStroke() { strokeOpen_ = false; }

    // Moves to a position of the stack, one step from the present one: a higher position
    // undoes, any other does again. With `buttonsOnly` the terrain is left alone.
    void StepPostUndo(int16_t position, bool buttonsOnly);
    void StepElvUndo(int16_t position, bool buttonsOnly);

    // cmdUndo and cmdRedo, one step of what the mode edits. The terrain then differs from
    // what is on the disk and is marked so, or is as it was saved last, and the mark
    // goes. Nothing when there is no such step.
    void Undo(Layer layer);
    void Redo(Layer layer);
    // What the next of these would change, and whether any of it lies within `part`;
    // nothing when there is no such step.
    std::optional<ChangedPosts> NextUndo(Layer layer, const PostBox& part) const;
    std::optional<ChangedPosts> NextRedo(Layer layer, const PostBox& part) const;
    // Another mode is entered: the buttons are those of its stack.
    void ShowButtons(Layer layer);

    bool CanUndo(Layer layer) const;
    bool CanRedo(Layer layer) const;

    // Level 2, or the finest elevations, are on the disk as they are.
    void Saved(Layer layer);
    // Called whenever they are marked as unsaved: if not by an edit that has just been
    // remembered here, no step leads back to what is saved.
    void Marked(Layer layer);
    // A dialog over one value is up, which marks before the edit is remembered.
    void ExpectEdit(bool expected) { remembered_ = expected; }
    // Level 2 has been changed and is not marked: a restore point.
    void ChangedOtherwise() { undoPosts_.ChangedOtherwise(); }

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
    void Step(Layer layer, int16_t by);
    std::optional<ChangedPosts> ChangedBy(Layer layer, int entry,
                                          const PostBox& part) const;
    void ShowStep();

    Terrain& terrain_;
    WorkspaceCommands& workspace_;
    UndoStack<UndoPostEntry> undoPosts_;
    UndoStack<UndoElvEntry> undoElv_;
    bool strokeOpen_ = false;
    bool remembered_ = false; // an edit that has not been marked yet
};

// cmdUndo and cmdRedo of the panel: a step of which nothing is in view scrolls to it.
void UndoInView(UndoPoints& undo, const MapView& view, WorkspaceCommands& workspace);
void RedoInView(UndoPoints& undo, const MapView& view, WorkspaceCommands& workspace);

} // namespace vardenix
