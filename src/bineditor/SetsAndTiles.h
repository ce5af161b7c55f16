#pragma once

#include "catalogue/TextureBin.h"
#include "catalogue/TileRenumbering.h"
#include "platform/Progress.h"

#include <cstdint>
#include <string>

namespace vardenix {

// The edits of the catalogue. Each gives where the tile numbers have gone, for the pass
// over level 2, and leaves the catalogue as it was when it ends in an error. TileLookup
// is kept with the sets. Sets count from 1, slots from 0; error 9 for a set or tile that
// is not there.

// The part of a bar, in percent, that a routine fills.
struct BarShare {
    int From = 0;
    int To = 100;
};

// TileLookup of the sets in use, every number of NumSets * 16: the slots without a tile
// empty, the others with no use counted yet. The bar moves and events pass once per set.
void RebuildTileLookup(Catalogue& catalogue, const BarShare& share, Progress& progress);

// Which number a new set gets, and the first tile number it will own.
struct NewSetPlace {
    int32_t Set = 1;
    int32_t FirstNumber = 0;
};
// Behind the selected set or before it; 0 is selected while there is no set.
NewSetPlace PlaceOfNewSet(int32_t selectedSet, bool insertAfter);

// A record in the 20 characters of the catalogue, blanked, padded and cut.
std::string TileNameField(const std::string& name);

// A new set, whose records begin without areas and paths, becomes set `place`. Error 5
// for more than 16 tiles and when the catalogue has as many sets as can be opened again.
// The bar goes from 25 to 75.
TileRenumbering InsertSet(Catalogue& catalogue, int32_t place, TileSet newSet,
                          Progress& progress);

// The uses are not counted anew.
TileRenumbering DeleteSet(Catalogue& catalogue, int32_t set);

// The later tiles of the set move down by one slot, with their uses as counted. Error 5
// for the last tile of a set.
TileRenumbering DeleteTile(Catalogue& catalogue, int32_t set, int32_t slot);

// `source` comes before `target` or behind it. The bar goes from 0 to 66.
TileRenumbering MoveSet(Catalogue& catalogue, int32_t source, int32_t target, bool before,
                        Progress& progress);

// In the set and in TileLookup of its tiles; `terrain` is a class code.
void ChangeSetType(Catalogue& catalogue, int32_t set, uint8_t terrain);

// Characters of value 0 in the names become blanks, as a file of another program may have
// brought them.
void CleanTileNames(TextureBin& bin);

} // namespace vardenix
