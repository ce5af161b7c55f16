#include "workspace/FirstLayout.h"

#include <algorithm>
#include <array>

namespace vardenix {
namespace {

// What a desktop's frame takes, both sides together, and a gap to the next window. It is
// not known before a window is up.
constexpr int32_t FrameAcross = 16;
constexpr int32_t FrameDown = 34;
// A map smaller than that is of no use.
constexpr int32_t LeastMap = 240;

} // namespace

bool NeverPlaced(const Configuration& settings) {
    const std::array places{settings.MainWinPos,   settings.SearchResWinPos,
                            settings.FeatWinPos,   settings.PalWinPos,
                            settings.ThPrevWinPos, settings.MainControlWinPos};
    const bool visible = settings.MainWinVis || settings.SearchResWinVis ||
                         settings.FeatWinVis || settings.PalWinVis ||
                         settings.ThPrevWinVis;
    return !visible &&
           std::all_of(places.begin(), places.end(), [](const WindowPosition& place) {
               return place.Top == 0 && place.Left == 0;
           });
}

FirstLayout LayOutFirst(const PixelRect& room, WindowSize panel, WindowSize map,
                        WindowSize preview) {
    FirstLayout layout;
    layout.Panel = {room.Left, room.Top, panel.Width, panel.Height};
    layout.Preview = {room.Left, room.Top, std::min(preview.Width, room.Width / 3),
                      std::min(preview.Height, room.Height - FrameDown)};
    const int32_t panelAcross = panel.Width + FrameAcross;
    const int32_t panelDown = panel.Height + FrameDown;
    const int32_t previewAcross = layout.Preview.Width + FrameAcross;
    const int32_t previewDown = layout.Preview.Height + FrameDown;
    const auto placeMap = [&](int32_t left, int32_t across) {
        layout.Map = {room.Left + left, room.Top,
                      std::min(map.Width, std::max(across, LeastMap)),
                      std::min(map.Height, std::max(room.Height - FrameDown, LeastMap))};
    };

    if (panelDown + previewDown <= room.Height) {
        const int32_t left = std::max(panelAcross, previewAcross);
        placeMap(left, room.Width - left - FrameAcross);
        layout.Preview.Top += panelDown;
        return layout;
    }
    const int32_t besidePanel = room.Width - panelAcross - FrameAcross;
    placeMap(panelAcross, besidePanel - previewAcross);
    layout.Preview.Left = layout.Map.Left + layout.Map.Width + FrameAcross;
    // Rather that than a map that is cut.
    const bool fitsUnderMap =
        map.Width <= besidePanel && map.Height + FrameDown + previewDown <= room.Height;
    if (layout.Map.Width < map.Width && fitsUnderMap) {
        placeMap(panelAcross, besidePanel);
        layout.Preview.Left = layout.Map.Left;
        layout.Preview.Top += map.Height + FrameDown;
    }
    return layout;
}

} // namespace vardenix
