#pragma once

#include "cli/CommandLine.h"
#include "search/TileSearch.h"

#include <string>
#include <string_view>
#include <vector>

namespace vardenix {

// Conditions on a post and its neighbours, as search and render are told them.

// Declares --cell.
void AddCells(Command& command, std::vector<std::string>& cells);

// Of texts like "1:elevation=>200,tile=5"; a usage error of --cell for any other.
SearchPattern PatternOfCells(const std::vector<std::string>& cells);

// The text of a cell that a word stands for; null for a word that is no field.
std::string SearchCell::*SearchFieldOf(std::string_view word);
extern const char* const SearchFieldList; // for sentences

// Digits, with a "-" in front or none.
bool IsWhole(std::string_view text);

} // namespace vardenix
