#pragma once

#include "grounds/TileFits.h"

#include <array>
#include <cstdint>
#include <vector>

namespace vardenix {

// A ground is a number from 0 on, given by the learning.
using GroundsOfTile = std::array<int16_t, CornerCount>; // by Corner

// The grounds at the corners of all tiles: corners that meet on the map and look alike
// there are of one ground.
struct CornerGrounds {
    int16_t Count = 0;
    std::vector<GroundsOfTile> Tiles; // by index
};

CornerGrounds GroundsFrom(const LearnedTiles& tiles, const MeetingCounts& eastward,
                          const MeetingCounts& northward);

// Which grounds tiles can lead over to one another, and in how many steps.
class GroundSteps {
public:
    static constexpr int16_t NoWay = 1000;

    GroundSteps() = default;
    // `uses` are posts of the map by tile index: of ways as short that is taken whose
    // grounds stand together most often.
    GroundSteps(const CornerGrounds& grounds, const std::vector<int32_t>& uses);

    // Steps from one to another; NoWay where tiles lead nowhere.
    int16_t Distance(int16_t from, int16_t to) const { return distances_[At(from, to)]; }
    // The ground that the shortest way goes over next; `from` itself where there is none.
    int16_t Next(int16_t from, int16_t to) const { return next_[At(from, to)]; }
    // The longest way between two that have one.
    int16_t Longest() const { return longest_; }

private:
    size_t At(int16_t from, int16_t to) const {
        return static_cast<size_t>(from) * count_ + static_cast<size_t>(to);
    }

    size_t count_ = 0;
    int16_t longest_ = 0;
    std::vector<int16_t> distances_;
    std::vector<int16_t> next_;
};

} // namespace vardenix
