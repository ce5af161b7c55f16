#include "levels/ValueRuns.h"

#include <algorithm>

namespace vardenix {

namespace {

void Set(TerrainPost& post, int32_t tile) { post.TileOffset = tile; }
void Set(int16_t& height, int16_t feet) { height = feet; }

template <typename Array, typename Value>
void Write(Array& values, const ValueRun<Value>& run, Value value) {
    // A terrain that was read anew may be smaller.
    const int32_t last = std::min(run.Serial + run.Count - 1, values.UpperBound());
    for (int32_t serial = run.Serial; serial <= last; ++serial)
        Set(values(serial), value);
}

template <typename Array, typename Value>
void WriteAllNew(Array& values, std::span<const ValueRun<Value>> runs) {
    for (const ValueRun<Value>& run : runs)
        Write(values, run, run.NewValue);
}

template <typename Array, typename Value>
void WriteAllOld(Array& values, std::span<const ValueRun<Value>> runs) {
    for (auto run = runs.rbegin(); run != runs.rend(); ++run)
        Write(values, *run, run->OldValue);
}

} // namespace

std::vector<RowSpan> SpansOfSerials(std::span<const int32_t> serials, int32_t width) {
    std::vector<RowSpan> spans;
    for (const int32_t serial : serials) {
        const int32_t y = (serial - 1) / width;
        const int32_t x = (serial - 1) % width;
        if (!spans.empty() && spans.back().Y == y && spans.back().X2 == x - 1)
            spans.back().X2 = x;
        else
            spans.push_back({y, x, x});
    }
    return spans;
}

void WriteNew(PostArray& posts, std::span<const TileRun> runs) {
    WriteAllNew(posts, runs);
}

void WriteOld(PostArray& posts, std::span<const TileRun> runs) {
    WriteAllOld(posts, runs);
}

void WriteNew(HeightArray& heights, std::span<const HeightRun> runs) {
    WriteAllNew(heights, runs);
}

void WriteOld(HeightArray& heights, std::span<const HeightRun> runs) {
    WriteAllOld(heights, runs);
}

} // namespace vardenix
