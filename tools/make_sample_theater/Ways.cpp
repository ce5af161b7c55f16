#include "make_sample_theater/Ways.h"

#include "make_sample_theater/Noise.h"

#include <algorithm>
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
        ways.push_back(
            {kind, width,
             Curve(MiddleOf(edges[0]), Middle, MiddleOf(edges[1]), sway, seed)});
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

bool IsTownAt(const TileLook& look, Place place) {
    if (look.High != Ground::Town)
        return false;
    if (look.Low == Ground::Town)
        return true;
    const int corner = (place.U > 0.5 ? 1 : 0) + (place.V > 0.5 ? 2 : 0);
    return look.HighCorners >> corner & 1;
}

// Streets run through the quarters of the tile that are town. The one in the middle of
// the tile runs on where it borders a quarter of the town on either side.
void AddStreets(std::vector<Way>& ways, const TileLook& look) {
    for (const double place : StreetPlaces) {
        for (const double half : {0.0, 0.5}) {
            const double near = place == 0.5 ? 0.1 : 0.0;
            const double middle = half + 0.25;
            if (IsTownAt(look, {middle, place - near}) ||
                (near > 0 && IsTownAt(look, {middle, place + near})))
                ways.push_back(
                    {WayKind::Road, StreetWidth, {{half, place}, {half + 0.5, place}}});
            if (IsTownAt(look, {place - near, middle}) ||
                (near > 0 && IsTownAt(look, {place + near, middle})))
                ways.push_back(
                    {WayKind::Road, StreetWidth, {{place, half}, {place, half + 0.5}}});
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
        AddStreets(ways, look);
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
