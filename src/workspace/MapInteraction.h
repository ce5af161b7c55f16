#pragma once

#include "catalogue/TextureBin.h"
#include "catalogue/TileNumbers.h"
#include "levels/Posts.h"
#include "levels/Terrain.h"
#include "mapview/MapLayout.h"
#include "mapview/MapView.h"
#include "workspace/HandState.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vardenix {

// What the left button does on the map.
enum class MapTool : int16_t { Brush, Rectangle, Fill, Pick, Select, Lasso, Eraser };
// What the tools do to the finest elevations while these are edited; with None they go on
// giving tiles to posts.
enum class HeightTool : int16_t { None, Set, Raise, Lower, Smooth };

// What the mouse does on the map, beside the view itself. Owned by app/ for the whole
// run; the palette, the panel and the map window set it.
struct MapInteraction {
    int32_t SelectedTile = -1; // the tile number that a left click paints; -1 for none

    MapTool Tool = MapTool::Brush;
    MapTool ToolBeforePick = MapTool::Brush; // comes back when a tile has been picked
    int32_t BrushSize = 1;                   // squares along a side, 1 to 9
    HeightTool Heights = HeightTool::None;
    int16_t Feet = 100; // that heights are set to, or raised or lowered by
    HandState Hand;

    // Of the regions to export and to stamp: which corner the next left click gives.
    bool WaitExportCorner1 = false;
    bool WaitExportCorner2 = false;
    bool WaitImportCorner = false;
    bool ExportFeatures = false; // of the region to export, in place of its posts
    int32_t ImportX = 0;         // lower left corner of the stamp, posts from 0
    int32_t ImportY = 0;
    int32_t ImportWidth = 0; // of the region to stamp, posts
    int32_t ImportHeight = 0;
    // Its tile numbers, rows from the lowest y up; empty while no stamp is waited for.
    std::vector<int32_t> ImportTiles;

    bool Waits() const {
        return WaitExportCorner1 || WaitExportCorner2 || WaitImportCorner;
    }
    void StopWaiting() {
        WaitExportCorner1 = WaitExportCorner2 = WaitImportCorner = false;
        ImportTiles.clear();
    }

    PostPlace EditedHeight;  // that the details are of, from 0
    int32_t PopupSerial = 0; // of the post under the last right click; 0 beyond the edge
};

// The tool in hand; what comes back after a pick is the one before it.
void ChooseTool(MapInteraction& interaction, MapTool tool);

// The post of level 2 under a position of the mouse on the picture, in pixels from the
// upper left. Cells are taken as rounded to whole pixels here; where that differs from
// the painted size (3 posts on 128 pixels) a click near a far edge of the view meets the
// neighbour, as it always has. A picture that fills a room is wide enough for that to
// grow to whole cells, and there the painted ones count.
PostPlace PostUnderCursor(const MapView& view, double x, double y);
// The finest elevation there: sixteen to a cell, of a rounded quarter of its side each,
// which is at least a pixel.
PostPlace ElevationUnderCursor(const MapView& view, double x, double y);

// Whether a post of level 2 is there, or a height of the loaded elevations.
bool OnTerrain(PostPlace post, const Terrain& terrain);
bool OnElevations(PostPlace place, const Terrain& terrain);

// Whether the tools work on the finest elevations now, rather than on tiles.
bool EditsHeights(const MapInteraction& interaction, const MapView& view);
// Whether brush, rectangle or fill give posts of level 2 something else than tiles.
bool PaintsFields(const MapInteraction& interaction, const MapView& view);
// Whether they give what has to fit with what lies round it: grounds or ways.
bool PaintsLand(const MapInteraction& interaction, const MapView& view);
// The tile that a post is painted with: the chosen one, or one of several that are drawn
// in turn; the eraser's has its own.
int32_t TileToPaint(const MapInteraction& interaction, PostPlace post);

// The pointer over the map: the first three by the platform's old codes.
enum class MapPointer {
    Default = 0,
    Cross = 2,
    Brush = 99,
    Rectangle = 100,
    Fill = 101,
    Pick = 102,
    Select = 103,
    Eraser = 104
};
MapPointer PointerFor(const MapInteraction& interaction, const MapView& view);

// The catalogue's name of a tile, Windows-1252; empty for a number without a tile, and
// "Not Specified in BIN File" for one outside the table.
std::string TileNameOf(int32_t tileNumber, const TileLookup& lookup);

// The class code of a tile's kind of terrain; -1 for a number without a tile.
int32_t KindOfTile(const TileLookup& lookup, int32_t tileNumber);

// What the next left click would close the box of, with the cursor over `post`: the
// region to export once its first corner is given, or the stamp. Nothing otherwise.
std::optional<PostBox> BoxAtCursor(const MapInteraction& interaction, const MapView& view,
                                   PostPlace post);

// What the tool tip at the cursor says. The tile's name is as the catalogue has it,
// Windows-1252; lines are parted by CR LF.
struct ReadOut {
    std::string Text;
    uint32_t BackColor = 0; // 0x00BBGGRR
    std::string Header;     // empty: none is shown
};
ReadOut ReadOutAt(const MapView& view, const Terrain& terrain, const TileLookup& lookup,
                  double x, double y);

// The value of a scroll bar after notches of the wheel: `backward` is negative for
// forward ones. One notch is ZoomPosts posts; at most to the bar's ends.
int32_t AfterWheel(int32_t value, int32_t backward, const MapView& view,
                   const ControlRange& range);

// Where mnuLocInBIN leads. Nothing when the catalogue has no such set, of which
// NoSetForTile tells the user.
std::optional<TilePlace> PlaceInBIN(int32_t tileNumber, int32_t numSets);
constexpr const char* NoSetForTile = "The Set number for this tile doesn't exist";

} // namespace vardenix
