#include "workspace/Selection.h"

#include <algorithm>
#include <cmath>

namespace vardenix {

namespace {

bool Before(const RowSpan& a, const RowSpan& b) {
    return a.Y != b.Y ? a.Y < b.Y : a.X1 < b.X1;
}

// Walks over two lists of spans together and keeps the stretches for which
// keep(in the first, in the second) holds.
template <typename Keep>
Selection Combined(const std::vector<RowSpan>& a, const std::vector<RowSpan>& b,
                   Keep keep) {
    struct Edge {
        int32_t Y;
        int32_t X; // from here on
        int InA;   // 1 it begins, -1 it ends
        int InB;
    };
    std::vector<Edge> edges;
    edges.reserve(2 * (a.size() + b.size()));
    for (const RowSpan& span : a) {
        edges.push_back({span.Y, span.X1, 1, 0});
        edges.push_back({span.Y, span.X2 + 1, -1, 0});
    }
    for (const RowSpan& span : b) {
        edges.push_back({span.Y, span.X1, 0, 1});
        edges.push_back({span.Y, span.X2 + 1, 0, -1});
    }
    std::ranges::sort(edges, [](const Edge& one, const Edge& other) {
        return one.Y != other.Y ? one.Y < other.Y : one.X < other.X;
    });
    std::vector<RowSpan> kept;
    int inA = 0;
    int inB = 0;
    for (size_t i = 0; i < edges.size(); ++i) {
        inA += edges[i].InA;
        inB += edges[i].InB;
        if (i + 1 < edges.size() && edges[i + 1].Y == edges[i].Y &&
            edges[i + 1].X > edges[i].X && keep(inA > 0, inB > 0))
            kept.push_back({edges[i].Y, edges[i].X, edges[i + 1].X - 1});
    }
    return Selection(std::move(kept));
}

} // namespace

Selection::Selection(std::vector<RowSpan> spans) {
    std::erase_if(spans, [](const RowSpan& span) { return span.X2 < span.X1; });
    std::ranges::sort(spans, Before);
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
    return Combined(a.Spans(), b.Spans(), [](bool inA, bool inB) { return inA && inB; });
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
