#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vardenix::sample {

// Parts from 0 to 255, kept as fractions while a picture is mixed.
struct Colour {
    float R = 0;
    float G = 0;
    float B = 0;
};

inline Colour Mix(Colour a, Colour b, double share) {
    const auto s = static_cast<float>(share);
    return {a.R + (b.R - a.R) * s, a.G + (b.G - a.G) * s, a.B + (b.B - a.B) * s};
}
inline Colour Scale(Colour c, double factor) {
    const auto f = static_cast<float>(factor);
    return {c.R * f, c.G * f, c.B * f};
}

// A square picture, rows from the top down.
class Picture {
public:
    explicit Picture(int side)
        : side_(side),
          pixels_(static_cast<std::size_t>(side) * static_cast<std::size_t>(side)) {}

    int Side() const { return side_; }
    Colour& At(int x, int y) { return pixels_[Index(x, y)]; }
    const Colour& At(int x, int y) const { return pixels_[Index(x, y)]; }
    // Each pixel the mean of 2 by 2.
    Picture Half() const;
    Colour Mean() const;
    // 4 bytes a pixel, alpha 255.
    std::vector<uint8_t> Rgba() const;

private:
    std::size_t Index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(side_) +
               static_cast<std::size_t>(x);
    }
    int side_;
    std::vector<Colour> pixels_;
};

} // namespace vardenix::sample
