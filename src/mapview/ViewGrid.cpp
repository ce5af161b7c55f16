#include "mapview/ViewGrid.h"

#include "mapview/DrawingSurface.h"
#include "texts/Numbers.h"

#include <algorithm>
#include <cmath>

namespace vardenix {

ViewGrid::ViewGrid(const MapView& view, const Terrain& terrain)
    : ViewGrid(view, terrain, {0, 0, view.ViewColumns() - 1, view.ViewRows() - 1}) {}

ViewGrid::ViewGrid(const MapView& view, const Terrain& terrain, const PostBox& cells)
    : firstColumn_(cells.X1), firstRow_(cells.Y1),
      columns_(std::max(cells.X2 - cells.X1 + 1, 0)),
      rows_(std::max(cells.Y2 - cells.Y1 + 1, 0)),
      cellSide_(ClampToInt32(std::ceil(view.CellSize()))), mapLeftX_(view.MapLeftX),
      mapBottomY_(view.MapBottomY), terrain_(terrain) {
    columnEdges_.reserve(static_cast<size_t>(columns_) + 1);
    for (int32_t i = 0; i <= columns_; ++i)
        columnEdges_.push_back(PixelAt(view.CellSize() * (firstColumn_ + i)));
    rowEdges_.reserve(static_cast<size_t>(rows_) + 1);
    for (int32_t i = 0; i <= rows_; ++i)
        rowEdges_.push_back(PixelAt(view.BottomOfRow(mapBottomY_ + firstRow_ + i)));
}

std::optional<PostCell> ViewGrid::At(int32_t i) const {
    const int32_t column = firstColumn_ + (i - 1) % columns_;
    const int32_t row = firstRow_ + (i - 1) / columns_;
    const int64_t x = int64_t{column} + mapLeftX_ + 1;
    const int64_t y = int64_t{row} + mapBottomY_ + 1;
    if (x < 1 || y < 1 || x > terrain_.MapWidth || y > terrain_.MapWidth)
        return std::nullopt;
    const int64_t serial = (y - 1) * terrain_.MapWidth + x;
    if (serial > terrain_.LxArr.UpperBound())
        return std::nullopt;

    const auto left = static_cast<size_t>(column - firstColumn_);
    const auto bottom = static_cast<size_t>(row - firstRow_);
    PostCell cell;
    cell.X = static_cast<int32_t>(x);
    cell.Y = static_cast<int32_t>(y);
    cell.Cell = {columnEdges_[left], rowEdges_[bottom + 1],
                 columnEdges_[left + 1] - columnEdges_[left],
                 rowEdges_[bottom] - rowEdges_[bottom + 1]};
    cell.Post = terrain_.LxArr.Values()[static_cast<size_t>(serial - 1)];
    return cell;
}

} // namespace vardenix
