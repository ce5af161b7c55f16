#pragma once

#include "make_sample_theater/Catalogue.h"

#include <vector>

namespace vardenix::sample {

// Places on a tile: U to the right, V up, both from 0 to 1.
struct Place {
    double U = 0;
    double V = 0;
};

enum class WayKind : uint8_t { River, Road, Street, Railroad, Bridge };

// A line on a tile with a width, all in tile sides. The picture is drawn from these lines
// and the catalogue tells them to the simulator, so that both agree.
struct Way {
    WayKind Kind = WayKind::Road;
    double Width = 0;
    std::vector<Place> Points; // at least two
};

constexpr double RiverWidth = 0.11;
constexpr double RoadWidth = 0.044;
constexpr double StreetWidth = 0.022;
constexpr double RailWidth = 0.022;

// Every way of a tile, the streets of a town included. Ways that reach an edge reach it
// in its middle, at a right angle.
std::vector<Way> WaysOf(const Tile& tile);

// Distance in tile sides from a place to a way's middle line.
double Distance(const Way& way, Place place);
// To the nearest way of a kind; 9 when the tile has none.
double Distance(const std::vector<Way>& ways, WayKind kind, Place place);

} // namespace vardenix::sample
