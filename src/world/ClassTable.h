#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace vardenix {

// What becomes of the posts of one class of land cover.
struct ClassRule {
    enum class Way {
        Ground, // the ground of a sample tile, joined to what lies round it
        Tile,   // that tile
        Leave
    };
    Way How = Way::Leave;
    int32_t Tile = 0; // its number, from 0
};

// By the class's number in the map.
using ClassTable = std::map<int32_t, ClassRule>;

// A line for each class: its number, and "ground TILE", "tile NUMBER" or "leave"; parted
// by blanks and tabs. What follows a "#" is the user's own. Error 5 that names `path` and
// the line for anything else, for a class that is told twice, and where there is none at
// all.
ClassTable ParseClassTable(std::string_view text, const std::string& path);

// The errors of reading too (53, 70, 75).
ClassTable ReadClassTable(const std::string& path);

} // namespace vardenix
