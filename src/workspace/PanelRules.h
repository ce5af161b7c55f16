#pragma once

#include "mapview/MapLayout.h"
#include "mapview/MapView.h"
#include "program/DirtyFlags.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace vardenix {

// What the buttons of the control panel do, apart from the panel.

// cmdBMinus and cmdBPlus, cmdTransMinus and cmdTransPlus: one LargeChange down or up, or
// to the end of the range when less than that is left.
int32_t StepDown(int32_t value, const ControlRange& range);
int32_t StepUp(int32_t value, const ControlRange& range);
// cmdminus shows more posts, cmdplus fewer.
int32_t ZoomMinus(int32_t zoomPosts);
int32_t ZoomPlus(int32_t zoomPosts);
// cmdZoomin and cmdZoomOut: one grid cell fewer or more a side. A picture that fills a
// room has fewer or more cells by the next larger or smaller tile size. False at the
// limit, and then nothing is laid out or painted anew.
bool ZoomIn(MapView& view);
bool ZoomOut(MapView& view);

// Of Label2: "5 X 5"; of a picture that fills a room with the cells that its edges cut.
std::string GridCaption(const MapView& view);

// cmdGoXY: the position that the texts of LabelX and LabelY spell, rounded and clamped to
// the scroll ranges.
PostPlace GoToXY(std::string_view labelX, std::string_view labelY, int32_t mapWidth);

struct ButtonState {
    std::string Caption;
    bool Enabled = false;
};

// The button's look with Shift held or not; what needs saving decides without it.
ButtonState RedrawSaveButton(bool shiftDown, Layer layer, bool l0NeedSave,
                             bool l2NeedSave);
std::string RedrawExportButton(bool shiftDown);

// The tip of chkL0ELV and cmdLoadL0Elv.
std::string L0ToolTip(const std::string& l0FileName);

// "Vardenix v3.0.1", and " - L0/ELV MODE" behind it in that mode.
std::string MainTitle(Layer layer);

// The captions of FrmVXMain and FrmVXMap: a star stands before both while the flag of
// level 2 or of the finest elevations is up, whichever of the two is edited.
std::string MainCaption(const DirtyFlags& flags, Layer layer);
std::string MapCaption(const DirtyFlags& flags, const std::string& mapTitle);

constexpr int32_t ProgressFullWidth = 3495; // of PB3, twips

// The bar's width in twips; it may reach past its frame, as the value may past its range.
double ProgressWidth(int32_t value, int32_t min, int32_t max);

// What DisableClickableItemsVX locks.
constexpr std::array<const char*, 22> ClickableItemsVX{
    "cmdBMinus",  "cmdBPlus",   "cmdBrightReset", "CmdExpAreaCol",  "cmdFont",
    "cmdGoXY",    "CmdGridCol", "CmdHeightCol",   "cmdminus",       "cmdLoadL0Elv",
    "cmdplus",    "cmdRedo",    "CmdSegCol",      "cmdTransMinus",  "cmdTransPlus",
    "cmdUndo",    "cmdZoomin",  "cmdZoomOut",     "sldrBrightness", "sldrTrans",
    "ZoomScroll", "Frame26"};

} // namespace vardenix
