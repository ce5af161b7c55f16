#include "workspace/MapSizing.h"

#include "mapview/MapLayout.h"

#include <algorithm>
#include <cstdlib>

namespace vardenix {

namespace {

// How many doublings lie between two tile sizes.
int32_t Doublings(int32_t a, int32_t b) {
    int32_t count = 0;
    for (int32_t low = std::min(a, b); low < std::max(a, b); low *= 2)
        ++count;
    return count;
}

} // namespace

GridChoice ChoiceOf(const MapView& view) { return {view.TilePixels, view.GridCells}; }

GridChoice LargestGrid(const MapView& view, int32_t room) {
    GridChoice best{TileWidths.front(), static_cast<int16_t>(GridCellsRange.Min)};
    for (const int32_t width : TileWidths) {
        const int32_t cells = std::min(room / width, GridCellsRange.Max);
        if (cells < GridCellsRange.Min)
            continue;
        const GridChoice choice{width, static_cast<int16_t>(cells)};
        const bool nearer = Doublings(width, view.TilePixels) <
                            Doublings(best.TilePixels, view.TilePixels);
        if (choice.Side() > best.Side() || (choice.Side() == best.Side() && nearer))
            best = choice;
    }
    return best;
}

GridChoice FittingGrid(const MapView& view, int32_t room) {
    const int32_t cells = GridCellsRange.Clamp(room / std::max(view.TilePixels, 1));
    return {view.TilePixels, static_cast<int16_t>(cells)};
}

int16_t DrawnCells(const MapView& view, WindowSize before, WindowSize after,
                   WindowSize room) {
    const int32_t across = after.Width - before.Width;
    const int32_t down = after.Height - before.Height;
    const int32_t side = std::abs(across) >= std::abs(down) ? after.Width : after.Height;
    const int32_t cells = (side + view.TilePixels / 2) / view.TilePixels;
    if (cells < GridCellsRange.Min)
        return 0;
    const int32_t most = std::min(room.Width, room.Height) / view.TilePixels;
    return static_cast<int16_t>(
        std::min(cells, std::clamp(most, GridCellsRange.Min, GridCellsRange.Max)));
}

} // namespace vardenix
