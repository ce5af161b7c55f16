#include "workspace/FirstLayout.h"

#include <algorithm>
#include <array>

namespace vardenix {
namespace {

// What a desktop's frame takes, both sides together, and a gap to the next window. It is
// not known before a window is up, so this is on the generous side.
constexpr int32_t FrameAcross = 16;
constexpr int32_t FrameDown = 44;
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
    const int32_t panelAcross = panel.Width == 0 ? 0 : panel.Width + FrameAcross;
    const int32_t panelDown = panel.Height == 0 ? 0 : panel.Height + FrameDown;
    const int32_t previewAcross = layout.Preview.Width + FrameAcross;

    int32_t mapLeft = panelAcross;
    int32_t mapRoom = room.Width - panelAcross - FrameAcross;
    const bool under = panelDown + layout.Preview.Height + FrameDown <= room.Height;
    if (under) {
        layout.Preview.Top += panelDown;
        mapLeft = std::max(panelAcross, previewAcross);
        mapRoom = room.Width - mapLeft - FrameAcross;
    } else {
        mapRoom -= previewAcross;
    }
    layout.Map = {room.Left + mapLeft, room.Top,
                  std::min(map.Width, std::max(mapRoom, LeastMap)),
                  std::min(map.Height, std::max(room.Height - FrameDown, LeastMap))};
    if (!under)
        layout.Preview.Left = layout.Map.Left + layout.Map.Width + FrameAcross;
    return layout;
}

} // namespace vardenix
