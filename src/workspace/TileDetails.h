#pragma once

#include "levels/TerrainPost.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vardenix {

// The fields of the details dialog, in the order in which they stand and are read.
enum class DetailField { TileOffset, Elevation, Palette, X1, X2 };

// What a field's box takes: digits and backspace, and for the elevation a "-".
bool KeepsDetailKey(DetailField field, char32_t key);

// What a change of the text leaves in the box: "0" for an elevation above 32768 or a
// palette, X1 or X2 above 255, else the text. An elevation of 32768 itself passes here,
// and nothing looks below; that is found when the fields are read.
std::string AfterDetailChange(DetailField field, const std::string& text);

struct DetailTexts {
    std::string TileOffset;
    std::string Elevation;
    std::string Palette;
    std::string X1;
    std::string X2;
};

// The texts of a post; in L0/ELV mode only the elevation lives, the others are "0".
DetailTexts TextsOf(const TerrainPost& post);
DetailTexts TextsOf(int16_t elevation);

// What the dialog leaves its caller.
struct TileDetails {
    bool DetailsUpdated = false;
    TerrainPost Entered{}; // begins as the post that is edited
    // The last one that was read; after an overflow, the one that does not fit.
    DetailField Reading = DetailField::TileOffset;
};

// Command2: DetailsUpdated is set, then the boxes are read one after the other. Error 6
// names the first that does not fit its field; those before it have been taken.
void ReadDetails(const DetailTexts& texts, TileDetails& details);

} // namespace vardenix
