#pragma once

#include "levels/Posts.h"
#include "workspace/ValueRuns.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace vardenix {

// Shapes on a grid of posts or of finest elevations; squares are counted from 0.

// The squares that the pointer crossed between two events of the mouse, both ends
// included: one for each column or row, whichever are more, each the nearest to the line
// between the squares' middles; the lower one, or the one at the left, where two are as
// near. The same squares for a line drawn the other way.
std::vector<PostPlace> LineBetween(PostPlace from, PostPlace to);

constexpr int32_t MaxBrushSize = 9;

// The squares under a brush `size` squares wide: of an even one the middle lies lower
// left of its own.
PostBox BrushAt(PostPlace middle, int32_t size);

// Row by row from below; none for an empty box.
std::vector<RowSpan> SpansOf(const PostBox& ordered);

// All squares that a brush covers along a line, cut to a grid, each once.
std::vector<RowSpan> BrushedSpans(const std::vector<PostPlace>& line, int32_t size,
                                  int32_t width);

// The squares within `limits` (ordered) that hang together with `start` by their edges
// and for which `alike(x, y)` holds, row by row from below; none when it does not hold
// for `start`. Takes a bit for each square of the limits, and time in proportion to what
// is filled.
template <typename Alike>
std::vector<RowSpan> FilledSpans(const PostBox& limits, PostPlace start, Alike alike) {
    if (!Contains(limits, start))
        return {};
    const int64_t across = int64_t{limits.X2} - limits.X1 + 1;
    std::vector<bool> seen(
        static_cast<size_t>(across * (int64_t{limits.Y2} - limits.Y1 + 1)));
    const auto seenAt = [&](int32_t x, int32_t y) {
        return seen[static_cast<size_t>((int64_t{y} - limits.Y1) * across + x -
                                        limits.X1)];
    };
    const auto open = [&](int32_t x, int32_t y) { return !seenAt(x, y) && alike(x, y); };
    std::vector<RowSpan> spans;
    std::vector<PostPlace> waiting{start};
    // The first square of every stretch of a neighbouring row is to be looked at.
    const auto lookAt = [&](int32_t y, int32_t x1, int32_t x2) {
        if (y < limits.Y1 || y > limits.Y2)
            return;
        bool before = false;
        for (int32_t x = x1; x <= x2; ++x) {
            const bool now = open(x, y);
            if (now && !before)
                waiting.push_back({x, y});
            before = now;
        }
    };
    while (!waiting.empty()) {
        const PostPlace at = waiting.back();
        waiting.pop_back();
        if (!open(at.X, at.Y))
            continue;
        RowSpan span{at.Y, at.X, at.X};
        while (span.X1 > limits.X1 && open(span.X1 - 1, at.Y))
            --span.X1;
        while (span.X2 < limits.X2 && open(span.X2 + 1, at.Y))
            ++span.X2;
        for (int32_t x = span.X1; x <= span.X2; ++x)
            seenAt(x, at.Y) = true;
        spans.push_back(span);
        lookAt(at.Y - 1, span.X1, span.X2);
        lookAt(at.Y + 1, span.X1, span.X2);
    }
    std::sort(spans.begin(), spans.end(), [](const RowSpan& a, const RowSpan& b) {
        return a.Y != b.Y ? a.Y < b.Y : a.X1 < b.X1;
    });
    return spans;
}

} // namespace vardenix
