#pragma once

#include "catalogue/TextureBin.h"
#include "levels/Terrain.h"
#include "program/SearchResults.h"
#include "search/Statistics.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vardenix {

// What a row of the statistics counts, and so what is found by it.
enum class RowCounts {
    Sea,
    Kind,    // From is the class code
    Set,     // From is the set, from 1
    Tile,    // From is the number
    Heights, // from From to To feet
    Seams,   // that do not fit, which the learned land knows
};

struct StatisticsRow {
    std::string What;  // UTF-8
    int64_t Posts = 0; // below 0: not counted yet
    RowCounts Counts = RowCounts::Tile;
    int32_t From = 0;
    int32_t To = 0;
};

struct StatisticsGroup {
    std::string Title;
    std::vector<StatisticsRow> Rows;
};

// Statistics as the groups of a list: sea, kinds, sets, tiles by use, unused tiles,
// unknown numbers, tiles without a picture, heights.
std::vector<StatisticsGroup> GroupsOf(const Statistics& told, const TileLookup& lookup);

// The group of seams that do not fit; none: nothing has been learned of the land yet.
StatisticsGroup SeamsOf(std::optional<int64_t> posts);

// "4096 posts, 12.0 % of them sea (491 square km); -20 to 8509 feet, 340.5 on average"
std::string StatisticsInWords(const Statistics& told);

// "18.8 %", and "0.012 %" for what is there but little.
std::string ShareOf(int64_t posts, int64_t all);

// The posts that a row counts; not of seams.
SearchResults PostsOfRow(const Terrain& terrain, const TileLookup& lookup,
                         const StatisticsRow& row);

} // namespace vardenix
