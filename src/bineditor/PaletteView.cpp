#include "bineditor/PaletteView.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace vardenix {

namespace {

constexpr int32_t Side = 16;
constexpr int32_t Last = Side * Side - 1;
constexpr uint32_t White = 0xFFFFFF;

int32_t CellAt(int32_t pixel, int32_t size) {
    const int64_t cell = int64_t{pixel} * Side / std::max(size, 1);
    return static_cast<int32_t>(std::clamp<int64_t>(cell, 0, Side - 1));
}

// Points in front make all values as wide.
std::string PaddedHex(uint8_t value) {
    std::array<char, 8> digits{};
    std::snprintf(digits.data(), digits.size(), "%X", unsigned{value});
    return (value < 16 ? ".." : ".") + std::string(digits.data());
}

// By what the eye takes of each color, in thousandths.
bool IsLight(const PaletteEntry& color) {
    return 299 * color.Red + 587 * color.Green + 114 * color.Blue >= 128 * 1000;
}

} // namespace

int32_t PaletteIndexAt(int32_t x, int32_t y, int32_t width, int32_t height) {
    return Last - (CellAt(y, height) * Side + CellAt(x, width));
}

PaletteTip TipOfPalette(const PaletteTable& table, int32_t index) {
    const PaletteEntry& color = table.at(static_cast<size_t>(index));
    return {"Palette Index: " + std::to_string(index) + "\nRed: " +
                std::to_string(color.Red) + "\nGreen: " + std::to_string(color.Green) +
                "\nBlue: " + std::to_string(color.Blue) + "\nhex$#: " +
                PaddedHex(color.Red) + PaddedHex(color.Green) + PaddedHex(color.Blue),
            color.Red | uint32_t{color.Green} << 8 | uint32_t{color.Blue} << 16,
            IsLight(color) ? 0 : White};
}

} // namespace vardenix
