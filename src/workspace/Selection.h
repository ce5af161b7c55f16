#pragma once

#include "levels/Posts.h"
#include "levels/ValueRuns.h"
#include "mapview/DrawingSurface.h"

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace vardenix {

// Posts that are selected, as stretches of rows: rising by row and column, none touching
// another. Posts are counted from 0.
class Selection {
public:
    Selection() = default;
    // In any order; they may overlap.
    explicit Selection(std::vector<RowSpan> spans);

    const std::vector<RowSpan>& Spans() const { return spans_; }
    bool Empty() const { return spans_.empty(); }
    int64_t Count() const;
    // Those of the rows from one to another.
    std::span<const RowSpan> Rows(int32_t first, int32_t last) const;
    bool Has(PostPlace post) const;
    // Round all of it; of an empty one X2 < X1.
    PostBox Bounds() const;

    bool operator==(const Selection&) const = default;

private:
    std::vector<RowSpan> spans_;
};

Selection Joined(const Selection& a, const Selection& b);
Selection Without(const Selection& a, const Selection& b);
Selection Common(const Selection& a, const Selection& b);
// Of squares of a finer grid, `perPost` to a post's side, those on selected posts.
Selection CommonSquares(const Selection& squares, const Selection& posts,
                        int32_t perPost);
// What is not selected of a terrain `width` posts a side.
Selection Inverted(const Selection& selection, int32_t width);

// Cut to the terrain, both corners included.
Selection SelectedBox(const PostBox& box, int32_t width);
// The posts whose middles lie inside a line that is closed from its last point to its
// first; where it crosses itself, what it goes round an even number of times is outside.
// Points are posts from the lower left corner of the terrain up and to the right, with
// fractions: the middle of the post 0, 0 is 0.5, 0.5.
Selection SelectedLasso(std::span<const PicturePoint> line, int32_t width);
// By serials that rise; the first element is a placeholder.
Selection SelectedHits(std::span<const int32_t> hits, int32_t width);
// All posts of a terrain `width` posts a side for which holds(serial) is true.
template <typename Holds>
Selection SelectedWhere(int32_t width, Holds holds) {
    std::vector<RowSpan> spans;
    for (int32_t y = 0; y < width; ++y) {
        bool before = false;
        for (int32_t x = 0; x < width; ++x) {
            const bool now = holds(y * width + x + 1);
            if (now && !before)
                spans.push_back({y, x, x});
            if (now)
                spans.back().X2 = x;
            before = now;
        }
    }
    return Selection(std::move(spans));
}

} // namespace vardenix
