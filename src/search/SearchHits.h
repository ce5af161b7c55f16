#pragma once

#include "levels/PostChange.h"
#include "levels/Terrain.h"
#include "program/SearchResults.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vardenix {

// The fields of a post in the order of the boxes Text1 of the results window.
constexpr size_t HitFields = 5;

// What a change of the text leaves in such a box: "0" for nothing, for an elevation of
// 32768 or more, and for a palette, X1 or X2 above 255.
std::string HitFieldText(size_t field, std::string_view text);

// What Command1 sets: the numbers of the boxes whose Check1 is checked.
PostChange HitChange(const std::array<bool, HitFields>& checked,
                     const std::array<std::string, HitFields>& texts);

// Changes the posts of the hits that are marked (not 0); `marks` has one element for each
// of `results`, its first is not used. Error 9, with nothing changed, when a hit lies
// outside the terrain. Returns how many posts were set.
int64_t SetHits(Terrain& terrain, const SearchResults& results,
                std::span<const uint8_t> marks, const PostChange& change);

// The hits with a post in the rows `bottom` to `top` and the columns `left` to `right`,
// counted from 1.
std::vector<int32_t> HitsInside(const SearchResults& results, int32_t mapWidth,
                                int32_t left, int32_t bottom, int32_t right, int32_t top);

} // namespace vardenix
