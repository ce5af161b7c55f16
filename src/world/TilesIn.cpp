#include "world/TilesIn.h"

#include "texts/RuntimeError.h"

#include <algorithm>
#include <set>

namespace vardenix {

namespace {

int32_t SerialAt(const Terrain& terrain, PostPlace corner, int32_t column, int32_t row) {
    return (corner.Y + row) * terrain.MapWidth + corner.X + column + 1;
}

// Calls `each` with column, row and number, from the south west row by row.
template <typename Each>
void ForEachNumber(const WorldNumbers& numbers, Each each) {
    auto number = numbers.Values.begin();
    for (int32_t row = 0; row < numbers.Rows; ++row)
        for (int32_t column = 0; column < numbers.Columns; ++column, ++number)
            if (*number != WorldNumbers::None)
                each(column, row, *number);
}

} // namespace

bool IsTile(const TileLookup& lookup, int32_t number) {
    const auto at = static_cast<size_t>(static_cast<uint32_t>(number));
    return at < lookup.size() && lookup[at].Terrain >= 0;
}

void RequireTiles(const WorldNumbers& numbers, PostPlace corner, const Terrain& terrain,
                  const TileLookup& lookup) {
    std::set<int32_t> wrong;
    ForEachNumber(numbers, [&](int32_t column, int32_t row, int32_t number) {
        const TerrainPost& post = terrain.LxArr(SerialAt(terrain, corner, column, row));
        if (!IsTile(lookup, number) && (number < 0 || int32_t{post.TileOffset} != number))
            wrong.insert(number);
    });
    if (!wrong.empty())
        throw RuntimeError(ErrorNumber::InvalidCall,
                           "the catalogue has no tile of these numbers: " +
                               SomeOf({wrong.begin(), wrong.end()}) +
                               "; a raster of classes goes with --table");
}

std::vector<TileRun> RunsOfTiles(const WorldNumbers& numbers, PostPlace corner,
                                 const Terrain& terrain) {
    RunWriter<int32_t> runs;
    ForEachNumber(numbers, [&](int32_t column, int32_t row, int32_t number) {
        if (column == 0)
            runs.BreakRow();
        const int32_t serial = SerialAt(terrain, corner, column, row);
        runs.Add(serial, terrain.LxArr(serial).TileOffset, number);
    });
    return runs.Take();
}

std::vector<ClassPosts> PostsByClass(const WorldNumbers& classes, PostPlace corner,
                                     const ClassTable& table,
                                     std::vector<int32_t>& unknown) {
    std::map<int32_t, ClassPosts> found;
    std::set<int32_t> others;
    ForEachNumber(classes, [&](int32_t column, int32_t row, int32_t number) {
        const auto rule = table.find(number);
        if (rule == table.end()) {
            others.insert(number);
            return;
        }
        ClassPosts& posts = found[number];
        posts.Class = number;
        posts.Rule = rule->second;
        const int32_t x = corner.X + column;
        const int32_t y = corner.Y + row;
        if (!posts.Posts.empty() && posts.Posts.back().Y == y &&
            posts.Posts.back().X2 + 1 == x)
            posts.Posts.back().X2 = x;
        else
            posts.Posts.push_back({y, x, x});
    });
    unknown.assign(others.begin(), others.end());
    std::vector<ClassPosts> list;
    list.reserve(found.size());
    for (auto& [number, posts] : found)
        list.push_back(std::move(posts));
    return list;
}

std::string SomeOf(const std::vector<int32_t>& numbers) {
    constexpr size_t most = 10;
    std::string text;
    for (size_t i = 0; i < std::min(most, numbers.size()); ++i)
        text += (i == 0 ? "" : ", ") + std::to_string(numbers[i]);
    if (numbers.size() > most)
        text += " and " + std::to_string(numbers.size() - most) + " more";
    return text;
}

} // namespace vardenix
