#pragma once

#include "bineditor/SetsAndTiles.h"

#include <optional>
#include <string>
#include <vector>

namespace vardenix {

// What an intake of chosen pictures would cost others, found before anything is written.
struct IntakeRisks {
    // Chosen pictures whose catalogue name is cut off: a tile that never finds them.
    std::vector<std::string> TooLong;
    // Tiles, other than the one that is replaced, whose pictures would be replaced.
    std::vector<int32_t> Tiles;

    bool None() const { return TooLong.empty() && Tiles.empty(); }
};

// The letters in front of the extension that a picture's name may have: "H" goes in front
// of those that do not begin with it, and the catalogue keeps 20 with ".PCX".
size_t LongestPictureName(const std::string& name);

// `files` are full paths; `replaced` is the number of the tile that takes the picture,
// none for a new one. Error 52 for two files that would become one tile's name.
IntakeRisks RisksOfIntake(const Catalogue& catalogue,
                          const std::vector<std::string>& files,
                          std::optional<int32_t> replaced);

// One or two sentences that name files, tiles and posts; what can be done instead.
std::string TextOfRisks(const IntakeRisks& risks, const Catalogue& catalogue);

} // namespace vardenix
