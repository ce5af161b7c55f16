#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vardenix {

// What a search asks of one post: for each field nothing (empty), a whole number, or "!"
// (not equal), "<" or ">" in front of one.
struct SearchCell {
    std::string CellTile = {};
    std::string CellElevation = {};
    std::string CellPalette = {};
    std::string CellX1 = {};
    std::string CellX2 = {};

    bool operator==(const SearchCell&) const = default;
};

// The post itself, cell 0, and its eight neighbours, from the one above clockwise.
using SearchPattern = std::array<SearchCell, 9>;

// Serials of level 2, rising; element 0 is a placeholder, hits are counted from 1.
using SearchResults = std::vector<int32_t>;

// What is searched for.
struct SearchQuery {
    SearchPattern Pattern = {};
    // Parts of names and kinds of tiles, parted by commas, UTF-8; empty for any tile.
    std::string Named = {};

    bool operator==(const SearchQuery&) const = default;
};

// The last search, until the next one.
struct SearchState : SearchQuery {
    SearchResults Results = SearchResults(1);
    double Milliseconds = 0; // what it took
    // Those of this run, the newest first, each once.
    std::vector<SearchQuery> History;
};

} // namespace vardenix
