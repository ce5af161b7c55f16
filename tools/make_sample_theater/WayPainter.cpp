#include "make_sample_theater/Layers.h"
#include "make_sample_theater/Noise.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vardenix::sample {
namespace {

constexpr Colour RiverBlue = {64, 102, 118};
constexpr Colour RiverBank = {96, 104, 62};
constexpr Colour RoadGrey = {186, 178, 160};
constexpr Colour RoadVerge = {128, 126, 86};
constexpr Colour StreetGrey = {168, 163, 154};
constexpr Colour Ballast = {104, 96, 88};
constexpr Colour BridgeWhite = {206, 202, 192};

// 1 inside a band of the given width, 0 outside, with one soft pixel between.
double Inside(double distance, double width, double pixel) {
    return 1 - SmoothStep(width / 2 - pixel * 0.6, width / 2 + pixel * 0.6, distance);
}

void DrawWay(Colour& ground, const Scene& scene, WayKind kind, double distance,
             double pixel, Place place) {
    switch (kind) {
    case WayKind::River: {
        // At a mouth the river widens and takes the sea's colour.
        const double sea = scene.Look().Low == Ground::Shallow
                               ? SmoothStep(0.62, 0.45, scene.Share(place))
                               : 0;
        const double width = RiverWidth * (1 + 0.7 * sea);
        ground = Mix(ground, RiverBank,
                     0.6 * (1 - sea) * Inside(distance, width * 1.5, pixel * 3));
        const double wave = 0.04 * scene.Noise(place, 16, 71);
        ground = Mix(ground, Scale(RiverBlue, 1 + wave),
                     (1 - sea) * Inside(distance, width, pixel));
        break;
    }
    case WayKind::Road:
        ground =
            Mix(ground, RoadVerge, 0.6 * Inside(distance, RoadWidth * 1.9, pixel * 2));
        ground = Mix(ground, RoadGrey, Inside(distance, RoadWidth, pixel));
        break;
    case WayKind::Street:
        ground = Mix(ground, StreetGrey, Inside(distance, StreetWidth, pixel));
        break;
    case WayKind::Railroad:
        ground = Mix(ground, Ballast, Inside(distance, RailWidth * 1.5, pixel));
        ground = Mix(ground, {62, 58, 56}, Inside(distance, RailWidth * 0.5, pixel));
        break;
    case WayKind::Bridge:
        ground = Mix(ground, {60, 62, 60},
                     0.6 * Inside(distance - pixel, RoadWidth * 1.9, pixel));
        ground = Mix(ground, BridgeWhite, Inside(distance, RoadWidth * 1.25, pixel));
        break;
    }
}

} // namespace

void DrawWays(Picture& picture, const Scene& scene) {
    if (scene.Ways().empty())
        return;
    const double pixel = 1.0 / picture.Side();
    for (int y = 0; y < picture.Side(); ++y) {
        for (int x = 0; x < picture.Side(); ++x) {
            const Place place = PlaceOf(x, y, picture.Side());
            for (const WayKind kind :
                 std::array{WayKind::River, WayKind::Street, WayKind::Road,
                            WayKind::Railroad, WayKind::Bridge}) {
                const double distance = Distance(scene.Ways(), kind, place);
                if (distance < 0.12)
                    DrawWay(picture.At(x, y), scene, kind, distance, pixel, place);
            }
        }
    }
}

} // namespace vardenix::sample
