#pragma once

#include "catalogue/TextureBin.h"
#include "catalogue/TileNumbers.h"
#include "levels/Terrain.h"
#include "program/SearchResults.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vardenix {

// 1 for each tile number that is meant; numbers beyond the end are not.
using TileMarks = std::vector<uint8_t>;

inline bool IsMeant(const TileMarks& marks, int32_t number) {
    const auto index = static_cast<size_t>(static_cast<uint32_t>(number));
    return index < marks.size() && marks[index] != 0;
}

// The tiles whose name holds one of the words, which are parted by commas, or whose kind
// begins with one ("thick" is Thick Forest); without regard to case. No words, no tiles.
TileMarks TilesMeant(const TileLookup& lookup, std::string_view words);

// Whose numbers a text may hold: tiles of the catalogue, or any that a post can have.
enum class TilesFrom { Catalogue, Anywhere };

// What a list of tiles comes to whose words are numbers, or what TilesMeant takes.
struct TilesOfText {
    std::vector<int32_t> Numbers; // rising, each once
    std::string Unknown;          // the first word that means no tile
};
TilesOfText TilesWritten(const TileLookup& lookup, std::string_view words,
                         TilesFrom from);

// Of numbers from 0 to MostTileNumber.
TileMarks MarksOf(std::span<const int32_t> numbers);
// Of a terrain whose posts all have another tile.
constexpr int32_t MostTileNumber = MaxGridWidth * TilesPerSet;

// All of a class code, or of a set from 1.
TileMarks TilesOfKind(const TileLookup& lookup, int32_t terrain);
TileMarks TilesOfSet(const TileLookup& lookup, int32_t set);

// The posts with that number, whether the catalogue has it or not.
SearchResults PostsOfNumber(const Terrain& terrain, int32_t number);
// The posts whose tile is meant, or whose elevation lies from `low` to `high` feet.
SearchResults PostsOfTiles(const Terrain& terrain, const TileMarks& marks);
SearchResults PostsBetween(const Terrain& terrain, int32_t low, int32_t high);

// Of some hits those whose tile is meant. All are serials of the terrain.
void KeepTilesMeant(const Terrain& terrain, const TileMarks& marks, SearchResults& hits);

} // namespace vardenix
