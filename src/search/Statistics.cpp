#include "search/Statistics.h"

#include "catalogue/TileNumbers.h"
#include "catalogue/TypeNames.h"
#include "platform/ForEachInParallel.h"

#include <algorithm>
#include <map>
#include <span>

namespace vardenix {

namespace {

constexpr size_t AllHeights = 65536;
constexpr int32_t LowestHeight = -32768;
constexpr size_t CountingTables = 4;
constexpr int32_t MostBars = 40;

// What is counted in one walk over some posts. Four tables take turns, since adding again
// to what was just added to would wait for it.
struct PostCounts {
    explicit PostCounts(size_t numbers)
        : Numbers(numbers + 1), Tiles(Numbers * CountingTables),
          Heights(AllHeights * CountingTables) {}

    size_t Numbers; // the last one stands for all that the catalogue does not have
    std::vector<uint32_t> Tiles;
    std::vector<uint32_t> Heights;
    int64_t Sea = 0;
};

class PostCounter {
public:
    PostCounter(PostCounts& counts, const std::vector<uint8_t>& water)
        : counts_(counts), water_(water.data()),
          last_(static_cast<uint32_t>(counts.Numbers - 1)) {}

    void Count(std::span<const TerrainPost> posts) {
        uint32_t sea = 0;
        size_t i = 0;
        for (; i + CountingTables <= posts.size(); i += CountingTables)
            for (size_t table = 0; table < CountingTables; ++table)
                sea += Take(posts[i + table], table);
        for (; i < posts.size(); ++i)
            sea += Take(posts[i], 0);
        counts_.Sea += sea;
    }

private:
    uint32_t Take(const TerrainPost& post, size_t table) {
        const size_t number = std::min(static_cast<uint32_t>(post.TileOffset), last_);
        const int32_t feet = post.Elevation;
        ++counts_.Tiles[table * counts_.Numbers + number];
        ++counts_.Heights[table * AllHeights + static_cast<size_t>(feet - LowestHeight)];
        return water_[number] & static_cast<uint32_t>(feet <= 0);
    }

    PostCounts& counts_;
    const uint8_t* water_;
    uint32_t last_;
};

// 1 for each number of water; one more element for those that the catalogue lacks.
std::vector<uint8_t> WaterNumbers(const TileLookup& lookup) {
    std::vector<uint8_t> water(lookup.size() + 1, 0);
    std::ranges::transform(lookup, water.begin(), [](const TileInfo& tile) {
        return static_cast<uint8_t>(tile.Terrain == TerrainWater);
    });
    return water;
}

// In as many pieces as are worth a table of their own.
std::vector<PostCounts> CountPosts(std::span<const TerrainPost> posts,
                                   const TileLookup& lookup) {
    constexpr size_t WorthATable = size_t{1} << 18;
    const size_t pieces = std::clamp<size_t>(posts.size() / WorthATable, 1, 8);
    const std::vector<uint8_t> water = WaterNumbers(lookup);
    std::vector<PostCounts> counts(pieces, PostCounts(lookup.size()));
    ForEachInParallel(pieces, [&](size_t piece) {
        const size_t from = posts.size() * piece / pieces;
        const size_t to = posts.size() * (piece + 1) / pieces;
        PostCounter(counts[piece], water).Count(posts.subspan(from, to - from));
    });
    return counts;
}

std::vector<int64_t> SumOf(const std::vector<PostCounts>& counts,
                           std::vector<uint32_t> PostCounts::*tables) {
    std::vector<int64_t> sum((counts.front().*tables).size() / CountingTables);
    for (const PostCounts& each : counts)
        for (size_t table = 0; table < CountingTables; ++table)
            for (size_t i = 0; i < sum.size(); ++i)
                sum[i] += (each.*tables)[table * sum.size() + i];
    return sum;
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

void TellHeights(const std::vector<int64_t>& heights, Statistics& told) {
    const auto used = [](int64_t posts) { return posts != 0; };
    const auto first = std::ranges::find_if(heights, used) - heights.begin();
    const auto last =
        heights.rend() - std::find_if(heights.rbegin(), heights.rend(), used) - 1;
    told.Lowest = static_cast<int16_t>(first + LowestHeight);
    told.Highest = static_cast<int16_t>(last + LowestHeight);
    told.BarStep = BarStepFor(told.Lowest, told.Highest);
    int64_t sum = 0;
    for (int32_t from = FloorTo(told.Lowest, told.BarStep); from <= told.Highest;
         from += told.BarStep)
        told.Heights.push_back({from, 0});
    for (auto i = first; i <= last; ++i) {
        const int64_t posts = heights[static_cast<size_t>(i)];
        const auto feet = static_cast<int32_t>(i) + LowestHeight;
        sum += posts * feet;
        const int32_t bar = (feet - told.Heights.front().From) / told.BarStep;
        told.Heights[static_cast<size_t>(bar)].Posts += posts;
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
    const std::vector<int64_t> uses = SumOf(counts, &PostCounts::Tiles);
    TellTiles(lookup, uses, told);
    if (uses.back() != 0)
        AddNumbersBeyond(terrain, lookup, told.Unknown);
    if (told.Posts != 0)
        TellHeights(SumOf(counts, &PostCounts::Heights), told);
    return told;
}

} // namespace vardenix
