#pragma once

#include "mapview/MapView.h"
#include "workspace/FirstLayout.h"

namespace vardenix {

// How the picture of the map and its window follow one another.

// The two sizes that make a picture's side.
struct GridChoice {
    int32_t TilePixels = 0;
    int16_t GridCells = 0;

    int32_t Side() const { return TilePixels * GridCells; }
    bool operator==(const GridChoice&) const = default;
};

GridChoice ChoiceOf(const MapView& view);

// The largest picture that fits a square of `room` pixels, of all tile sizes and cells
// that can be chosen. Of several that are as large, the one whose tile size is nearest to
// that of the view: it shows the terrain as the user had it. The smallest one where none
// fits.
GridChoice LargestGrid(const MapView& view, int32_t room);

// The largest picture that fits, with the tile size of the view: as many cells as there
// is room for, 2 to 10.
GridChoice FittingGrid(const MapView& view, int32_t room);

// The cells a side that the user means who has drawn the edges of a window so that its
// part for the picture went from `before` to `after`: whole ones, by the direction that
// was drawn farther, and no more than `room` has place for. Nobody means fewer than 2,
// the least: 0 then, and the window shows a part of the picture.
int16_t DrawnCells(const MapView& view, WindowSize before, WindowSize after,
                   WindowSize room);

} // namespace vardenix
