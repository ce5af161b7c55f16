#include "workspace/FirstLayout.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vardenix {
namespace {

constexpr int32_t Gap = 6; // to the next window
// A map smaller than that is of no use.
constexpr int32_t LeastMap = 240;
// Four tiles and one row.
constexpr WindowSize LeastPalette{320, 140};

// What a window takes beside its inside: frame and gap.
struct Around {
    explicit Around(WindowSize frame)
        : Across(frame.Width + Gap), Down(frame.Height + Gap) {}

    int32_t Across;
    int32_t Down;

    PixelRect operator()(const PixelRect& window) const {
        return {window.Left, window.Top, window.Width + Across, window.Height + Down};
    }
};

bool Overlap(const PixelRect& a, const PixelRect& b) {
    return a.Left < b.Left + b.Width && b.Left < a.Left + a.Width &&
           a.Top < b.Top + b.Height && b.Top < a.Top + a.Height;
}

// Looks at every place whose corner lies behind the edges of what stands there and that
// ends before such an edge.
PixelRect LayOutPaletteWindow(const PixelRect& room,
                              const std::array<PixelRect, 3>& taken, WindowSize palette,
                              const Around& around) {
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
                              std::min(palette.Width, right - left - around.Across),
                              std::min(palette.Height, bottom - top - around.Down)};
        if (place.Width < LeastPalette.Width || place.Height < LeastPalette.Height ||
            place.Width * place.Height <= best.Width * best.Height)
            return;
        if (std::none_of(taken.begin(), taken.end(), [&](const PixelRect& window) {
                return Overlap(window, around(place));
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
    const WindowSize size{std::min(palette.Width, room.Width / 2 - around.Across),
                          std::min(palette.Height, room.Height / 3 - around.Down)};
    return {room.Left + room.Width - around.Across - size.Width,
            room.Top + room.Height - around.Down - size.Height, size.Width, size.Height};
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
                                 WindowSize preview, const Around& around) {
    FirstLayout layout;
    layout.Panel = {room.Left, room.Top, panel.Width, panel.Height};
    layout.Preview = {room.Left, room.Top, std::min(preview.Width, room.Width / 3),
                      std::min(preview.Height, room.Height - around.Down)};
    const int32_t panelAcross = panel.Width + around.Across;
    const int32_t panelDown = panel.Height + around.Down;
    const int32_t previewAcross = layout.Preview.Width + around.Across;
    const int32_t previewDown = layout.Preview.Height + around.Down;
    const auto placeMap = [&](int32_t left, int32_t across, int32_t down) {
        layout.Map = {room.Left + left, room.Top,
                      std::min(map.Width, std::max(across, LeastMap)),
                      std::min(map.Height, std::max(down, LeastMap))};
    };

    if (panelDown + previewDown <= room.Height) {
        const int32_t left = std::max(panelAcross, previewAcross);
        placeMap(left, room.Width - left - around.Across, room.Height - around.Down);
        layout.Preview.Top += panelDown;
        return layout;
    }
    // At the right of the map or under it: where it leaves more of the map to be seen.
    const int32_t besidePanel = room.Width - panelAcross - around.Across;
    const int32_t height = room.Height - around.Down;
    placeMap(panelAcross, besidePanel, height - previewDown);
    const PixelRect under = layout.Map;
    placeMap(panelAcross, besidePanel - previewAcross, height);
    if (Area(under) > Area(layout.Map)) {
        layout.Map = under;
        layout.Preview.Left = layout.Map.Left;
        layout.Preview.Top += layout.Map.Height + around.Down;
    } else {
        layout.Preview.Left = layout.Map.Left + layout.Map.Width + around.Across;
    }
    return layout;
}

} // namespace

FirstLayout LayOutFirst(const PixelRect& room, WindowSize panel, WindowSize map,
                        WindowSize preview, WindowSize palette, WindowSize frame) {
    const Around around(frame);
    FirstLayout layout = LayOutWithoutPalette(room, panel, map, preview, around);
    layout.Palette = LayOutPaletteWindow(
        room, {around(layout.Panel), around(layout.Map), around(layout.Preview)}, palette,
        around);
    return layout;
}

namespace {

WindowSize SizeOf(const PixelRect& window) { return {window.Width, window.Height}; }

bool SameCorner(const PixelRect& a, const PixelRect& b) {
    return a.Left == b.Left && a.Top == b.Top;
}

// Ends at the room's edges, and before windows that lie behind its least size.
PixelRect Cut(const PixelRect& room, PixelRect window,
              const std::vector<PixelRect>& others, const Around& around) {
    window.Width =
        std::min(window.Width, room.Left + room.Width - window.Left - around.Across);
    window.Height =
        std::min(window.Height, room.Top + room.Height - window.Top - around.Down);
    for (const PixelRect& other : others) {
        if (!Overlap(around(window), around(other)))
            continue;
        const int32_t across = other.Left - window.Left - around.Across;
        const int32_t down = other.Top - window.Top - around.Down;
        if (across >= LeastMap)
            window.Width = across;
        else if (down >= LeastMap)
            window.Height = down;
    }
    return window;
}

// Where it was stored, if it fits there in its full size. Else it is pulled into the room
// by whoever places it, unless that would lay it over a window that it was beside.
PixelRect Fitted(const PixelRect& room, const PixelRect& window,
                 const std::vector<PixelRect>& others, const Around& around) {
    const PixelRect framed = around(window);
    const int32_t right = room.Left + room.Width - framed.Width + Gap;
    const int32_t bottom = room.Top + room.Height - framed.Height + Gap;
    if (window.Left <= right && window.Top <= bottom)
        return window;
    const PixelRect pulled{std::max(room.Left, std::min(window.Left, right)),
                           std::max(room.Top, std::min(window.Top, bottom)), window.Width,
                           window.Height};
    const PixelRect cut = Cut(room, window, others, around);
    const bool hides =
        std::any_of(others.begin(), others.end(), [&](const PixelRect& other) {
            return Overlap(pulled, other) && !Overlap(cut, other);
        });
    return hides && cut.Width >= LeastMap && cut.Height >= LeastMap ? cut : window;
}

} // namespace

FirstLayout LayOutStored(const PixelRect& room, const FirstLayout& stored,
                         WindowSize frame) {
    const FirstLayout first =
        LayOutFirst(room, SizeOf(stored.Panel), SizeOf(stored.Map),
                    SizeOf(stored.Preview), SizeOf(stored.Palette), frame);
    FirstLayout layout = stored;
    if (SameCorner(stored.Map, first.Map) && SameCorner(stored.Preview, first.Preview)) {
        layout.Map = first.Map;
        layout.Preview = first.Preview;
        return layout;
    }
    const Around around(frame);
    layout.Map = Fitted(room, stored.Map, {stored.Panel, stored.Preview}, around);
    layout.Preview = Fitted(room, stored.Preview, {stored.Panel, layout.Map}, around);
    return layout;
}

namespace {

int64_t Covered(const PixelRect& place, const std::vector<PixelRect>& standing) {
    int64_t pixels = 0;
    for (const PixelRect& window : standing) {
        const int64_t across =
            std::min(place.Left + place.Width, window.Left + window.Width) -
            std::max(place.Left, window.Left);
        const int64_t down =
            std::min(place.Top + place.Height, window.Top + window.Height) -
            std::max(place.Top, window.Top);
        if (across > 0 && down > 0)
            pixels += across * down;
    }
    return pixels;
}

} // namespace

PixelRect LeastCovering(const PixelRect& room, WindowSize window,
                        const std::vector<PixelRect>& standing) {
    const int32_t right = std::max(room.Left, room.Left + room.Width - window.Width);
    const int32_t bottom = std::max(room.Top, room.Top + room.Height - window.Height);
    std::vector<int32_t> lefts{room.Left, right};
    std::vector<int32_t> tops{room.Top, bottom};
    for (const PixelRect& each : standing) {
        lefts.push_back(std::clamp(each.Left - window.Width, room.Left, right));
        lefts.push_back(std::clamp(each.Left + each.Width, room.Left, right));
        tops.push_back(std::clamp(each.Top - window.Height, room.Top, bottom));
        tops.push_back(std::clamp(each.Top + each.Height, room.Top, bottom));
    }
    PixelRect best{right, bottom, window.Width, window.Height};
    const auto worth = [&](const PixelRect& place) {
        return std::pair(-Covered(place, standing), place.Left + place.Top);
    };
    for (const int32_t left : lefts)
        for (const int32_t top : tops) {
            const PixelRect place{left, top, window.Width, window.Height};
            if (worth(place) > worth(best))
                best = place;
        }
    return best;
}

} // namespace vardenix
