#include "workspace/FieldTool.h"

#include "workspace/FieldPosts.h"
#include "workspace/GridShapes.h"

#include <algorithm>
#include <utility>

namespace vardenix {

const Selection* FieldTool::Bounds() const {
    const Selection& selected = interaction_.Hand.Selected;
    return selected.Empty() ? nullptr : &selected;
}

Selection FieldTool::Within(Selection selection) const {
    return Bounds() == nullptr ? std::move(selection) : Common(selection, *Bounds());
}

std::optional<PostBox> FieldTool::Begin(double x, double y, GestureKeys keys) {
    const PostPlace post = PostUnderCursor(view_, x, y);
    if (waits_) {
        what_ = Gesture::Slope;
        to_ = post;
        return std::nullopt;
    }
    from_ = to_ = post;
    line_ = {post};
    if (interaction_.Hand.Paints == Painting::Heights && interaction_.Hand.Sloping) {
        what_ = Gesture::Slope;
    } else if (interaction_.Tool == MapTool::Rectangle) {
        what_ = Gesture::Rectangle;
    } else if (interaction_.Tool == MapTool::Fill) {
        const auto changed = pending_.Show(DeltaOf(Filled(post, keys.Shift)));
        Keep();
        return changed;
    } else {
        what_ = Gesture::Stroke;
        return pending_.Show(StrokeDelta());
    }
    return std::nullopt;
}

std::optional<PostBox> FieldTool::Move(double x, double y) {
    if (view_.ScrollBusy || what_ == Gesture::None)
        return std::nullopt;
    const PostPlace post = PostUnderCursor(view_, x, y);
    if (post == to_)
        return std::nullopt;
    const std::vector<PostPlace> way = LineBetween(to_, post);
    to_ = post;
    if (what_ != Gesture::Stroke)
        return std::nullopt;
    line_.insert(line_.end(), way.begin(), way.end());
    // Of the ground as the stroke has found it.
    pending_.TakeBack();
    return pending_.Show(StrokeDelta());
}

std::optional<PostBox> FieldTool::End(double x, double y) {
    auto changed = Move(x, y);
    const Gesture what = what_;
    // A click is the first of two.
    if (what == Gesture::Slope && !waits_ && to_ == from_) {
        waits_ = true;
        what_ = Gesture::None;
        workspace_.Tell("click on the post where the slope ends");
        return changed;
    }
    waits_ = false;
    what_ = Gesture::None;
    if (what == Gesture::Slope)
        changed =
            pending_.Show(SlopedHeights(terrain_, from_, to_, interaction_.BrushSize,
                                        interaction_.Hand.Soft, Bounds()));
    if (what == Gesture::Rectangle)
        changed = pending_.Show(DeltaOf(
            Within(SelectedBox({from_.X, from_.Y, to_.X, to_.Y}, terrain_.MapWidth))));
    Keep();
    return changed;
}

std::optional<PostBox> FieldTool::Cancel() {
    what_ = Gesture::None;
    waits_ = false;
    pending_.TakeBack();
    return pending_.TakenBack();
}

std::optional<PostBox> FieldTool::Frame() const {
    if (what_ != Gesture::Rectangle)
        return std::nullopt;
    const PostBox box = CutToGrid({from_.X, from_.Y, to_.X, to_.Y}, terrain_.MapWidth);
    if (box.X2 < box.X1 || box.Y2 < box.Y1)
        return std::nullopt;
    return box;
}

PostDelta FieldTool::DeltaOf(const Selection& posts) const {
    const HandState& hand = interaction_.Hand;
    return hand.Paints == Painting::Heights
               ? ShapedHeights(terrain_, posts, hand.Shape, interaction_.Feet)
               : FieldPosts(terrain_, posts, hand.Paints, hand.Value);
}

PostDelta FieldTool::StrokeDelta() const {
    const HandState& hand = interaction_.Hand;
    if (hand.Paints == Painting::Heights)
        return BrushedHeights(
            terrain_, line_,
            {hand.Shape, interaction_.Feet, interaction_.BrushSize, hand.Soft}, Bounds());
    return DeltaOf(Within(
        Selection(BrushedSpans(line_, interaction_.BrushSize, terrain_.MapWidth))));
}

Selection FieldTool::Filled(PostPlace start, bool everywhere) const {
    const int32_t width = terrain_.MapWidth;
    if (!OnTerrain(start, terrain_))
        return {};
    const PostBox limits =
        everywhere ? PostBox{0, 0, width - 1, width - 1} : SegmentsInView(view_, width);
    const auto posts = terrain_.LxArr.Values();
    const auto valueAt = [&](int32_t x, int32_t y) {
        return FieldOf(posts[static_cast<size_t>(y) * static_cast<size_t>(width) +
                             static_cast<size_t>(x)],
                       interaction_.Hand.Paints);
    };
    const int32_t wanted = valueAt(start.X, start.Y);
    const Selection* bounds = Bounds();
    return Selection(FilledSpans(limits, start, [&](int32_t x, int32_t y) {
        return valueAt(x, y) == wanted && (bounds == nullptr || bounds->Has({x, y}));
    }));
}

std::optional<PostBox> FieldTool::Keep() {
    const int64_t count = CountOf(pending_.Delta());
    const auto box = BoxOf(pending_.Delta(), terrain_.MapWidth);
    pending_.Keep(Name(count));
    workspace_.Tell(PostsWords(count) + " changed");
    return box;
}

std::string FieldTool::Name(int64_t count) const {
    switch (interaction_.Hand.Paints) {
    case Painting::Palette:
        return "Palette of " + PostsWords(count);
    case Painting::X1:
        return "X1 of " + PostsWords(count);
    case Painting::X2:
        return "X2 of " + PostsWords(count);
    default:
        return (interaction_.Hand.Sloping ? "Slope of " : "Heights of ") +
               PostsWords(count);
    }
}

} // namespace vardenix
