#include "mapview/Relief.h"

#include <algorithm>
#include <cmath>

namespace vardenix {
namespace {

constexpr double PostFeet = 3280.84;
constexpr double Steeper = 4;
// Towards the light: as far west as north, and as high as both together.
constexpr double LightWest = 0.5;
constexpr double LightNorth = 0.5;
const double lightUp = std::sqrt(0.5);

// A corner of a triangle of the surface.
struct SurfacePoint {
    double X;
    double Y;
    double Feet;
};

// Where a level crosses from one point to another that lies on its other side.
PicturePoint Crossing(const SurfacePoint& a, const SurfacePoint& b, double level) {
    const double part = (level - a.Feet) / (b.Feet - a.Feet);
    return {a.X + (b.X - a.X) * part, a.Y + (b.Y - a.Y) * part};
}

void AddPieces(const std::array<SurfacePoint, 3>& triangle, int32_t step,
               std::vector<ContourPiece>& pieces) {
    const auto [low, high] =
        std::minmax({triangle[0].Feet, triangle[1].Feet, triangle[2].Feet});
    // A level belongs to what lies at it or above.
    const auto first = static_cast<int32_t>(std::floor(low / step)) + 1;
    for (int32_t level = first; level * step <= high; ++level) {
        const double feet = level * step;
        std::array<PicturePoint, 2> ends{};
        size_t count = 0;
        for (size_t i = 0; i < 3 && count < 2; ++i) {
            const SurfacePoint& a = triangle[i];
            const SurfacePoint& b = triangle[(i + 1) % 3];
            if ((a.Feet < feet) != (b.Feet < feet))
                ends[count++] = Crossing(a, b, feet);
        }
        if (count == 2)
            pieces.push_back({ends[0], ends[1], level * step});
    }
}

} // namespace

HeightField::HeightField(const Terrain& terrain, Layer layer)
    : terrain_(terrain), finest_(layer == Layer::Heights),
      width_(finest_ ? terrain.Elevations.EMapWidth : terrain.MapWidth),
      spacing_(finest_ ? PostFeet / FinestPerPost : PostFeet) {}

int32_t HeightField::At(int32_t x, int32_t y) const {
    if (width_ == 0)
        return 0;
    const auto column = static_cast<size_t>(std::clamp(x, 0, width_ - 1));
    const auto row = static_cast<size_t>(std::clamp(y, 0, width_ - 1));
    const size_t index = row * static_cast<size_t>(width_) + column;
    return finest_ ? int32_t{terrain_.Elevations.L0ElvArr.Values()[index]}
                   : int32_t{terrain_.LxArr.Values()[index].Elevation};
}

double ShadeAt(const HeightField& heights, int32_t x, int32_t y) {
    const int32_t eastward = heights.At(x + 1, y) - heights.At(x - 1, y);
    const int32_t northward = heights.At(x, y + 1) - heights.At(x, y - 1);
    return ShadeOf(eastward, northward, heights.Spacing());
}

double ShadeOf(int32_t eastward, int32_t northward, double spacing) {
    if (eastward == 0 && northward == 0)
        return 0;
    const double scale = Steeper / (2 * spacing);
    const double east = eastward * scale;
    const double north = northward * scale;
    // The upright on the slope is (-east, -north, 1).
    const double light = (east * LightWest - north * LightNorth + lightUp) /
                         std::sqrt(1 + east * east + north * north);
    const double more = light - lightUp;
    return more > 0 ? more / (1 - lightUp) : std::max(more / lightUp, -1.0);
}

ReliefTint TintOf(double shade, int32_t strength) {
    constexpr double most = 200; // the ground is still seen through it
    const double alpha = most * std::abs(shade) * strength / 100;
    return {shade > 0 ? 0xFFFFFFU : 0U, static_cast<uint8_t>(std::lround(alpha))};
}

int32_t ContourLevel(int32_t feet, int32_t step) {
    return feet >= 0 ? feet / step : -((step - 1 - feet) / step);
}

std::vector<ContourPiece> ContoursAt(const HeightField& heights, int32_t x, int32_t y,
                                     int32_t step) {
    std::array<int32_t, 9> around{};
    for (int32_t i = 0; i < 9; ++i)
        around[static_cast<size_t>(i)] = heights.At(x + i % 3 - 1, y + i / 3 - 1);
    std::vector<ContourPiece> pieces;
    const auto [low, high] = std::ranges::minmax(around);
    if (low == high)
        return pieces;
    const auto corner = [&](size_t right, size_t up) {
        const size_t i = up * 3 + right;
        const int32_t sum = around[i] + around[i + 1] + around[i + 3] + around[i + 4];
        return SurfacePoint{static_cast<double>(right), static_cast<double>(up),
                            sum / 4.0};
    };
    const SurfacePoint middle{0.5, 0.5, static_cast<double>(around[4])};
    const std::array<SurfacePoint, 4> corners{corner(0, 0), corner(1, 0), corner(1, 1),
                                              corner(0, 1)};
    for (size_t i = 0; i < 4; ++i)
        AddPieces({middle, corners[i], corners[(i + 1) % 4]}, step, pieces);
    return pieces;
}

} // namespace vardenix
