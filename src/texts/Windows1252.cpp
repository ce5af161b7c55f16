#include "texts/Windows1252.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace vardenix {

namespace {

// The letters of the bytes 0x80 to 0x9F; all others are their own number.
constexpr std::array<uint16_t, 32> HighLetters{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

uint32_t LetterOf(unsigned char byte) {
    return byte >= 0x80 && byte < 0xA0 ? HighLetters[byte - 0x80U] : byte;
}

char ByteOf(uint32_t letter) {
    if (letter < 0x80 || (letter >= 0xA0 && letter < 0x100))
        return static_cast<char>(letter);
    const auto* found = std::find(HighLetters.begin(), HighLetters.end(), letter);
    return found == HighLetters.end()
               ? '?'
               : static_cast<char>(0x80 + (found - HighLetters.begin()));
}

// The letter at the front of `text`, which is shortened by it; '?' for what is no UTF-8.
uint32_t TakeLetter(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    text.remove_prefix(1);
    if (lead < 0x80)
        return lead;
    const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    uint32_t letter = lead & (0x3FU >> more);
    for (int i = 0; i < more; ++i) {
        if (text.empty() || (static_cast<unsigned char>(text[0]) & 0xC0U) != 0x80U)
            return '?';
        letter = letter << 6 | (static_cast<unsigned char>(text[0]) & 0x3FU);
        text.remove_prefix(1);
    }
    return more == 0 ? '?' : letter;
}

} // namespace

std::string Utf8FromBytes(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const uint32_t letter = LetterOf(static_cast<unsigned char>(byte));
        if (letter < 0x80) {
            text += static_cast<char>(letter);
        } else if (letter < 0x800) {
            text += static_cast<char>(0xC0 | letter >> 6);
            text += static_cast<char>(0x80 | (letter & 0x3F));
        } else {
            text += static_cast<char>(0xE0 | letter >> 12);
            text += static_cast<char>(0x80 | (letter >> 6 & 0x3F));
            text += static_cast<char>(0x80 | (letter & 0x3F));
        }
    }
    return text;
}

std::string BytesFromUtf8(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty())
        bytes += ByteOf(TakeLetter(text));
    return bytes;
}

} // namespace vardenix
