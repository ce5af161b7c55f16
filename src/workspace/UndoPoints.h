#pragma once

#include "catalogue/TileRenumbering.h"
#include "levels/Posts.h"
#include "levels/Terrain.h"
#include "levels/ValueRuns.h"
#include "mapview/MapView.h"
#include "program/ChangeLog.h"
#include "program/WorkspaceCommands.h"
#include "workspace/ChangedPosts.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vardenix {

// Where a step stands in the log of changes: its number, and the revisions of its paper
// that it leads between.
struct EditInLog {
    uint64_t Number = 0;
    std::string Name; // "paint at 107, 103", in posts counted from 0
    uint64_t Before = 0;
    uint64_t After = 0;
};

// One step of level 2: an edit of one post, or everything that one stroke or shape has
// painted.
struct UndoPostEntry {
    int32_t Serial = 0; // of the post, or of the first one of the stroke
    TerrainPost OldPost{};
    TerrainPost NewPost{};
    std::vector<TileRun> Stroke{}; // further posts, of which the tile number changed
    EditInLog Log{};
};

// One step of the finest elevations; X and Y are indices of L0ElvArr, from 1.
struct UndoElvEntry {
    int32_t X = 0;
    int32_t Y = 0;
    int16_t NewValue = 0; // feet
    int16_t OldValue = 0;
    std::vector<HeightRun> Stroke{};
    EditInLog Log{};
};

// The last steps of one kind, the newest first, and how many of them are undone. Copies
// share their steps.
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
            steps_.pop_back();
        steps_.insert(steps_.begin(), std::make_shared<Entry>(std::move(entry)));
        position_ = 0;
        KeepWithinMemory();
    }
    // The newest step, which is not undone, to go on with.
    template <typename Change>
    void Extend(Change change) {
        change(*steps_.front());
        KeepWithinMemory();
    }
    void Clear() { *this = {}; }

    int16_t UpperBound() const { return static_cast<int16_t>(steps_.size()); }
    int16_t Position() const { return position_; }
    void SetPosition(int16_t position) { position_ = position; }
    // Of every step; copies of the stack keep theirs as they were.
    template <typename Change>
    void ForEach(Change change) {
        for (std::shared_ptr<Entry>& step : steps_) {
            step = std::make_shared<Entry>(*step);
            change(*step);
        }
    }
    // From 1, the newest; std::out_of_range outside.
    const Entry& At(int16_t index) const {
        return *steps_.at(static_cast<size_t>(index) - 1);
    }
    bool CanUndo() const { return position_ < UpperBound(); }
    bool CanRedo() const { return position_ > 0; }

private:
    void KeepWithinMemory() {
        size_t runs = 0;
        for (const auto& step : steps_)
            runs += step->Stroke.size();
        while (runs > MostRuns && steps_.size() > 1) {
            runs -= steps_.back()->Stroke.size();
            steps_.pop_back();
        }
    }

    std::vector<std::shared_ptr<Entry>> steps_;
    int16_t position_ = 0;
};

// Single edits, one at a time: a stack for the posts of level 2 and one for the finest
// elevations. Both are views of the log of changes: an edit is an entry there, and a walk
// through the log takes the stacks along. An undo of what is not the log's newest change
// writes its old value regardless of what has come since, and is an entry itself.
class UndoPoints : public RenumberingFollower, public ChangeFollower, public StackKeeper {
public:
    // All are borrowed. Every step ends with the panel's buttons and a repaint. It keeps
    // the log's stacks and follows it.
    UndoPoints(Terrain& terrain, ChangeLog& changes, WorkspaceCommands& workspace);
    ~UndoPoints() override;

    // Remembers an edit that the caller has made.
    void AddPostUndo(const TerrainPost& oldPost, const TerrainPost& newPost,
                     int32_t serial);
    void AddElvUndo(int16_t oldValue, int16_t newValue, int32_t y, int32_t x);

    // A stroke or shape, one step; nothing for one that changed nothing.
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

    ChangeLog& Log() { return changes_; }

    bool CanUndo(Layer layer) const;
    bool CanRedo(Layer layer) const;

    // Posts before and after each edit get the numbers that theirs have become, so that a
    // step still shows the same pictures.
    void TilesRenumbered(const TileRenumbering& numbers) override;

    // Level 2 has been read anew: an undo would write whole posts of before into it.
    void ForgetPosts() { stacks_.Posts.Clear(); }
    // Other elevations have been loaded: edits of the former ones mean nothing there.
    void ForgetElevations() { stacks_.Elv.Clear(); }

    const UndoStack<UndoPostEntry>& UndoPostStack() const { return stacks_.Posts; }
    const UndoStack<UndoElvEntry>& UndoElvStack() const { return stacks_.Elv; }
    int16_t UndoPostPos() const { return stacks_.Posts.Position(); }
    int16_t UndoElvPos() const { return stacks_.Elv.Position(); }

    // A walk through the log shows its step here.
    void Walked(const Change& change, Walk walk) override;
    Stacks StacksNow() const override;
    void TakeStacks(const Stacks& stacks) override;
    void MovePast(const Change& edit, Walk walk) override;

private:
    struct UndoStacks {
        UndoStack<UndoPostEntry> Posts;
        UndoStack<UndoElvEntry> Elv;
    };

    void AddPostStep(UndoPostEntry step, Change change);
    void AddElvStep(UndoElvEntry step, Change change);
    bool MayGoOn(const EditInLog& edit) const;
    void Step(Layer layer, int16_t by);
    void StepTo(int16_t position, Layer layer);
    // Where the step is the log's next one: the log walks. False where it is not.
    bool WalkInLog(const EditInLog& edit, Walk walk);
    const EditInLog& EditAt(int16_t entry, Layer layer) const;
    void Log(Change change, Paper paper, EditInLog& edit);
    void WriteRegardless(int16_t position, int16_t entry, bool undo, Layer layer);
    std::optional<ChangedPosts> ChangedBy(Layer layer, int entry,
                                          const PostBox& part) const;
    void ShowStep();
    void ShowMark(Paper paper);
    std::string PlaceName(const Change& edit) const;

    Terrain& terrain_;
    ChangeLog& changes_;
    WorkspaceCommands& workspace_;
    UndoStacks stacks_;
    uint64_t lastEdit_ = 0; // the number of the newest
    bool strokeOpen_ = false;
};

// cmdUndo and cmdRedo of the panel: a step of which nothing is in view scrolls to it.
void UndoInView(UndoPoints& undo, const MapView& view, WorkspaceCommands& workspace);
void RedoInView(UndoPoints& undo, const MapView& view, WorkspaceCommands& workspace);

} // namespace vardenix
