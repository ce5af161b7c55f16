#include "workspace/HeightShaping.h"

#include "texts/Numbers.h"

#include <algorithm>
#include <limits>

namespace vardenix {

namespace {

class Ground {
public:
    Ground(const ElevationLayer& layer, const HeightsBefore& before)
        : heights_(layer.L0ElvArr), width_(layer.EMapWidth), before_(before) {}

    int16_t Now(int32_t serial) const { return heights_(serial); }
    bool Changed(int32_t serial) const {
        return !before_.empty() && before_.contains(serial);
    }
    // Of a height and its neighbours, before the stroke.
    int16_t Mean(int32_t serial) const {
        const int32_t x = (serial - 1) % width_;
        const int32_t y = (serial - 1) / width_;
        int32_t sum = 0;
        int32_t count = 0;
        for (int32_t row = std::max(y - 1, 0); row <= std::min(y + 1, width_ - 1); ++row)
            for (int32_t column = std::max(x - 1, 0);
                 column <= std::min(x + 1, width_ - 1); ++column) {
                sum += Before(row * width_ + column + 1);
                ++count;
            }
        return static_cast<int16_t>(RoundHalfEven(static_cast<double>(sum) / count));
    }

private:
    int16_t Before(int32_t serial) const {
        if (before_.empty())
            return heights_(serial);
        const auto found = before_.find(serial);
        return found == before_.end() ? heights_(serial) : found->second;
    }

    const HeightArray& heights_;
    int32_t width_;
    const HeightsBefore& before_;
};

int16_t Within16Bits(int32_t feet) {
    using Limits = std::numeric_limits<int16_t>;
    return static_cast<int16_t>(
        std::clamp(feet, int32_t{Limits::min()}, int32_t{Limits::max()}));
}

int16_t Shaped(const Ground& ground, int32_t serial, HeightTool tool, int16_t feet) {
    const int16_t now = ground.Now(serial);
    switch (tool) {
    case HeightTool::Set:
        return feet;
    case HeightTool::Raise:
        return Within16Bits(now + feet);
    case HeightTool::Lower:
        return Within16Bits(now - feet);
    case HeightTool::Smooth:
        return ground.Mean(serial);
    case HeightTool::None:
        break;
    }
    return now;
}

} // namespace

std::vector<HeightRun> ShapedRuns(const ElevationLayer& layer,
                                  std::span<const RowSpan> spans, HeightTool tool,
                                  int16_t feet, const HeightsBefore& before) {
    const Ground ground(layer, before);
    return RunsOf<int16_t>(
        spans, layer.EMapWidth, [&](int32_t serial) { return ground.Now(serial); },
        [&](int32_t serial) {
            return ground.Changed(serial) ? ground.Now(serial)
                                          : Shaped(ground, serial, tool, feet);
        });
}

} // namespace vardenix
