#pragma once

#include "levels/Terrain.h"
#include "program/SearchResults.h"

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace vardenix {

// What a text asks of a field of the type Value: that it lies within bounds, or without.
template <typename Value>
struct SearchCondition {
    Value Low = std::numeric_limits<Value>::min();
    Value High = std::numeric_limits<Value>::max();
    bool Outside = false; // of the bounds

    // Nothing for an empty text.
    static std::optional<SearchCondition> Of(std::string_view text);
};

// A cell's texts, turned into numbers once for all posts.
struct CellConditions {
    explicit CellConditions(const SearchCell& cell);

    // Where the cell's post lies from the one under test.
    int32_t DX = 0;
    int32_t DY = 0;
    std::optional<SearchCondition<int32_t>> TileOffset;
    std::optional<SearchCondition<int16_t>> Elevation;
    std::array<std::optional<SearchCondition<uint8_t>>, 3> Bytes; // Palette, X1, X2

    bool None() const;
};

// The rows of posts around the one under test, field by field, so that a condition is one
// straight run over numbers that lie side by side. A field of a row is taken out of the
// posts when it is first asked for.
class SearchRows {
public:
    // Borrowed; must not change while rows are asked.
    explicit SearchRows(const Terrain& terrain) : terrain_(terrain) {}

    // Of the posts of row `y` that are marked (not 0) in `passing`, those stay marked for
    // which the cell's conditions hold. False when none is left. Rows must be asked for
    // in rising order.
    bool CellMatches(const CellConditions& cell, int32_t y,
                     std::vector<uint8_t>& passing);

private:
    struct Row {
        int32_t Y = 0; // 0: nothing in it yet
        std::span<const TerrainPost> Posts;
        std::vector<int32_t> TileOffset;
        std::vector<int16_t> Elevation;
        std::array<std::vector<uint8_t>, 3> Bytes;
    };
    Row& RowOf(int32_t y);

    const Terrain& terrain_;
    std::array<Row, 3> rows_; // row y in element y mod 3
};

} // namespace vardenix
