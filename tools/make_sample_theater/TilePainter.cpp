#include "make_sample_theater/GroundTextures.h"
#include "make_sample_theater/Layers.h"

#include <algorithm>
#include <cmath>

namespace vardenix::sample {
namespace {

// Moonlight: what is left of the day's colours, bluish and nearly black.
Picture Darken(const Picture& day) {
    Picture night(day.Side());
    for (int y = 0; y < day.Side(); ++y) {
        for (int x = 0; x < day.Side(); ++x) {
            const Colour c = day.At(x, y);
            night.At(x, y) = {c.R * 0.040F, c.G * 0.048F, c.B * 0.075F};
        }
    }
    return night;
}

void Shine(Picture& night, const Lamp& lamp) {
    const int side = night.Side();
    constexpr double reach = 0.085;
    const auto bound = [side](double x) {
        return std::clamp(static_cast<int>(std::floor(x * side)), 0, side);
    };
    for (int y = bound(1 - lamp.At.V - reach); y < bound(1 - lamp.At.V + reach); ++y) {
        for (int x = bound(lamp.At.U - reach); x < bound(lamp.At.U + reach); ++x) {
            const Place place = PlaceOf(x, y, side);
            const double d = std::hypot(place.U - lamp.At.U, place.V - lamp.At.V) / reach;
            if (d >= 1)
                continue;
            const double glow = std::exp(-d * d * 45) + 0.16 * (1 - d) * (1 - d);
            const auto amount = static_cast<float>(glow * lamp.Strength);
            Colour& pixel = night.At(x, y);
            pixel.R = std::min(255.0F, pixel.R + lamp.Tint.R * amount);
            pixel.G = std::min(255.0F, pixel.G + lamp.Tint.G * amount);
            pixel.B = std::min(255.0F, pixel.B + lamp.Tint.B * amount);
        }
    }
}

} // namespace

TilePictures PaintTile(const Tile& tile, int side) {
    const Scene scene(tile);
    Picture day(side);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            day.At(x, y) = GroundColour(scene, PlaceOf(x, y, side));
    }
    DrawFields(day, scene);
    DrawWays(day, scene);
    DrawTrees(day, scene);
    std::vector<Lamp> lamps;
    DrawBuildings(day, scene, lamps);
    Picture night = Darken(day);
    for (const Lamp& lamp : lamps)
        Shine(night, lamp);
    return {std::move(day), std::move(night)};
}

} // namespace vardenix::sample
