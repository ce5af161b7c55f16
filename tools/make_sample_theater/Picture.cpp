#include "make_sample_theater/Picture.h"

#include <algorithm>
#include <cmath>

namespace vardenix::sample {

Picture Picture::Half() const {
    Picture half(side_ / 2);
    for (int y = 0; y < half.Side(); ++y) {
        for (int x = 0; x < half.Side(); ++x)
            half.At(x, y) =
                Mix(Mix(At(2 * x, 2 * y), At(2 * x + 1, 2 * y), 0.5),
                    Mix(At(2 * x, 2 * y + 1), At(2 * x + 1, 2 * y + 1), 0.5), 0.5);
    }
    return half;
}

Colour Picture::Mean() const {
    double r = 0;
    double g = 0;
    double b = 0;
    for (const Colour& c : pixels_) {
        r += static_cast<double>(c.R);
        g += static_cast<double>(c.G);
        b += static_cast<double>(c.B);
    }
    const auto count = static_cast<double>(pixels_.size());
    return {static_cast<float>(r / count), static_cast<float>(g / count),
            static_cast<float>(b / count)};
}

std::vector<uint8_t> Picture::Rgba() const {
    const auto byte = [](float part) {
        return static_cast<uint8_t>(std::lround(std::clamp(part, 0.0F, 255.0F)));
    };
    std::vector<uint8_t> bytes;
    bytes.reserve(pixels_.size() * 4);
    for (const Colour& c : pixels_) {
        bytes.push_back(byte(c.R));
        bytes.push_back(byte(c.G));
        bytes.push_back(byte(c.B));
        bytes.push_back(255);
    }
    return bytes;
}

} // namespace vardenix::sample
