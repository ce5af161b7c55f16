#include "make_sample_theater/Palette.h"

#include <algorithm>
#include <cmath>

namespace vardenix::sample {
namespace {

float Apart(Colour a, Colour b) {
    const float r = a.R - b.R;
    const float g = a.G - b.G;
    const float blue = a.B - b.B;
    return r * r + g * g + blue * blue;
}

uint8_t Byte(float part) {
    return static_cast<uint8_t>(std::lround(std::clamp(part, 0.0F, 255.0F)));
}

} // namespace

Palette MakePalette(const std::vector<Colour>& means) {
    std::vector<Colour> colours = means;
    while (colours.size() > 256) {
        std::size_t keep = 1;
        std::size_t drop = 2;
        float nearest = 1e9F;
        for (std::size_t a = 1; a < colours.size(); ++a) {
            for (std::size_t b = a + 1; b < colours.size(); ++b) {
                const float apart = Apart(colours[a], colours[b]);
                if (apart < nearest) {
                    nearest = apart;
                    keep = a;
                    drop = b;
                }
            }
        }
        colours[keep] = Mix(colours[keep], colours[drop], 0.5);
        colours.erase(colours.begin() + static_cast<std::ptrdiff_t>(drop));
    }
    Palette palette;
    for (std::size_t i = 0; i < colours.size(); ++i)
        palette[i] = {Byte(colours[i].R), Byte(colours[i].G), Byte(colours[i].B)};
    return palette;
}

uint8_t NearestEntry(const Palette& palette, Colour colour) {
    std::size_t best = 0;
    float nearest = 1e9F;
    for (std::size_t i = 0; i < palette.size(); ++i) {
        const Colour entry = {static_cast<float>(palette[i].Red),
                              static_cast<float>(palette[i].Green),
                              static_cast<float>(palette[i].Blue)};
        const float apart = Apart(entry, colour);
        if (apart < nearest) {
            nearest = apart;
            best = i;
        }
    }
    return static_cast<uint8_t>(best);
}

} // namespace vardenix::sample
