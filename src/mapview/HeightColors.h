#pragma once

#include "program/Configuration.h"

#include <cstdint>
#include <vector>

namespace vardenix {

// The colour of an elevation's text, 0x00BBGGRR. Both bounds of an entry belong to it and
// the first entry that fits wins; where none fits, and always with
// UseSingleHeightColor, it is HeightDefaultColor.
uint32_t GetHeightColor(const Configuration& settings, int32_t elevation);

// The commands of the table in FrmVXHeightCols. `selected` is a row from 0, anything
// outside the list is no selection. False when there was nothing to do.
using HeightColorRows = std::vector<HeightColorEntry>;

// Directly behind the selected row. An empty list takes the entry as its first.
bool AddHeightColor(HeightColorRows& rows, int32_t selected,
                    const HeightColorEntry& entry);
bool ChangeHeightColor(HeightColorRows& rows, int32_t selected,
                       const HeightColorEntry& entry);
bool DeleteHeightColor(HeightColorRows& rows, int32_t selected);

} // namespace vardenix
