#include "workspace/EditGesture.h"

#include "companion/Vardenix.h"
#include "workspace/ChangedPosts.h"
#include "workspace/GridShapes.h"

#include <algorithm>

namespace vardenix {

namespace {

// As one of the finest elevations, each a square of its own.
MapView QuarteredView(MapView view) {
    view.MapLeftX *= HeightsPerPost;
    view.MapBottomY *= HeightsPerPost;
    view.ZoomPosts = static_cast<int16_t>(view.ZoomPosts * HeightsPerPost);
    return view;
}

template <typename Value>
std::optional<PostBox> PostsOf(const std::vector<ValueRun<Value>>& runs, int32_t width,
                               int32_t squaresPerPost) {
    std::optional<PostBox> box;
    for (const ValueRun<Value>& run : runs) {
        const int32_t y = (run.Serial - 1) / width / squaresPerPost;
        const int32_t x = (run.Serial - 1) % width;
        const PostBox at{x / squaresPerPost, y, (x + run.Count - 1) / squaresPerPost, y};
        if (!box)
            box = at;
        box = PostBox{std::min(box->X1, at.X1), std::min(box->Y1, at.Y1),
                      std::max(box->X2, at.X2), std::max(box->Y2, at.Y2)};
    }
    return box;
}

// Where the line leaves the stretch 0 to `last` in one direction, as parts of its length.
bool CutPart(double from, double step, double last, double& begin, double& end) {
    if (step == 0)
        return from >= 0 && from <= last;
    const double a = -from / step;
    const double b = (last - from) / step;
    begin = std::max(begin, std::min(a, b));
    end = std::min(end, std::max(a, b));
    return begin <= end;
}

} // namespace

PictureBox SquaresOnPicture(const MapView& view, const PostBox& squares, bool heights) {
    return BoxOnPicture(heights ? QuarteredView(view) : view, squares);
}

bool CutToPicture(const MapView& view, double& x1, double& y1, double& x2, double& y2) {
    const double dx = x2 - x1;
    const double dy = y2 - y1;
    double begin = 0;
    double end = 1;
    if (!CutPart(x1, dx, view.PictureWidth() - 1, begin, end) ||
        !CutPart(y1, dy, view.PictureHeight() - 1, begin, end))
        return false;
    x2 = x1 + dx * end;
    y2 = y1 + dy * end;
    x1 += dx * begin;
    y1 += dy * begin;
    return true;
}

int32_t EditGesture::GridWidth() const {
    return heights_ ? terrain_.Elevations.EMapWidth : terrain_.MapWidth;
}

PostPlace EditGesture::SquareAt(Position position) const {
    return heights_ ? ElevationUnderCursor(view_, position.X, position.Y)
                    : PostUnderCursor(view_, position.X, position.Y);
}

std::optional<int32_t> EditGesture::Begin(double x, double y, GestureKeys keys) {
    Cancel();
    undo_.EndStroke();
    heights_ = EditsHeights(interaction_, view_);
    changed_ = 0;
    const Position position{x, y};
    if (keys.Alt || interaction_.Tool == MapTool::Pick)
        return Pick(position);
    if (!CanEdit())
        return std::nullopt;
    const PostPlace square = SquareAt(position);
    switch (interaction_.Tool) {
    case MapTool::Rectangle:
        corner_ = opposite_ = square;
        break;
    case MapTool::Fill:
        Fill(square, keys.Shift);
        break;
    default:
        stroke_ = true;
        last_ = position;
        if (heights_ || interaction_.BrushSize > 1)
            Brush({square}, true);
        else
            PaintPost(square);
    }
    return std::nullopt;
}

std::optional<int32_t> EditGesture::Pick(Position position) {
    const PostPlace square = SquareAt(position);
    const int32_t width = GridWidth();
    if (square.X < 0 || square.Y < 0 || square.X >= width || square.Y >= width)
        return std::nullopt;
    if (interaction_.Tool == MapTool::Pick)
        interaction_.Tool = interaction_.ToolBeforePick;
    if (heights_) {
        interaction_.Feet = terrain_.Elevations.At(square.X + 1, square.Y + 1);
        return std::nullopt;
    }
    const int32_t tile =
        terrain_.LxArr(XYToSerial(square.X + 1, square.Y + 1, width)).TileOffset;
    return tile;
}

// The post's tile number changes, and nothing else of it.
void EditGesture::PaintPost(PostPlace post) {
    if (!OnTerrain(post, terrain_) || !MayChange(post))
        return;
    const int32_t serial = XYToSerial(post.X + 1, post.Y + 1, terrain_.MapWidth);
    const TerrainPost old = terrain_.LxArr(serial);
    TerrainPost painted = old;
    painted.TileOffset = TileToPaint(interaction_, post);
    terrain_.LxArr(serial) = painted;
    undo_.AddPostUndo(old, painted, serial);
    workspace_.L2NeedSave();
    undo_.OpenStroke();
    changed_ = 1;
    TellChanged();
}

std::optional<PostBox> EditGesture::Move(double x, double y) {
    if (view_.ScrollBusy)
        return std::nullopt;
    if (corner_)
        opposite_ =
            SquareAt({std::clamp(x, 0.0, std::max(view_.PictureWidth() - 1.0, 0.0)),
                      std::clamp(y, 0.0, std::max(view_.PictureHeight() - 1.0, 0.0))});
    if (!stroke_ || (x == last_.X && y == last_.Y))
        return std::nullopt;
    Position from = last_;
    Position to{x, y};
    last_ = to;
    if (!CutToPicture(view_, from.X, from.Y, to.X, to.Y))
        return std::nullopt;
    return Brush(LineBetween(SquareAt(from), SquareAt(to)), false);
}

void EditGesture::End(double x, double y) {
    if (corner_ && !view_.ScrollBusy) {
        Move(x, y);
        FillRectangle(opposite_);
    }
    Cancel();
}

void EditGesture::Cancel() {
    corner_.reset();
    stroke_ = false;
    before_.clear();
    undo_.EndStroke();
}

std::optional<PostBox> EditGesture::Squares() const {
    if (!corner_)
        return std::nullopt;
    const PostBox box =
        CutToGrid({corner_->X, corner_->Y, opposite_.X, opposite_.Y}, GridWidth());
    if (box.X2 < box.X1 || box.Y2 < box.Y1)
        return std::nullopt;
    return box;
}

std::optional<PictureBox> EditGesture::Preview() const {
    const auto squares = Squares();
    if (!squares)
        return std::nullopt;
    return SquaresOnPicture(view_, *squares, heights_);
}

std::optional<PostBox> EditGesture::Brush(const std::vector<PostPlace>& line,
                                          bool begins) {
    return Edit(BrushedSpans(line, interaction_.BrushSize, GridWidth()), !begins);
}

void EditGesture::FillRectangle(PostPlace opposite) {
    Edit(
        SpansOf(CutToGrid({corner_->X, corner_->Y, opposite.X, opposite.Y}, GridWidth())),
        false);
}

// The segments of which a part is in view.
PostBox EditGesture::FillLimits(bool everywhere) const {
    const int32_t width = GridWidth();
    if (everywhere)
        return {0, 0, width - 1, width - 1};
    const int32_t side = heights_ ? HeightsPerPost * SegmentSide : SegmentSide;
    const int32_t squares = heights_ ? HeightsPerPost : 1;
    const auto first = [&](int32_t post) { return post * squares / side * side; };
    const auto last = [&](int32_t post, int32_t count) {
        return (post + count - 1) * squares / side * side + side - 1;
    };
    return CutToGrid({first(view_.MapLeftX), first(view_.MapBottomY),
                      last(view_.MapLeftX, view_.ViewColumns()),
                      last(view_.MapBottomY, view_.ViewRows())},
                     width);
}

void EditGesture::Fill(PostPlace start, bool everywhere) {
    const int32_t width = GridWidth();
    if (start.X < 0 || start.Y < 0 || start.X >= width || start.Y >= width)
        return;
    const auto serialOf = [width](int32_t x, int32_t y) { return y * width + x + 1; };
    const int32_t startSerial = serialOf(start.X, start.Y);
    const PostBox limits = FillLimits(everywhere);
    if (heights_) {
        const auto heights = terrain_.Elevations.L0ElvArr.Values();
        const int16_t wanted = heights[static_cast<size_t>(startSerial) - 1];
        Edit(FilledSpans(limits, start,
                         [&](int32_t x, int32_t y) {
                             return heights[static_cast<size_t>(serialOf(x, y)) - 1] ==
                                        wanted &&
                                    MayChange({x / HeightsPerPost, y / HeightsPerPost});
                         }),
             false);
    } else {
        const auto posts = terrain_.LxArr.Values();
        const auto sortAt = [&](int32_t serial) {
            const int32_t tile = posts[static_cast<size_t>(serial) - 1].TileOffset;
            return interaction_.Hand.SortOf ? interaction_.Hand.SortOf(tile) : tile;
        };
        const int32_t wanted = sortAt(startSerial);
        Edit(FilledSpans(limits, start,
                         [&](int32_t x, int32_t y) {
                             return sortAt(serialOf(x, y)) == wanted && MayChange({x, y});
                         }),
             false);
    }
}

std::optional<PostBox> EditGesture::Edit(const std::vector<RowSpan>& spans, bool goesOn) {
    const std::vector<RowSpan> bounded = Bounded(spans);
    return heights_ ? EditHeights(bounded, goesOn) : EditTiles(bounded, goesOn);
}

std::vector<RowSpan> EditGesture::Bounded(const std::vector<RowSpan>& spans) const {
    const Selection& bounds = interaction_.Hand.Selected;
    if (bounds.Empty())
        return spans;
    const Selection wanted(spans);
    return (heights_ ? CommonSquares(wanted, bounds, HeightsPerPost)
                     : Common(wanted, bounds))
        .Spans();
}

std::optional<PostBox> EditGesture::EditTiles(const std::vector<RowSpan>& spans,
                                              bool goesOn) {
    const int32_t width = terrain_.MapWidth;
    std::vector<TileRun> runs = RunsOf<int32_t>(
        spans, width,
        [this](int32_t serial) -> int32_t { return terrain_.LxArr(serial).TileOffset; },
        [this, width](int32_t serial) {
            return TileToPaint(interaction_,
                               {(serial - 1) % width, (serial - 1) / width});
        });
    if (runs.empty())
        return std::nullopt;
    const auto box = PostsOf(runs, terrain_.MapWidth, 1);
    changed_ += CountOf<int32_t>(runs);
    WriteNew(terrain_.LxArr, runs);
    goesOn ? undo_.ExtendStroke(std::move(runs)) : undo_.AddStroke(std::move(runs));
    workspace_.L2NeedSave();
    TellChanged();
    return box;
}

std::optional<PostBox> EditGesture::EditHeights(const std::vector<RowSpan>& spans,
                                                bool goesOn) {
    ElevationLayer& layer = terrain_.Elevations;
    std::vector<HeightRun> runs =
        ShapedRuns(layer, spans, interaction_.Heights, interaction_.Feet, before_);
    if (runs.empty())
        return std::nullopt;
    const auto box = PostsOf(runs, layer.EMapWidth, HeightsPerPost);
    changed_ += CountOf<int16_t>(runs);
    if (stroke_)
        for (const HeightRun& run : runs)
            for (int32_t i = 0; i < run.Count; ++i)
                before_.emplace(run.Serial + i, run.OldValue);
    WriteNew(layer.L0ElvArr, runs);
    goesOn ? undo_.ExtendStroke(std::move(runs)) : undo_.AddStroke(std::move(runs));
    workspace_.L0NeedSave();
    TellChanged();
    return box;
}

void EditGesture::TellChanged() {
    const std::string what = heights_ ? "height" : "post";
    const bool heightsStay = view_.L0Mode && !heights_;
    workspace_.Tell(std::to_string(changed_) + " " + what + (changed_ == 1 ? "" : "s") +
                    (heightsStay ? " of level 2" : "") + " changed" +
                    (heightsStay ? ", no height" : ""));
}

} // namespace vardenix
