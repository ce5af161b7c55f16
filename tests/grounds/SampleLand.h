#pragma once

#include "grounds/LearnedLand.h"
#include "make_sample_theater/World.h"

#include <cstdint>
#include <vector>

namespace vardenix::tests {

// The land of the sample theater as its maker has it, and what the learning does not see
// of it: which grounds lie at the corners, and what fits with what.
class SampleLand {
public:
    // What becomes of the pictures: each brighter or darker by a share up to Gain, moved
    // by up to Shift pixels, every part of every pixel off by up to Noise.
    struct Spoiling {
        double Gain = 0;
        int Shift = 0;
        int Noise = 0;
    };

    // Pictures are `side` pixels a side.
    SampleLand(int posts, uint32_t seed, int side, Spoiling spoiling = {0, 0, 0});

    // That share of the posts get the tile of another post.
    void SwapPosts(double share);

    sample::Ground Truth(int32_t tile, size_t corner) const;
    bool Fit(Meeting meeting, int32_t first, int32_t second) const;
    // Seams of the posts of a box, those to its neighbours included, that do not fit.
    int BadSeams(const LandGrid& map, int x1, int y1, int x2, int y2) const;
    // How many of all.
    static int SeamsOf(const LandGrid& map, int x1, int y1, int x2, int y2);
    // The first tile of a ground alone, without a way.
    int32_t PlainTile(sample::Ground ground) const;

    LearnedTiles Tiles;
    LandGrid Map;

private:
    const sample::TileLook& LookOf(int32_t tile) const {
        return looks_[static_cast<size_t>(tile)];
    }
    std::vector<sample::TileLook> looks_; // by index
};

} // namespace vardenix::tests
