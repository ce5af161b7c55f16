#include "mapeditor/ColorHelpers.h"

#include <charconv>
#include <string>

namespace vardenix {

namespace {

uint8_t HexByte(std::string_view text) {
    uint8_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value, 16);
    return value;
}

} // namespace

void HexColorToRGB(std::string_view text, uint8_t& red, uint8_t& green, uint8_t& blue) {
    std::string digits = "000000" + std::string(text);
    digits.erase(0, digits.size() - 6);
    const std::string_view view = digits;
    blue = HexByte(view.substr(0, 2));
    green = HexByte(view.substr(2, 2));
    red = HexByte(view.substr(4, 2));
}

void LongColorToRGB(uint32_t color, uint8_t& red, uint8_t& green, uint8_t& blue) {
    char digits[8];
    const auto result = std::to_chars(digits, digits + sizeof digits, color, 16);
    HexColorToRGB({digits, result.ptr}, red, green, blue);
}

uint32_t RGBToLong(uint8_t red, uint8_t green, uint8_t blue) {
    return red + 256U * green + 65536U * blue;
}

uint32_t HexColorToLong(std::string_view text) {
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    HexColorToRGB(text, red, green, blue);
    return RGBToLong(red, green, blue);
}

void ColorCodeToRGB(uint32_t code, uint8_t& red, uint8_t& green, uint8_t& blue,
                    bool& done) {
    red = static_cast<uint8_t>(code % 256);
    green = static_cast<uint8_t>(code / 256 % 256);
    blue = static_cast<uint8_t>(code / 65536 % 256);
    done = true;
}

} // namespace vardenix
