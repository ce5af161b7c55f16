#pragma once

#include "catalogue/TextureBin.h"
#include "levels/Terrain.h"
#include "program/ChangeLog.h"
#include "program/SearchResults.h"
#include "search/Replacing.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

enum class ReplaceWhere { Everywhere, Hits, Selection };

// What a replacement can be bounded by, borrowed.
struct ReplacePlaces {
    const SearchResults& Hits;
    std::span<const RowSpan> Selected = {}; // of level 2, each post once
};

// Other tiles for some posts: the ground of a tile with edges that fit what lies round
// them, drawn by a seed. Posts besides may change. None where the land tells no grounds.
using FittingTiles = std::function<std::vector<TileRun>(std::span<const RowSpan>,
                                                        int32_t tile, uint32_t seed)>;

// A replacement in the words of its window, UTF-8: of tiles as TilesWritten takes them.
struct ReplaceWish {
    std::string Old = {};
    std::string New = {};
    uint32_t Seed = 0;
    ReplaceWhere Where = ReplaceWhere::Everywhere;
    bool Fitting = false; // counts for one new tile: its ground, with edges that fit
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
                   const ReplacePlaces& places, const ReplaceWish& wish);

// Carries a plan out as one change of the log, and tells how many posts have another
// tile now. None where it is not possible.
int64_t ReplaceTiles(Terrain& terrain, const TileLookup& lookup,
                     const ReplacePlaces& places, const ReplaceWish& wish,
                     ChangeLog& changes, const FittingTiles& fitting = {});

} // namespace vardenix
