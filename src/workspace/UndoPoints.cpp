#include "workspace/UndoPoints.h"

#include <algorithm>
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
void Append(std::vector<ValueRun<Value>>& to, std::vector<ValueRun<Value>> more) {
    to.insert(to.end(), more.begin(), more.end());
}

} // namespace

void UndoPoints::AddPostUndo(const TerrainPost& oldPost, const TerrainPost& newPost,
                             int32_t serial) {
    strokeOpen_ = false;
    remembered_ = true;
    undoPosts_.Add({serial, oldPost, newPost});
    StepPostUndo(0, true);
}

void UndoPoints::AddElvUndo(int16_t oldValue, int16_t newValue, int32_t y, int32_t x) {
    strokeOpen_ = false;
    remembered_ = true;
    undoElv_.Add({x, y, newValue, oldValue});
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
    entry.Stroke = std::move(runs);
    remembered_ = true;
    undoPosts_.Add(std::move(entry));
    strokeOpen_ = true;
    StepPostUndo(0, true);
}

void UndoPoints::AddStroke(std::vector<HeightRun> runs) {
    if (runs.empty())
        return;
    const HeightRun& first = runs.front();
    const int32_t width = terrain_.Elevations.EMapWidth;
    UndoElvEntry entry{(first.Serial - 1) % width + 1, (first.Serial - 1) / width + 1,
                       first.NewValue, first.OldValue};
    entry.Stroke = std::move(runs);
    remembered_ = true;
    undoElv_.Add(std::move(entry));
    strokeOpen_ = true;
    StepElvUndo(0, true);
}

void UndoPoints::ExtendStroke(std::vector<TileRun> runs) {
    if (runs.empty())
        return;
    if (!strokeOpen_)
        return AddStroke(std::move(runs));
    remembered_ = true;
    undoPosts_.Extend([&](UndoPostEntry& step) { Append(step.Stroke, std::move(runs)); });
}

void UndoPoints::ExtendStroke(std::vector<HeightRun> runs) {
    if (runs.empty())
        return;
    if (!strokeOpen_)
        return AddStroke(std::move(runs));
    remembered_ = true;
    undoElv_.Extend([&](UndoElvEntry& step) { Append(step.Stroke, std::move(runs)); });
}

void UndoPoints::StepPostUndo(int16_t position, bool buttonsOnly) {
    if (!buttonsOnly) {
        const bool undo = position > undoPosts_.Position();
        const int entry = undo ? position : position + 1;
        WriteStep(terrain_.LxArr, undoPosts_.At(static_cast<int16_t>(entry)), undo);
    }
    undoPosts_.SetPosition(position);
    ShowStep();
}

void UndoPoints::StepElvUndo(int16_t position, bool buttonsOnly) {
    if (!buttonsOnly) {
        const bool undo = position > undoElv_.Position();
        const int entry = undo ? position : position + 1;
        WriteStep(terrain_.Elevations, undoElv_.At(static_cast<int16_t>(entry)), undo);
    }
    undoElv_.SetPosition(position);
    ShowStep();
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
    const auto position = static_cast<int16_t>(
        (layer == Layer::Heights ? UndoElvPos() : UndoPostPos()) + by);
    if (layer == Layer::Heights)
        StepElvUndo(position, false);
    else
        StepPostUndo(position, false);
    const bool asSaved =
        layer == Layer::Heights ? undoElv_.IsAsSaved() : undoPosts_.IsAsSaved();
    remembered_ = !asSaved;
    if (asSaved)
        layer == Layer::Heights ? workspace_.L0AsSaved() : workspace_.L2AsSaved();
    else
        layer == Layer::Heights ? workspace_.L0NeedSave() : workspace_.L2NeedSave();
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
    Changes changes(width, layer == Layer::Heights ? HeightsPerPost : 1, part);
    if (layer == Layer::Heights) {
        const UndoElvEntry& step = undoElv_.At(index);
        changes.Add((step.Y - 1) * width + step.X, 1);
        changes.Add(step.Stroke);
    } else {
        const UndoPostEntry& step = undoPosts_.At(index);
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

void UndoPoints::Saved(Layer layer) {
    if (layer == Layer::Heights)
        undoElv_.Saved();
    else
        undoPosts_.Saved();
}

void UndoPoints::Marked(Layer layer) {
    if (std::exchange(remembered_, false))
        return;
    if (layer == Layer::Heights)
        undoElv_.ChangedOtherwise();
    else
        undoPosts_.ChangedOtherwise();
}

void UndoPoints::TilesRenumbered(const TileRenumbering& numbers) {
    strokeOpen_ = false;
    undoPosts_.ChangedOtherwise();
    undoPosts_.ForEach([&numbers](UndoPostEntry& step) {
        step.OldPost.TileOffset = numbers.Of(step.OldPost.TileOffset);
        step.NewPost.TileOffset = numbers.Of(step.NewPost.TileOffset);
        for (TileRun& run : step.Stroke) {
            run.OldValue = numbers.Of(run.OldValue);
            run.NewValue = numbers.Of(run.NewValue);
        }
    });
}

bool UndoPoints::CanUndo(Layer layer) const {
    return layer == Layer::Heights ? undoElv_.CanUndo() : undoPosts_.CanUndo();
}

bool UndoPoints::CanRedo(Layer layer) const {
    return layer == Layer::Heights ? undoElv_.CanRedo() : undoPosts_.CanRedo();
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
