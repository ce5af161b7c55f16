#include "workspace/FirstLayout.h"

#include <algorithm>
#include <array>
#include <vector>

namespace vardenix {
namespace {

// What a desktop's frame takes, both sides together, and a gap to the next window. It is
// not known before a window is up.
constexpr int32_t FrameAcross = 16;
constexpr int32_t FrameDown = 34;
// A map smaller than that is of no use.
constexpr int32_t LeastMap = 240;
// Four tiles and one row.
constexpr WindowSize LeastPalette{320, 140};

PixelRect WithFrame(const PixelRect& window) {
    return {window.Left, window.Top, window.Width + FrameAcross,
            window.Height + FrameDown};
}

bool Overlap(const PixelRect& a, const PixelRect& b) {
    return a.Left < b.Left + b.Width && b.Left < a.Left + a.Width &&
           a.Top < b.Top + b.Height && b.Top < a.Top + a.Height;
}

// Looks at every place whose corner lies behind the edges of what stands there and that
// ends before such an edge.
PixelRect LayOutPaletteWindow(const PixelRect& room,
                              const std::array<PixelRect, 3>& taken, WindowSize palette) {
    std::vector<int32_t> lefts{room.Left}, rights{room.Left + room.Width};
    std::vector<int32_t> tops{room.Top}, bottoms{room.Top + room.Height};
    for (const PixelRect& window : taken) {
        lefts.push_back(window.Left + window.Width);
        rights.push_back(window.Left);
        tops.push_back(window.Top + window.Height);
        bottoms.push_back(window.Top);
    }
    PixelRect best;
    const auto consider = [&](int32_t left, int32_t top, int32_t right, int32_t bottom) {
        const PixelRect place{left, top,
                              std::min(palette.Width, right - left - FrameAcross),
                              std::min(palette.Height, bottom - top - FrameDown)};
        if (place.Width < LeastPalette.Width || place.Height < LeastPalette.Height ||
            place.Width * place.Height <= best.Width * best.Height)
            return;
        if (std::none_of(taken.begin(), taken.end(), [&](const PixelRect& window) {
                return Overlap(window, WithFrame(place));
            }))
            best = place;
    };
    for (const int32_t left : lefts)
        for (const int32_t top : tops)
            for (const int32_t right : rights)
                for (const int32_t bottom : bottoms)
                    consider(left, top, right, bottom);
    if (best.Width != 0)
        return best;
    // Most of the map stays in view.
    const WindowSize size{std::min(palette.Width, room.Width / 2 - FrameAcross),
                          std::min(palette.Height, room.Height / 3 - FrameDown)};
    return {room.Left + room.Width - FrameAcross - size.Width,
            room.Top + room.Height - FrameDown - size.Height, size.Width, size.Height};
}

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

namespace {

FirstLayout LayOutWithoutPalette(const PixelRect& room, WindowSize panel, WindowSize map,
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

} // namespace

FirstLayout LayOutFirst(const PixelRect& room, WindowSize panel, WindowSize map,
                        WindowSize preview, WindowSize palette) {
    FirstLayout layout = LayOutWithoutPalette(room, panel, map, preview);
    layout.Palette = LayOutPaletteWindow(
        room, {WithFrame(layout.Panel), WithFrame(layout.Map), WithFrame(layout.Preview)},
        palette);
    return layout;
}

} // namespace vardenix
