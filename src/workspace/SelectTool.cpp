#include "workspace/SelectTool.h"

#include "workspace/PendingPosts.h"

#include <algorithm>
#include <utility>

namespace vardenix {

namespace {

// A lasso is a point a pixel at most.
bool IsAnother(const std::vector<PicturePoint>& line, PicturePoint point) {
    return line.empty() || line.back().X != point.X || line.back().Y != point.Y;
}

} // namespace

void Select(MapInteraction& interaction, Selection selection,
            WorkspaceCommands& workspace) {
    interaction.Hand.Selected = std::move(selection);
    const int64_t count = interaction.Hand.Selected.Count();
    workspace.Tell(count == 0 ? "nothing selected" : PostsWords(count) + " selected");
    workspace.SelectionChanged();
    workspace.CommandsChanged();
}

std::optional<PostBox> SelectTool::Begin(double x, double y, GestureKeys keys) {
    goes_ = true;
    lasso_ = interaction_.Tool == MapTool::Lasso;
    keys_ = keys;
    corner_ = opposite_ = PostUnderCursor(view_, x, y);
    line_ = {{x, y}};
    return std::nullopt;
}

std::optional<PostBox> SelectTool::Move(double x, double y) {
    if (!goes_)
        return std::nullopt;
    const PicturePoint at{std::clamp(x, 0.0, std::max(view_.PictureWidth() - 1.0, 0.0)),
                          std::clamp(y, 0.0, std::max(view_.PictureHeight() - 1.0, 0.0))};
    opposite_ = PostUnderCursor(view_, at.X, at.Y);
    if (lasso_ && IsAnother(line_, at))
        line_.push_back(at);
    return std::nullopt;
}

std::optional<PostBox> SelectTool::End(double x, double y) {
    if (!goes_ || view_.ScrollBusy)
        return Cancel();
    Move(x, y);
    goes_ = false;
    const Selection& before = interaction_.Hand.Selected;
    const Selection drawn = Drawn();
    Select(interaction_,
           !keys_.Shift    ? drawn
           : keys_.Control ? Without(before, drawn)
                           : Joined(before, drawn),
           workspace_);
    return std::nullopt;
}

std::optional<PostBox> SelectTool::Cancel() {
    goes_ = false;
    return std::nullopt;
}

Selection SelectTool::Drawn() const {
    if (!lasso_)
        return SelectedBox({corner_.X, corner_.Y, opposite_.X, opposite_.Y},
                           terrain_.MapWidth);
    std::vector<PicturePoint> posts;
    for (const PicturePoint& at : line_)
        posts.push_back(
            {view_.MapLeftX + at.X / view_.CellSize(),
             view_.MapBottomY + (view_.PictureHeight() - at.Y) / view_.CellSize()});
    return SelectedLasso(posts, terrain_.MapWidth);
}

std::optional<PostBox> SelectTool::Frame() const {
    if (!goes_ || lasso_)
        return std::nullopt;
    const PostBox box =
        CutToGrid({corner_.X, corner_.Y, opposite_.X, opposite_.Y}, terrain_.MapWidth);
    if (box.X2 < box.X1 || box.Y2 < box.Y1)
        return std::nullopt;
    return box;
}

std::vector<PicturePoint> SelectTool::Line() const {
    return goes_ && lasso_ ? line_ : std::vector<PicturePoint>();
}

} // namespace vardenix
