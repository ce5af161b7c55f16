#pragma once

#include "make_sample_theater/Noise.h"
#include "make_sample_theater/Ways.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace vardenix::sample {

// What all layers of one tile's picture look at. Everything here is the same on both
// sides of an edge that two tiles may share: shares depend on the two corners of the edge
// alone, and noise is that of all tiles along the edges and a tile's own further in.
class Scene {
public:
    explicit Scene(const Tile& tile);

    const TileLook& Look() const { return tile_.Look; }
    const std::vector<Way>& Ways() const { return ways_; }
    // Chance of this tile alone.
    uint32_t Seed() const { return seed_; }

    // `channel`, below 128, keeps uses of noise apart; `cells` features a side, always
    // the same for a channel.
    double Noise(Place place, int cells, uint32_t channel) const;

    // How much of the High ground is here, from 0 to 1; the border runs where it is 0.5.
    double Share(Place place) const;

private:
    Tile tile_;
    std::vector<Way> ways_;
    const TileNoise& NoiseOf(std::vector<std::optional<TileNoise>>& made, int cells,
                             uint32_t channel, uint32_t seed) const;

    uint32_t seed_;
    // By channel, made when first asked for.
    mutable std::vector<std::optional<TileNoise>> own_;
    mutable std::vector<std::optional<TileNoise>> common_;
};

// A place as the tiles on both sides of an edge see it: in a ring of the width `ring`
// along the edges, and beyond them, it is moved onto the edge.
Place OntoEdge(Place place, double ring);

} // namespace vardenix::sample
