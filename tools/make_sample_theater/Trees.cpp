#include "make_sample_theater/Layers.h"
#include "make_sample_theater/Noise.h"

#include <algorithm>
#include <cmath>

namespace vardenix::sample {
namespace {

constexpr int TreesAcross = 22;

struct Growth {
    double Density; // trees for each place where one could stand
    double Radius;  // in places
    Colour Leaves;
};

Growth GrowthOn(Ground ground) {
    switch (ground) {
    case Ground::Plains:
        return {0.035, 0.42, {66, 86, 42}};
    case Ground::Farm:
        return {0.02, 0.40, {62, 82, 42}};
    case Ground::Brush:
        return {0.34, 0.36, {72, 88, 46}};
    case Ground::ThinForest:
        return {0.66, 0.52, {54, 76, 38}};
    case Ground::ThickForest:
        return {0.99, 0.64, {45, 67, 34}};
    case Ground::Rock:
        return {0.05, 0.32, {74, 86, 52}};
    case Ground::Swamp:
        return {0.16, 0.42, {58, 76, 46}};
    case Ground::Town:
        return {0.10, 0.40, {60, 80, 44}};
    default:
        return {0, 0.3, {60, 80, 40}};
    }
}

struct Tree {
    Place At;
    double Radius = 0; // in tile sides
    Colour Leaves;
};

bool StandsFree(const Scene& scene, Place place, double radius) {
    for (const Way& way : scene.Ways()) {
        if (Distance(way, place) < way.Width / 2 + radius * 0.8)
            return false;
    }
    if (scene.Look().Special == Extra::Airfield)
        return std::abs(place.U - 0.5) > 0.22 || std::abs(place.V - 0.5) > 0.45;
    return true;
}

// Places along the edges are the same on all tiles, seen as lying on the edge itself.
std::vector<Tree> PlantTrees(const Scene& scene) {
    constexpr double place = 1.0 / TreesAcross;
    std::vector<Tree> trees;
    for (int row = TreesAcross; row >= -1; --row) {
        for (int column = -1; column <= TreesAcross; ++column) {
            const bool inside = column > 0 && column < TreesAcross - 1 && row > 0 &&
                                row < TreesAcross - 1;
            const auto wrap = [](int i) {
                return static_cast<uint32_t>((i + TreesAcross) % TreesAcross);
            };
            const uint32_t seed =
                Hash(wrap(column), wrap(row), inside ? scene.Seed() : 600U);
            Tree tree;
            tree.At = {(column + 0.15 + 0.7 * Chance(seed, 1)) * place,
                       (row + 0.15 + 0.7 * Chance(seed, 2)) * place};
            const Place seen = OntoEdge(tree.At, place);
            const double share = scene.Share(seen);
            const Growth low = GrowthOn(scene.Look().Low);
            const Growth high = GrowthOn(scene.Look().High);
            const double amount = SmoothStep(0.36, 0.64, share);
            double density = Mix(low.Density, high.Density, amount);
            if (IsWater(scene.Look().Low) && share < 0.66)
                density = 0;
            density *= 1 + 0.9 * (1 - density) * scene.Noise(seen, 4, 61);
            if (Chance(seed, 3) >= density)
                continue;
            const Growth& growth = Chance(seed, 4) < amount ? high : low;
            tree.Radius = growth.Radius * place * (0.75 + 0.5 * Chance(seed, 5));
            tree.Leaves = Scale(growth.Leaves, 0.84 + 0.32 * Chance(seed, 6));
            if (StandsFree(scene, seen, tree.Radius))
                trees.push_back(tree);
        }
    }
    return trees;
}

// Calls draw(pixel, u, v) for the pixels within `reach` of a place; u and v are the
// distance from it in parts of the reach.
template <class Draw>
void EachPixelAround(Picture& picture, Place centre, double reach, Draw draw) {
    const int side = picture.Side();
    const auto first = [side](double x) {
        return std::clamp(static_cast<int>(std::floor(x * side)), 0, side);
    };
    for (int y = first(1 - centre.V - reach);
         y < std::min(side, first(1 - centre.V + reach) + 1); ++y) {
        for (int x = first(centre.U - reach);
             x < std::min(side, first(centre.U + reach) + 1); ++x) {
            const Place place = PlaceOf(x, y, side);
            draw(picture.At(x, y), (place.U - centre.U) / reach,
                 (place.V - centre.V) / reach);
        }
    }
}

} // namespace

void DrawTrees(Picture& picture, const Scene& scene) {
    const double soft = 1.6 / picture.Side();
    for (const Tree& tree : PlantTrees(scene)) {
        const double edge = soft / tree.Radius;
        const Place shadow = {tree.At.U + tree.Radius * 0.45,
                              tree.At.V - tree.Radius * 0.45};
        EachPixelAround(picture, shadow, tree.Radius * 1.1,
                        [edge](Colour& pixel, double u, double v) {
                            const double r = std::hypot(u, v);
                            pixel =
                                Scale(pixel, 1 - 0.34 * (1 - SmoothStep(1 - edge, 1, r)));
                        });
        EachPixelAround(
            picture, tree.At, tree.Radius, [&](Colour& pixel, double u, double v) {
                const double r = std::hypot(u, v);
                const double lit = 1 + 0.28 * (v - u) * 0.7;
                pixel =
                    Mix(pixel, Scale(tree.Leaves, lit), 1 - SmoothStep(1 - edge, 1, r));
            });
    }
}

} // namespace vardenix::sample
