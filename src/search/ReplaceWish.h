#pragma once

#include "catalogue/TextureBin.h"
#include "levels/Terrain.h"
#include "program/ChangeLog.h"
#include "program/SearchResults.h"
#include "search/Replacing.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vardenix {

enum class ReplaceWhere { Everywhere, Hits };

// A replacement in the words of its window, UTF-8: of tiles as TilesWritten takes them.
struct ReplaceWish {
    std::string Old = {};
    std::string New = {};
    uint32_t Seed = 0;
    ReplaceWhere Where = ReplaceWhere::Everywhere;
};

// What the words come to. Nothing is to be done while one of them means no tile.
struct ReplacePlan {
    std::vector<int32_t> Old; // rising
    std::vector<int32_t> New;
    std::string UnknownOld = {}; // the first word that means no tile
    std::string UnknownNew = {};
    int64_t Posts = 0; // that have one of Old, where it is wanted

    bool Possible() const {
        return UnknownOld.empty() && UnknownNew.empty() && !New.empty() && Posts != 0;
    }
};

ReplacePlan PlanOf(const Terrain& terrain, const TileLookup& lookup,
                   const SearchResults& hits, const ReplaceWish& wish);

// Carries a plan out as one change of the log, and tells how many posts have another
// tile now. None where it is not possible.
int64_t ReplaceTiles(Terrain& terrain, const TileLookup& lookup,
                     const SearchResults& hits, const ReplaceWish& wish,
                     ChangeLog& changes);

} // namespace vardenix
