// The map repainted, 1280 by 1280 pixels: warm and cold, plain and with every layer. The
// bare work beside the cold one is decoding each distinct tile once.
#include "services/Dxt1Writer.h"
#include "services/ImageFiles.h"
#include "support/MapWorld.h"
#include "support/MemorySurface.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace vardenix {
namespace {

constexpr int TileSide = 512;
constexpr int MapWidth = 256;
constexpr int CellsOfView = 10;

std::vector<uint8_t> TileFile(int seed) {
    std::vector<uint8_t> rgba;
    for (int y = 0; y < TileSide; ++y)
        for (int x = 0; x < TileSide; ++x)
            for (const int part : {x * 3 + seed, y * 5, (x ^ y) * 2, 255})
                rgba.push_back(static_cast<uint8_t>(part));
    return Dxt1File(rgba, TileSide, TileSide, {Dxt1Fit::Range});
}

// A folder of tiles, gone at the end of the run. A few pictures under many names: what a
// name costs is decoding, whatever it shows.
class TileFolder {
public:
    static constexpr int Count = 512;

    TileFolder() {
        folder_ = std::filesystem::temp_directory_path() / "vardenix bench repaint";
        std::filesystem::create_directories(folder_);
        for (int seed = 0; seed < 8; ++seed) {
            const auto bytes = TileFile(seed * 40);
            for (int i = seed; i < Count; i += 8)
                for (const char* suffix : {".dds", "N.dds"})
                    std::ofstream(Path(i, suffix), std::ios::binary)
                        .write(reinterpret_cast<const char*>(bytes.data()),
                               static_cast<std::streamsize>(bytes.size()));
        }
    }
    TileFolder(const TileFolder&) = delete;
    TileFolder& operator=(const TileFolder&) = delete;
    ~TileFolder() {
        std::error_code error;
        std::filesystem::remove_all(folder_, error);
    }
    std::string Path(int i, const char* suffix) const {
        return Folder() + "H" + std::to_string(i) + suffix;
    }
    std::string Folder() const { return folder_.string() + "/"; }

private:
    std::filesystem::path folder_;
};

const TileFolder& Tiles() {
    static const TileFolder folder;
    return folder;
}

class SilentScreen : public MapScreen {
public:
    void ClearPicShow() override {}
    void CopyToPicShow() override {}
    void LookForEsc() override {}
    void MakeViewPort(const MapView&) override {}
};

// A theater whose neighbours differ, with elevations and a path on every tile.
struct BenchMap {
    explicit BenchMap(int zoomPosts) : World(MapWidth, Tiles().Folder()) {
        World.Catalogue.Bin.Sets.resize(TileFolder::Count / 16 + 1);
        for (size_t set = 1; set < World.Catalogue.Bin.Sets.size(); ++set)
            World.Catalogue.Bin.Sets[set].Tiles.resize(17);
        World.Catalogue.Lookup.resize(TileFolder::Count);
        for (int i = 0; i < TileFolder::Count; ++i) {
            TileInfo& entry = World.Catalogue.Lookup[static_cast<size_t>(i)];
            entry.DayFile = "H" + std::to_string(i) + ".dds";
            entry.NightFile = "H" + std::to_string(i) + "N.dds";
            entry.HasImage = 1;
            World.AddPath(i, {10, 100, 0, 1640, 3280, 1640});
            World.AddArea(i, {7, 400, 1640, 1640});
        }
        uint32_t random = 12345;
        for (TerrainPost& post : World.Terrain.LxArr.Values()) {
            random = random * 1664525 + 1013904223;
            post.TileOffset = static_cast<int32_t>((random >> 8) % TileFolder::Count);
            post.Elevation = static_cast<int16_t>((random >> 16) % 2500);
            post.Palette = static_cast<uint8_t>(random >> 24);
        }
        World.View.GridCells = CellsOfView;
        World.View.ZoomPosts = static_cast<int16_t>(zoomPosts);
        World.View.TilePixels = 128;
    }

    void EveryLayer() {
        MapView& view = World.View;
        view.ApplyMAP = view.ApplyNight = view.ShowHeights = view.ShowGrid = true;
        view.ShowSegments = view.ShowExport = view.ShowAreasPaths = true;
        view.Brightness = 10;
    }
    void Paint() {
        World.Renderer().RefreshPicArray(World.View, Surface, Screen, nullptr);
        World.PB3.Forget();
    }

    tests::MapWorld World;
    tests::MemorySurface Surface{1280};
    SilentScreen Screen;
};

// Posts along a side of a cell: 100, 2,500 and 40,000 posts.
void WarmPlain(benchmark::State& state) {
    BenchMap map(static_cast<int>(state.range(0)));
    map.Paint();
    for (auto _ : state)
        map.Paint();
}
BENCHMARK(WarmPlain)->Arg(1)->Arg(5)->Arg(20)->Unit(benchmark::kMillisecond);

void WarmEveryLayer(benchmark::State& state) {
    BenchMap map(static_cast<int>(state.range(0)));
    map.EveryLayer();
    map.Paint();
    for (auto _ : state)
        map.Paint();
}
BENCHMARK(WarmEveryLayer)->Arg(1)->Arg(5)->Arg(20)->Unit(benchmark::kMillisecond);

// One layer over the plain map of 40,000 posts.
void WarmLayer(benchmark::State& state, bool MapView::*layer) {
    BenchMap map(20);
    map.World.View.*layer = true;
    map.Paint();
    for (auto _ : state)
        map.Paint();
}
BENCHMARK_CAPTURE(WarmLayer, MapColours, &MapView::ApplyMAP)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WarmLayer, Night, &MapView::ApplyNight)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WarmLayer, Heights, &MapView::ShowHeights)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WarmLayer, Grid, &MapView::ShowGrid)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WarmLayer, AreasAndPaths, &MapView::ShowAreasPaths)
    ->Unit(benchmark::kMillisecond);

void ColdFirstPaint(benchmark::State& state) {
    uint64_t decodes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto map = std::make_unique<BenchMap>(static_cast<int>(state.range(0)));
        state.ResumeTiming();
        map->Paint();
        state.PauseTiming();
        decodes = map->World.Pictures.Decodes();
        map.reset();
        state.ResumeTiming();
    }
    state.counters["decodes"] = static_cast<double>(decodes);
}
BENCHMARK(ColdFirstPaint)->Arg(1)->Arg(5)->Arg(20)->Unit(benchmark::kMillisecond);

// The bare work of it: as many distinct tiles decoded, and nothing painted.
void DecodeTiles(benchmark::State& state) {
    for (auto _ : state)
        for (int i = 0; i < state.range(0); ++i)
            benchmark::DoNotOptimize(
                ImageLoad(PictureFormat::Dds, Tiles().Path(i, ".dds")).Handle());
}
BENCHMARK(DecodeTiles)->Arg(91)->Arg(TileFolder::Count)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vardenix
