#include "make_sample_world/Cover.h"

#include <array>

namespace vardenix::sample {
namespace {

struct CoverClass {
    Ground Shown;
    int32_t Number;
    const char* Name;
};

constexpr std::array Classes{CoverClass{Ground::ThickForest, 10, "closed forest"},
                             CoverClass{Ground::ThinForest, 15, "open forest"},
                             CoverClass{Ground::Brush, 20, "brush"},
                             CoverClass{Ground::Plains, 30, "grass"},
                             CoverClass{Ground::Farm, 40, "fields"},
                             CoverClass{Ground::Town, 50, "built over"},
                             CoverClass{Ground::Rock, 60, "bare rock"},
                             CoverClass{Ground::Snow, 70, "snow"},
                             CoverClass{Ground::Deep, 80, "open water"},
                             CoverClass{Ground::Shallow, 85, "shallow water"},
                             CoverClass{Ground::Swamp, 90, "swamp"}};

// A map from far above does not see from where the light comes.
Ground Seen(Ground ground) { return ground == Ground::RockShade ? Ground::Rock : ground; }

} // namespace

int32_t ClassOf(Ground ground) {
    for (const CoverClass& known : Classes)
        if (known.Shown == Seen(ground))
            return known.Number;
    return 0;
}

std::string CoverTable(const Catalogue& catalogue) {
    std::string text = "# Classes of landcover.tif, and tiles of the sample theater that "
                       "show their ground.\n";
    for (const auto& [ground, number, name] : Classes) {
        const TileLook look = LookOfCorners({ground, ground, ground, ground});
        text += std::to_string(number) + " ground " +
                std::to_string(catalogue.NumbersOf(look).front()) + "  # " + name + "\n";
    }
    return text;
}

} // namespace vardenix::sample
