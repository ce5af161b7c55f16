#pragma once

#include "grounds/TileSides.h"

#include <cstdint>
#include <vector>

namespace vardenix {

// The two ways in which posts meet.
enum class Meeting : uint8_t {
    Eastward,  // the second tile lies east of the first
    Northward, // north of it
};
constexpr Side FirstSide(Meeting meeting) {
    return meeting == Meeting::Eastward ? East : North;
}
constexpr Side SecondSide(Meeting meeting) {
    return meeting == Meeting::Eastward ? West : South;
}

// Tiles as the learning knows them, by an index from 0 of their own.
struct LearnedTiles {
    std::vector<int32_t> Numbers; // of the catalogue, rising
    std::vector<int32_t> Indices; // by tile number; -1 for one that is not learned
    std::vector<TileSides> Sides;
    std::vector<TileWays> Ways;

    size_t Count() const { return Numbers.size(); }
    // -1 for a number that is not learned, negative ones too.
    int32_t IndexOf(int32_t number) const {
        const auto at = static_cast<size_t>(static_cast<uint32_t>(number));
        return at < Indices.size() ? Indices[at] : -1;
    }
};

// Tiles of posts by index, row by row from the south.
struct LandGrid {
    int32_t Width = 0;
    int32_t Height = 0;
    std::vector<int32_t> Tiles; // -1 for what is not learned

    size_t At(int32_t x, int32_t y) const {
        return static_cast<size_t>(y) * static_cast<size_t>(Width) +
               static_cast<size_t>(x);
    }
    bool Has(int32_t x, int32_t y) const {
        return x >= 0 && y >= 0 && x < Width && y < Height;
    }
    int32_t& operator()(int32_t x, int32_t y) { return Tiles[At(x, y)]; }
    int32_t operator()(int32_t x, int32_t y) const { return Tiles[At(x, y)]; }
};

// How often each pair of tiles meets on a map, 50 at most.
class MeetingCounts {
public:
    static constexpr uint8_t Most = 50;

    MeetingCounts() = default;
    MeetingCounts(const LandGrid& map, size_t tiles, Meeting meeting);
    uint8_t operator()(size_t first, size_t second) const {
        return counts_[first * tiles_ + second];
    }
    size_t Tiles() const { return tiles_; }

private:
    size_t tiles_ = 0;
    std::vector<uint8_t> counts_;
};

// Whether two tiles may stand side by side, and what that costs: learned from what stands
// together on the map, from the likeness of the sides' pictures, and from ways that go on
// or break off.
class MeetingFits {
public:
    // Error 7 when memory lacks: nine bytes for each pair of tiles.
    MeetingFits(const LearnedTiles& tiles, const MeetingCounts& counts, Meeting meeting);

    // About 0 for what surely fits to 1 for what surely does not, and up to 0.02 more for
    // pictures that differ.
    float Cost(size_t first, size_t second) const {
        return static_cast<float>(costs_[first * tiles_ + second] >> 1) / CostScale;
    }
    // Rather than not.
    bool Fit(size_t first, size_t second) const {
        return (costs_[first * tiles_ + second] & 1) != 0;
    }
    // Three of four pairs that fit differ by less (DifferenceOf).
    float UsualDifference() const { return usualDifference_; }
    // The share of all pairs that fit.
    double Prior() const { return prior_; }

private:
    static constexpr float CostScale = 30000;

    size_t tiles_;
    std::vector<uint16_t> costs_; // the lowest bit: fits
    float usualDifference_ = 0;
    double prior_ = 0;
};

} // namespace vardenix
