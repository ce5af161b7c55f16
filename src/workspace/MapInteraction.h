#pragma once

#include <cstdint>

namespace vardenix {

// What the mouse does on the map, beside the view itself. Owned by app/ for the whole
// run; the palette, the panel and the map window set it.
struct MapInteraction {
    int32_t SelectedTile = -1; // the tile number that a left click paints; -1 for none

    // Of the regions to export and to stamp: which corner the next left click gives.
    bool WaitExportCorner1 = false;
    bool WaitExportCorner2 = false;
    bool WaitImportCorner = false;
    int32_t ImportX = 0; // lower left corner of the stamp, posts from 0
    int32_t ImportY = 0;

    int32_t PopupSerial = 0; // of the post under the last right click
};

} // namespace vardenix
