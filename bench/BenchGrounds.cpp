// What fits with what: how well it is learned from the sample and painted, counted by the
// truth of the sample's maker, and what that takes.
#include "grounds/BrushFigures.h"
#include "grounds/TerrainBrush.h"

#include <benchmark/benchmark.h>

#include <cstdio>

namespace vardenix {
namespace {

constexpr int PictureSide = 128;

void Tell(const char* what, const tests::BrushFigures& figures) {
    std::printf("%s: seams that fit %.2f %%, windows without a bad one %.1f %%, ground "
                "right %.1f %%, posts changed outside %d\n",
                what, 100 * figures.FittingSeams(), 100 * figures.Clean(),
                100 * figures.RightGround(), figures.ChangedOutside);
}

void TellFigures() {
    const tests::SampleLand land(256, 1, PictureSide);
    const LearnedLand learned(land.Tiles, land.Map);
    std::printf("corners right: %.2f %%\n", 100 * tests::RightCorners(land, learned));
    Tell("ring hidden", tests::HiddenWindows(land, learned, 200, false));
    Tell("middle hidden", tests::HiddenWindows(land, learned, 200, true));
    Tell("painted, edge outside", tests::Paints(land, learned, 66, false));
    Tell("painted, edge inside", tests::Paints(land, learned, 66, true));
    tests::SampleLand spoilt(256, 1, PictureSide,
                             {.Gain = 0.08, .Shift = 3, .Noise = 10});
    const tests::SampleLand clean(256, 1, PictureSide);
    spoilt.SwapPosts(0.03);
    const LearnedLand fromSpoilt(spoilt.Tiles, spoilt.Map);
    std::printf("corners right, pictures spoilt and posts swapped: %.2f %%\n",
                100 * tests::RightCorners(spoilt, fromSpoilt));
    Tell("middle hidden, learned from these",
         tests::HiddenWindows(clean, fromSpoilt, 200, true));
}

// As many tiles as are asked for: those of the sample, and their likes, which take turns
// on the map.
struct LargeLand {
    explicit LargeLand(int64_t count) : Sample(256, 1, 64) {
        const size_t own = Sample.Tiles.Count();
        for (size_t i = own; i < static_cast<size_t>(count); ++i) {
            Sample.Tiles.Numbers.push_back(10000 + static_cast<int32_t>(i));
            Sample.Tiles.Sides.push_back(Sample.Tiles.Sides[i % own]);
            Sample.Tiles.Ways.push_back(Sample.Tiles.Ways[i % own]);
        }
        const size_t all = Sample.Tiles.Count();
        size_t turn = 0;
        for (int32_t& tile : Sample.Map.Tiles) {
            const size_t likes =
                (all - static_cast<size_t>(tile) + own - 1) / own; // with itself
            tile += static_cast<int32_t>(own * (turn++ % likes));
        }
    }
    tests::SampleLand Sample;
};

const LargeLand& LandOf(int64_t tiles) {
    static const LargeLand small(0);
    static const LargeLand large(2000);
    return tiles < 2000 ? small : large;
}

void LearnTiles(benchmark::State& state) {
    const LargeLand& land = LandOf(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(LearnedLand(land.Sample.Tiles, land.Sample.Map));
}

void PaintLake(benchmark::State& state) {
    const LargeLand& land = LandOf(state.range(0));
    const LearnedLand learned(land.Sample.Tiles, land.Sample.Map);
    const int32_t water = land.Sample.PlainTile(sample::Ground::Shallow);
    LandGrid part{30, 30, {}};
    for (int32_t y = 0; y < 30; ++y)
        for (int32_t x = 0; x < 30; ++x)
            part.Tiles.push_back(land.Sample.Map(90 + x, 120 + y));
    std::vector<uint8_t> marked(part.Tiles.size());
    for (int32_t y = 12; y < 18; ++y)
        for (int32_t x = 12; x < 18; ++x)
            marked[part.At(x, y)] = 1;
    for (auto _ : state) {
        LandGrid posts = part;
        PaintGrid(learned, posts, marked, water, {90, 120}, {});
        benchmark::DoNotOptimize(posts.Tiles.data());
    }
}

BENCHMARK(LearnTiles)->Arg(350)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(PaintLake)->Arg(350)->Arg(2000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vardenix

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    vardenix::TellFigures();
    benchmark::RunSpecifiedBenchmarks();
}
