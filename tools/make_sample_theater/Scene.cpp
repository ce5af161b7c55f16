#include "make_sample_theater/Scene.h"

#include "make_sample_theater/Noise.h"

#include <algorithm>
#include <cmath>

namespace vardenix::sample {
namespace {

constexpr std::size_t Channels = 128;

uint32_t SeedOf(const Tile& tile) {
    const TileLook& look = tile.Look;
    const uint32_t grounds = static_cast<uint32_t>(look.Low) * 16 +
                             static_cast<uint32_t>(look.High) * 256 + look.HighCorners;
    const uint32_t ways = look.Roads | static_cast<uint32_t>(look.Rivers) << 4 |
                          static_cast<uint32_t>(look.Rails) << 8 |
                          static_cast<uint32_t>(look.EdgeStyles) << 12 |
                          static_cast<uint32_t>(look.Special) << 20;
    return Hash(grounds, ways, tile.Variant);
}

} // namespace

Scene::Scene(const Tile& tile)
    : tile_(tile), ways_(WaysOf(tile)), seed_(SeedOf(tile)), own_(Channels),
      common_(Channels) {}

const TileNoise& Scene::NoiseOf(std::vector<std::optional<TileNoise>>& made, int cells,
                                uint32_t channel, uint32_t seed) const {
    std::optional<TileNoise>& noise = made.at(channel);
    if (!noise)
        noise.emplace(cells, seed);
    return *noise;
}

double Scene::Noise(Place place, int cells, uint32_t channel) const {
    const double inward =
        std::min(std::min(place.U, 1 - place.U), std::min(place.V, 1 - place.V));
    const double own = SmoothStep(0.0, 0.2, inward);
    double noise = 0;
    if (own < 1)
        noise +=
            (1 - own) *
            NoiseOf(common_, cells, channel, channel * 2654435761U).At(place.U, place.V);
    if (own > 0)
        noise += own * NoiseOf(own_, cells, channel, seed_ + channel * 2654435761U)
                           .At(place.U, place.V);
    return own >= 1 ? noise : noise / std::sqrt(own * own + (1 - own) * (1 - own));
}

double Scene::Share(Place place) const {
    const TileLook& look = tile_.Look;
    if (look.Low == look.High)
        return 0;
    const double u = std::clamp(place.U, 0.0, 1.0);
    const double v = std::clamp(place.V, 0.0, 1.0);
    const auto corner = [&](unsigned bit) {
        return (look.HighCorners & bit) != 0 ? 1.0 : 0.0;
    };
    const double share = Mix(Mix(corner(SouthWest), corner(SouthEast), u),
                             Mix(corner(NorthWest), corner(NorthEast), u), v);
    const double unsure = 4 * share * (1 - share);
    if (unsure <= 0)
        return share;
    const Place at = {u, v};
    const double broad = Noise(at, 3, 11);
    const double fine = Noise(at, 7, 12);
    if (IsWater(look.Low)) { // a shore meets every edge in its middle and is smooth
        const double inward = std::min(std::min(u, 1 - u), std::min(v, 1 - v));
        const double noise = (broad + 0.4 * fine) * SmoothStep(0, 0.22, inward);
        return std::clamp(share + 0.35 * noise * unsure, 0.0, 1.0);
    }
    const double noise = broad + 0.6 * fine + 0.35 * Noise(at, 15, 13);
    return std::clamp(share + 0.36 * noise * unsure, 0.0, 1.0);
}

Place OntoEdge(Place place, double ring) {
    const auto snap = [ring](double x) {
        return x < ring ? 0.0 : x > 1 - ring ? 1.0 : x;
    };
    return {snap(place.U), snap(place.V)};
}

} // namespace vardenix::sample
