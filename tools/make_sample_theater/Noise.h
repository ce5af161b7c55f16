#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace vardenix::sample {

// A well mixed number of its arguments; the only source of chance in the whole tool, so
// that the same seed gives the same bytes on every machine.
uint32_t Hash(uint32_t a, uint32_t b = 0, uint32_t c = 0, uint32_t d = 0);

// The same as a number from 0 up to, not including, 1.
double Chance(uint32_t a, uint32_t b = 0, uint32_t c = 0, uint32_t d = 0);

// Smooth noise of the plane, about -1 to 1, with features of size 1.
double PlaneNoise(double x, double y, uint32_t seed);

// Octaves of PlaneNoise, each half as large and half as strong; about -1 to 1.
double Fractal(double x, double y, int octaves, uint32_t seed);

// Sharp crests: 0 in the valleys, near 1 along ridges.
double Ridges(double x, double y, int octaves, uint32_t seed);

// Smooth noise of a tile that repeats after u = 1 and v = 1, with `cells` features a
// side. The slopes at its grid are drawn once, since a picture asks for every pixel.
class TileNoise {
public:
    TileNoise(int cells, uint32_t seed);
    double At(double u, double v) const;

private:
    int cells_;
    std::vector<uint8_t>
        directions_; // (cells + 1) squared, the last row and column repeated
};

inline double Mix(double a, double b, double share) { return a + (b - a) * share; }

inline double SmoothStep(double from, double to, double x) {
    const double t = std::clamp((x - from) / (to - from), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

} // namespace vardenix::sample
