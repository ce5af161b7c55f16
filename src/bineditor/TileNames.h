#pragma once

#include <array>
#include <string>
#include <string_view>

namespace vardenix {

// The names of a tile's pictures. A family has six files in the picture folder: a letter
// (H as chosen, M medium, L low) in front, and an N behind the night ones.

// The name with "H" in front, unless it begins with that letter already; "h" is another.
std::string HName(std::string_view name);

// What lies before the last dot.
std::string WithoutExtension(std::string_view name);

struct FamilyNames {
    std::string HDay;   // the chosen file's name, by the H rule
    std::string HNight; // of "base" + "N", by the H rule
    std::string MDay;
    std::string LDay;
    std::string MNight;
    std::string LNight;
    std::string NightSource; // beside the chosen file
};
// Of a chosen file name, in the case that was chosen; added extensions are ".dds".
FamilyNames FamilyOf(std::string_view chosenName);

// What the catalogue calls the tile: the H name with its last four characters replaced by
// ".pcx", in upper case (A to Z). In the catalogue's 20 characters a longer one is cut,
// its extension too.
std::string CatalogueName(std::string_view hName);

// The six names that a tile of the catalogue keeps from being deleted, bytes as the
// catalogue has them: H day, H night, L day, M day, L night, M night.
std::array<std::string, 6> WantedPictures(const std::string& tileName);

} // namespace vardenix
