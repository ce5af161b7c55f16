// The map repainted on the real surface, 1280 by 1280 pixels: warm and cold, plain, by
// layer and with every layer. The bare work beside the cold one is decoding each distinct
// tile once.
#include "BenchTiles.h"
#include "services/ImageFiles.h"
#include "support/MapWorld.h"
#include "workspace/windows/QtDrawingSurface.h"

#include <QGuiApplication>
#include <benchmark/benchmark.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vardenix {
namespace {

using bench::TileFolder;
using bench::Tiles;

constexpr int MapWidth = 256;
constexpr int CellsOfView = 10;
constexpr int CellPixels = 128;
// Posts along a side of a cell for 100, 2,500 and 40,000 posts in the view.
constexpr int Near = 1;
constexpr int Middle = 5;
constexpr int Far = 20;

class SilentScreen : public MapScreen {
public:
    void ClearPicShow() override {}
    void CopyToPicShow() override {}
    void LookForEsc() override {}
    void MakeViewPort(const MapView&) override {}
};

// A theater whose neighbours differ, with elevations, and a road and a wood on every
// tile.
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
            World.AddPath(i, {10, 100, 0, 1640, 3280, 1700});
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
        World.View.TilePixels = CellPixels;
        Surface.Resize(World.View.PictureSide());
    }

    void Paint() {
        World.Renderer().RefreshPicArray(World.View, Surface, Screen, nullptr);
        World.PB3.Forget();
    }

    tests::MapWorld World;
    QtDrawingSurface Surface;
    SilentScreen Screen;
};

using Layers = std::function<void(MapView&)>;

void EveryLayer(MapView& view) {
    view.ApplyMAP = view.ApplyNight = view.ShowHeights = view.ShowGrid = true;
    view.ShowSegments = view.ShowExport = view.ShowAreasPaths = true;
    view.Brightness = 10;
}

void WarmPaint(benchmark::State& state, const Layers& layers) {
    BenchMap map(static_cast<int>(state.range(0)));
    layers(map.World.View);
    map.Paint();
    for (auto _ : state)
        map.Paint();
}

// One notch of the wheel, there and back.
void Scroll(benchmark::State& state, const Layers& layers) {
    BenchMap map(static_cast<int>(state.range(0)));
    MapView& view = map.World.View;
    layers(view);
    map.Paint();
    view.MapBottomY = view.ZoomPosts;
    map.Paint();
    for (auto _ : state) {
        view.MapBottomY = view.ZoomPosts - view.MapBottomY;
        map.Paint();
    }
}

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

// As many distinct tiles decoded as the view of the same zoom shows, nothing painted.
void DecodeTiles(benchmark::State& state) {
    BenchMap map(static_cast<int>(state.range(0)));
    map.Paint();
    const int distinct = static_cast<int>(map.World.Pictures.Decodes());
    for (auto _ : state)
        for (int i = 0; i < distinct; ++i)
            benchmark::DoNotOptimize(
                ImageLoad(PictureFormat::Dds, Tiles().Path(i)).Handle());
    state.counters["decodes"] = distinct;
}

void Register() {
    const auto add = [](const std::string& name, auto run, std::vector<int64_t> zooms) {
        auto* row = benchmark::RegisterBenchmark(name.c_str(), run);
        for (const int64_t zoom : zooms)
            row->Arg(zoom);
        row->Unit(benchmark::kMillisecond);
    };
    const auto paint = [](const Layers& layers) {
        return [layers](benchmark::State& state) { WarmPaint(state, layers); };
    };
    const auto scroll = [](const Layers& layers) {
        return [layers](benchmark::State& state) { Scroll(state, layers); };
    };
    const Layers plain = [](MapView&) {};
    add("WarmPlain", paint(plain), {Near, Middle, Far});
    add("WarmEveryLayer", paint(EveryLayer), {Near, Middle, Far});
    add("ScrollPlain", scroll(plain), {Near, Middle, Far});
    add("ScrollEveryLayer", scroll(EveryLayer), {Near, Middle, Far});

    // One layer over the plain map.
    add("Heights", paint([](MapView& view) { view.ShowHeights = true; }),
        {Near, Middle, Far});
    add("Brightness", paint([](MapView& view) { view.Brightness = 10; }), {Middle});
    add("MapColors", paint([](MapView& view) { view.ApplyMAP = true; }), {Near, Far});
    add("Night", paint([](MapView& view) { view.ApplyNight = true; }), {Near, Far});
    add("Grid", paint([](MapView& view) { view.ShowGrid = true; }), {Near, Far});
    add("AreasAndPaths", paint([](MapView& view) { view.ShowAreasPaths = true; }),
        {Near, Middle, Far});
    add("FilledAreas", paint([](MapView& view) {
            view.ShowAreasPaths = view.AreasFilled = true;
            view.ShowPaths = false;
        }),
        {Near, Middle, Far});

    add("ColdFirstPaint", ColdFirstPaint, {Near, Middle, Far});
    add("DecodeTiles", DecodeTiles, {Near, Middle, Far});
}

} // namespace
} // namespace vardenix

int main(int argc, char** argv) {
    // Texts need the toolkit, but no screen.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    vardenix::Register();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
