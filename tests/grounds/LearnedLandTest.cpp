#include "grounds/SampleLand.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <map>

namespace vardenix::tests {
namespace {

TEST(LearnedLand, Figures) {
    auto t0 = std::chrono::steady_clock::now();
    const SampleLand land(256, 1, 64);
    auto t1 = std::chrono::steady_clock::now();
    const LearnedLand learned(land.Tiles, land.Map);
    auto t2 = std::chrono::steady_clock::now();
    std::printf("make %.2f learn %.3f\n", std::chrono::duration<double>(t1 - t0).count(),
                std::chrono::duration<double>(t2 - t1).count());
    std::printf(
        "grounds %d explained %.4f fitting %.4f prior %.4f %.4f usual %.1f longest "
        "%d refusal '%s'\n",
        learned.GroundCount(), learned.ExplainedCorners(), learned.FittingSeams(),
        learned.Fits(Meeting::Eastward).Prior(), learned.Fits(Meeting::Northward).Prior(),
        learned.Fits(Meeting::Eastward).UsualDifference(), learned.Steps().Longest(),
        learned.Refusal().c_str());
    std::map<std::pair<int, int>, int> joint;
    for (size_t t = 0; t < land.Tiles.Count(); ++t)
        for (size_t c = 0; c < 4; ++c)
            ++joint[{learned.GroundsOf(int(t))[c], int(land.Truth(int(t), c))}];
    for (auto& [k, n] : joint)
        std::printf("ground %d truth %d: %d\n", k.first, k.second, n);
    for (auto m : {Meeting::Eastward, Meeting::Northward}) {
        int64_t right = 0, falseFit = 0, missed = 0, trueFit = 0;
        for (size_t a = 0; a < land.Tiles.Count(); ++a)
            for (size_t b = 0; b < land.Tiles.Count(); ++b) {
                bool f = learned.Fits(m).Fit(a, b), t = land.Fit(m, int(a), int(b));
                trueFit += t;
                right += f && t;
                falseFit += f && !t;
                missed += !f && t;
            }
        std::printf("true %ld right %ld false %ld missed %ld\n", trueFit, right, falseFit,
                    missed);
    }
}

} // namespace
} // namespace vardenix::tests
