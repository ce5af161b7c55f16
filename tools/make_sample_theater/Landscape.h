#pragma once

#include "make_sample_theater/Ground.h"

#include <cstdint>
#include <vector>

namespace vardenix::sample {

// A square grid that is addressed by column and row from 0, rows from the south upward.
template <class T>
class Grid {
public:
    explicit Grid(int side, T value = {})
        : side_(side),
          cells_(static_cast<std::size_t>(side) * static_cast<std::size_t>(side), value) {
    }
    int Side() const { return side_; }
    bool Has(int x, int y) const { return x >= 0 && y >= 0 && x < side_ && y < side_; }
    T& At(int x, int y) { return cells_[Index(x, y)]; }
    const T& At(int x, int y) const { return cells_[Index(x, y)]; }

private:
    std::size_t Index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(side_) +
               static_cast<std::size_t>(x);
    }
    int side_;
    std::vector<T> cells_;
};

// The land before anybody built on it. Corners of posts make the grids, one more a side
// than there are posts; heights are feet and negative under the sea.
struct Landscape {
    Grid<float> Height;
    Grid<Ground> Corners;
};

Landscape MakeLandscape(int posts, uint32_t seed);

// The height in the middle of a post.
inline float HeightOfPost(const Landscape& land, int x, int y) {
    return (land.Height.At(x, y) + land.Height.At(x + 1, y) + land.Height.At(x, y + 1) +
            land.Height.At(x + 1, y + 1)) /
           4;
}

// Whether any corner of a post lies in water.
bool TouchesWater(const Grid<Ground>& corners, int x, int y);

} // namespace vardenix::sample
