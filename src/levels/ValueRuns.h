#pragma once

#include "levels/Terrain.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace vardenix {

// Values in serial order, all of one row, that were alike and were changed alike: what an
// edit of millions of posts is remembered by.
template <typename Value>
struct ValueRun {
    int32_t Serial = 0; // of the first
    int32_t Count = 0;
    Value OldValue{};
    Value NewValue{};
};
using TileRun = ValueRun<int32_t>;   // tile numbers of posts of level 2
using HeightRun = ValueRun<int16_t>; // feet, by serials of EMapWidth

template <typename Value>
bool operator==(const ValueRun<Value>& a, const ValueRun<Value>& b) {
    return a.Serial == b.Serial && a.Count == b.Count && a.OldValue == b.OldValue &&
           a.NewValue == b.NewValue;
}

// Squares of a grid from column X1 to column X2 of row Y, counted from 0.
struct RowSpan {
    int32_t Y = 0;
    int32_t X1 = 0;
    int32_t X2 = 0;
};

inline bool operator==(const RowSpan& a, const RowSpan& b) {
    return a.Y == b.Y && a.X1 == b.X1 && a.X2 == b.X2;
}

// Of serials that rise, in a grid `width` squares a side.
std::vector<RowSpan> SpansOfSerials(std::span<const int32_t> serials, int32_t width);

// Runs as they grow, square by square; what does not change is left out.
template <typename Value>
class RunWriter {
public:
    // The next square is in another row.
    void BreakRow() { open_ = false; }
    void Add(int32_t serial, Value old, Value changed) {
        if (old == changed) {
            open_ = false;
        } else if (open_ && runs_.back().Serial + runs_.back().Count == serial &&
                   runs_.back().OldValue == old && runs_.back().NewValue == changed) {
            ++runs_.back().Count;
        } else {
            runs_.push_back({serial, 1, old, changed});
            open_ = true;
        }
    }
    std::vector<ValueRun<Value>> Take() { return std::move(runs_); }

private:
    std::vector<ValueRun<Value>> runs_;
    bool open_ = false; // the last run may grow
};

// What becomes of the squares of `spans`, each given once, in a grid `width` squares a
// side; nothing is changed yet.
template <typename Value, typename OldOf, typename NewOf>
std::vector<ValueRun<Value>> RunsOf(std::span<const RowSpan> spans, int32_t width,
                                    OldOf oldOf, NewOf newOf) {
    RunWriter<Value> writer;
    for (const RowSpan& span : spans) {
        writer.BreakRow();
        const int32_t before = span.Y * width;
        for (int32_t x = span.X1; x <= span.X2; ++x) {
            const int32_t serial = before + x + 1;
            writer.Add(serial, oldOf(serial), newOf(serial));
        }
    }
    return writer.Take();
}

// The runs are carried out in their order, or taken back in the other one.
void WriteNew(PostArray& posts, std::span<const TileRun> runs);
void WriteOld(PostArray& posts, std::span<const TileRun> runs);
void WriteNew(HeightArray& heights, std::span<const HeightRun> runs);
void WriteOld(HeightArray& heights, std::span<const HeightRun> runs);

// How many squares they hold.
template <typename Value>
int64_t CountOf(std::span<const ValueRun<Value>> runs) {
    int64_t count = 0;
    for (const ValueRun<Value>& run : runs)
        count += run.Count;
    return count;
}

} // namespace vardenix
