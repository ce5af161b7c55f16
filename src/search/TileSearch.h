#pragma once

#include "catalogue/TextureBin.h"
#include "levels/Terrain.h"
#include "platform/Progress.h"
#include "program/SearchResults.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vardenix {

// Where the post of a cell, 0 to 8, lies from the one under test: X to the right, Y
// upward, in posts.
int32_t CellOffset(int32_t cell, bool horizontal);

// What a cell keeps of the text of one of its boxes: a whole number, with the first
// character in front of it unless that is a digit; nothing of a lone sign. UTF-8.
std::string LabelOfText(std::string_view text);

// What a box's text counts as when it is no number: anything but digits, with a sign and
// one of "!", "<" and ">" in front where wished. None of a number, and none as long as
// there is nothing behind the sign.
std::optional<double> NumberCounted(std::string_view text);

// Fills `results` with the serials of all posts around which every cell's conditions
// hold. A condition on a neighbour outside the map fails; a cell without conditions holds
// everywhere. A text that begins with another sign than "!", "<" and ">" is taken as a
// number, so letters are 0. The bar moves and events pass once per row of posts;
// `results` changes only at the end. Error 7 when there is no memory for the hits.
void SearchTiles(const Terrain& terrain, const SearchPattern& pattern, Progress& progress,
                 SearchResults& results);

// SearchTiles, and of what it finds the posts whose tile is of those that are named.
void FindPosts(const Terrain& terrain, const TileLookup& lookup, const SearchQuery& query,
               Progress& progress, SearchResults& results);

// Puts what is searched for in front of what was before.
void RememberQuery(SearchState& search);

} // namespace vardenix
