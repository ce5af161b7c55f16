#include "workspace/ChangedPosts.h"

#include <algorithm>

namespace vardenix {

void ChangedPostsSum::Add(int32_t serial, int32_t count) {
    const int32_t first = serial - 1;
    const int32_t last = first + count - 1;
    const int32_t y1 = first / width_ / perPost_;
    const int32_t y2 = last / width_ / perPost_;
    // One that goes over the end of a row reaches from edge to edge.
    const bool rows = first / width_ != last / width_;
    const int32_t x1 = rows ? 0 : first % width_ / perPost_;
    const int32_t x2 = (rows ? width_ - 1 : last % width_) / perPost_;
    PostBox& box = changed_.Box;
    box = {std::min(box.X1, x1), std::min(box.Y1, y1), std::max(box.X2, x2),
           std::max(box.Y2, y2)};
    changed_.AnyIn = changed_.AnyIn || (y2 >= part_.Y1 && y1 <= part_.Y2 &&
                                        x1 <= part_.X2 && x2 >= part_.X1);
}

std::optional<ChangedPosts> PlaceOf(const Change& change, int32_t mapWidth,
                                    const PostBox& part) {
    if (mapWidth <= 0 ||
        !(change.Touches(Paper::Level2) || change.Touches(Paper::Heights)))
        return std::nullopt;
    ChangedPostsSum posts(mapWidth, 1, part);
    posts.Add(change.Posts.Runs);
    for (const auto& [serial, count] : change.Posts.Values.Stretches)
        posts.Add(serial, count);
    ChangedPostsSum heights(mapWidth * HeightsPerPost, HeightsPerPost, part);
    heights.Add(change.Heights.Runs);
    for (const auto& [serial, count] : change.Heights.Values.Stretches)
        heights.Add(serial, count);
    const PostBox& a = posts.Result().Box;
    const PostBox& b = heights.Result().Box;
    if (a.X2 < 0 && b.X2 < 0)
        return std::nullopt; // another file of heights
    return ChangedPosts{{std::min(a.X1, b.X1), std::min(a.Y1, b.Y1), std::max(a.X2, b.X2),
                         std::max(a.Y2, b.Y2)},
                        posts.Result().AnyIn || heights.Result().AnyIn};
}

PostBox InView(const MapView& view) {
    return {view.MapLeftX, view.MapBottomY, view.MapLeftX + view.ViewColumns() - 1,
            view.MapBottomY + view.ViewRows() - 1};
}

void ScrollToHidden(const std::optional<ChangedPosts>& changed,
                    WorkspaceCommands& workspace) {
    if (changed && !changed->AnyIn)
        workspace.ScrollTo(changed->Box.X1, changed->Box.Y1);
}

} // namespace vardenix
