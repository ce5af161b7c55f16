#include "mapeditor/MapFields.h"

#include "texts/Cutting.h"
#include "texts/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace vardenix {

namespace {

struct FieldName {
    const char* Label;
    const char* Name;
};

// "Longtitude" is spelled as users know it.
constexpr std::array<FieldName, MapFieldCount> Names{{
    {"MEA Map Width", "mea-width"},
    {"MEA Map Height", "mea-height"},
    {"L0 Map Width", "l0-width"},
    {"L0 Map Height", "l0-height"},
    {"L1 Map Width", "l1-width"},
    {"L1 Map Height", "l1-height"},
    {"L2 Map Width", "l2-width"},
    {"L2 Map Height", "l2-height"},
    {"L3 Map Width", "l3-width"},
    {"L3 Map Height", "l3-height"},
    {"L4 Map Width", "l4-width"},
    {"L4 Map Height", "l4-height"},
    {"L5 Map Width", "l5-width"},
    {"L5 Map Height", "l5-height"},
    {"Longtitude", "longitude"},
    {"Latitude", "latitude"},
    {"Feet between MEA Points", "feet-between-mea-points"},
    {"Feet between L0 Tiles", "feet-between-l0-tiles"},
    {"Last Near Tiled LOD", "last-near-tiled-lod"},
    {"Last Far Tiled LOD", "last-far-tiled-lod"},
    {"Flags", "flags"},
    {"Number of LODs", "number-of-lods"},
}};

const FieldName& NameOf(int index) { return Names.at(static_cast<size_t>(index)); }

constexpr int FirstLevel = 2;
constexpr int BehindLevels = 14;

// Null where the field is no float.
template <typename Record>
auto FloatOf(Record& record, int index) -> decltype(&record.Longitude) {
    switch (index) {
    case 14:
        return &record.Longitude;
    case 15:
        return &record.Latitude;
    case 16:
        return &record.FeetBetweenMEAPoints;
    case 17:
        return &record.FeetBetweenL0Tiles;
    default:
        return nullptr;
    }
}

template <typename Record>
auto WholeOf(Record& record, int index) -> decltype(&record.Flags) {
    if (index >= FirstLevel && index < BehindLevels) {
        auto& level = record.Levels[(index - FirstLevel) / 2];
        return index % 2 == 0 ? &level.Width : &level.Height;
    }
    switch (index) {
    case 0:
        return &record.MEAWidth;
    case 1:
        return &record.MEAHeight;
    case 18:
        return &record.LastNearTiledLOD;
    case 19:
        return &record.LastFarTiledLOD;
    case 20:
        return &record.Flags;
    default:
        return &record.NumberOfLODs;
    }
}

[[noreturn]] void Refuse(ErrorNumber number, int index, std::string_view text,
                         const char* why) {
    throw MapFieldError(number, index,
                        std::string(MapFieldLabel(index)) + ": '" + std::string(text) +
                            "' " + why);
}

// The whole of the text, as the type wants it.
template <typename Number>
Number Parsed(std::string_view text, int index) {
    const std::string_view digits = TrimBlanks(text);
    if (digits.empty())
        return 0;
    Number value = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    if (stop != end || error == std::errc::invalid_argument || std::isnan(value) ||
        std::isinf(value))
        Refuse(ErrorNumber::TypeMismatch, index, text, "is not a number");
    if (error == std::errc() || Val(digits) == 0)
        return value;
    // What is too small for the type is 0.
    if (std::abs(Val(digits)) < 1)
        return 0;
    Refuse(ErrorNumber::Overflow, index, text, "is too large");
}

int32_t ParsedWhole(std::string_view text, int index) {
    try {
        return ToInt32(Parsed<double>(text, index));
    } catch (const MapFieldError&) {
        throw;
    } catch (const RuntimeError&) {
        Refuse(ErrorNumber::Overflow, index, text,
               "lies outside -2147483648 to 2147483647");
    }
}

} // namespace

const char* MapFieldLabel(int index) { return NameOf(index).Label; }

const char* MapFieldName(int index) { return NameOf(index).Name; }

std::optional<int> MapFieldOfName(std::string_view name) {
    const auto found =
        std::find_if(Names.begin(), Names.end(),
                     [name](const FieldName& field) { return name == field.Name; });
    if (found == Names.end())
        return std::nullopt;
    return static_cast<int>(found - Names.begin());
}

std::string MapFieldText(const MapFileRecord& record, int index) {
    if (const float* number = FloatOf(record, index))
        return ShortestText(*number);
    return Format0(*WholeOf(record, index));
}

MapFieldTexts MapFieldTextsOf(const MapFileRecord& record) {
    MapFieldTexts texts;
    for (int i = 0; i < MapFieldCount; ++i)
        texts[static_cast<size_t>(i)] = MapFieldText(record, i);
    return texts;
}

void TakeMapField(MapFileRecord& record, int index, std::string_view text) {
    if (text == MapFieldText(record, index))
        return;
    if (float* number = FloatOf(record, index))
        *number = Parsed<float>(text, index);
    else
        *WholeOf(record, index) = ParsedWhole(text, index);
}

void TakeMapFields(MapFileRecord& record, const MapFieldTexts& texts) {
    MapFileRecord taken = record;
    for (int i = 0; i < MapFieldCount; ++i)
        TakeMapField(taken, i, texts[static_cast<size_t>(i)]);
    record = taken;
}

} // namespace vardenix
