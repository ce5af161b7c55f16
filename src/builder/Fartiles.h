#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vardenix {

// One far tile to make: the posts of level 2 that lie under it, from the bottom row of
// posts up, left to right, and the level (3, 4 or 5) that shows it.
struct FartileRecord {
    std::span<const int32_t> Serials;
    int32_t Level = 0;
};

// Far tiles by index, from 0. A theater has hundreds of thousands, so their serials lie
// in one array.
class FartileList {
public:
    // Counts the filled records; the one at this index has never been filled.
    int32_t UpperBound() const { return static_cast<int32_t>(entries_.size()); }
    // Below the upper bound; std::out_of_range beyond. Valid until the next change.
    FartileRecord At(int32_t index) const;
    void Add(std::span<const int32_t> serials, int32_t level);
    void Clear();
    void Reserve(size_t records, size_t serials);

private:
    struct Entry {
        size_t First;
        int32_t Count;
        int32_t Level;
    };
    std::vector<Entry> entries_;
    std::vector<int32_t> serials_;
};

// What one run leaves for the next: a run without far tiles sets the count to 0 and
// leaves the list as it was.
struct Fartiles {
    vardenix::FartileList FartileList;
    int32_t FartileCount = 0;
};

} // namespace vardenix
