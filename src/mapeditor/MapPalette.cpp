#include "mapeditor/MapPalette.h"

#include "mapeditor/ColorHelpers.h"
#include "program/ProgramVersion.h"
#include "texts/Cutting.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace vardenix {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::optional<uint32_t> ColorOfHex(std::string_view digits) {
    uint32_t value = 0;
    const char* end = digits.data() + digits.size();
    if (std::from_chars(digits.data(), end, value, 16).ptr != end)
        return std::nullopt;
    if (digits.size() == 6)
        return RGBToLong(static_cast<uint8_t>(value >> 16),
                         static_cast<uint8_t>(value >> 8), static_cast<uint8_t>(value));
    if (digits.size() != 3)
        return std::nullopt;
    const auto twice = [value](int shift) {
        return static_cast<uint8_t>((value >> shift & 15) * 17);
    };
    return RGBToLong(twice(8), twice(4), twice(0));
}

// Every run of digits is a number; nothing when one is above 255.
std::optional<std::vector<uint8_t>> BytesIn(std::string_view text) {
    std::vector<uint8_t> bytes;
    for (size_t at = 0; at < text.size();) {
        if (!IsDigit(text[at])) {
            ++at;
            continue;
        }
        uint8_t value = 0;
        const auto [stop, error] =
            std::from_chars(text.data() + at, text.data() + text.size(), value);
        if (error != std::errc())
            return std::nullopt;
        bytes.push_back(value);
        at = static_cast<size_t>(stop - text.data());
    }
    return bytes;
}

std::optional<uint32_t> ColorOfNumbers(std::string_view text) {
    constexpr std::string_view known = "0123456789 \t,;()rgbaRGBA:{}";
    if (text.find_first_not_of(known) != std::string_view::npos)
        return std::nullopt;
    const auto bytes = BytesIn(text);
    if (!bytes || bytes->size() < 3 || bytes->size() > 4)
        return std::nullopt;
    return RGBToLong((*bytes)[0], (*bytes)[1], (*bytes)[2]);
}

} // namespace

uint32_t EntryColor(const MapPaletteEntry& entry) {
    return RGBToLong(entry.Red, entry.Green, entry.Blue);
}

void SetEntryColor(MapPaletteEntry& entry, uint32_t color) {
    bool done = false;
    ColorCodeToRGB(color, entry.Red, entry.Green, entry.Blue, done);
}

void SetAllSameColor(MapPalette palette, uint32_t color) {
    for (MapPaletteEntry& entry : palette)
        SetEntryColor(entry, color);
}

int16_t NewAlphaOf(std::string_view text) {
    return static_cast<int16_t>(std::clamp(ClampToInt32(Val(text)), 0, 255));
}

void SetAllAlpha(MapPalette palette, uint8_t alpha) {
    for (MapPaletteEntry& entry : palette)
        entry.Alpha = alpha;
}

std::string EntryTip(int index, const MapPaletteEntry& entry) {
    return "#:" + Format0(index) + " {R:" + Format0(entry.Red) + ", " +
           "G:" + Format0(entry.Green) + ", " + "B:" + Format0(entry.Blue) +
           ", A:" + Format0(entry.Alpha) + "}";
}

EntryTexts EntryTextsOf(const MapPaletteEntry& entry) {
    return {Format0(entry.Red), Format0(entry.Green), Format0(entry.Blue),
            Format0(entry.Alpha)};
}

MapPaletteEntry EntryOf(const EntryTexts& texts) {
    const auto byte = [&texts](size_t i, const char* name) {
        const double value = Val(texts[i]);
        if (value > 255)
            throw RuntimeError(ErrorNumber::Overflow,
                               std::string(name) + " " + texts[i] +
                                   "; give a number from 0 to 255");
        return ToByte(value);
    };
    return {byte(0, "RED:"), byte(1, "GREEN:"), byte(2, "BLUE:"), byte(3, "ALPHA:")};
}

std::string ColorText(uint32_t color) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "#";
    for (const int shift : {4, 0, 12, 8, 20, 16})
        text += digits[color >> shift & 15];
    return text;
}

std::optional<uint32_t> ColorOfText(std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r'))
        text.remove_suffix(1);
    text = TrimBlanks(text);
    if (text.substr(0, 2) == "#:") {
        const size_t brace = text.find('{');
        return brace == std::string_view::npos ? std::nullopt
                                               : ColorOfNumbers(text.substr(brace));
    }
    if (!text.empty() && text.front() == '#')
        return ColorOfHex(text.substr(1));
    return ColorOfNumbers(text);
}

int StepInPalette(int index, PaletteStep step) {
    const int column = index % PaletteSide;
    constexpr int last = PaletteSize - 1;
    switch (step) {
    case PaletteStep::Left:
        return std::max(index - 1, 0);
    case PaletteStep::Right:
        return std::min(index + 1, last);
    case PaletteStep::Up:
        return index >= PaletteSide ? index - PaletteSide : index;
    case PaletteStep::Down:
        return index + PaletteSide <= last ? index + PaletteSide : index;
    case PaletteStep::RowBegin:
        return index - column;
    case PaletteStep::RowEnd:
        return index - column + PaletteSide - 1;
    case PaletteStep::Top:
        return column;
    case PaletteStep::Bottom:
        return PaletteSize - PaletteSide + column;
    }
    return index;
}

std::string MapEditorTitle(const std::string& path, bool dirty) {
    return std::string(dirty ? "*" : "") + "MapEditor v" + ProgramVersion() +
           (path.empty() ? "" : "-" + path);
}

} // namespace vardenix
