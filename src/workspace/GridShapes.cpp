#include "workspace/GridShapes.h"

#include <cstdlib>
#include <map>

namespace vardenix {

namespace {

// The whole number nearest to a / b, the lower one in the middle between two; b above 0.
int32_t Nearest(int64_t a, int64_t b) {
    const int64_t twice = 2 * a - b; // of a / b - 1/2, to be rounded up
    const int64_t down = twice / (2 * b) - (twice % (2 * b) < 0 ? 1 : 0);
    return static_cast<int32_t>(twice == down * 2 * b ? down : down + 1);
}

} // namespace

std::vector<PostPlace> LineBetween(PostPlace from, PostPlace to) {
    const int64_t dx = int64_t{to.X} - from.X;
    const int64_t dy = int64_t{to.Y} - from.Y;
    const bool wide = std::abs(dx) >= std::abs(dy);
    const int64_t steps = wide ? std::abs(dx) : std::abs(dy);
    std::vector<PostPlace> line{from};
    for (int64_t i = 1; i <= steps; ++i) {
        if (wide)
            line.push_back({from.X + static_cast<int32_t>(dx < 0 ? -i : i),
                            Nearest(int64_t{from.Y} * steps + dy * i, steps)});
        else
            line.push_back({Nearest(int64_t{from.X} * steps + dx * i, steps),
                            from.Y + static_cast<int32_t>(dy < 0 ? -i : i)});
    }
    return line;
}

PostBox BrushAt(PostPlace middle, int32_t size) {
    const int32_t before = (size - 1) / 2;
    return {middle.X - before, middle.Y - before, middle.X - before + size - 1,
            middle.Y - before + size - 1};
}

std::vector<RowSpan> SpansOf(const PostBox& ordered) {
    std::vector<RowSpan> spans;
    if (ordered.X2 < ordered.X1 || ordered.Y2 < ordered.Y1)
        return spans;
    spans.reserve(static_cast<size_t>(ordered.Y2 - ordered.Y1) + 1);
    for (int32_t y = ordered.Y1; y <= ordered.Y2; ++y)
        spans.push_back({y, ordered.X1, ordered.X2});
    return spans;
}

// The brush goes on by one square at a time, so that what it covers of a row has no gap.
std::vector<RowSpan> BrushedSpans(const std::vector<PostPlace>& line, int32_t size,
                                  int32_t width) {
    std::map<int32_t, RowSpan> rows;
    for (const PostPlace& middle : line) {
        for (const RowSpan& covered : SpansOf(CutToGrid(BrushAt(middle, size), width))) {
            const auto [row, isNew] = rows.try_emplace(covered.Y, covered);
            row->second.X1 = std::min(row->second.X1, covered.X1);
            row->second.X2 = std::max(row->second.X2, covered.X2);
        }
    }
    std::vector<RowSpan> spans;
    spans.reserve(rows.size());
    for (const auto& [y, span] : rows)
        spans.push_back(span);
    return spans;
}

} // namespace vardenix
