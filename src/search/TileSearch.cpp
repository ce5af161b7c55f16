#include "search/TileSearch.h"

#include "companion/Vardenix.h"
#include "search/SearchRows.h"
#include "search/TilesMeant.h"
#include "texts/Numbers.h"
#include "texts/Windows1252.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace vardenix {

namespace {

constexpr size_t KeptPatterns = 20;

constexpr std::array<int32_t, 9> HorizontalOffsets{0, 0, 1, 1, 1, 0, -1, -1, -1};
constexpr std::array<int32_t, 9> VerticalOffsets{0, 1, 1, 0, -1, -1, -1, 0, 1};

// The conditions of the cells that have some, the post itself first.
std::vector<CellConditions> ConditionsOf(const SearchPattern& pattern) {
    std::vector<CellConditions> cells;
    for (int32_t cell = 0; cell < static_cast<int32_t>(pattern.size()); ++cell) {
        CellConditions conditions(pattern[static_cast<size_t>(cell)]);
        conditions.DX = CellOffset(cell, true);
        conditions.DY = CellOffset(cell, false);
        if (!conditions.None())
            cells.push_back(conditions);
    }
    return cells;
}

void AddHits(const std::vector<uint8_t>& passing, int32_t serialBeforeRow,
             SearchResults& hits) {
    // Rows are mostly empty: eight posts are passed over at once.
    constexpr size_t Step = sizeof(uint64_t);
    for (size_t x = 0; x < passing.size(); x += Step) {
        uint64_t eight = 0;
        const size_t count = std::min(Step, passing.size() - x);
        std::memcpy(&eight, &passing[x], count);
        if (eight == 0)
            continue;
        for (size_t i = 0; i < count; ++i)
            if (passing[x + i] != 0)
                hits.push_back(serialBeforeRow + static_cast<int32_t>(x + i) + 1);
    }
}

} // namespace

int32_t CellOffset(int32_t cell, bool horizontal) {
    return (horizontal ? HorizontalOffsets : VerticalOffsets)
        .at(static_cast<size_t>(cell));
}

std::string LabelOfText(std::string_view text) {
    if (text.empty())
        return {};
    if (text[0] >= '0' && text[0] <= '9')
        return Format0(Val(text));
    // A letter beyond ASCII has several bytes.
    size_t first = 1;
    while (first < text.size() && (text[first] & 0xC0) == 0x80)
        ++first;
    if (text.size() == first)
        return {};
    return std::string(text.substr(0, first)) + Format0(Val(text.substr(first)));
}

std::optional<double> NumberCounted(std::string_view text) {
    if (text.starts_with('!') || text.starts_with('<') || text.starts_with('>'))
        text.remove_prefix(1);
    const bool hasSign = text.starts_with('-') || text.starts_with('+');
    if (std::ranges::all_of(text.substr(hasSign ? 1 : 0),
                            [](char key) { return key >= '0' && key <= '9'; }))
        return {};
    return Val(text);
}

void SearchTiles(const Terrain& terrain, const SearchPattern& pattern, Progress& progress,
                 SearchResults& results) {
    const std::vector<CellConditions> cells = ConditionsOf(pattern);
    const ShownBar bar(progress);
    SearchRows rows(terrain);
    SearchResults hits(1);
    const int32_t width = terrain.MapWidth;
    std::vector<uint8_t> passing(static_cast<size_t>(width));
    for (int32_t y = 1; y <= width; ++y) {
        std::ranges::fill(passing, uint8_t{1});
        const bool some = std::ranges::all_of(cells, [&](const CellConditions& cell) {
            return rows.CellMatches(cell, y, passing);
        });
        if (some)
            AddHits(passing, XYToSerial(0, y, width), hits);
        progress.SetBar(Percent(y, width));
        progress.LetEventsThrough();
    }
    results = std::move(hits);
}

void FindPosts(const Terrain& terrain, const TileLookup& lookup, const SearchQuery& query,
               Progress& progress, SearchResults& results) {
    SearchTiles(terrain, query.Pattern, progress, results);
    if (!query.Named.empty())
        KeepTilesMeant(terrain, TilesMeant(lookup, BytesFromUtf8(query.Named)), results);
}

void RememberQuery(SearchState& search) {
    const SearchQuery query = search;
    std::erase(search.History, query);
    search.History.insert(search.History.begin(), query);
    search.History.resize(std::min(search.History.size(), KeptPatterns));
}

} // namespace vardenix
