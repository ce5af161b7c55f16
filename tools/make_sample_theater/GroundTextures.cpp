#include "make_sample_theater/GroundTextures.h"

#include "make_sample_theater/Noise.h"

#include <algorithm>
#include <cmath>

namespace vardenix::sample {
namespace {

constexpr Colour DeepBlue = {27, 62, 92};
constexpr Colour ShallowBlue = {52, 112, 130};
constexpr Colour LagoonBlue = {104, 163, 160};
constexpr Colour Foam = {214, 224, 218};
constexpr Colour Sand = {206, 191, 148};
constexpr Colour WetSand = {164, 156, 124};
constexpr Colour Lush = {97, 117, 59};
constexpr Colour Dry = {131, 136, 79};
constexpr Colour BrushGreen = {88, 103, 54};
constexpr Colour BrushBrown = {118, 115, 70};
constexpr Colour ForestFloor = {67, 84, 44};
constexpr Colour ThickFloor = {38, 55, 30};
constexpr Colour RockLight = {156, 148, 131};
constexpr Colour RockDark = {96, 89, 78};
constexpr Colour SnowLight = {238, 242, 246};
constexpr Colour SnowDark = {168, 184, 206};
constexpr Colour SwampGreen = {82, 98, 58};
constexpr Colour SwampReed = {110, 114, 66};
constexpr Colour SwampPool = {48, 66, 64};
constexpr Colour Pavement = {142, 137, 126};

double Relief(const Scene& scene, Place place) {
    return (1 - std::abs(scene.Noise(place, 4, 41))) +
           0.5 * (1 - std::abs(scene.Noise(place, 9, 42))) +
           0.22 * scene.Noise(place, 20, 43);
}

// Slopes towards the north-west are positive. Outside the tile the noise repeats, which
// on the edges is what the neighbour has.
double Light(const Scene& scene, Place place) {
    constexpr double step = 0.012;
    const auto at = [&](double u, double v) {
        return Relief(scene, {u - std::floor(u), v - std::floor(v)});
    };
    return (at(place.U + step, place.V - step) - at(place.U - step, place.V + step)) *
           2.2;
}

Colour Grass(const Scene& scene, Place place) {
    const double patches =
        0.7 * scene.Noise(place, 3, 21) + 0.5 * scene.Noise(place, 8, 22);
    const Colour colour = Mix(Lush, Dry, SmoothStep(-0.9, 0.9, patches));
    return Scale(colour, 1 + 0.07 * scene.Noise(place, 30, 23));
}

Colour BrushGround(const Scene& scene, Place place) {
    const double patches =
        0.7 * scene.Noise(place, 4, 24) + 0.5 * scene.Noise(place, 11, 25);
    return Scale(Mix(BrushGreen, BrushBrown, SmoothStep(-0.8, 0.9, patches)),
                 1 + 0.10 * scene.Noise(place, 32, 26));
}

Colour Rock(const Scene& scene, Place place, double brightness) {
    const double light = Light(scene, place);
    const double stain = 0.5 + 0.5 * scene.Noise(place, 6, 27);
    const Colour colour = Mix(RockDark, RockLight, std::clamp(0.55 + light, 0.0, 1.0));
    const Colour mossy = Mix(colour, BrushGreen, 0.28 * SmoothStep(0.55, 0.95, stain));
    return Scale(mossy, brightness * (1 + 0.06 * scene.Noise(place, 32, 28)));
}

Colour Swamp(const Scene& scene, Place place) {
    const double wet = 0.8 * scene.Noise(place, 5, 29) + 0.5 * scene.Noise(place, 12, 30);
    const Colour land =
        Mix(SwampGreen, SwampReed, SmoothStep(-0.3, 0.8, scene.Noise(place, 9, 31)));
    return Mix(Scale(land, 1 + 0.08 * scene.Noise(place, 32, 32)), SwampPool,
               SmoothStep(0.12, 0.22, wet));
}

Colour Plain(const Scene& scene, Place place, Ground ground) {
    switch (ground) {
    case Ground::Deep:
        return Scale(DeepBlue, 1 + 0.025 * scene.Noise(place, 12, 33) +
                                   0.02 * scene.Noise(place, 32, 34));
    case Ground::Shallow:
        return Scale(Mix(ShallowBlue, LagoonBlue,
                         0.16 * SmoothStep(-0.2, 0.9, scene.Noise(place, 3, 35))),
                     1 + 0.03 * scene.Noise(place, 14, 36));
    case Ground::Plains:
        return Grass(scene, place);
    case Ground::Farm:
        return Scale(Grass(scene, place), 0.97);
    case Ground::Brush:
        return BrushGround(scene, place);
    case Ground::ThinForest:
        return Scale(Mix(ForestFloor, BrushGreen, 0.5 + 0.5 * scene.Noise(place, 5, 37)),
                     1 + 0.08 * scene.Noise(place, 32, 38));
    case Ground::ThickForest:
        return ThickFloor;
    case Ground::Rock:
        return Rock(scene, place, 1.0);
    case Ground::RockShade:
        return Rock(scene, place, 0.66);
    case Ground::Snow:
        return Mix(SnowDark, SnowLight,
                   std::clamp(0.72 + 0.9 * Light(scene, place), 0.0, 1.0));
    case Ground::Swamp:
        return Swamp(scene, place);
    case Ground::Town:
        return Scale(Mix(Pavement, Lush, 0.45), 1 + 0.05 * scene.Noise(place, 24, 39));
    }
    return {};
}

// From the water inwards: shallows that grow lighter, surf, wet sand, sand, land.
Colour Shore(const Scene& scene, Place place, Ground land, double share) {
    const bool cliff = land == Ground::Rock;
    const double beach = cliff ? 0.03 : 0.10 + 0.05 * scene.Noise(place, 5, 44);
    const double start = 0.5 + beach;
    if (share < 0.5) {
        const Colour water = Mix(Plain(scene, place, Ground::Shallow), LagoonBlue,
                                 (cliff ? 0.35 : 0.8) * SmoothStep(0.15, 0.5, share));
        return Mix(water, Foam, 0.75 * SmoothStep(0.465, 0.49, share));
    }
    const Colour edge =
        cliff ? Colour{82, 76, 68} : Mix(WetSand, Sand, SmoothStep(0.5, 0.54, share));
    return Mix(edge, Plain(scene, place, land),
               SmoothStep(start - 0.02, start + 0.05, share));
}

// Half the width, in share, over which one ground becomes the other.
double Softness(Ground low, Ground high) {
    if (high == Ground::Shallow || high == Ground::RockShade)
        return 0.42;
    if (low == Ground::Plains && high == Ground::Brush)
        return 0.30;
    if (high == Ground::Town)
        return 0.25;
    return high == Ground::Snow ? 0.07 : 0.16;
}

} // namespace

Colour GroundColour(const Scene& scene, Place place) {
    const Ground low = scene.Look().Low;
    const Ground high = scene.Look().High;
    if (low == high)
        return Plain(scene, place, low);
    const double share = scene.Share(place);
    if (low == Ground::Shallow)
        return Shore(scene, place, high, share);
    const double soft = Softness(low, high);
    const double amount = SmoothStep(0.5 - soft, 0.5 + soft, share);
    if (amount <= 0)
        return Plain(scene, place, low);
    if (amount >= 1)
        return Plain(scene, place, high);
    return Mix(Plain(scene, place, low), Plain(scene, place, high), amount);
}

} // namespace vardenix::sample
