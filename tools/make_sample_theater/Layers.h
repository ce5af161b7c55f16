#pragma once

#include "make_sample_theater/Picture.h"
#include "make_sample_theater/Scene.h"

#include <vector>

namespace vardenix::sample {

// A lamp on the night picture. Strength 1 is a street lamp.
struct Lamp {
    Place At;
    Colour Tint;
    double Strength = 1;
};

// Each layer draws over what is there already. What reaches a tile's edge is drawn alike
// on all tiles that can lie at that edge.
void DrawFields(Picture& picture, const Scene& scene);
void DrawTrees(Picture& picture, const Scene& scene);
void DrawWays(Picture& picture, const Scene& scene);
// Houses and the airfield; adds the lamps they carry.
void DrawBuildings(Picture& picture, const Scene& scene, std::vector<Lamp>& lamps);

// Whole pictures of a tile, `side` pixels a side.
struct TilePictures {
    Picture Day;
    Picture Night;
};
TilePictures PaintTile(const Tile& tile, int side);

// The middle of a pixel as a place on the tile.
inline Place PlaceOf(int x, int y, int side) {
    return {(x + 0.5) / side, 1 - (y + 0.5) / side};
}

} // namespace vardenix::sample
