#include "search/StatisticsRows.h"

#include "catalogue/TileNumbers.h"
#include "catalogue/TypeNames.h"
#include "search/TilesMeant.h"
#include "texts/Numbers.h"
#include "texts/Windows1252.h"

#include <utility>

namespace vardenix {

namespace {

// "17 H0100.DDS"; the number alone where the catalogue has no such tile.
std::string TileInWords(const TileLookup& lookup, int32_t number) {
    const auto index = static_cast<uint32_t>(number);
    std::string words = std::to_string(number);
    if (index < lookup.size() && !lookup[index].Name.empty())
        words += " " + Utf8FromBytes(lookup[index].Name);
    return words;
}

StatisticsRow RowOf(std::string what, int64_t posts, RowCounts counts, int32_t from,
                    int32_t to = 0) {
    return {std::move(what), posts, counts, from, to};
}

StatisticsGroup KindsOf(const Statistics& told) {
    StatisticsGroup group{"Kinds", {}};
    for (const CountedPosts& kind : told.Kinds)
        group.Rows.push_back(RowOf(TerrainName(static_cast<uint8_t>(kind.Which)),
                                   kind.Posts, RowCounts::Kind, kind.Which));
    return group;
}

StatisticsGroup SetsOf(const Statistics& told) {
    StatisticsGroup group{"Sets", {}};
    for (const CountedPosts& set : told.Sets)
        group.Rows.push_back(RowOf(std::to_string(ShownSet(set.Which)), set.Posts,
                                   RowCounts::Set, set.Which));
    return group;
}

StatisticsGroup TilesGroup(const char* title, const std::vector<CountedPosts>& tiles,
                           const TileLookup& lookup) {
    StatisticsGroup group{title, {}};
    for (const CountedPosts& tile : tiles)
        group.Rows.push_back(RowOf(TileInWords(lookup, tile.Which), tile.Posts,
                                   RowCounts::Tile, tile.Which));
    return group;
}

// With their uses.
std::vector<CountedPosts> UsedAs(const std::vector<int32_t>& numbers,
                                 const Statistics& told) {
    std::vector<CountedPosts> tiles;
    std::vector<int64_t> uses;
    for (const CountedPosts& tile : told.Tiles) {
        const auto index = static_cast<size_t>(tile.Which);
        if (index >= uses.size())
            uses.resize(index + 1);
        uses[index] = tile.Posts;
    }
    for (const int32_t number : numbers) {
        const auto index = static_cast<size_t>(number);
        tiles.push_back({number, index < uses.size() ? uses[index] : 0});
    }
    return tiles;
}

StatisticsGroup HeightsOf(const Statistics& told) {
    StatisticsGroup group{"Heights", {}};
    for (const HeightBar& bar : told.Heights) {
        const int32_t to = bar.From + told.BarStep - 1;
        std::string what = std::to_string(bar.From);
        if (to != bar.From)
            what += " to " + std::to_string(to);
        group.Rows.push_back(
            RowOf(what + " feet", bar.Posts, RowCounts::Heights, bar.From, to));
    }
    return group;
}

TileMarks WaterOf(const TileLookup& lookup) { return TilesOfKind(lookup, TerrainWater); }

SearchResults SeaOf(const Terrain& terrain, const TileLookup& lookup) {
    SearchResults hits = PostsBetween(terrain, INT16_MIN, 0);
    KeepTilesMeant(terrain, WaterOf(lookup), hits);
    return hits;
}

} // namespace

std::vector<StatisticsGroup> GroupsOf(const Statistics& told, const TileLookup& lookup) {
    return {
        {"Sea", {RowOf("Water at 0 feet or below", told.SeaPosts, RowCounts::Sea, 0)}},
        KindsOf(told),
        SetsOf(told),
        TilesGroup("Tiles by use", told.Tiles, lookup),
        TilesGroup("Unused tiles", UsedAs(told.UnusedTiles, told), lookup),
        TilesGroup("Unknown numbers", told.Unknown, lookup),
        TilesGroup("Tiles without a picture", UsedAs(told.NoPicture, told), lookup),
        HeightsOf(told)};
}

StatisticsGroup SeamsOf(std::optional<int64_t> posts) {
    return {"Seams",
            {RowOf("Posts at seams that do not fit", posts.value_or(-1), RowCounts::Seams,
                   0)}};
}

std::string ShareOf(int64_t posts, int64_t all) {
    const double percent =
        all == 0 ? 0 : 100 * static_cast<double>(posts) / static_cast<double>(all);
    return FormatFixed(percent, percent > 0 && percent < 0.1 ? 3 : 1) + " %";
}

std::string StatisticsInWords(const Statistics& told) {
    return std::to_string(told.Posts) + " posts, " + ShareOf(told.SeaPosts, told.Posts) +
           " of them sea (" + std::to_string(SquareKilometersOf(told.SeaPosts)) +
           " square km); " + std::to_string(told.Lowest) + " to " +
           std::to_string(told.Highest) + " feet, " + FormatFixed(told.MeanHeight, 1) +
           " on average";
}

SearchResults PostsOfRow(const Terrain& terrain, const TileLookup& lookup,
                         const StatisticsRow& row) {
    switch (row.Counts) {
    case RowCounts::Sea:
        return SeaOf(terrain, lookup);
    case RowCounts::Kind:
        return PostsOfTiles(terrain, TilesOfKind(lookup, row.From));
    case RowCounts::Set:
        return PostsOfTiles(terrain, TilesOfSet(lookup, row.From));
    case RowCounts::Heights:
        return PostsBetween(terrain, row.From, row.To);
    case RowCounts::Seams:
        return SearchResults(1);
    case RowCounts::Tile:
        break;
    }
    return PostsOfNumber(terrain, row.From);
}

} // namespace vardenix
