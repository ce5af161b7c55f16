#include "search/SearchRows.h"

#include "texts/Numbers.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace vardenix {

namespace {

// `shift` leads from a post to the neighbour that is asked.
template <typename Value>
void Sieve(const SearchCondition<Value>& condition, const std::vector<Value>& values,
           int32_t shift, std::vector<uint8_t>& passing) {
    using Unsigned = std::make_unsigned_t<Value>;
    const auto low = static_cast<Unsigned>(condition.Low);
    const auto span = static_cast<Unsigned>(static_cast<Unsigned>(condition.High) - low);
    const auto outside = static_cast<uint8_t>(condition.Outside);
    const size_t first = shift < 0 ? 1 : 0;
    const size_t end = values.size() - (shift > 0 ? 1 : 0);
    const Value* const asked = values.data() + shift;
    uint8_t* const marks = passing.data();
    for (size_t x = first; x < end; ++x) {
        const auto above = static_cast<Unsigned>(static_cast<Unsigned>(asked[x]) - low);
        const auto inside = static_cast<uint8_t>(above <= span);
        marks[x] = static_cast<uint8_t>(marks[x] & (inside ^ outside));
    }
}

// One field of all posts of a row, side by side.
template <typename Value, typename Take>
const std::vector<Value>& Taken(std::vector<Value>& values,
                                std::span<const TerrainPost> posts, Take take) {
    if (values.empty()) {
        values.resize(posts.size());
        for (size_t x = 0; x < posts.size(); ++x)
            values[x] = take(posts[x]);
    }
    return values;
}

const std::vector<uint8_t>& TakenByte(std::vector<uint8_t>& values,
                                      std::span<const TerrainPost> posts, size_t field) {
    return Taken(values, posts, [field](const TerrainPost& post) {
        return field == 0 ? post.Palette : field == 1 ? post.X1 : post.X2;
    });
}

} // namespace

template <typename Value>
std::optional<SearchCondition<Value>> SearchCondition<Value>::Of(std::string_view text) {
    if (text.empty())
        return std::nullopt;
    const char sign = text[0];
    const bool signedText = sign == '!' || sign == '<' || sign == '>';
    const double number = Val(signedText ? text.substr(1) : text);
    constexpr double least = std::numeric_limits<Value>::min();
    constexpr double greatest = std::numeric_limits<Value>::max();
    double low = std::ceil(number);
    double high = std::floor(number);
    if (sign == '<') {
        low = least;
        high = std::ceil(number) - 1;
    } else if (sign == '>') {
        low = std::floor(number) + 1;
        high = greatest;
    }
    SearchCondition condition;
    condition.Outside = sign == '!';
    if (low > high || low > greatest || high < least) {
        // Nothing lies between them: everything is outside, and nothing outside of all.
        condition.Outside = !condition.Outside;
        return condition;
    }
    condition.Low = static_cast<Value>(std::max(low, least));
    condition.High = static_cast<Value>(std::min(high, greatest));
    return condition;
}

CellConditions::CellConditions(const SearchCell& cell)
    : TileOffset(SearchCondition<int32_t>::Of(cell.CellTile)),
      Elevation(SearchCondition<int16_t>::Of(cell.CellElevation)),
      Bytes{SearchCondition<uint8_t>::Of(cell.CellPalette),
            SearchCondition<uint8_t>::Of(cell.CellX1),
            SearchCondition<uint8_t>::Of(cell.CellX2)} {}

bool CellConditions::None() const {
    return !TileOffset && !Elevation && !Bytes[0] && !Bytes[1] && !Bytes[2];
}

SearchRows::Row& SearchRows::RowOf(int32_t y) {
    Row& row = rows_[static_cast<size_t>(y) % rows_.size()];
    if (row.Y == y)
        return row;
    row.Y = y;
    const auto width = static_cast<size_t>(terrain_.MapWidth);
    row.Posts =
        terrain_.LxArr.Values().subspan((static_cast<size_t>(y) - 1) * width, width);
    row.TileOffset.clear();
    row.Elevation.clear();
    for (std::vector<uint8_t>& field : row.Bytes)
        field.clear();
    return row;
}

bool SearchRows::CellMatches(const CellConditions& cell, int32_t y,
                             std::vector<uint8_t>& passing) {
    const int32_t asked = y + cell.DY;
    if (asked < 1 || asked > terrain_.MapWidth)
        return false;
    // A post at the edge has no neighbour beyond it.
    if (cell.DX < 0)
        passing.front() = 0;
    if (cell.DX > 0)
        passing.back() = 0;
    Row& row = RowOf(asked);
    if (cell.TileOffset)
        Sieve(*cell.TileOffset,
              Taken(row.TileOffset, row.Posts,
                    [](const TerrainPost& post) { return post.TileOffset; }),
              cell.DX, passing);
    if (cell.Elevation)
        Sieve(*cell.Elevation,
              Taken(row.Elevation, row.Posts,
                    [](const TerrainPost& post) { return post.Elevation; }),
              cell.DX, passing);
    for (size_t field = 0; field < cell.Bytes.size(); ++field)
        if (cell.Bytes[field])
            Sieve(*cell.Bytes[field], TakenByte(row.Bytes[field], row.Posts, field),
                  cell.DX, passing);
    return std::ranges::any_of(passing, [](uint8_t mark) { return mark != 0; });
}

} // namespace vardenix
