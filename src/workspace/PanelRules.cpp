#include "workspace/PanelRules.h"

#include "program/ProgramVersion.h"
#include "texts/Numbers.h"

#include <algorithm>
#include <iterator>

namespace vardenix {

namespace {

// The one behind that of the view, in the order of a list.
template <typename Iterator>
bool NextTileSize(MapView& view, Iterator begin, Iterator end) {
    const auto at = std::find(begin, end, view.TilePixels);
    if (at == end || std::next(at) == end)
        return false;
    view.TilePixels = *std::next(at);
    return true;
}

std::string Star(const DirtyFlags& flags) { return flags.L2 || flags.L0ELV ? "*" : ""; }

} // namespace

int32_t StepDown(int32_t value, const ControlRange& range) {
    const int32_t step = range.LargeChange;
    return value > range.Min + step - 1 ? value - step : range.Min;
}

int32_t StepUp(int32_t value, const ControlRange& range) {
    const int32_t step = range.LargeChange;
    return value < range.Max - (step - 1) ? value + step : range.Max;
}

int32_t ZoomMinus(int32_t zoomPosts) {
    return zoomPosts < ZoomRange.Max ? zoomPosts + 1 : zoomPosts;
}

int32_t ZoomPlus(int32_t zoomPosts) {
    return zoomPosts > ZoomRange.Min ? zoomPosts - 1 : zoomPosts;
}

bool ZoomIn(MapView& view) {
    if (view.FillsRoom())
        return NextTileSize(view, TileWidths.begin(), TileWidths.end());
    if (view.GridCells <= GridCellsRange.Min)
        return false;
    --view.GridCells;
    return true;
}

bool ZoomOut(MapView& view) {
    if (view.FillsRoom())
        return NextTileSize(view, TileWidths.rbegin(), TileWidths.rend());
    if (view.GridCells >= GridCellsRange.Max)
        return false;
    ++view.GridCells;
    return true;
}

std::string GridCaption(const MapView& view) {
    const auto cells = [&view](int32_t pixels) {
        const int32_t tile = std::max(view.TilePixels, 1);
        return std::to_string((pixels + tile - 1) / tile);
    };
    return cells(view.PictureWidth()) + " X " + cells(view.PictureHeight());
}

PostPlace GoToXY(std::string_view labelX, std::string_view labelY, int32_t mapWidth) {
    const auto rounded = [](std::string_view text) {
        return ClampToInt32(RoundHalfEven(Val(text)));
    };
    return ClampToScroll({rounded(labelX), rounded(labelY)}, mapWidth);
}

ButtonState RedrawSaveButton(bool shiftDown, Layer layer, bool l0NeedSave,
                             bool l2NeedSave) {
    const std::string caption = layer == Layer::Heights ? "Save L0/ELV" : "Save L2";
    if (shiftDown)
        return {caption + " as...", true};
    return {caption, layer == Layer::Heights ? l0NeedSave : l2NeedSave};
}

std::string RedrawExportButton(bool shiftDown) {
    return shiftDown ? "Export TDFs" : "Export";
}

std::string L0ToolTip(const std::string& l0FileName) {
    return l0FileName.empty() ? "No L0/ELV file loaded." : l0FileName;
}

std::string MainTitle(Layer layer) {
    return "Vardenix v" + ProgramVersion() +
           (layer == Layer::Heights ? " - L0/ELV MODE" : "");
}

std::string MainCaption(const DirtyFlags& flags, Layer layer) {
    return Star(flags) + MainTitle(layer);
}

std::string MapCaption(const DirtyFlags& flags, const std::string& mapTitle) {
    return Star(flags) + mapTitle;
}

double ProgressWidth(int32_t value, int32_t min, int32_t max) {
    if (max == 0)
        return 0;
    return static_cast<double>(value - min) / max * ProgressFullWidth;
}

} // namespace vardenix
