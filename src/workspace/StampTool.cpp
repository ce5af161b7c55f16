#include "workspace/StampTool.h"

#include "workspace/PendingPosts.h"
#include "workspace/SelectTool.h"

#include <utility>

namespace vardenix {

namespace {

// What is selected, moved along.
Selection Moved(const Selection& selection, int32_t x, int32_t y, int32_t width) {
    std::vector<RowSpan> spans;
    for (const RowSpan& span : selection.Spans())
        spans.push_back({span.Y + y, span.X1 + x, span.X2 + x});
    return Common(Selection(std::move(spans)),
                  SelectedBox({0, 0, width - 1, width - 1}, width));
}

} // namespace

std::optional<PostBox> StampTool::Begin(double x, double y, GestureKeys /*keys*/) {
    const PostPlace post = PostUnderCursor(view_, x, y);
    if (interaction_.Hand.Stamp)
        return StampAt(post, "Paste ");
    const Selection& selected = interaction_.Hand.Selected;
    const PostBox box = selected.Bounds();
    interaction_.Hand.Stamp = StampInHand{
        ClipOf(terrain_, selected), {post.X - box.X1, post.Y - box.Y1}, false};
    drags_ = true;
    from_ = post;
    return std::nullopt;
}

std::optional<PostBox> StampTool::Move(double /*x*/, double /*y*/) {
    return std::nullopt; // the ghost follows the pointer by itself
}

std::optional<PostBox> StampTool::End(double x, double y) {
    if (!drags_ || view_.ScrollBusy)
        return Cancel();
    const PostPlace to = PostUnderCursor(view_, x, y);
    if (to == from_)
        return Cancel();
    // The selection goes along, so that the next drag takes it from there.
    const Selection there = Moved(interaction_.Hand.Selected, to.X - from_.X,
                                  to.Y - from_.Y, terrain_.MapWidth);
    const auto changed = StampAt(to, "Copy ");
    Cancel();
    interaction_.Hand.Selected = there;
    workspace_.SelectionChanged();
    return changed;
}

std::optional<PostBox> StampTool::Cancel() {
    if (std::exchange(drags_, false))
        interaction_.Hand.Stamp.reset();
    return std::nullopt;
}

std::optional<PostBox> StampTool::StampAt(PostPlace post, const char* name) {
    const StampInHand& stamp = *interaction_.Hand.Stamp;
    const PostPlace corner{post.X - stamp.Grip.X, post.Y - stamp.Grip.Y};
    const ClipFields fields = stamp.TilesOnly
                                  ? ClipFields{true, false, false, false, false}
                                  : interaction_.Hand.Fields;
    PostDelta delta = StampedPosts(terrain_, stamp.Clip, corner, fields);
    const auto box = BoxOf(delta, terrain_.MapWidth);
    const int64_t count = CountOf(delta);
    ChangePosts(terrain_, changes_, workspace_, std::move(delta),
                name + PostsWords(count) + " at " + std::to_string(corner.X) + ", " +
                    std::to_string(corner.Y));
    workspace_.Tell(PostsWords(count) + " changed");
    return box;
}

} // namespace vardenix
