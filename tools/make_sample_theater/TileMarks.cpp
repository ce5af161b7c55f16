#include "make_sample_theater/TileMarks.h"

#include "make_sample_theater/Landscape.h"
#include "make_sample_theater/Scene.h"

#include <algorithm>
#include <cmath>

namespace vardenix::sample {
namespace {

constexpr int32_t WaterArea = 1;
constexpr int32_t ThickForestArea = 7;

float Feet(double tileSides) { return static_cast<float>(tileSides * FeetPerPost); }

int32_t PathType(WayKind kind) {
    switch (kind) {
    case WayKind::River:
        return 2;
    case WayKind::Street:
    case WayKind::Road:
        return 10;
    case WayKind::Railroad:
        return 11;
    case WayKind::Bridge:
        return 12;
    }
    return 0;
}

// Whether the Low or the High ground lies at a place.
Ground GroundAt(const Scene& scene, Place place) {
    return scene.Share(place) > 0.5 ? scene.Look().High : scene.Look().Low;
}

double NearestOutside(const Grid<char>& covered, int x, int y) {
    double nearest = 1e9;
    for (int oy = 0; oy < covered.Side(); ++oy) {
        for (int ox = 0; ox < covered.Side(); ++ox) {
            if (!covered.At(ox, oy))
                nearest = std::min(nearest, std::hypot(ox - x, oy - y));
        }
    }
    return nearest;
}

// Greedy: the largest circle that still fits, four at most, none too small to matter.
// Circles may reach over the tile's edge, but not over its middle point's own distance to
// land.
void FillWithCircles(TileMarks& marks, int32_t type, Grid<char> covered) {
    constexpr int most = 4;
    constexpr double smallest = 0.07;
    const int side = covered.Side();
    for (int circle = 0; circle < most; ++circle) {
        double best = 0;
        int bestX = 0;
        int bestY = 0;
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                if (!covered.At(x, y))
                    continue;
                const double toEdge =
                    std::min({x + 0.5, y + 0.5, side - x - 0.5, side - y - 0.5});
                const double reach =
                    std::min(NearestOutside(covered, x, y) - 0.5, toEdge);
                if (reach > best) {
                    best = reach;
                    bestX = x;
                    bestY = y;
                }
            }
        }
        if (best / side < smallest)
            return;
        marks.Areas.push_back({type, Feet(best / side), Feet((bestY + 0.5) / side),
                               Feet((bestX + 0.5) / side)});
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                if (std::hypot(x - bestX, y - bestY) <= best)
                    covered.At(x, y) = 0;
            }
        }
    }
}

template <class Test>
void AddAreas(TileMarks& marks, const Scene& scene, int32_t type, Test test) {
    constexpr int side = 24;
    const Ground low = scene.Look().Low;
    const Ground high = scene.Look().High;
    if (!test(low) && !test(high))
        return;
    if (test(low) && test(high)) { // all of the tile: one circle says it
        marks.Areas.push_back({type, Feet(0.5), Feet(0.5), Feet(0.5)});
        return;
    }
    Grid<char> covered(side);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            covered.At(x, y) =
                test(GroundAt(scene, {(x + 0.5) / side, (y + 0.5) / side}));
    }
    FillWithCircles(marks, type, covered);
}

} // namespace

TileMarks MarksOf(const Tile& tile) {
    TileMarks marks;
    const Scene scene(tile);
    AddAreas(marks, scene, WaterArea, [](Ground ground) { return IsWater(ground); });
    AddAreas(marks, scene, ThickForestArea,
             [](Ground ground) { return ground == Ground::ThickForest; });
    for (const Way& way : scene.Ways()) {
        for (std::size_t i = 1; i < way.Points.size(); ++i) {
            const Place from = way.Points[i - 1];
            const Place to = way.Points[i];
            marks.Paths.push_back({PathType(way.Kind), Feet(way.Width), Feet(from.V),
                                   Feet(from.U), Feet(to.V), Feet(to.U)});
        }
    }
    return marks;
}

} // namespace vardenix::sample
