#include "search/TilesMeant.h"

#include "catalogue/TileNumbers.h"
#include "catalogue/TypeNames.h"
#include "texts/Cutting.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <set>
#include <string>
#include <system_error>

namespace vardenix {

namespace {

std::vector<std::string> WordsOf(std::string_view text) {
    std::vector<std::string> words;
    while (!text.empty()) {
        const size_t comma = std::min(text.find(','), text.size());
        const std::string word = UpperCase(TrimBlanks(text.substr(0, comma)));
        if (!word.empty())
            words.push_back(word);
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return words;
}

bool Means(const std::string& word, const TileInfo& tile) {
    const auto kind = static_cast<uint8_t>(tile.Terrain);
    return UpperCase(tile.Name).find(word) != std::string::npos ||
           UpperCase(TerrainName(kind)).starts_with(word);
}

// Nothing for a word that is no tile number.
std::optional<int32_t> NumberOf(const std::string& word) {
    int32_t number = 0;
    const auto read = std::from_chars(word.data(), word.data() + word.size(), number);
    if (read.ptr != word.data() + word.size() || read.ec != std::errc() || number < 0 ||
        number > MostTileNumber)
        return std::nullopt;
    return number;
}

bool HasEntry(const TileLookup& lookup, int32_t number) {
    const auto index = static_cast<size_t>(number);
    return index < lookup.size() && lookup[index].Terrain != -1;
}

template <typename Meant>
TileMarks MarksWhere(const TileLookup& lookup, Meant meant) {
    TileMarks marks(lookup.size(), 0);
    for (size_t number = 0; number < lookup.size(); ++number)
        marks[number] = lookup[number].Terrain != -1 && meant(number) ? 1 : 0;
    return marks;
}

template <typename Fits>
SearchResults PostsWhere(const Terrain& terrain, Fits fits) {
    SearchResults hits(1);
    int32_t serial = 0;
    for (const TerrainPost& post : terrain.LxArr.Values()) {
        ++serial;
        if (fits(post))
            hits.push_back(serial);
    }
    return hits;
}

} // namespace

TileMarks TilesMeant(const TileLookup& lookup, std::string_view words) {
    const std::vector<std::string> all = WordsOf(words);
    return MarksWhere(lookup, [&](size_t number) {
        return std::ranges::any_of(
            all, [&](const std::string& word) { return Means(word, lookup[number]); });
    });
}

TilesOfText TilesWritten(const TileLookup& lookup, std::string_view words,
                         TilesFrom from) {
    TilesOfText written;
    std::set<int32_t> all;
    for (const std::string& word : WordsOf(words)) {
        if (const auto number = NumberOf(word)) {
            if (from == TilesFrom::Anywhere || HasEntry(lookup, *number))
                all.insert(*number);
            else if (written.Unknown.empty())
                written.Unknown = word;
            continue;
        }
        const TileMarks meant = TilesMeant(lookup, word);
        for (size_t number = 0; number < meant.size(); ++number)
            if (meant[number] != 0)
                all.insert(static_cast<int32_t>(number));
        if (std::ranges::count(meant, 1) == 0 && written.Unknown.empty())
            written.Unknown = word;
    }
    written.Numbers.assign(all.begin(), all.end());
    return written;
}

TileMarks MarksOf(std::span<const int32_t> numbers) {
    TileMarks marks;
    for (const int32_t number : numbers) {
        const auto index = static_cast<size_t>(number);
        marks.resize(std::max(marks.size(), index + 1));
        marks[index] = 1;
    }
    return marks;
}

TileMarks TilesOfKind(const TileLookup& lookup, int32_t terrain) {
    return MarksWhere(lookup,
                      [&](size_t number) { return lookup[number].Terrain == terrain; });
}

TileMarks TilesOfSet(const TileLookup& lookup, int32_t set) {
    return MarksWhere(lookup, [&](size_t number) {
        return SetOfNumber(static_cast<int32_t>(number)) == set;
    });
}

SearchResults PostsOfTiles(const Terrain& terrain, const TileMarks& marks) {
    return PostsWhere(terrain, [&](const TerrainPost& post) {
        return IsMeant(marks, post.TileOffset);
    });
}

SearchResults PostsOfNumber(const Terrain& terrain, int32_t number) {
    return PostsWhere(terrain,
                      [&](const TerrainPost& post) { return post.TileOffset == number; });
}

SearchResults PostsBetween(const Terrain& terrain, int32_t low, int32_t high) {
    return PostsWhere(terrain, [&](const TerrainPost& post) {
        return post.Elevation >= low && post.Elevation <= high;
    });
}

void KeepTilesMeant(const Terrain& terrain, const TileMarks& marks, SearchResults& hits) {
    const auto first = hits.begin() + 1;
    hits.erase(std::remove_if(first, hits.end(),
                              [&](int32_t serial) {
                                  return !IsMeant(marks,
                                                  terrain.LxArr(serial).TileOffset);
                              }),
               hits.end());
}

} // namespace vardenix
