#include "make_sample_theater/Layers.h"
#include "make_sample_theater/Noise.h"

#include <array>
#include <cmath>

namespace vardenix::sample {
namespace {

constexpr std::array<Colour, 6> Roofs = {{{172, 112, 86},
                                          {158, 100, 80},
                                          {188, 180, 166},
                                          {140, 136, 130},
                                          {180, 132, 104},
                                          {206, 198, 184}}};
constexpr Colour Lamplight = {255, 205, 130};

// A box between two places, lit on its north and west sides, with a shadow to the
// south-east.
void DrawHouse(Picture& picture, Place low, Place high, Colour roof) {
    const int side = picture.Side();
    const auto pixel = [side](double x) {
        return static_cast<int>(std::lround(x * side));
    };
    const int left = pixel(low.U);
    const int right = pixel(high.U);
    const int top = pixel(1 - high.V);
    const int bottom = pixel(1 - low.V);
    if (left < 1 || top < 1 || right > side - 3 || bottom > side - 3)
        return; // a house never reaches the tile's edge
    for (int y = top + 1; y < bottom + 2; ++y) {
        for (int x = left + 1; x < right + 2; ++x)
            picture.At(x, y) = Scale(picture.At(x, y), 0.62);
    }
    for (int y = top; y < bottom; ++y) {
        for (int x = left; x < right; ++x) {
            const double lit = y == top || x == left           ? 1.12
                               : 2 * (y - top) >= bottom - top ? 0.9
                                                               : 1;
            picture.At(x, y) = Scale(roof, lit);
        }
    }
}

Colour RoofOf(uint32_t seed) {
    return Scale(Roofs[seed % Roofs.size()], 0.9 + 0.2 * Chance(seed, 9));
}

void DrawTown(Picture& picture, const Scene& scene, std::vector<Lamp>& lamps) {
    constexpr int lots = 18; // six between two streets
    for (int row = 0; row < lots; ++row) {
        for (int column = 0; column < lots; ++column) {
            const uint32_t seed = Hash(static_cast<uint32_t>(column),
                                       static_cast<uint32_t>(row), scene.Seed(), 81);
            const double lot = 1.0 / lots;
            const Place middle = {(column + 0.5) * lot, (row + 0.5) * lot};
            const bool core = scene.Look().Low == Ground::Town;
            const double share = core ? 1 : scene.Share(middle);
            const double park = scene.Noise(middle, 3, 83);
            const double built = park > 0.55 ? 0.08
                                 : core      ? 0.92
                                             : 0.85 * SmoothStep(0.25, 0.75, share);
            if (Chance(seed, 1) > built)
                continue;
            const bool wide = Chance(seed, 2) < 0.3;
            const double reachU = lot * (wide ? 0.46 : 0.34);
            const double reachV = lot * (Chance(seed, 3) < 0.4 ? 0.42 : 0.32);
            if (Distance(scene.Ways(), WayKind::Road, middle) <
                    StreetWidth / 2 + lot * 0.3 ||
                Distance(scene.Ways(), WayKind::Railroad, middle) < RailWidth + lot * 0.4)
                continue;
            DrawHouse(picture, {middle.U - reachU, middle.V - reachV},
                      {middle.U + reachU, middle.V + reachV}, RoofOf(seed));
            if (Chance(seed, 4) < 0.35)
                lamps.push_back({middle, Lamplight, 0.7});
        }
    }
    for (const Way& way : scene.Ways()) {
        if (way.Kind != WayKind::Street)
            continue;
        for (int i = 0; i < 3; ++i) {
            const double along = (i + 0.5) / 3;
            lamps.push_back({{Mix(way.Points.front().U, way.Points.back().U, along),
                              Mix(way.Points.front().V, way.Points.back().V, along)},
                             {255, 178, 96},
                             1});
        }
    }
}

void DrawHamlet(Picture& picture, const Scene& scene, std::vector<Lamp>& lamps) {
    for (uint32_t i = 0; i < 46; ++i) {
        const uint32_t seed = Hash(i, scene.Seed(), 82);
        const Place at = {0.16 + 0.68 * Chance(seed, 1), 0.16 + 0.68 * Chance(seed, 2)};
        const double toRoad = Distance(scene.Ways(), WayKind::Road, at);
        if (toRoad < 0.045 || toRoad > 0.15)
            continue;
        const double reach = 0.014 + 0.008 * Chance(seed, 3);
        DrawHouse(picture, {at.U - reach * 1.2, at.V - reach},
                  {at.U + reach, at.V + reach}, RoofOf(seed));
        if (Chance(seed, 4) < 0.5)
            lamps.push_back({at, Lamplight, 0.8});
    }
}

void DrawAirfield(Picture& picture, std::vector<Lamp>& lamps) {
    constexpr Colour concrete = {150, 148, 144};
    const auto slab = [&](Place low, Place high, Colour colour) {
        for (int y = 0; y < picture.Side(); ++y) {
            for (int x = 0; x < picture.Side(); ++x) {
                const Place place = PlaceOf(x, y, picture.Side());
                if (place.U > low.U && place.U < high.U && place.V > low.V &&
                    place.V < high.V)
                    picture.At(x, y) = colour;
            }
        }
    };
    slab({0.36, 0.08}, {0.41, 0.92}, {112, 112, 114}); // runway
    slab({0.38, 0.10}, {0.39, 0.90}, {150, 150, 150}); // its middle line
    slab({0.50, 0.14}, {0.525, 0.86}, concrete);       // taxiway
    slab({0.41, 0.14}, {0.50, 0.165}, concrete);
    slab({0.41, 0.835}, {0.50, 0.86}, concrete);
    slab({0.525, 0.36}, {0.66, 0.64}, concrete); // apron
    for (int i = 0; i < 4; ++i)
        DrawHouse(picture, {0.60, 0.38 + i * 0.065}, {0.65, 0.42 + i * 0.065},
                  {176, 178, 180});
    for (int i = 0; i <= 12; ++i) {
        const double v = 0.08 + 0.07 * i;
        lamps.push_back({{0.36, v}, {235, 240, 255}, 0.8});
        lamps.push_back({{0.41, v}, {235, 240, 255}, 0.8});
        if (i % 2 == 0)
            lamps.push_back({{0.512, v}, {70, 110, 255}, 0.5});
    }
    lamps.push_back({{0.58, 0.5}, {255, 210, 150}, 2});
}

} // namespace

void DrawBuildings(Picture& picture, const Scene& scene, std::vector<Lamp>& lamps) {
    if (scene.Look().High == Ground::Town)
        DrawTown(picture, scene, lamps);
    if (scene.Look().Special == Extra::Hamlet)
        DrawHamlet(picture, scene, lamps);
    if (scene.Look().Special == Extra::Airfield)
        DrawAirfield(picture, lamps);
}

} // namespace vardenix::sample
