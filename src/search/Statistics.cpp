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
constexpr size_t CountingTables = 2;
constexpr int32_t MostBars = 40;

// Posts that small counters have room for, each table taking every other one.
constexpr size_t PostsAtOnce = size_t{1} << 16;

// What is counted in one walk over some posts. Memory that no post has led to is not
// really taken.
struct PostCounts {
    explicit PostCounts(size_t tileNumbers)
        : Numbers(tileNumbers), Tiles(tileNumbers * 2),
          Heights(AllHeights * sizeof(uint32_t)) {}

    // Of heights, from the lowest there can be.
    uint32_t* HeightTable() const { return static_cast<uint32_t*>(Heights.Data()); }
    // Posts of a number above 0 feet, or at 0 and below.
    int64_t TilePosts(size_t number, bool low) const {
        return Tiles[number * 2 + (low ? 1 : 0)];
    }

    size_t Numbers; // the last one stands for all that the catalogue does not have
    std::vector<uint32_t> Tiles;
    ZeroPages Heights;
    int32_t Lowest = AllHeights; // feet; of no post yet
    int32_t Highest = LowestHeight;
};

// Tables of 16 bits, which the processor has at hand while those of PostCounts would not
// fit. They take turns, since adding again to what was just added to would wait for it.
class SmallCounts {
public:
    explicit SmallCounts(size_t tileNumbers)
        : last_(static_cast<uint32_t>(tileNumbers - 1)),
          tiles_(tileNumbers * 2 * CountingTables),
          heights_(AllHeights * CountingTables * sizeof(uint16_t)) {}

    // At most PostsAtOnce.
    void Count(std::span<const TerrainPost> posts, PostCounts& counts) {
        uint16_t* const tiles[CountingTables] = {&tiles_[0],
                                                 &tiles_[tiles_.size() / CountingTables]};
        uint16_t* const heights[CountingTables] = {HeightTable(0), HeightTable(1)};
        const uint32_t last = last_;
        int32_t lowest = AllHeights;
        int32_t highest = LowestHeight;
        const auto take = [&](const TerrainPost& post, size_t table) {
            const size_t number = std::min(static_cast<uint32_t>(post.TileOffset), last);
            const int32_t feet = post.Elevation;
            ++tiles[table][number * 2 + (feet <= 0 ? 1 : 0)];
            ++heights[table][feet];
            lowest = std::min(lowest, feet);
            highest = std::max(highest, feet);
        };
        size_t i = 0;
        for (; i + CountingTables <= posts.size(); i += CountingTables) {
            take(posts[i], 0);
            take(posts[i + 1], 1);
        }
        for (; i < posts.size(); ++i)
            take(posts[i], 0);
        MoveTo(counts, lowest, highest);
    }

private:
    // By feet.
    uint16_t* HeightTable(size_t table) const {
        return static_cast<uint16_t*>(heights_.Data()) + table * AllHeights -
               LowestHeight;
    }

    void MoveTo(PostCounts& counts, int32_t lowest, int32_t highest) {
        const size_t half = counts.Tiles.size();
        for (size_t number = 0; number < half; ++number)
            counts.Tiles[number] += uint32_t{tiles_[number]} + tiles_[half + number];
        std::ranges::fill(tiles_, uint16_t{0});
        uint32_t* const all = counts.HeightTable() - LowestHeight;
        for (size_t table = 0; table < CountingTables; ++table) {
            uint16_t* const heights = HeightTable(table);
            for (int32_t feet = lowest; feet <= highest; ++feet) {
                all[feet] += heights[feet];
                heights[feet] = 0;
            }
        }
        counts.Lowest = std::min(counts.Lowest, lowest);
        counts.Highest = std::max(counts.Highest, highest);
    }

    uint32_t last_;
    std::vector<uint16_t> tiles_;
    ZeroPages heights_;
};

void CountPiece(std::span<const TerrainPost> posts, PostCounts& counts) {
    SmallCounts small(counts.Numbers);
    for (size_t from = 0; from < posts.size(); from += PostsAtOnce)
        small.Count(posts.subspan(from, std::min(PostsAtOnce, posts.size() - from)),
                    counts);
}

// In as many pieces as are worth tables of their own.
std::vector<PostCounts> CountPosts(std::span<const TerrainPost> posts,
                                   size_t tileNumbers) {
    constexpr size_t WorthTables = size_t{1} << 20;
    const size_t pieces = std::clamp<size_t>(posts.size() / WorthTables, 1, 4);
    std::vector<PostCounts> counts;
    for (size_t piece = 0; piece < pieces; ++piece)
        counts.emplace_back(tileNumbers + 1);
    ForEachInParallel(pieces, [&](size_t piece) {
        const size_t from = posts.size() * piece / pieces;
        const size_t to = posts.size() * (piece + 1) / pieces;
        CountPiece(posts.subspan(from, to - from), counts[piece]);
    });
    return counts;
}

// By number, and the sea of the water among them.
struct TileUses {
    std::vector<int64_t> Posts;
    int64_t Sea = 0;
};

TileUses UsesOf(const std::vector<PostCounts>& counts, const TileLookup& lookup) {
    TileUses uses;
    uses.Posts.resize(lookup.size() + 1);
    for (const PostCounts& each : counts)
        for (size_t number = 0; number < each.Numbers; ++number) {
            const int64_t low = each.TilePosts(number, true);
            uses.Posts[number] += low + each.TilePosts(number, false);
            if (number < lookup.size() && lookup[number].Terrain == TerrainWater)
                uses.Sea += low;
        }
    return uses;
}

// Calls take(feet, posts) for every height that posts have, rising.
template <typename Take>
void ForEachHeight(const std::vector<PostCounts>& counts, Take take) {
    int32_t lowest = counts.front().Lowest;
    int32_t highest = counts.front().Highest;
    for (const PostCounts& each : counts) {
        lowest = std::min(lowest, each.Lowest);
        highest = std::max(highest, each.Highest);
    }
    for (int32_t feet = lowest; feet <= highest; ++feet) {
        int64_t posts = 0;
        for (const PostCounts& each : counts)
            posts += each.HeightTable()[feet - LowestHeight];
        if (posts != 0)
            take(feet, posts);
    }
}

// Rare, so that a table of all numbers would be too much.
void AddNumbersBeyond(const Terrain& terrain, const TileLookup& lookup,
                      std::vector<CountedPosts>& unknown) {
    std::map<uint32_t, int64_t> beyond; // negative ones last
    for (const TerrainPost& post : terrain.LxArr.Values())
        if (static_cast<uint32_t>(post.TileOffset) >= lookup.size())
            ++beyond[static_cast<uint32_t>(post.TileOffset)];
    for (const auto& [number, posts] : beyond)
        unknown.push_back({static_cast<int32_t>(number), posts});
    std::ranges::sort(unknown, {}, &CountedPosts::Which);
}

void TellTiles(const TileLookup& lookup, const std::vector<int64_t>& uses,
               Statistics& told) {
    std::map<int32_t, int64_t> kinds;
    auto kind = kinds.end(); // neighbours are mostly of one
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
        if (kind == kinds.end() || kind->first != lookup[i].Terrain)
            kind = kinds.try_emplace(lookup[i].Terrain).first;
        kind->second += uses[i];
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
    std::ranges::stable_sort(told.Tiles, std::ranges::greater{}, &CountedPosts::Posts);
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
    const std::vector<PostCounts> counts = CountPosts(posts, lookup.size());
    Statistics told;
    told.Posts = static_cast<int64_t>(posts.size());
    const TileUses uses = UsesOf(counts, lookup);
    told.SeaPosts = uses.Sea;
    TellTiles(lookup, uses.Posts, told);
    if (uses.Posts.back() != 0)
        AddNumbersBeyond(terrain, lookup, told.Unknown);
    if (told.Posts != 0)
        TellHeights(counts, told);
    return told;
}

} // namespace vardenix
