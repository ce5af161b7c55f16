// Tile pictures: one decoded, and a view of 1280 by 1280 pixels painted from them. The
// bare work beside them is decoding alone and copying the same pixels.
#include "BenchTiles.h"
#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "pictures/TilePictures.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace vardenix {
namespace {

constexpr int ViewSide = 1280;
constexpr int TileCount = 64; // of the folder, as a view may show

void PaintView(TilePictures& pictures, const std::vector<TilePictureId>& ids,
               const RasterView& view, int side) {
    pictures.BeginRepaint();
    const double cell = double(ViewSide) / side;
    const auto edge = [&](int i) { return static_cast<int>(std::lround(cell * i)); };
    for (int row = 0; row < side; ++row)
        for (int column = 0; column < side; ++column) {
            const int left = edge(column);
            const int top = edge(row);
            pictures.Paint(view, ids[static_cast<size_t>(row * 7 + column) % ids.size()],
                           {left, top, edge(column + 1) - left, edge(row + 1) - top});
        }
}

std::vector<TilePictureId> Ids(TilePictures& pictures, TileUse use) {
    std::vector<TilePictureId> ids;
    ids.reserve(TileCount);
    for (int i = 0; i < TileCount; ++i)
        ids.push_back(pictures.IdOf(bench::Tiles().Path(i), PictureFormat::Dds, use));
    return ids;
}

void DecodeOneTile(benchmark::State& state) {
    const std::string path = bench::Tiles().Path(0);
    for (auto _ : state)
        benchmark::DoNotOptimize(ImageLoad(PictureFormat::Dds, path).Handle());
}
BENCHMARK(DecodeOneTile)->Unit(benchmark::kMillisecond);

void DecodeAllTiles(benchmark::State& state) {
    for (auto _ : state)
        for (int i = 0; i < TileCount; ++i)
            benchmark::DoNotOptimize(
                ImageLoad(PictureFormat::Dds, bench::Tiles().Path(i)).Handle());
}
BENCHMARK(DecodeAllTiles)->Unit(benchmark::kMillisecond);

// The same with the pictures held till all are there, as whoever paints them again must.
void DecodeAndHoldAllTiles(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<Bitmap> held;
        held.reserve(TileCount);
        for (int i = 0; i < TileCount; ++i)
            held.push_back(ImageLoad(PictureFormat::Dds, bench::Tiles().Path(i)));
        benchmark::DoNotOptimize(held.data());
    }
}
BENCHMARK(DecodeAndHoldAllTiles)->Unit(benchmark::kMillisecond);

// Posts along a side of the view: 100, 2,500 and 40,000 posts.
void PaintCold(benchmark::State& state) {
    Raster raster(ViewSide, ViewSide);
    for (auto _ : state) {
        TilePictures pictures;
        PaintView(pictures, Ids(pictures, TileUse::Day), raster.View(),
                  static_cast<int>(state.range(0)));
    }
}
BENCHMARK(PaintCold)->Arg(10)->Arg(50)->Arg(200)->Unit(benchmark::kMillisecond);

void PaintWarm(benchmark::State& state, TileUse use) {
    Raster raster(ViewSide, ViewSide);
    TilePictures pictures;
    const auto ids = Ids(pictures, use);
    const int side = static_cast<int>(state.range(0));
    PaintView(pictures, ids, raster.View(), side);
    for (auto _ : state)
        PaintView(pictures, ids, raster.View(), side);
    state.counters["decodes"] = static_cast<double>(pictures.Decodes());
}
BENCHMARK_CAPTURE(PaintWarm, Day, TileUse::Day)
    ->Arg(10)
    ->Arg(50)
    ->Arg(200)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(PaintWarm, Night, TileUse::Night)
    ->Arg(10)
    ->Arg(50)
    ->Arg(200)
    ->Unit(benchmark::kMillisecond);

void CopyTheView(benchmark::State& state) {
    Raster from(ViewSide, ViewSide);
    Raster to(ViewSide, ViewSide);
    for (auto _ : state) {
        std::memcpy(to.Row(0), from.Row(0), from.Bytes());
        benchmark::DoNotOptimize(to.Row(0));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(CopyTheView)->Unit(benchmark::kMillisecond);

void BrightenTheView(benchmark::State& state) {
    Raster raster(ViewSide, ViewSide, 0xFF404040);
    for (auto _ : state)
        AdjustPictureBrightness(raster.View(), 10.0);
}
BENCHMARK(BrightenTheView)->Unit(benchmark::kMillisecond);

void MaskOneNightTile(benchmark::State& state) {
    const Bitmap tile = ImageLoad(PictureFormat::Dds, bench::Tiles().Path(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(MaskNightPicture(tile).Handle());
}
BENCHMARK(MaskOneNightTile)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vardenix
