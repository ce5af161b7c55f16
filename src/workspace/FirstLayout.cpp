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

int64_t Area(const PixelRect& place) { return int64_t{place.Width} * place.Height; }

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
    const auto placeMap = [&](int32_t left, int32_t across, int32_t down) {
        layout.Map = {room.Left + left, room.Top,
                      std::min(map.Width, std::max(across, LeastMap)),
                      std::min(map.Height, std::max(down, LeastMap))};
    };

    if (panelDown + previewDown <= room.Height) {
        const int32_t left = std::max(panelAcross, previewAcross);
        placeMap(left, room.Width - left - FrameAcross, room.Height - FrameDown);
        layout.Preview.Top += panelDown;
        return layout;
    }
    // At the right of the map or under it: where it leaves more of the map to be seen.
    const int32_t besidePanel = room.Width - panelAcross - FrameAcross;
    const int32_t height = room.Height - FrameDown;
    placeMap(panelAcross, besidePanel, height - previewDown);
    const PixelRect under = layout.Map;
    placeMap(panelAcross, besidePanel - previewAcross, height);
    if (Area(under) > Area(layout.Map)) {
        layout.Map = under;
        layout.Preview.Left = layout.Map.Left;
        layout.Preview.Top += layout.Map.Height + FrameDown;
    } else {
        layout.Preview.Left = layout.Map.Left + layout.Map.Width + FrameAcross;
    }
    return layout;
}

} // namespace vardenix
