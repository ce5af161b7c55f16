#pragma once

#include "catalogue/TextureBin.h"
#include "levels/Terrain.h"
#include "support/RecordingProgress.h"

#include <string>
#include <vector>

namespace vardenix::tests {

// A catalogue in memory, made by hand: set s (from 1) has the tiles named "<s><letter>",
// as "1A", "1B", and no picture is there. Element n of `counts` is how many tiles set n +
// 1 has.
Catalogue CatalogueOf(const std::vector<int>& counts,
                      const std::string& ddsFolder = "/nowhere/");

// What each number shows, for comparing: "1A 1B - -" with "-" for an empty number; of the
// first `numbers` only, of all when 0. By TileLookup, or by the sets alone.
std::string NamesByLookup(const Catalogue& catalogue, size_t numbers = 0);
std::string NamesBySets(const TextureBin& bin);
// "0:5 1:0 2:-1", the uses of the first `numbers`.
std::string Uses(const Catalogue& catalogue, size_t numbers);

// Level 2, `width` posts a side; post k (from 0) has the number numbers[k % size].
Terrain TerrainOf(int width, const std::vector<int32_t>& numbers);
std::vector<int32_t> NumbersOfPosts(const Terrain& terrain);

} // namespace vardenix::tests
