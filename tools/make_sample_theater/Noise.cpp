#include "make_sample_theater/Noise.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vardenix::sample {
namespace {

uint32_t Stir(uint32_t h) {
    h ^= h >> 16;
    h *= 0x7feb352dU;
    h ^= h >> 15;
    h *= 0x846ca68bU;
    return h ^ h >> 16;
}

double Fade(double t) { return t * t * t * (t * (t * 6 - 15) + 10); }

// Eight directions are enough for gradients and need no trigonometry.
double Slope(std::size_t direction, double dx, double dy) {
    constexpr double d = 0.70710678;
    constexpr std::array<double, 8> xs = {1, d, 0, -d, -1, -d, 0, d};
    constexpr std::array<double, 8> ys = {0, d, 1, d, 0, -d, -1, -d};
    return xs[direction] * dx + ys[direction] * dy;
}

std::size_t Direction(uint32_t hash) { return hash >> 29; }

template <class Corner>
double Gradient(double x, double y, Corner corner) {
    const double floorX = std::floor(x);
    const double floorY = std::floor(y);
    const auto cx = static_cast<int>(floorX);
    const auto cy = static_cast<int>(floorY);
    const double dx = x - floorX;
    const double dy = y - floorY;
    const double low = Mix(Slope(corner(cx, cy), dx, dy),
                           Slope(corner(cx + 1, cy), dx - 1, dy), Fade(dx));
    const double high = Mix(Slope(corner(cx, cy + 1), dx, dy - 1),
                            Slope(corner(cx + 1, cy + 1), dx - 1, dy - 1), Fade(dx));
    return 1.5 * Mix(low, high, Fade(dy));
}

// The next octave is turned, so that the grid behind the noise doesn't show.
void Turn(double& x, double& y) {
    const double turned = 1.6 * x - 1.2 * y + 17.3;
    y = 1.2 * x + 1.6 * y - 9.1;
    x = turned;
}

} // namespace

uint32_t Hash(uint32_t a, uint32_t b, uint32_t c, uint32_t d) {
    uint32_t h = Stir(a + 0x9e3779b9U);
    h = Stir(h ^ (b + 0x85ebca6bU));
    h = Stir(h ^ (c + 0xc2b2ae35U));
    return Stir(h ^ (d + 0x27d4eb2fU));
}

double Chance(uint32_t a, uint32_t b, uint32_t c, uint32_t d) {
    return Hash(a, b, c, d) / 4294967296.0;
}

double PlaneNoise(double x, double y, uint32_t seed) {
    return Gradient(x, y, [seed](int cx, int cy) {
        return Direction(
            Hash(static_cast<uint32_t>(cx), static_cast<uint32_t>(cy), seed));
    });
}

double Fractal(double x, double y, int octaves, uint32_t seed) {
    double sum = 0;
    double strength = 0.5;
    for (int i = 0; i < octaves; ++i) {
        sum += strength * PlaneNoise(x, y, seed + static_cast<uint32_t>(i) * 7919U);
        Turn(x, y);
        strength /= 2;
    }
    return sum * 1.3;
}

double Ridges(double x, double y, int octaves, uint32_t seed) {
    double sum = 0;
    double strength = 0.5;
    double carry = 1;
    for (int i = 0; i < octaves; ++i) {
        const double n =
            1 - std::abs(PlaneNoise(x, y, seed + static_cast<uint32_t>(i) * 104729U));
        const double crest = std::clamp(n, 0.0, 1.0) * n * carry;
        sum += strength * crest;
        carry = std::clamp(crest * 1.6, 0.0, 1.0);
        Turn(x, y);
        strength /= 2;
    }
    return sum;
}

TileNoise::TileNoise(int cells, uint32_t seed) : cells_(cells) {
    for (int y = 0; y <= cells; ++y) {
        for (int x = 0; x <= cells; ++x)
            directions_.push_back(static_cast<uint8_t>(Direction(
                Hash(static_cast<uint32_t>(x % cells), static_cast<uint32_t>(y % cells),
                     seed, static_cast<uint32_t>(cells)))));
    }
}

double TileNoise::At(double u, double v) const {
    u -= std::floor(u);
    v -= std::floor(v);
    const auto across = static_cast<std::size_t>(cells_) + 1;
    return Gradient(u * cells_, v * cells_, [this, across](int x, int y) {
        // Rounding may lift u * cells to the whole number above.
        const std::size_t column = static_cast<std::size_t>(x) % across;
        const std::size_t row = static_cast<std::size_t>(y) % across;
        return static_cast<std::size_t>(directions_[row * across + column]);
    });
}

} // namespace vardenix::sample
