#pragma once

#include <cstdint>
#include <string_view>

namespace vardenix {

// A colour value is red + 256 * green + 65536 * blue; its hexadecimal text therefore has
// blue at the left. Of such a text the last six characters count, and a shorter one is
// filled up with "0" at the left; two characters that are no hexadecimal byte give what
// the digits at their beginning spell.

void HexColorToRGB(std::string_view text, uint8_t& red, uint8_t& green, uint8_t& blue);
void LongColorToRGB(uint32_t color, uint8_t& red, uint8_t& green, uint8_t& blue);
uint32_t RGBToLong(uint8_t red, uint8_t green, uint8_t blue);
uint32_t HexColorToLong(std::string_view text);

// Red, green and blue of a color by division; `done` becomes true.
void ColorCodeToRGB(uint32_t code, uint8_t& red, uint8_t& green, uint8_t& blue,
                    bool& done);

} // namespace vardenix
