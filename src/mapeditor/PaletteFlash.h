#pragma once

#include <cstdint>
#include <optional>

namespace vardenix {

// An entry of the palette that changes between its colour and the inverse, to be found
// among its neighbours.
struct PaletteFlash {
    bool Running = false;
    int16_t FlashIndex = 0;
    int32_t FlashMax = 0;
    int32_t FlashTick = 0;
    uint32_t FlashColor = 0;   // the entry's, 0x00BBGGRR
    uint32_t FlashInverse = 0; // 0xFFFFFF less that
    bool ShowsInverse = false;
};

constexpr int32_t FlashSeconds = 3;
constexpr int32_t FlashInterval = 500; // ms between two changes

// `color` is the entry's own; a flash that runs is to be stopped first, or this would be
// the inverse of it. Error 5 for an interval below 1.
PaletteFlash StartFlashing(int16_t index, uint32_t color, int32_t seconds = FlashSeconds,
                           int32_t interval = FlashInterval);

// One interval has passed: the colour that the entry shows from now on. Past FlashMax
// that is its own, and the flash has ended.
uint32_t FlashTicked(PaletteFlash& flash);

// Ends a flash before its time: the colour to be shown again, nothing when none runs.
std::optional<uint32_t> StopFlashing(PaletteFlash& flash);

} // namespace vardenix
