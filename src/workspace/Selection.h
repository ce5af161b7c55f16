#pragma once

#include "levels/Posts.h"
#include "levels/ValueRuns.h"
#include "mapview/DrawingSurface.h"

#include <cstdint>
#include <span>
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

} // namespace vardenix
