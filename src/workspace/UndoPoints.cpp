#include "workspace/UndoPoints.h"

#include <algorithm>
#include <cctype>
#include <limits>

namespace vardenix {

namespace {

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

// "Taken back: paint at 107, 103. The import after it stays; Ctrl+Z takes that back"; a
// change of another kind is named as the log names it.
std::string ArrowWords(const std::string& edit, bool undo, const Change* newest) {
    std::string words = (undo ? "Taken back: " : "Done again: ") + edit;
    if (newest == nullptr)
        return words;
    const bool import = newest->Name.starts_with("Import ");
    words += import ? ". The import" : ". \"" + newest->Name + "\"";
    return words + " after it stays; Ctrl+Z takes that back";
}

} // namespace

UndoPoints::UndoPoints(Terrain& terrain, ChangeLog& changes, WorkspaceCommands& workspace)
    : terrain_(terrain), changes_(changes), workspace_(workspace) {
    changes_.KeepStacks(this);
    changes_.Follow(*this);
}

UndoPoints::~UndoPoints() { changes_.KeepStacks(nullptr); }

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
    edit.Name = PlaceName(change);
    edit.Before = changes_.Revision(paper);
    changes_.Add(std::move(change));
    edit.After = changes_.Revision(paper);
}

// The first word of its name, and the first of its posts.
std::string UndoPoints::PlaceName(const Change& edit) const {
    std::string word = edit.Name.substr(0, edit.Name.find(' '));
    word.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(word[0])));
    const auto at = [&word](int32_t serial, int32_t width, int32_t perPost) {
        return word + " at " + std::to_string((serial - 1) % width / perPost) + ", " +
               std::to_string((serial - 1) / width / perPost);
    };
    const auto first = [](const auto& delta) {
        return delta.Runs.empty() ? delta.Values.Stretches.front().Serial
                                  : delta.Runs.front().Serial;
    };
    return edit.Touches(Paper::Heights)
               ? at(first(edit.Heights), terrain_.Elevations.EMapWidth, HeightsPerPost)
               : at(first(edit.Posts), terrain_.MapWidth, 1);
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
    StepTo(position, Layer::Posts);
}

void UndoPoints::StepElvUndo(int16_t position, bool buttonsOnly) {
    if (buttonsOnly) {
        stacks_.Elv.SetPosition(position);
        return ShowStep();
    }
    StepTo(position, Layer::Heights);
}

const EditInLog& UndoPoints::EditAt(int16_t entry, Layer layer) const {
    return layer == Layer::Heights ? stacks_.Elv.At(entry).Log
                                   : stacks_.Posts.At(entry).Log;
}

bool UndoPoints::WalkInLog(const EditInLog& edit, Walk walk) {
    const Change* next = walk == Walk::Back ? changes_.NextBack() : changes_.NextAgain();
    if (next == nullptr || next->SingleEdit != edit.Number)
        return false;
    walk == Walk::Back ? changes_.Back() : changes_.Again();
    return true;
}

void UndoPoints::StepTo(int16_t position, Layer layer) {
    const bool undo = position > (layer == Layer::Heights ? UndoElvPos() : UndoPostPos());
    const auto entry = static_cast<int16_t>(undo ? position : position + 1);
    if (!WalkInLog(EditAt(entry, layer), undo ? Walk::Back : Walk::Again))
        WriteRegardless(position, entry, undo, layer);
}

// The paper may have led from the one revision to the other by this edit alone; then it
// has that revision again.
void UndoPoints::WriteRegardless(int16_t position, int16_t entry, bool undo,
                                 Layer layer) {
    const Paper paper = PaperOf(layer);
    const EditInLog edit = EditAt(entry, layer);
    const uint64_t before = changes_.Revision(paper);
    const Change* newest = changes_.NextBack();
    const std::string words = ArrowWords(edit.Name, undo, newest);
    {
        const Recording made(changes_, {paper}, (undo ? "Undo " : "Redo ") + edit.Name);
        if (layer == Layer::Heights) {
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
    workspace_.Tell(words);
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

void UndoPoints::Undo(Layer layer) {
    if (CanUndo(layer))
        Step(layer, 1);
}

void UndoPoints::Redo(Layer layer) {
    if (CanRedo(layer))
        Step(layer, -1);
}

void UndoPoints::Step(Layer layer, int16_t by) {
    strokeOpen_ = false;
    StepTo(static_cast<int16_t>((layer == Layer::Heights ? UndoElvPos() : UndoPostPos()) +
                                by),
           layer);
}

std::optional<ChangedPosts> UndoPoints::NextUndo(Layer layer, const PostBox& part) const {
    if (!CanUndo(layer))
        return std::nullopt;
    return ChangedBy(layer, (layer == Layer::Heights ? UndoElvPos() : UndoPostPos()) + 1,
                     part);
}

std::optional<ChangedPosts> UndoPoints::NextRedo(Layer layer, const PostBox& part) const {
    if (!CanRedo(layer))
        return std::nullopt;
    return ChangedBy(layer, layer == Layer::Heights ? UndoElvPos() : UndoPostPos(), part);
}

std::optional<ChangedPosts> UndoPoints::ChangedBy(Layer layer, int entry,
                                                  const PostBox& part) const {
    const auto index = static_cast<int16_t>(entry);
    const int32_t width =
        layer == Layer::Heights ? terrain_.Elevations.EMapWidth : terrain_.MapWidth;
    if (width <= 0)
        return std::nullopt;
    ChangedPostsSum changes(width, layer == Layer::Heights ? HeightsPerPost : 1, part);
    if (layer == Layer::Heights) {
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

void UndoPoints::ShowButtons(Layer layer) {
    strokeOpen_ = false;
    if (layer == Layer::Heights)
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

bool UndoPoints::CanUndo(Layer layer) const {
    return layer == Layer::Heights ? stacks_.Elv.CanUndo() : stacks_.Posts.CanUndo();
}

bool UndoPoints::CanRedo(Layer layer) const {
    return layer == Layer::Heights ? stacks_.Elv.CanRedo() : stacks_.Posts.CanRedo();
}

void UndoInView(UndoPoints& undo, const MapView& view, WorkspaceCommands& workspace) {
    const auto changed = undo.NextUndo(view.Edited(), InView(view));
    undo.Undo(view.Edited());
    ScrollToHidden(changed, workspace);
}

void RedoInView(UndoPoints& undo, const MapView& view, WorkspaceCommands& workspace) {
    const auto changed = undo.NextRedo(view.Edited(), InView(view));
    undo.Redo(view.Edited());
    ScrollToHidden(changed, workspace);
}

} // namespace vardenix
