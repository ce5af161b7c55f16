// Selecting, copying and pasting a whole theater, against the copying of its bytes.
#include "workspace/PostClip.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace vardenix {
namespace {

constexpr int32_t Width = 2048;

// Every post differs from its neighbours.
void Fill(Terrain& terrain, int32_t seed) {
    terrain.MapWidth = Width;
    terrain.LxArr = PostArray(int64_t{Width} * Width);
    int32_t serial = seed;
    for (TerrainPost& post : terrain.LxArr.Values()) {
        ++serial;
        post.TileOffset = serial % 5000;
        post.Elevation = static_cast<int16_t>(serial % 8000);
    }
}

// Into memory that is taken for it, as every copy is.
void BareCopy(benchmark::State& state) {
    Terrain terrain;
    Fill(terrain, 0);
    const auto posts = terrain.LxArr.Values();
    for (auto _ : state) {
        std::vector<TerrainPost> copy(posts.begin(), posts.end());
        benchmark::DoNotOptimize(copy.data());
    }
}
BENCHMARK(BareCopy)->Unit(benchmark::kMillisecond);

void SelectAndCopy(benchmark::State& state) {
    Terrain terrain;
    Fill(terrain, 0);
    for (auto _ : state) {
        const Selection all = SelectedBox({0, 0, Width - 1, Width - 1}, Width);
        PostClip clip = ClipOf(terrain, all);
        benchmark::DoNotOptimize(clip.Posts.data());
    }
}
BENCHMARK(SelectAndCopy)->Unit(benchmark::kMillisecond);

// All posts get other values, with the way back.
void Paste(benchmark::State& state) {
    Terrain other;
    Fill(other, 17);
    const PostClip clip = ClipOf(other, SelectedBox({0, 0, Width - 1, Width - 1}, Width));
    Terrain terrain;
    Fill(terrain, 0);
    for (auto _ : state) {
        const PostDelta delta = StampedPosts(terrain, clip, {0, 0}, {});
        WriteNew(terrain.LxArr, delta);
        state.PauseTiming();
        WriteOld(terrain.LxArr, delta);
        state.ResumeTiming();
    }
}
BENCHMARK(Paste)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vardenix
