#include "make_sample_theater/Landscape.h"

#include "make_sample_theater/Noise.h"

#include <algorithm>
#include <cmath>

namespace vardenix::sample {
namespace {

struct Shape {
    double
        Inland; // 0 at the coast, about 0.5 in the heart of the island, negative at sea
    double Height; // feet
};

// The island's outline is told in parts of the map, so that every map size gets one
// island; what is small (bays, hills) is told in posts.
Shape ShapeAt(double x, double y, int posts, uint32_t seed) {
    const double u = 2 * x / posts - 1;
    const double v = 2 * y / posts - 1;
    const double warpU = u + 0.22 * Fractal(u * 1.7, v * 1.7, 3, Hash(seed, 1));
    const double warpV = v + 0.22 * Fractal(u * 1.7, v * 1.7, 3, Hash(seed, 2));
    const double turned = 0.86 * warpU + 0.5 * warpV;
    const double across = 0.86 * warpV - 0.5 * warpU;
    double inland = 0.70 - std::hypot(turned * 0.92, across * 1.28);
    inland += 0.30 * Fractal(u * 2.6 + 3, v * 2.6, 4, Hash(seed, 3));
    for (uint32_t i = 0; i < 7; ++i) { // islets off the coast
        const double angle = 6.2831853 * (i + 0.8 * Chance(seed, i, 4)) / 7;
        const double reach = 0.62 + 0.2 * Chance(seed, i, 5);
        const double size = 0.04 + 0.07 * Chance(seed, i, 6);
        const double away =
            std::hypot(warpU - reach * std::cos(angle), warpV - reach * std::sin(angle));
        inland = std::max(inland, size - away);
    }
    const double small = 256.0 / posts;
    inland +=
        (0.10 * Fractal(x / 15, y / 15, 4, Hash(seed, 7))) * std::min(1.0, 2 * small);
    const double rim = std::max(std::abs(u), std::abs(v));
    inland = std::min(inland, (0.97 - rim) * 0.8); // never land at the map's edge

    const double massif = SmoothStep(
        0.10, 0.42, inland + 0.22 * Fractal(u * 2.1, v * 2.1, 2, Hash(seed, 8)));
    const double bendX = x / 40 + 0.5 * Fractal(x / 26, y / 26, 2, Hash(seed, 9));
    const double bendY = y / 40 + 0.5 * Fractal(x / 26, y / 26, 2, Hash(seed, 10));
    const double crest =
        Ridges(0.8 * bendX - 0.6 * bendY, 0.6 * bendX + 0.8 * bendY, 6, Hash(seed, 11));
    const double hills = 0.5 + 0.5 * Fractal(x / 15, y / 15, 4, Hash(seed, 12));
    double height = 25 + 900 * std::max(0.0, inland);
    height += 700 * SmoothStep(0.04, 0.2, inland) * hills * hills;
    height += 9800 * massif * std::pow(std::max(0.0, crest), 2.0);
    if (inland <= 0)
        height = 2000 * inland;
    return {inland, height};
}

// Steps of one corner from the nearest land, diagonals counted as 1.4.
Grid<float> DistanceFromLand(const Grid<float>& height) {
    const int side = height.Side();
    Grid<float> distance(side, 1e6F);
    const auto relax = [&](int x, int y, int dx, int dy, float step) {
        if (distance.Has(x + dx, y + dy))
            distance.At(x, y) =
                std::min(distance.At(x, y), distance.At(x + dx, y + dy) + step);
    };
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            if (height.At(x, y) > 0)
                distance.At(x, y) = 0;
            relax(x, y, -1, 0, 1);
            relax(x, y, 0, -1, 1);
            relax(x, y, -1, -1, 1.4F);
            relax(x, y, 1, -1, 1.4F);
        }
    }
    for (int y = side - 1; y >= 0; --y) {
        for (int x = side - 1; x >= 0; --x) {
            relax(x, y, 1, 0, 1);
            relax(x, y, 0, 1, 1);
            relax(x, y, 1, 1, 1.4F);
            relax(x, y, -1, 1, 1.4F);
        }
    }
    return distance;
}

struct Site {
    double Height;
    double Fall;  // feet a post, the steepest way down
    double Light; // above 0 where the slope turns to the north-west
    double Inland;
};

Ground LandAt(int x, int y, const Site& site, uint32_t seed) {
    const double rough = 350 * Fractal(x / 9.0, y / 9.0, 3, Hash(seed, 20));
    // How far the light must turn away before a slope lies in shade; uneven, so that the
    // shades get ragged borders.
    const double dusk = 70 + 90 * PlaneNoise(x / 2.3, y / 2.3, Hash(seed, 28));
    const double snowLine = 5000 + rough * 1.6;
    if (site.Height > snowLine)
        return site.Light < -dusk - 20 ? Ground::RockShade : Ground::Snow;
    const bool steep = site.Fall > 620 + rough * 0.5;
    if (site.Height > 2700 + rough * 2 || (steep && site.Height > 900))
        return site.Light < -dusk ? Ground::RockShade : Ground::Rock;
    const double cliffs = Fractal(x / 13.0 + 40, y / 13.0, 2, Hash(seed, 21));
    if (site.Inland < 0.03 && cliffs > 0.36)
        return Ground::Rock;

    const double wet = Fractal(x / 16.0, y / 16.0, 3, Hash(seed, 22));
    if (site.Height < 170 && site.Fall < 60 && wet > 0.40)
        return Ground::Swamp;
    const double bendX = x + 7 * PlaneNoise(x / 11.0, y / 11.0, Hash(seed, 26));
    const double bendY = y + 7 * PlaneNoise(x / 11.0, y / 11.0, Hash(seed, 27));
    double wood = Fractal(0.8 * bendX / 21 + 0.6 * bendY / 21,
                          0.8 * bendY / 21 - 0.6 * bendX / 21, 4, Hash(seed, 23));
    wood += 0.22 * Fractal(x / 3.5, y / 3.5, 2, Hash(seed, 24));
    wood += 0.34 * SmoothStep(200, 1500, site.Height) -
            0.5 * SmoothStep(2200, 3300, site.Height);
    if (wood > 0.36)
        return Ground::ThickForest;
    if (wood > 0.25)
        return Ground::ThinForest;
    const double tilled = Fractal(x / 24.0 + 9, y / 24.0, 3, Hash(seed, 25));
    if (site.Height < 650 && site.Fall < 170 && site.Inland > 0.02 && tilled > -0.02 &&
        wood < 0.05)
        return Ground::Farm;
    return wood > 0.12 || site.Height > 1500 ? Ground::Brush : Ground::Plains;
}

} // namespace

bool TouchesWater(const Grid<Ground>& corners, int x, int y) {
    return IsWater(corners.At(x, y)) || IsWater(corners.At(x + 1, y)) ||
           IsWater(corners.At(x, y + 1)) || IsWater(corners.At(x + 1, y + 1));
}

Landscape MakeLandscape(int posts, uint32_t seed) {
    const int side = posts + 1;
    Landscape land{Grid<float>(side), Grid<Ground>(side, Ground::Deep)};
    Grid<float> inland(side);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const Shape shape = ShapeAt(x, y, posts, seed);
            land.Height.At(x, y) = static_cast<float>(shape.Height);
            inland.At(x, y) = static_cast<float>(shape.Inland);
        }
    }
    const Grid<float> seaward = DistanceFromLand(land.Height);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const double height = static_cast<double>(land.Height.At(x, y));
            if (height <= 0) {
                const double shelf =
                    2.2 +
                    3.6 * std::max(-0.2,
                                   Fractal(x / 18.0, y / 18.0, 3, Hash(seed, 30)) * 1.6);
                if (static_cast<double>(seaward.At(x, y)) <= shelf)
                    land.Corners.At(x, y) = Ground::Shallow;
                continue;
            }
            const int west = std::max(0, x - 1);
            const int south = std::max(0, y - 1);
            const int east = std::min(side - 1, x + 1);
            const int north = std::min(side - 1, y + 1);
            const double eastward =
                static_cast<double>(land.Height.At(east, y) - land.Height.At(west, y)) /
                2;
            const double northward =
                static_cast<double>(land.Height.At(x, north) - land.Height.At(x, south)) /
                2;
            const Site site = {height, std::hypot(eastward, northward),
                               (eastward - northward) * 0.7071,
                               static_cast<double>(inland.At(x, y))};
            land.Corners.At(x, y) = LandAt(x, y, site, seed);
        }
    }
    return land;
}

} // namespace vardenix::sample
