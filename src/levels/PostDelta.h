#pragma once

#include "levels/Terrain.h"
#include "levels/ValueRuns.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace vardenix {

// Values of an array in serial order before and after a command, where they differ.
template <typename Value>
struct ChangedValues {
    struct Stretch {
        int32_t Serial = 0; // of the first
        int32_t Count = 0;
    };
    std::vector<Stretch> Stretches; // rising, none touching another
    std::vector<Value> Old;         // of all stretches, one behind the other
    std::vector<Value> New;

    bool Empty() const { return Stretches.empty(); }
    size_t Bytes() const {
        return Stretches.size() * sizeof(Stretch) +
               (Old.size() + New.size()) * sizeof(Value);
    }
};

// What a command has changed of level 2. Runs are for what is alike over thousands of
// posts, whatever their other fields are.
struct PostDelta {
    std::vector<TileRun> Runs; // in the order of their making; a post may be in several
    ChangedValues<TerrainPost> Values;

    bool Empty() const { return Runs.empty() && Values.Empty(); }
    size_t Bytes() const { return Runs.size() * sizeof(TileRun) + Values.Bytes(); }
};

// The same of the finest elevations, by serials of EMapWidth.
struct HeightDelta {
    std::vector<HeightRun> Runs;
    ChangedValues<int16_t> Values;

    bool Empty() const { return Runs.empty() && Values.Empty(); }
    size_t Bytes() const { return Runs.size() * sizeof(HeightRun) + Values.Bytes(); }
};

// A delta as it grows, by rising serials; posts that stay as they are are left out.
class DeltaWriter {
public:
    void Add(int32_t serial, const TerrainPost& old, const TerrainPost& changed) {
        if (!(old == changed))
            AddStretch(serial, {&old, 1}, {&changed, 1});
    }
    // Several, whether all of them differ or not.
    void AddStretch(int32_t serial, std::span<const TerrainPost> old,
                    std::span<const TerrainPost> changed);
    // Room for so many.
    void Reserve(size_t posts);
    PostDelta Take() { return std::move(delta_); }

private:
    PostDelta delta_;
};

// Between two states of one array: element 0 is serial `first`. Both are of one length.
ChangedValues<TerrainPost> ChangedBetween(std::span<const TerrainPost> before,
                                          std::span<const TerrainPost> after,
                                          int32_t first = 1);
ChangedValues<int16_t> ChangedBetween(std::span<const int16_t> before,
                                      std::span<const int16_t> after, int32_t first = 1);

// The command is carried out again, or taken back. Error 9 where a serial lies outside.
void WriteNew(PostArray& posts, const PostDelta& delta);
void WriteOld(PostArray& posts, const PostDelta& delta);
void WriteNew(HeightArray& heights, const HeightDelta& delta);
void WriteOld(HeightArray& heights, const HeightDelta& delta);

} // namespace vardenix
