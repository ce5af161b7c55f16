#include "workspace/MapSizing.h"

#include "mapview/MapLayout.h"

#include <algorithm>
#include <cstdlib>

namespace vardenix {

bool RoomFilling::Fill(WindowSize room) {
    const WindowSize wanted{std::max(room.Width, 1), std::max(room.Height, 1)};
    if (wanted.Width == view_.RoomWidth && wanted.Height == view_.RoomHeight)
        return false;
    if (!Fills())
        squareBefore_ = view_.SquareSide();
    view_.RoomWidth = wanted.Width;
    view_.RoomHeight = wanted.Height;
    return true;
}

bool RoomFilling::End() {
    if (!Fills())
        return false;
    view_.RoomWidth = 0;
    view_.RoomHeight = 0;
    return true;
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
