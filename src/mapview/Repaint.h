#pragma once

#include "mapview/MapSources.h"
#include "mapview/Relief.h"
#include "mapview/ViewGrid.h"

#include <cstdint>
#include <vector>

namespace vardenix {

// For the parts of the renderer: one repaint, from its beginning to its end.
struct Repaint {
    const MapView& View;
    const MapSources& Sources;
    const MapTools& Tools;
    DrawingSurface& Surface;
    MapScreen& Screen;
    ViewGrid Grid;
    int32_t LastPercent = 0;    // on the bar
    int32_t HeightsLeftOut = 0; // that are wider than their cell
    int32_t Left = 0;           // of the surface's pixels on the picture
    int32_t Top = 0;

    // Called after cell `i` of a pass that fills half of the bar from `base` on. False
    // when the repaint shall end.
    bool GoOn(int32_t i, int32_t base);
};

// The entry of a tile number in TileLookup; null when it has none.
const TileInfo* EntryOf(const Catalogue& catalogue, int32_t tileNumber);

// Adds a line like "Painting Tile with dimensions 128 X 128" to the debug log.
void LogPainting(const Repaint& repaint, const char* what);

// Every tile number's picture in the cache, asked for once per repaint.
class TileIds {
public:
    TileIds(const Repaint& repaint, TileUse use);

    TilePictureId Of(const Repaint& repaint, int32_t tileNumber, const TileInfo& entry);

    // Makes the cells of all the view's pictures, by all processors, unless Esc ends it.
    void Prepare(Repaint& repaint);

private:
    TileUse use_;
    std::vector<TilePictureId> ids_; // by tile number, -1 until asked
};

// Puts a picture into a cell of the surface. Whatever goes wrong with it, the cell
// is left as it was and the repaint goes on; false then.
bool PaintCell(Repaint& repaint, TilePictureId id, const PixelRect& cell);

// The passes. Those that can be ended answer false when they were.
bool PaintTiles(Repaint& repaint);
// In place of tiles, areas and paths, heights and grid.
void PaintOverview(Repaint& repaint);
// In the place of tiles, for a relief alone.
constexpr uint32_t BareGround = 0xB4B4B4; // 0x00BBGGRR
void PaintBareGround(Repaint& repaint);
// The grid of heights whose relief is shown: that which is edited, as far as it is there.
HeightField HeightsShown(const Repaint& repaint);
void PaintRelief(Repaint& repaint);
void DrawContours(Repaint& repaint);
// Both over an overview, pixel by pixel.
void PaintReliefOverview(Repaint& repaint);
void PaintAreasAndPaths(Repaint& repaint);
bool PaintOverlays(Repaint& repaint);
void DrawSegments(Repaint& repaint);
void DrawExportBox(Repaint& repaint);

} // namespace vardenix
