#include "mapeditor/PaletteFlash.h"

#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

namespace vardenix {

PaletteFlash StartFlashing(int16_t index, uint32_t color, int32_t seconds,
                           int32_t interval) {
    if (interval < 1)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           "a flash every " + std::to_string(interval) + " ms");
    PaletteFlash flash;
    flash.Running = true;
    flash.FlashIndex = index;
    flash.FlashMax = ToInt32(1000.0 / interval) * seconds;
    flash.FlashColor = color;
    flash.FlashInverse = 0xFFFFFF - color;
    return flash;
}

uint32_t FlashTicked(PaletteFlash& flash) {
    if (flash.FlashTick > flash.FlashMax) {
        flash.Running = false;
        flash.ShowsInverse = false;
        return flash.FlashColor;
    }
    ++flash.FlashTick;
    flash.ShowsInverse = !flash.ShowsInverse;
    return flash.ShowsInverse ? flash.FlashInverse : flash.FlashColor;
}

std::optional<uint32_t> StopFlashing(PaletteFlash& flash) {
    if (!flash.Running)
        return std::nullopt;
    flash.Running = false;
    return flash.FlashColor;
}

} // namespace vardenix
