#include "search/Statistics.h"

#include "catalogue/TileNumbers.h"
#include "catalogue/TypeNames.h"
#include "platform/ForEachInParallel.h"
#include "platform/ZeroPages.h"

#include <algorithm>
#include <map>
#include <span>

namespace vardenix {

namespace {

constexpr size_t AllHeights = 65536;
constexpr int32_t LowestHeight = -32768;
constexpr size_t HeightsPerBlock = 1024;
constexpr size_t CountingTables = 4;
constexpr size_t HeightTables = 2;
constexpr int32_t MostBars = 40;

// What is counted in one walk over some posts. Tables take turns, since adding again
// to what was just added to would wait for it. Memory that no post has led to is not
// really taken.
struct PostCounts {
    explicit PostCounts(size_t tileNumbers)
        : Numbers(tileNumbers), Tiles(tileNumbers * CountingTables),
          Heights(AllHeights * HeightTables * sizeof(uint32_t)) {}

    uint32_t* HeightTable(size_t table) const {
        return static_cast<uint32_t*>(Heights.Data()) + table * AllHeights;
    }

    size_t Numbers; // the last one stands for all that the catalogue does not have
    std::vector<uint32_t> Tiles;
    ZeroPages Heights;
    uint64_t HeightBlocks = 0; // a bit for each 1024 heights: some post has one of them
    int64_t Sea = 0;
};

void CountPiece(std::span<const TerrainPost> posts, const std::vector<uint8_t>& water,
                PostCounts& counts) {
    const auto last = static_cast<uint32_t>(counts.Numbers - 1);
    uint32_t* tiles[CountingTables];
    for (size_t table = 0; table < CountingTables; ++table)
        tiles[table] = &counts.Tiles[table * counts.Numbers];
    uint32_t* const heights[HeightTables] = {counts.HeightTable(0),
                                             counts.HeightTable(1)};
    const uint8_t* const isWater = water.data();
    uint64_t blocks = 0;
    uint32_t sea = 0;
    const auto take = [&](const TerrainPost& post, size_t table) {
        const size_t number = std::min(static_cast<uint32_t>(post.TileOffset), last);
        const int32_t feet = post.Elevation;
        const auto height = static_cast<size_t>(feet - LowestHeight);
        ++tiles[table][number];
        ++heights[table % HeightTables][height];
        blocks |= uint64_t{1} << height / HeightsPerBlock;
        sea += isWater[number] & static_cast<uint32_t>(feet <= 0);
    };
    size_t i = 0;
    for (; i + CountingTables <= posts.size(); i += CountingTables) {
        take(posts[i], 0);
        take(posts[i + 1], 1);
        take(posts[i + 2], 2);
        take(posts[i + 3], 3);
    }
    for (; i < posts.size(); ++i)
        take(posts[i], 0);
    counts.HeightBlocks = blocks;
    counts.Sea = sea;
}

// 1 for each number of water; one more element for those that the catalogue lacks.
std::vector<uint8_t> WaterNumbers(const TileLookup& lookup) {
    std::vector<uint8_t> water(lookup.size() + 1, 0);
    std::ranges::transform(lookup, water.begin(), [](const TileInfo& tile) {
        return static_cast<uint8_t>(tile.Terrain == TerrainWater);
    });
    return water;
}

// In as many pieces as are worth tables of their own.
std::vector<PostCounts> CountPosts(std::span<const TerrainPost> posts,
                                   const TileLookup& lookup) {
    constexpr size_t WorthTables = size_t{1} << 19;
    const size_t pieces = std::clamp<size_t>(posts.size() / WorthTables, 1, 4);
    const std::vector<uint8_t> water = WaterNumbers(lookup);
    std::vector<PostCounts> counts;
    for (size_t piece = 0; piece < pieces; ++piece)
        counts.emplace_back(water.size());
    ForEachInParallel(pieces, [&](size_t piece) {
        const size_t from = posts.size() * piece / pieces;
        const size_t to = posts.size() * (piece + 1) / pieces;
        CountPiece(posts.subspan(from, to - from), water, counts[piece]);
    });
    return counts;
}

std::vector<int64_t> SumOfTiles(const std::vector<PostCounts>& counts) {
    const size_t numbers = counts.front().Numbers;
    std::vector<int64_t> sum(numbers);
    for (const PostCounts& each : counts)
        for (size_t i = 0; i < each.Tiles.size(); ++i)
            sum[i % numbers] += each.Tiles[i];
    return sum;
}

// Calls take(feet, posts) for every height that posts have, rising.
template <typename Take>
void ForEachHeight(const std::vector<PostCounts>& counts, Take take) {
    uint64_t blocks = 0;
    for (const PostCounts& each : counts)
        blocks |= each.HeightBlocks;
    for (size_t i = 0; i < AllHeights; ++i) {
        if ((blocks >> i / HeightsPerBlock & 1) == 0) {
            i += HeightsPerBlock - 1;
            continue;
        }
        int64_t posts = 0;
        for (const PostCounts& each : counts)
            for (size_t table = 0; table < HeightTables; ++table)
                posts += each.HeightTable(table)[i];
        if (posts != 0)
            take(static_cast<int32_t>(i) + LowestHeight, posts);
    }
}

// Rare, so that a table of all numbers would be too much.
void AddNumbersBeyond(const Terrain& terrain, const TileLookup& lookup,
                      std::vector<PostsOf>& unknown) {
    std::map<uint32_t, int64_t> beyond; // negative ones last
    for (const TerrainPost& post : terrain.LxArr.Values())
        if (static_cast<uint32_t>(post.TileOffset) >= lookup.size())
            ++beyond[static_cast<uint32_t>(post.TileOffset)];
    for (const auto& [number, posts] : beyond)
        unknown.push_back({static_cast<int32_t>(number), posts});
    std::ranges::sort(unknown, {}, &PostsOf::Which);
}

void TellTiles(const TileLookup& lookup, const std::vector<int64_t>& uses,
               Statistics& told) {
    std::map<int32_t, int64_t> kinds;
    told.Sets.resize(lookup.size() / TilesPerSet);
    for (size_t i = 0; i < told.Sets.size(); ++i)
        told.Sets[i].Which = static_cast<int32_t>(i) + 1;
    for (size_t i = 0; i < lookup.size(); ++i) {
        const auto number = static_cast<int32_t>(i);
        if (lookup[i].Terrain == -1) {
            if (uses[i] != 0)
                told.Unknown.push_back({number, uses[i]});
            continue;
        }
        kinds[lookup[i].Terrain] += uses[i];
        told.Sets[i / TilesPerSet].Posts += uses[i];
        if (uses[i] == 0)
            told.UnusedTiles.push_back(number);
        else
            told.Tiles.push_back({number, uses[i]});
        if (lookup[i].HasImage != 1)
            told.NoPicture.push_back(number);
    }
    for (const auto& [code, posts] : kinds)
        told.Kinds.push_back({code, posts});
    std::ranges::stable_sort(told.Tiles, std::ranges::greater{}, &PostsOf::Posts);
}

int32_t FloorTo(int32_t value, int32_t step) {
    const int32_t rest = value % step;
    return value - rest - (rest < 0 ? step : 0);
}

void TellHeights(const std::vector<PostCounts>& counts, Statistics& told) {
    std::vector<HeightBar> heights; // a bar for each
    ForEachHeight(counts, [&](int32_t feet, int64_t posts) {
        heights.push_back({feet, posts});
    });
    told.Lowest = static_cast<int16_t>(heights.front().From);
    told.Highest = static_cast<int16_t>(heights.back().From);
    told.BarStep = BarStepFor(told.Lowest, told.Highest);
    const int32_t first = FloorTo(told.Lowest, told.BarStep);
    for (int32_t from = first; from <= told.Highest; from += told.BarStep)
        told.Heights.push_back({from, 0});
    int64_t sum = 0;
    for (const auto& [feet, posts] : heights) {
        sum += posts * feet;
        told.Heights[static_cast<size_t>((feet - first) / told.BarStep)].Posts += posts;
    }
    told.MeanHeight = static_cast<double>(sum) / static_cast<double>(told.Posts);
}

} // namespace

int32_t BarStepFor(int32_t lowest, int32_t highest) {
    for (int32_t tens = 1;; tens *= 10)
        for (const int32_t digit : {1, 2, 5}) {
            const int32_t step = digit * tens;
            if ((FloorTo(highest, step) - FloorTo(lowest, step)) / step < MostBars)
                return step;
        }
}

Statistics StatisticsOf(const Terrain& terrain, const TileLookup& lookup) {
    const auto posts = terrain.LxArr.Values();
    const std::vector<PostCounts> counts = CountPosts(posts, lookup);
    Statistics told;
    told.Posts = static_cast<int64_t>(posts.size());
    for (const PostCounts& each : counts)
        told.SeaPosts += each.Sea;
    const std::vector<int64_t> uses = SumOfTiles(counts);
    TellTiles(lookup, uses, told);
    if (uses.back() != 0)
        AddNumbersBeyond(terrain, lookup, told.Unknown);
    if (told.Posts != 0)
        TellHeights(counts, told);
    return told;
}

} // namespace vardenix
