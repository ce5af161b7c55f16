#include "make_sample_theater/Ways.h"

#include "make_sample_theater/Noise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace vardenix::sample {
namespace {

constexpr Place Middle = {0.5, 0.5};

Place MiddleOf(uint8_t edge) {
    return {0.5 + 0.5 * StepX(edge), 0.5 + 0.5 * StepY(edge)};
}

std::vector<uint8_t> EdgesIn(uint8_t mask) {
    std::vector<uint8_t> edges;
    for (const uint8_t edge : {North, East, South, West}) {
        if (mask & edge)
            edges.push_back(edge);
    }
    return edges;
}

// A curve that leaves both ends towards the middle of the tile; `sway` moves its inner
// points aside and fades out at the ends, so that neighbours still meet.
std::vector<Place> Curve(Place from, Place by, Place to, double sway, uint32_t seed) {
    constexpr int steps = 8;
    std::vector<Place> points;
    const double across = 1.0 / std::max(1e-9, std::hypot(to.U - from.U, to.V - from.V));
    const Place aside = {-(to.V - from.V) * across, (to.U - from.U) * across};
    const double phase = Chance(seed, 3) < 0.5 ? -1 : 1;
    for (int i = 0; i <= steps; ++i) {
        const double t = static_cast<double>(i) / steps;
        const double a = (1 - t) * (1 - t);
        const double b = 2 * t * (1 - t);
        const double c = t * t;
        const double fade = std::pow(std::sin(3.14159265 * t), 2);
        const double off = sway * fade * phase * (std::sin(6.2831853 * t) + 0.35);
        points.push_back({a * from.U + b * by.U + c * to.U + off * aside.U,
                          a * from.V + b * by.V + c * to.V + off * aside.V});
    }
    return points;
}

void AddNetwork(std::vector<Way>& ways, WayKind kind, double width, uint8_t mask,
                double sway, uint32_t seed) {
    const std::vector<uint8_t> edges = EdgesIn(mask);
    if (edges.empty())
        return;
    if (edges.size() == 1) {
        ways.push_back(
            {kind, width, Curve(MiddleOf(edges[0]), Middle, Middle, sway, seed)});
    } else if (edges.size() == 2) {
        ways.push_back({kind, width,
                        Curve(MiddleOf(edges[0]), Middle, MiddleOf(edges[1]),
                              IsStraight(mask) ? sway : sway * 0.3, seed)});
    } else {
        for (const uint8_t edge : edges)
            ways.push_back({kind, width, {MiddleOf(edge), Middle}});
    }
}

void AddMouth(std::vector<Way>& ways, uint8_t edge, uint32_t seed) {
    const Place from = MiddleOf(edge);
    const Place to = MiddleOf(Opposite(edge));
    std::vector<Place> whole = Curve(from, Middle, to, 0.05, seed);
    whole.resize(6); // it ends a little way out in the water
    ways.push_back({WayKind::River, RiverWidth, std::move(whole)});
}

// The part of a straight way across a river becomes a bridge.
void AddCrossing(std::vector<Way>& ways, WayKind kind, double width, uint8_t mask) {
    const std::vector<uint8_t> edges = EdgesIn(mask);
    const double half = RiverWidth * 0.9;
    for (const uint8_t edge : edges)
        ways.push_back(
            {kind,
             width,
             {MiddleOf(edge), {0.5 + half * StepX(edge), 0.5 + half * StepY(edge)}}});
    const uint8_t a = edges[0];
    const uint8_t b = edges[1];
    ways.push_back({WayKind::Bridge,
                    width * 1.4,
                    {{0.5 + half * StepX(a), 0.5 + half * StepY(a)},
                     {0.5 + half * StepX(b), 0.5 + half * StepY(b)}}});
}

// How much of a place is town, by the corners alone.
double TownShare(const TileLook& look, Place place) {
    if (look.Low == Ground::Town)
        return 1;
    const auto corner = [&](unsigned bit) {
        return (look.HighCorners & bit) != 0 ? 1.0 : 0.0;
    };
    return Mix(Mix(corner(SouthWest), corner(SouthEast), place.U),
               Mix(corner(NorthWest), corner(NorthEast), place.U), place.V);
}

// Streets lie in a grid of three a tile. What reaches the tile's edge depends on the
// edge's corners alone; further in some pieces are left out. The piece is told by its
// ends, which are the tile's edges or crossings of streets.
void AddStreets(std::vector<Way>& ways, const TileLook& look, uint32_t seed) {
    constexpr std::array<double, 3> lines = {1.0 / 6, 0.5, 5.0 / 6};
    constexpr std::array<double, 5> ends = {0, 1.0 / 6, 0.5, 5.0 / 6, 1};
    const auto add = [&](Place from, Place to, uint32_t number, bool atEdge) {
        const Place seen = {from.U + to.U < 0.5   ? 0
                            : from.U + to.U > 1.5 ? 1
                                                  : (from.U + to.U) / 2,
                            from.V + to.V < 0.5   ? 0
                            : from.V + to.V > 1.5 ? 1
                                                  : (from.V + to.V) / 2};
        const bool mainStreet = number % 3 == 1;
        if (TownShare(look,
                      atEdge ? seen : Place{(from.U + to.U) / 2, (from.V + to.V) / 2}) <
            0.42)
            return;
        if (!atEdge && !mainStreet && Chance(seed, number, 90) < 0.3)
            return;
        ways.push_back({WayKind::Street, StreetWidth, {from, to}});
    };
    for (uint32_t line = 0; line < 3; ++line) {
        for (uint32_t piece = 0; piece < 4; ++piece) {
            const bool atEdge = piece == 0 || piece == 3;
            add({ends[piece], lines[line]}, {ends[piece + 1], lines[line]},
                line + 3 * piece, atEdge);
            add({lines[line], ends[piece]}, {lines[line], ends[piece + 1]},
                12 + line + 3 * piece, atEdge);
        }
    }
}

} // namespace

std::vector<Way> WaysOf(const Tile& tile) {
    const TileLook& look = tile.Look;
    const uint32_t seed = Hash(look.Rivers, look.Roads, tile.Variant, 77);
    std::vector<Way> ways;
    const bool crossed = look.Rivers && (look.Roads || look.Rails);
    if (look.Rivers && look.Low == Ground::Shallow)
        AddMouth(ways, look.Rivers, seed);
    else
        AddNetwork(ways, WayKind::River, RiverWidth, look.Rivers, crossed ? 0 : 0.09,
                   seed);
    if (crossed) {
        if (look.Roads)
            AddCrossing(ways, WayKind::Road, RoadWidth, look.Roads);
        else
            AddCrossing(ways, WayKind::Railroad, RailWidth, look.Rails);
    } else {
        AddNetwork(ways, WayKind::Road, RoadWidth, look.Roads, look.Rails ? 0 : 0.02,
                   seed);
        AddNetwork(ways, WayKind::Railroad, RailWidth, look.Rails, 0, seed);
    }
    if (look.High == Ground::Town)
        AddStreets(ways, look, Hash(look.HighCorners, tile.Variant));
    return ways;
}

double Distance(const Way& way, Place place) {
    double nearest = 9;
    for (std::size_t i = 1; i < way.Points.size(); ++i) {
        const Place a = way.Points[i - 1];
        const Place b = way.Points[i];
        const double du = b.U - a.U;
        const double dv = b.V - a.V;
        const double length = du * du + dv * dv;
        const double along =
            length > 0
                ? std::clamp(((place.U - a.U) * du + (place.V - a.V) * dv) / length, 0.0,
                             1.0)
                : 0;
        nearest = std::min(
            nearest, std::hypot(place.U - a.U - along * du, place.V - a.V - along * dv));
    }
    return nearest;
}

double Distance(const std::vector<Way>& ways, WayKind kind, Place place) {
    double nearest = 9;
    for (const Way& way : ways) {
        if (way.Kind == kind)
            nearest = std::min(nearest, Distance(way, place));
    }
    return nearest;
}

} // namespace vardenix::sample
