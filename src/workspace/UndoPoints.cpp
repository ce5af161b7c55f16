#include "workspace/UndoPoints.h"

#include <algorithm>
#include <limits>

namespace vardenix {

namespace {

// Finest elevations along a side of a post.
constexpr int32_t HeightsPerPost = 4;

// The edit of the entry's own post, and then the stroke's; backwards for an undo.
void WriteStep(PostArray& posts, const UndoPostEntry& step, bool undo) {
    if (undo) {
        WriteOld(posts, step.Stroke);
        posts(step.Serial) = step.OldPost;
    } else {
        posts(step.Serial) = step.NewPost;
        WriteNew(posts, step.Stroke);
    }
}

void WriteStep(ElevationLayer& layer, const UndoElvEntry& step, bool undo) {
    if (undo) {
        WriteOld(layer.L0ElvArr, step.Stroke);
        layer.At(step.X, step.Y) = step.OldValue;
    } else {
        layer.At(step.X, step.Y) = step.NewValue;
        WriteNew(layer.L0ElvArr, step.Stroke);
    }
}

// Adds up what runs of a grid `width` squares a side have changed.
class Changes {
public:
    Changes(int32_t width, int32_t squaresPerPost, const PostBox& part)
        : width_(width), perPost_(squaresPerPost), part_(part) {}

    void Add(int32_t serial, int32_t count) {
        const int32_t y = (serial - 1) / width_ / perPost_;
        const int32_t x1 = (serial - 1) % width_ / perPost_;
        const int32_t x2 = ((serial - 1) % width_ + count - 1) / perPost_;
        PostBox& box = changed_.Box;
        box = {std::min(box.X1, x1), std::min(box.Y1, y), std::max(box.X2, x2),
               std::max(box.Y2, y)};
        changed_.AnyIn = changed_.AnyIn || (y >= part_.Y1 && y <= part_.Y2 &&
                                            x1 <= part_.X2 && x2 >= part_.X1);
    }
    template <typename Value>
    void Add(const std::vector<ValueRun<Value>>& runs) {
        for (const ValueRun<Value>& run : runs)
            Add(run.Serial, run.Count);
    }
    const ChangedPosts& Result() const { return changed_; }

private:
    static constexpr int32_t Far = std::numeric_limits<int32_t>::max();

    int32_t width_;
    int32_t perPost_;
    PostBox part_;
    ChangedPosts changed_{{Far, Far, -1, -1}, false};
};

template <typename Value>
void Append(std::vector<ValueRun<Value>>& to, const std::vector<ValueRun<Value>>& more) {
    to.insert(to.end(), more.begin(), more.end());
}

std::string Counted(int64_t count, const char* what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

template <typename Value>
std::string StrokeName(const std::vector<ValueRun<Value>>& runs) {
    const int64_t count = CountOf<Value>(runs);
    return std::is_same_v<Value, int32_t> ? "Paint " + Counted(count, "post")
                                          : "Shape " + Counted(count, "height");
}

} // namespace

UndoPoints::UndoPoints(Terrain& terrain, ChangeLog& changes, WorkspaceCommands& workspace)
    : terrain_(terrain), changes_(changes), workspace_(workspace) {
    changes_.KeepStacks(*this);
    changes_.Follow(*this);
}

StackKeeper::Stacks UndoPoints::StacksNow() const {
    return std::make_shared<const UndoStacks>(stacks_);
}

void UndoPoints::TakeStacks(const Stacks& stacks) {
    strokeOpen_ = false;
    stacks_ = *static_cast<const UndoStacks*>(stacks.get());
}

namespace {

// An edit that has fallen off the stack is none of its steps.
template <typename Entry>
void MoveOver(UndoStack<Entry>& stack, uint64_t number, Walk walk) {
    const auto position = stack.Position();
    const auto entry = static_cast<int16_t>(walk == Walk::Back ? position + 1 : position);
    if (entry < 1 || entry > stack.UpperBound() || stack.At(entry).Log.Number != number)
        return;
    stack.SetPosition(static_cast<int16_t>(walk == Walk::Back ? entry : entry - 1));
}

} // namespace

void UndoPoints::MovePast(const Change& edit, Walk walk) {
    strokeOpen_ = false;
    MoveOver(stacks_.Posts, edit.SingleEdit, walk);
    MoveOver(stacks_.Elv, edit.SingleEdit, walk);
}
// The number and the revisions of an edit that is the log's newest entry from now on; its
// step is on the stack already.
void UndoPoints::Log(Change change, Paper paper, EditInLog& edit) {
    edit.Number = change.SingleEdit = ++lastEdit_;
    edit.Before = changes_.Revision(paper);
    changes_.Add(std::move(change));
    edit.After = changes_.Revision(paper);
}

void UndoPoints::AddPostUndo(const TerrainPost& oldPost, const TerrainPost& newPost,
                             int32_t serial) {
    strokeOpen_ = false;
    TerrainPost painted = oldPost;
    painted.TileOffset = newPost.TileOffset;
    Change change{.Name = painted == newPost ? "Paint 1 post" : "Change 1 post"};
    change.Posts.Values = {{{serial, 1}}, {oldPost}, {newPost}};
    AddPostStep({serial, oldPost, newPost}, std::move(change));
}

void UndoPoints::AddElvUndo(int16_t oldValue, int16_t newValue, int32_t y, int32_t x) {
    strokeOpen_ = false;
    const int32_t serial = (y - 1) * terrain_.Elevations.EMapWidth + x;
    Change change{.Name = "Change 1 height"};
    change.Heights.Values = {{{serial, 1}}, {oldValue}, {newValue}};
    AddElvStep({x, y, newValue, oldValue}, std::move(change));
}

void UndoPoints::AddPostStep(UndoPostEntry step, Change change) {
    stacks_.Posts.Add(std::move(step));
    stacks_.Posts.Extend([&](UndoPostEntry& newest) {
        Log(std::move(change), Paper::Level2, newest.Log);
    });
    StepPostUndo(0, true);
}

void UndoPoints::AddElvStep(UndoElvEntry step, Change change) {
    stacks_.Elv.Add(std::move(step));
    stacks_.Elv.Extend([&](UndoElvEntry& newest) {
        Log(std::move(change), Paper::Heights, newest.Log);
    });
    StepElvUndo(0, true);
}

void UndoPoints::AddStroke(std::vector<TileRun> runs) {
    if (runs.empty())
        return;
    const TileRun& first = runs.front();
    UndoPostEntry entry{first.Serial, terrain_.LxArr(first.Serial),
                        terrain_.LxArr(first.Serial)};
    entry.OldPost.TileOffset = first.OldValue;
    entry.NewPost.TileOffset = first.NewValue;
    entry.Stroke = runs;
    Change change{.Name = StrokeName(runs)};
    change.Posts.Runs = std::move(runs);
    AddPostStep(std::move(entry), std::move(change));
    strokeOpen_ = true;
}

void UndoPoints::AddStroke(std::vector<HeightRun> runs) {
    if (runs.empty())
        return;
    const HeightRun& first = runs.front();
    const int32_t width = terrain_.Elevations.EMapWidth;
    UndoElvEntry entry{(first.Serial - 1) % width + 1, (first.Serial - 1) / width + 1,
                       first.NewValue, first.OldValue};
    entry.Stroke = runs;
    Change change{.Name = StrokeName(runs)};
    change.Heights.Runs = std::move(runs);
    AddElvStep(std::move(entry), std::move(change));
    strokeOpen_ = true;
}

// An edit that is not the log's newest entry any more is over.
bool UndoPoints::MayGoOn(const EditInLog& edit) const {
    const Change* newest = changes_.NextBack();
    return strokeOpen_ && newest != nullptr && newest->SingleEdit == edit.Number &&
           changes_.NextAgain() == nullptr;
}

void UndoPoints::ExtendStroke(std::vector<TileRun> runs) {
    if (runs.empty())
        return;
    if (!stacks_.Posts.CanUndo() || !MayGoOn(stacks_.Posts.At(1).Log))
        return AddStroke(std::move(runs));
    stacks_.Posts.Extend([&](UndoPostEntry& step) {
        // A stroke that began as the edit of one post counts that one too.
        const int64_t first =
            step.Stroke.empty() || step.Stroke.front().Serial != step.Serial;
        Append(step.Stroke, runs);
        changes_.Grow(std::move(runs),
                      "Paint " + Counted(CountOf<int32_t>(step.Stroke) + first, "post"));
        step.Log.After = changes_.Revision(Paper::Level2);
    });
}

void UndoPoints::ExtendStroke(std::vector<HeightRun> runs) {
    if (runs.empty())
        return;
    if (!stacks_.Elv.CanUndo() || !MayGoOn(stacks_.Elv.At(1).Log))
        return AddStroke(std::move(runs));
    stacks_.Elv.Extend([&](UndoElvEntry& step) {
        Append(step.Stroke, runs);
        changes_.Grow(std::move(runs), StrokeName(step.Stroke));
        step.Log.After = changes_.Revision(Paper::Heights);
    });
}

void UndoPoints::StepPostUndo(int16_t position, bool buttonsOnly) {
    if (buttonsOnly) {
        stacks_.Posts.SetPosition(position);
        return ShowStep();
    }
    StepTo(position, false);
}

void UndoPoints::StepElvUndo(int16_t position, bool buttonsOnly) {
    if (buttonsOnly) {
        stacks_.Elv.SetPosition(position);
        return ShowStep();
    }
    StepTo(position, true);
}

const EditInLog& UndoPoints::EditAt(int16_t entry, bool l0Mode) const {
    return l0Mode ? stacks_.Elv.At(entry).Log : stacks_.Posts.At(entry).Log;
}

bool UndoPoints::WalkInLog(const EditInLog& edit, Walk walk) {
    const Change* next = walk == Walk::Back ? changes_.NextBack() : changes_.NextAgain();
    if (next == nullptr || next->SingleEdit != edit.Number)
        return false;
    walk == Walk::Back ? changes_.Back() : changes_.Again();
    return true;
}

void UndoPoints::StepTo(int16_t position, bool l0Mode) {
    const bool undo = position > (l0Mode ? UndoElvPos() : UndoPostPos());
    const auto entry = static_cast<int16_t>(undo ? position : position + 1);
    if (!WalkInLog(EditAt(entry, l0Mode), undo ? Walk::Back : Walk::Again))
        WriteRegardless(position, entry, undo, l0Mode);
}

// The paper may have led from the one revision to the other by this edit alone; then it
// has that revision again.
void UndoPoints::WriteRegardless(int16_t position, int16_t entry, bool undo,
                                 bool l0Mode) {
    const Paper paper = l0Mode ? Paper::Heights : Paper::Level2;
    const EditInLog edit = EditAt(entry, l0Mode);
    const uint64_t before = changes_.Revision(paper);
    {
        const Recording made(changes_, {paper}, undo ? "Undo an edit" : "Redo an edit");
        if (l0Mode) {
            WriteStep(terrain_.Elevations, stacks_.Elv.At(entry), undo);
            stacks_.Elv.SetPosition(position);
        } else {
            WriteStep(terrain_.LxArr, stacks_.Posts.At(entry), undo);
            stacks_.Posts.SetPosition(position);
        }
    }
    if (before == (undo ? edit.After : edit.Before))
        changes_.SetRevision(paper, undo ? edit.Before : edit.After);
    ShowStep();
    ShowMark(paper);
}

void UndoPoints::ShowMark(Paper paper) {
    const bool saved = !changes_.Unsaved(paper);
    if (paper == Paper::Heights)
        saved ? workspace_.L0AsSaved() : workspace_.L0NeedSave();
    else
        saved ? workspace_.L2AsSaved() : workspace_.L2NeedSave();
}

void UndoPoints::Walked(const Change& change, Walk /*walk*/) {
    ShowStep();
    for (const Paper paper : {Paper::Level2, Paper::Heights})
        if (change.Touches(paper))
            ShowMark(paper);
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
    strokeOpen_ = false;
    StepTo(static_cast<int16_t>((l0Mode ? UndoElvPos() : UndoPostPos()) + by), l0Mode);
}

std::optional<ChangedPosts> UndoPoints::NextUndo(bool l0Mode, const PostBox& part) const {
    if (!CanUndo(l0Mode))
        return std::nullopt;
    return ChangedBy(l0Mode, (l0Mode ? UndoElvPos() : UndoPostPos()) + 1, part);
}

std::optional<ChangedPosts> UndoPoints::NextRedo(bool l0Mode, const PostBox& part) const {
    if (!CanRedo(l0Mode))
        return std::nullopt;
    return ChangedBy(l0Mode, l0Mode ? UndoElvPos() : UndoPostPos(), part);
}

std::optional<ChangedPosts> UndoPoints::ChangedBy(bool l0Mode, int entry,
                                                  const PostBox& part) const {
    const auto index = static_cast<int16_t>(entry);
    const int32_t width = l0Mode ? terrain_.Elevations.EMapWidth : terrain_.MapWidth;
    if (width <= 0)
        return std::nullopt;
    Changes changes(width, l0Mode ? HeightsPerPost : 1, part);
    if (l0Mode) {
        const UndoElvEntry& step = stacks_.Elv.At(index);
        changes.Add((step.Y - 1) * width + step.X, 1);
        changes.Add(step.Stroke);
    } else {
        const UndoPostEntry& step = stacks_.Posts.At(index);
        changes.Add(step.Serial, 1);
        changes.Add(step.Stroke);
    }
    return changes.Result();
}

void UndoPoints::ShowButtons(bool l0Mode) {
    strokeOpen_ = false;
    if (l0Mode)
        StepElvUndo(UndoElvPos(), true);
    else
        StepPostUndo(UndoPostPos(), true);
}

void UndoPoints::TilesRenumbered(const TileRenumbering& numbers) {
    strokeOpen_ = false;
    stacks_.Posts.ForEach([&numbers](UndoPostEntry& step) {
        step.OldPost.TileOffset = numbers.Of(step.OldPost.TileOffset);
        step.NewPost.TileOffset = numbers.Of(step.NewPost.TileOffset);
        for (TileRun& run : step.Stroke) {
            run.OldValue = numbers.Of(run.OldValue);
            run.NewValue = numbers.Of(run.NewValue);
        }
    });
}

bool UndoPoints::CanUndo(bool l0Mode) const {
    return l0Mode ? stacks_.Elv.CanUndo() : stacks_.Posts.CanUndo();
}

bool UndoPoints::CanRedo(bool l0Mode) const {
    return l0Mode ? stacks_.Elv.CanRedo() : stacks_.Posts.CanRedo();
}

namespace {

PostBox InView(const MapView& view) {
    return {view.MapLeftX, view.MapBottomY, view.MapLeftX + view.ViewPosts() - 1,
            view.MapBottomY + view.ViewPosts() - 1};
}

// Its lower left post is put where every command puts its post.
void ScrollToHidden(const std::optional<ChangedPosts>& changed,
                    WorkspaceCommands& workspace) {
    if (changed && !changed->AnyIn)
        workspace.ScrollTo(changed->Box.X1, changed->Box.Y1);
}

} // namespace

void UndoInView(UndoPoints& undo, const MapView& view, WorkspaceCommands& workspace) {
    const auto changed = undo.NextUndo(view.L0Mode, InView(view));
    undo.Undo(view.L0Mode);
    ScrollToHidden(changed, workspace);
}

void RedoInView(UndoPoints& undo, const MapView& view, WorkspaceCommands& workspace) {
    const auto changed = undo.NextRedo(view.L0Mode, InView(view));
    undo.Redo(view.L0Mode);
    ScrollToHidden(changed, workspace);
}

} // namespace vardenix
