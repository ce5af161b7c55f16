// The map repainted on the real surface, 1280 by 1280 pixels unless a name says more:
// warm and cold, plain, by layer and with every layer; the view of a window that fills a
// screen; and the overview of a whole theater. The bare work beside the first ones is
// decoding each distinct tile once, beside the overview the copying of posts and pixels.
#include "BenchMap.h"
#include "mapview/MapPatch.h"
#include "mapview/windows/QtDrawingSurface.h"
#include "pictures/ImageFiles.h"

#include <QGuiApplication>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vardenix {
namespace {

using bench::Far;
using bench::MapWidth;
using bench::Middle;
using bench::Near;
using bench::Tiles;

class SilentScreen : public MapScreen {
public:
    void ClearPicShow() override {}
    void CopyToPicShow() override {}
    void LookForEsc() override {}
    void MakeViewPort(const MapView&) override {}
};

struct BenchMap {
    explicit BenchMap(int zoomPosts, int32_t mapWidth = MapWidth)
        : World(mapWidth, Tiles().Folder()) {
        bench::FillWorld(World, zoomPosts);
        Surface.Resize(World.View.PictureWidth(), World.View.PictureHeight());
    }

    // As much as a window has room for.
    void FillRoom(int32_t width, int32_t height) {
        World.View.RoomWidth = width;
        World.View.RoomHeight = height;
        Surface.Resize(width, height);
    }

    // Another width of cells.
    void Widen(int32_t tilePixels) {
        World.View.TilePixels = tilePixels;
        Surface.Resize(World.View.PictureWidth(), World.View.PictureHeight());
    }
    void Paint() {
        World.Renderer().RefreshPicArray(World.View, Surface, Screen, {});
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

void WarmWide(benchmark::State& state, int32_t tilePixels) {
    BenchMap map(static_cast<int>(state.range(0)));
    EveryLayer(map.World.View);
    map.Widen(tilePixels);
    map.Paint();
    for (auto _ : state)
        map.Paint();
}

// The map of a window that fills a large screen.
constexpr int32_t RoomWidth = 1900;
constexpr int32_t RoomHeight = 1000;

void WarmRoom(benchmark::State& state, const Layers& layers) {
    BenchMap map(static_cast<int>(state.range(0)));
    map.FillRoom(RoomWidth, RoomHeight);
    layers(map.World.View);
    map.Paint();
    for (auto _ : state)
        map.Paint();
}

// A theater of 1024 posts a side, all of it in view, a pixel for each post.
constexpr int32_t WholeWidth = 1024;

void Overview(benchmark::State& state, const Layers& layers) {
    BenchMap map(128, WholeWidth);
    map.FillRoom(WholeWidth, WholeWidth);
    layers(map.World.View);
    map.Paint();
    for (auto _ : state)
        map.Paint();
}

void CopyOfOverview(benchmark::State& state) {
    BenchMap map(128, WholeWidth);
    map.FillRoom(WholeWidth, WholeWidth);
    map.Paint();
    const auto posts = map.World.Terrain.LxArr.Values();
    std::vector<TerrainPost> copiedPosts(posts.size());
    QImage copied(WholeWidth, WholeWidth, QImage::Format_RGB32);
    for (auto _ : state) {
        std::copy(posts.begin(), posts.end(), copiedPosts.begin());
        std::memcpy(copied.bits(), map.Surface.Image().constBits(),
                    static_cast<size_t>(copied.sizeInBytes()));
        benchmark::ClobberMemory();
    }
}

// Of the widest picture what a window of 1280 by 960 pixels shows, as the window does it.
void SeenOfWidest(benchmark::State& state) {
    BenchMap map(static_cast<int>(state.range(0)));
    const MapView& view = map.World.View;
    EveryLayer(map.World.View);
    map.Widen(512);
    map.Paint();
    QtDrawingSurface small;
    MapRenderer renderer = map.World.Renderer();
    for (auto _ : state) {
        const MapPatch patch = PatchOfPart(view, {0, view.SquareSide() - 960, 1280, 960},
                                           ReachOf(view, renderer.Sources(), small));
        small.Resize(1280, 1280);
        renderer.RepaintPatch(view, small, patch, {});
        map.Surface.Put(small, patch.Clip);
    }
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
void DecodeTiles(benchmark::State& state, int32_t width, int32_t height) {
    BenchMap map(static_cast<int>(state.range(0)));
    map.FillRoom(width, height);
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
    add("Warm2560EveryLayer", [](benchmark::State& state) { WarmWide(state, 256); },
        {Near, Middle});
    add("Warm5120EveryLayer", [](benchmark::State& state) { WarmWide(state, 512); },
        {Near, Middle});
    add("Seen5120EveryLayer", SeenOfWidest, {Near, Middle});
    add("ScrollPlain", scroll(plain), {Near, Middle, Far});
    add("ScrollEveryLayer", scroll(EveryLayer), {Near, Middle, Far});

    // One layer over the plain map.
    add("Heights", paint([](MapView& view) { view.ShowHeights = true; }),
        {Near, Middle, Far});
    add("Brightness", paint([](MapView& view) { view.Brightness = 10; }), {Middle});
    add("MapColors", paint([](MapView& view) { view.ApplyMAP = true; }), {Near, Far});
    add("Night", paint([](MapView& view) { view.ApplyNight = true; }), {Near, Far});
    add("Grid", paint([](MapView& view) { view.ShowGrid = true; }), {Near, Far});
    add("Relief", paint([](MapView& view) { view.ShowRelief = true; }),
        {Near, Middle, Far});
    add("Contours", paint([](MapView& view) { view.ShowContours = true; }),
        {Near, Middle, Far});
    add("AreasAndPaths", paint([](MapView& view) { view.ShowAreasPaths = true; }),
        {Near, Middle, Far});
    add("FilledAreas", paint([](MapView& view) {
            view.ShowAreasPaths = view.AreasFilled = true;
            view.ShowPaths = false;
        }),
        {Near, Middle, Far});

    add("ColdFirstPaint", ColdFirstPaint, {Near, Middle, Far});
    const auto decode = [](int32_t width, int32_t height) {
        return [=](benchmark::State& state) { DecodeTiles(state, width, height); };
    };
    add("DecodeTiles", decode(1280, 1280), {Near, Middle, Far});

    const auto room = [](const Layers& layers) {
        return [layers](benchmark::State& state) { WarmRoom(state, layers); };
    };
    add("RoomPlain", room(plain), {Near, Middle});
    add("RoomEveryLayer", room(EveryLayer), {Near, Middle});
    add("RoomDecodeTiles", decode(RoomWidth, RoomHeight), {Near, Middle});

    const auto overview = [](const Layers& layers) {
        return [layers](benchmark::State& state) { Overview(state, layers); };
    };
    add("Overview", overview(plain), {1});
    add("OverviewHeights", overview([](MapView& view) { view.ShowHeights = true; }), {1});
    add("OverviewCopied", CopyOfOverview, {1});
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
