#include "search/SearchHits.h"

#include "companion/Vardenix.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <algorithm>

namespace vardenix {

namespace {

constexpr size_t ElevationField = 1;
constexpr double MostElevation = 32767;
constexpr double MostByte = 255;

} // namespace

std::string HitFieldText(size_t field, std::string_view text) {
    const double value = Val(text);
    const bool tooLarge = field == ElevationField  ? value > MostElevation
                          : field > ElevationField ? value > MostByte
                                                   : false;
    return text.empty() || tooLarge ? "0" : std::string(text);
}

PostChange HitChange(const std::array<bool, HitFields>& checked,
                     const std::array<std::string, HitFields>& texts) {
    PostChange change;
    if (checked[0])
        change.TileOffset = ToInt32(Val(texts[0]));
    if (checked[1])
        change.Elevation = ToInt16(Val(texts[1]));
    if (checked[2])
        change.Palette = ToByte(Val(texts[2]));
    if (checked[3])
        change.X1 = ToByte(Val(texts[3]));
    if (checked[4])
        change.X2 = ToByte(Val(texts[4]));
    return change;
}

int64_t SetHits(Terrain& terrain, const SearchResults& results,
                std::span<const uint8_t> marks, const PostChange& change) {
    const auto posts = terrain.LxArr.Values();
    // Of an earlier theater, perhaps.
    for (size_t i = 1; i < results.size(); ++i)
        if (results[i] < 1 || static_cast<size_t>(results[i]) > posts.size())
            throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                               "hit " + std::to_string(i) + " has the serial " +
                                   std::to_string(results[i]) + " of 1 to " +
                                   std::to_string(posts.size()));
    int64_t count = 0;
    for (size_t i = 1; i < results.size() && i < marks.size(); ++i) {
        if (marks[i] == 0)
            continue;
        ApplyChange(posts[static_cast<size_t>(results[i]) - 1], change);
        ++count;
    }
    return count;
}

std::vector<int32_t> HitsInside(const SearchResults& results, int32_t mapWidth,
                                int32_t left, int32_t bottom, int32_t right,
                                int32_t top) {
    std::vector<int32_t> inside;
    left = std::max(left, 1);
    right = std::min(right, mapWidth);
    auto hit = results.begin() + 1;
    for (int32_t y = std::max(bottom, 1); y <= std::min(top, mapWidth); ++y) {
        // Serials rise, so each row is found without looking at the others.
        hit = std::lower_bound(hit, results.end(), XYToSerial(left, y, mapWidth));
        const int32_t last = XYToSerial(right, y, mapWidth);
        for (; hit != results.end() && *hit <= last; ++hit)
            inside.push_back(*hit);
    }
    return inside;
}

} // namespace vardenix
