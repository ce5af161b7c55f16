#include "workspace/SelectionEdges.h"

#include "mapview/DrawingSurface.h"

namespace vardenix {

namespace {

class EdgeWriter {
public:
    EdgeWriter(const MapView& view, int32_t thick) : view_(view), thick_(thick) {}

    // Along the lower side of a row of posts.
    void AddAcross(int32_t y, int32_t x1, int32_t x2) {
        const int32_t top = PixelAt(view_.BottomOfRow(y)) - thick_ / 2;
        boxes_.push_back({Left(x1) - thick_ / 2, top, Left(x2 + 1) - thick_ / 2 + thick_,
                          top + thick_});
    }
    // Along the left side of a post.
    void AddUp(int32_t y, int32_t x) {
        const int32_t left = Left(x) - thick_ / 2;
        boxes_.push_back({left, PixelAt(view_.BottomOfRow(y + 1)) - thick_ / 2,
                          left + thick_, PixelAt(view_.BottomOfRow(y)) + thick_ / 2});
    }
    std::vector<PixelBox> Take() { return std::move(boxes_); }

private:
    int32_t Left(int32_t x) const {
        return PixelAt(view_.CellSize() * (x - view_.MapLeftX));
    }

    const MapView& view_;
    int32_t thick_;
    std::vector<PixelBox> boxes_;
};

} // namespace

std::vector<PixelBox> EdgesOnPicture(const Selection& selection, const MapView& view,
                                     int32_t thick) {
    EdgeWriter edges(view, thick);
    const int32_t left = view.MapLeftX - 1;
    const int32_t right = view.MapLeftX + view.ViewColumns();
    const int32_t below = view.MapBottomY - 1;
    const int32_t above = view.MapBottomY + view.ViewRows();
    for (const RowSpan& span : selection.Rows(below, above)) {
        if (span.X1 > left && span.X1 <= right)
            edges.AddUp(span.Y, span.X1);
        if (span.X2 >= left && span.X2 < right)
            edges.AddUp(span.Y, span.X2 + 1);
    }
    // Where a post is selected and the one below it is not, or the other way.
    const auto rowOf = [&](int32_t y) {
        const auto spans = selection.Rows(y, y);
        std::vector<RowSpan> row;
        for (const RowSpan& span : spans)
            if (span.X2 >= left && span.X1 <= right)
                row.push_back({0, std::max(span.X1, left), std::min(span.X2, right)});
        return Selection(std::move(row));
    };
    Selection lower = rowOf(below);
    for (int32_t y = below + 1; y <= above; ++y) {
        Selection row = rowOf(y);
        for (const Selection& parted : {Without(row, lower), Without(lower, row)})
            for (const RowSpan& span : parted.Spans())
                edges.AddAcross(y, span.X1, span.X2);
        lower = std::move(row);
    }
    return edges.Take();
}

} // namespace vardenix
