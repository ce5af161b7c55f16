#pragma once

#include "levels/Posts.h"
#include "levels/Terrain.h"
#include "mapview/MapView.h"
#include "pictures/Raster.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace vardenix {

// A post of the terrain in a cell of the view.
struct PostCell {
    int32_t X = 0; // from 1
    int32_t Y = 0;
    // Where it is painted. It reaches to its neighbours' edges: with a cell size of
    // 42.67 pixels some cells are 42 wide and some 43, and nothing gapes between them.
    // Below a pixel a cell may be empty. No side is longer than CellSide.
    PixelRect Cell;
    TerrainPost Post{};
};

// The posts of a view in the order they are painted: by columns from the left, row by row
// from the bottom. The terrain is borrowed.
class ViewGrid {
public:
    ViewGrid(const MapView& view, const Terrain& terrain);
    // Of some cells of the view only: columns from the left and rows from below, from 0.
    ViewGrid(const MapView& view, const Terrain& terrain, const PostBox& cells);

    // Its cells, whether posts lie there or not.
    int32_t Count() const { return columns_ * rows_; }
    int32_t Columns() const { return columns_; }
    int32_t Rows() const { return rows_; }

    // Pixels along a side of the squares that pictures are stretched to, the same for all
    // cells: each picture is then wanted in one size only.
    int32_t CellSide() const { return cellSide_; }

    // The post of cell `i`, 1 to Count; nothing beyond the edge of the terrain.
    std::optional<PostCell> At(int32_t i) const;

private:
    int32_t firstColumn_;
    int32_t firstRow_;
    int32_t columns_;
    int32_t rows_;
    int32_t cellSide_;
    int32_t mapLeftX_;
    int32_t mapBottomY_;
    const Terrain& terrain_;
    std::vector<int32_t> columnEdges_; // of the columns above, from the left
    std::vector<int32_t> rowEdges_;    // of the rows above, from below
};

} // namespace vardenix
