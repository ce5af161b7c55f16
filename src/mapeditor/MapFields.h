#pragma once

#include "program/MapFileRecord.h"
#include "texts/RuntimeError.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace vardenix {

// The 22 numbers of the record beside the palette, in the order of the editor's boxes:
// 0 and 1 the MEA map's width and height, 2 to 13 those of L0 to L5, 14 longitude, 15
// latitude, 16 feet between MEA points, 17 feet between L0 tiles, 18 last near tiled
// level, 19 last far tiled level, 20 flags, 21 number of levels. 14 to 17 are floats.
constexpr int MapFieldCount = 22;

using MapFieldTexts = std::array<std::string, MapFieldCount>;

// A text that is no number of its field: error 13, or 6 where the number does not fit.
class MapFieldError : public RuntimeError {
public:
    MapFieldError(ErrorNumber number, int index, const std::string& detail)
        : RuntimeError(number, detail), index_(index) {}
    int Index() const { return index_; }

private:
    int index_;
};

// What a field is called on the window: "L0 Map Width".
const char* MapFieldLabel(int index);
// And in a script: "l0-width".
const char* MapFieldName(int index);
std::optional<int> MapFieldOfName(std::string_view name);

// A float as the shortest text that reads back to it.
std::string MapFieldText(const MapFileRecord& record, int index);
MapFieldTexts MapFieldTextsOf(const MapFileRecord& record);

// Takes a box's text into its field: a decimal number and nothing else, whole numbers
// rounded half to even; an empty one is 0. A text that says what the field holds already
// leaves it alone, so that every float keeps its bits, also one that is no number. Throws
// MapFieldError, and the record is as it was.
void TakeMapField(MapFileRecord& record, int index, std::string_view text);
// All of them in order, or none.
void TakeMapFields(MapFileRecord& record, const MapFieldTexts& texts);

} // namespace vardenix
