#include "workspace/Selection.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vardenix {

namespace {

bool Before(const RowSpan& a, const RowSpan& b) {
    return a.Y != b.Y ? a.Y < b.Y : a.X1 < b.X1;
}

// Walks over two lists of spans together and keeps the stretches for which
// keep(in the first, in the second) holds.
template <typename Keep>
Selection Combined(std::span<const RowSpan> a, std::span<const RowSpan> b, Keep keep) {
    std::vector<RowSpan> kept;
    size_t i = 0;
    size_t j = 0;
    while (i < a.size() || j < b.size()) {
        const int32_t y = i == a.size()   ? b[j].Y
                          : j == b.size() ? a[i].Y
                                          : std::min(a[i].Y, b[j].Y);
        bool inA = false;
        bool inB = false;
        int32_t from = 0;
        // From edge to edge of one row; a span's end lies behind its last post.
        const auto next = [y](std::span<const RowSpan> spans, size_t at, bool in) {
            if (at == spans.size() || spans[at].Y != y)
                return std::numeric_limits<int32_t>::max();
            return in ? spans[at].X2 + 1 : spans[at].X1;
        };
        for (;;) {
            const int32_t edgeA = next(a, i, inA);
            const int32_t edgeB = next(b, j, inB);
            const int32_t at = std::min(edgeA, edgeB);
            if (at == std::numeric_limits<int32_t>::max())
                break;
            if (keep(inA, inB) && at > from)
                kept.push_back({y, from, at - 1});
            if (edgeA == at) {
                i += inA ? 1 : 0;
                inA = !inA;
            }
            if (edgeB == at) {
                j += inB ? 1 : 0;
                inB = !inB;
            }
            from = at;
        }
    }
    return Selection(std::move(kept));
}

} // namespace

Selection::Selection(std::vector<RowSpan> spans) {
    std::erase_if(spans, [](const RowSpan& span) { return span.X2 < span.X1; });
    if (!std::ranges::is_sorted(spans, Before))
        std::ranges::sort(spans, Before);
    spans_.reserve(spans.size());
    for (const RowSpan& span : spans) {
        if (!spans_.empty() && spans_.back().Y == span.Y &&
            span.X1 <= spans_.back().X2 + 1)
            spans_.back().X2 = std::max(spans_.back().X2, span.X2);
        else
            spans_.push_back(span);
    }
}

int64_t Selection::Count() const {
    int64_t count = 0;
    for (const RowSpan& span : spans_)
        count += span.X2 - span.X1 + 1;
    return count;
}

std::span<const RowSpan> Selection::Rows(int32_t first, int32_t last) const {
    const auto from = std::ranges::lower_bound(spans_, first, {}, &RowSpan::Y);
    const auto to = std::ranges::upper_bound(spans_, last, {}, &RowSpan::Y);
    return from < to ? std::span<const RowSpan>(from, to) : std::span<const RowSpan>();
}

bool Selection::Has(PostPlace post) const {
    const RowSpan beyond{post.Y, post.X + 1, post.X + 1};
    const auto next = std::ranges::lower_bound(spans_, beyond, Before);
    if (next == spans_.begin())
        return false;
    const RowSpan& span = *(next - 1);
    return span.Y == post.Y && post.X <= span.X2;
}

PostBox Selection::Bounds() const {
    if (spans_.empty())
        return {0, 0, -1, -1};
    PostBox box{spans_.front().X1, spans_.front().Y, spans_.front().X2, spans_.back().Y};
    for (const RowSpan& span : spans_) {
        box.X1 = std::min(box.X1, span.X1);
        box.X2 = std::max(box.X2, span.X2);
    }
    return box;
}

Selection Joined(const Selection& a, const Selection& b) {
    return Combined(a.Spans(), b.Spans(), [](bool inA, bool inB) { return inA || inB; });
}

Selection Without(const Selection& a, const Selection& b) {
    return Combined(a.Spans(), b.Spans(), [](bool inA, bool inB) { return inA && !inB; });
}

Selection Common(const Selection& a, const Selection& b) {
    const PostBox box = a.Bounds();
    return Combined(a.Spans(), b.Rows(box.Y1, box.Y2),
                    [](bool inA, bool inB) { return inA && inB; });
}

Selection CommonSquares(const Selection& squares, const Selection& posts,
                        int32_t perPost) {
    const PostBox box = squares.Bounds();
    std::vector<RowSpan> fine;
    for (const RowSpan& span : posts.Rows(box.Y1 / perPost, box.Y2 / perPost))
        for (int32_t row = 0; row < perPost; ++row)
            fine.push_back(
                {span.Y * perPost + row, span.X1 * perPost, (span.X2 + 1) * perPost - 1});
    return Common(squares, Selection(std::move(fine)));
}

Selection Inverted(const Selection& selection, int32_t width) {
    return Without(SelectedBox({0, 0, width - 1, width - 1}, width), selection);
}

Selection SelectedBox(const PostBox& box, int32_t width) {
    const PostBox cut = CutToGrid(box, width);
    std::vector<RowSpan> spans;
    for (int32_t y = cut.Y1; y <= cut.Y2; ++y)
        spans.push_back({y, cut.X1, cut.X2});
    return Selection(std::move(spans));
}

Selection SelectedLasso(std::span<const PicturePoint> line, int32_t width) {
    std::vector<RowSpan> spans;
    for (int32_t y = 0; y < width; ++y) {
        // Where the line crosses the row's middles.
        const double middle = y + 0.5;
        std::vector<double> crossings;
        for (size_t i = 0; i < line.size(); ++i) {
            const PicturePoint& a = line[i];
            const PicturePoint& b = line[(i + 1) % line.size()];
            if ((a.Y <= middle) != (b.Y <= middle))
                crossings.push_back(a.X + (b.X - a.X) * (middle - a.Y) / (b.Y - a.Y));
        }
        std::ranges::sort(crossings);
        for (size_t i = 0; i + 1 < crossings.size(); i += 2) {
            const double most = width;
            const double from = std::clamp(crossings[i] - 0.5, 0.0, most);
            const double to = std::clamp(crossings[i + 1] - 0.5, -1.0, most);
            spans.push_back(
                {y, static_cast<int32_t>(std::ceil(from)),
                 std::min(static_cast<int32_t>(std::ceil(to)) - 1, width - 1)});
        }
    }
    return Selection(std::move(spans));
}

Selection SelectedHits(std::span<const int32_t> hits, int32_t width) {
    return Selection(SpansOfSerials(hits.subspan(1), width));
}

} // namespace vardenix
