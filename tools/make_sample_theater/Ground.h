#pragma once

#include <array>
#include <cstdint>

namespace vardenix::sample {

// What lies at a corner of a post. Four corners make a post's picture.
enum class Ground : uint8_t {
    Deep,
    Shallow,
    Plains,
    Farm,
    Brush,
    ThinForest,
    ThickForest,
    Rock,
    RockShade, // slopes that turn away from the light, which stands in the north-west
    Snow,
    Swamp,
    Town,
};

constexpr bool IsWater(Ground ground) { return ground <= Ground::Shallow; }

// Which ground a corner becomes when its neighbours do not go with it: one step nearer to
// the plains, and deep water one step nearer to the shore.
constexpr Ground Tamer(Ground ground) {
    switch (ground) {
    case Ground::Deep:
    case Ground::Shallow:
        return Ground::Shallow;
    case Ground::ThinForest:
    case Ground::Rock:
        return Ground::Brush;
    case Ground::ThickForest:
        return Ground::ThinForest;
    case Ground::RockShade:
    case Ground::Snow:
        return Ground::Rock;
    default:
        return Ground::Plains;
    }
}

// Steps from the plains. Shallow water never changes and counts 0; deep water comes first
// in a repair, so that it counts most.
constexpr int Wildness(Ground ground) {
    if (ground == Ground::Deep)
        return 9;
    int steps = 0;
    while (ground != Ground::Plains && ground != Ground::Shallow) {
        ground = Tamer(ground);
        ++steps;
    }
    return steps;
}

// Corners of a post and tile, as bits.
enum Corner : uint8_t { SouthWest = 1, SouthEast = 2, NorthWest = 4, NorthEast = 8 };

// Edges of a post and tile, as bits, in clockwise order.
enum Edge : uint8_t { North = 1, East = 2, South = 4, West = 8 };
constexpr std::array<uint8_t, 4> Edges = {North, East, South, West};

// The two ways straight through a post.
constexpr uint8_t NorthSouth = North | South;
constexpr uint8_t EastWest = East | West;

constexpr uint8_t Opposite(uint8_t edge) {
    return static_cast<uint8_t>(edge < South ? edge << 2 : edge >> 2);
}
constexpr int StepX(uint8_t edge) { return edge == East ? 1 : edge == West ? -1 : 0; }
constexpr int StepY(uint8_t edge) { return edge == North ? 1 : edge == South ? -1 : 0; }

// The two corners that lie on an edge.
constexpr uint8_t CornersOf(uint8_t edge) {
    switch (edge) {
    case North:
        return NorthWest | NorthEast;
    case East:
        return SouthEast | NorthEast;
    case South:
        return SouthWest | SouthEast;
    default:
        return SouthWest | NorthWest;
    }
}

constexpr bool IsStraight(uint8_t edges) {
    return edges == (North | South) || edges == (East | West);
}

} // namespace vardenix::sample
