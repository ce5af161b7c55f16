// Search, derived files, features on the map and the list of hits, each beside its bare
// work.
#include "BenchMap.h"
#include "BenchWindows.h"
#include "features/FeatureDrawing.h"
#include "files/StagedFile.h"
#include "mapview/windows/QtDrawingSurface.h"
#include "search/DerivedFiles.h"
#include "search/TileSearch.h"
#include "search/windows/frmVXSearchResults.h"
#include "support/RecordingCommands.h"

#include <QAbstractItemView>

#include <filesystem>
#include <random>

namespace vardenix {
namespace {

const Terrain& TerrainOf(int32_t width) {
    static std::map<int32_t, Terrain> made;
    Terrain& terrain = made[width];
    if (terrain.MapWidth == 0) {
        terrain.MapWidth = width;
        terrain.LxArr = PostArray(int64_t{width} * width);
        std::mt19937 random(1);
        for (TerrainPost& post : terrain.LxArr.Values()) {
            post.TileOffset = static_cast<int32_t>(random() % 2000);
            post.Elevation = static_cast<int16_t>(random() % 9000);
            post.Palette = static_cast<uint8_t>(random());
        }
    }
    return terrain;
}

int32_t WidthOf(const benchmark::State& state) {
    return static_cast<int32_t>(state.range(0));
}

// One pass over the posts.
void Pass(benchmark::State& state) {
    const auto posts = TerrainOf(WidthOf(state)).LxArr.Values();
    for (auto _ : state) {
        int64_t sum = 0;
        for (const TerrainPost& post : posts)
            sum += post.TileOffset;
        benchmark::DoNotOptimize(sum);
    }
}

void Search(benchmark::State& state, const SearchPattern& pattern) {
    const Terrain& terrain = TerrainOf(WidthOf(state));
    NoProgress progress;
    SearchResults results;
    for (auto _ : state)
        SearchTiles(terrain, pattern, progress, results);
    state.counters["ns_a_post"] = benchmark::Counter(
        static_cast<double>(terrain.LxArr.UpperBound()) / 1e9,
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void SearchOneTile(benchmark::State& state) {
    SearchPattern pattern;
    pattern[0].CellTile = std::to_string(77);
    Search(state, pattern);
}

// Every field of every cell is asked for, and every post but a few goes through all.
void SearchNineCells(benchmark::State& state) {
    SearchPattern pattern;
    for (SearchCell& cell : pattern)
        cell = {"!5000", "<9000", ">-1", "<200", "0"};
    Search(state, pattern);
}

std::string OutFile() {
    return (std::filesystem::temp_directory_path() / "vardenix bench out").string();
}

// One pass over the posts, and as many bytes written and flushed as the file has.
void PassAndWrite(benchmark::State& state, int64_t bytes) {
    const auto posts = TerrainOf(WidthOf(state)).LxArr.Values();
    const std::vector<std::byte> content(static_cast<size_t>(bytes));
    for (auto _ : state) {
        int64_t sum = 0;
        for (const TerrainPost& post : posts)
            sum += post.TileOffset;
        benchmark::DoNotOptimize(sum);
        StagedFile file(OutFile());
        file.Write(content);
        file.Commit();
    }
}
void BareMEA(benchmark::State& state) {
    PassAndWrite(state, state.range(0) * state.range(0) / 32);
}
void BareTC(benchmark::State& state) { PassAndWrite(state, 2000 * 24); }
void BareTM(benchmark::State& state) {
    PassAndWrite(state, state.range(0) * state.range(0) * 2);
}
void MakeMEA(benchmark::State& state) {
    NoProgress progress;
    for (auto _ : state)
        WriteMEA(TerrainOf(WidthOf(state)), OutFile(), progress);
}
void MakeTC(benchmark::State& state) {
    NoProgress progress;
    const TileLookup lookup(2000);
    for (auto _ : state)
        WriteTC(TerrainOf(WidthOf(state)), lookup, OutFile(), progress);
}
void MakeTM(benchmark::State& state) {
    NoProgress progress;
    for (auto _ : state)
        WriteTM(TerrainOf(WidthOf(state)), OutFile(), progress);
}

// 10,000 features of 20 points over a theater of 1024 posts, in a view of 50 posts a
// side. Argument 0: anywhere; 1: all of them outside the view; 2: a quarter in view.
void DrawFeatures(benchmark::State& state) {
    bench::NeedApplication();
    MapView view;
    view.GridCells = 10;
    view.ZoomPosts = 5;
    view.TilePixels = 128;
    view.MapLeftX = view.MapBottomY = 500;
    FeatureSet set;
    std::mt19937 random(2);
    const auto any = [&](double from, double to) {
        return std::uniform_real_distribution(from, to)(random);
    };
    for (int i = 0; i < 10000; ++i) {
        Feature feature;
        feature.PointCount = 20;
        const bool inView = state.range(0) == 2 && i % 4 == 0;
        const double east = state.range(0) == 0 ? 1024 : 450;
        double x = inView ? any(500, 550) : any(0, east);
        double y = inView ? any(500, 550) : any(0, 1024);
        for (int k = 0; k < 20; ++k)
            feature.Points.push_back({x += any(-1, 1), y += any(-1, 1)});
        (i % 2 == 0 ? set.Rivers : set.Roads).push_back(std::move(feature));
    }
    Configuration settings;
    const FeatureSwitches switches;
    DrawnFeatures layer({set, switches, settings});
    QtDrawingSurface surface;
    surface.Resize(view.PictureWidth(), view.PictureHeight());
    for (auto _ : state)
        for (const FeatureKind kind : {FeatureKind::River, FeatureKind::Road})
            layer.FeatureDraw(surface, view, kind, true);
}

// From the end of a search with a million hits to the painted list.
void OpenHitList(benchmark::State& state) {
    bench::NeedApplication();
    ProgramState program;
    program.Terrain.MapWidth = 1024;
    program.Terrain.LxArr = PostArray(1024 * 1024);
    tests::RecordingCommands commands;
    frmVXSearchResults window(program, commands);
    window.show();
    QApplication::processEvents();
    for (auto _ : state) {
        window.PopulateResList([&] {
            program.Search.Results.resize(1024 * 1024 + 1);
            for (size_t i = 1; i < program.Search.Results.size(); ++i)
                program.Search.Results[i] = static_cast<int32_t>(i);
        });
        window.findChild<QAbstractItemView*>("ListRes")->viewport()->repaint();
    }
}

void SortHitList(benchmark::State& state) {
    const Terrain& terrain = TerrainOf(1024);
    SearchResults results(1024 * 1024 + 1);
    for (size_t i = 1; i < results.size(); ++i)
        results[i] = static_cast<int32_t>(i);
    HitModel model(terrain, results);
    bool rising = false;
    for (auto _ : state)
        model.sort(HitModel::Elevation,
                   (rising = !rising) ? Qt::AscendingOrder : Qt::DescendingOrder);
}

BENCHMARK(Pass)->Arg(1024)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK(SearchOneTile)->Arg(1024)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK(SearchNineCells)->Arg(1024)->Unit(benchmark::kMillisecond);
BENCHMARK(BareMEA)->Arg(1024)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK(MakeMEA)->Arg(1024)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK(BareTC)->Arg(1024)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK(MakeTC)->Arg(1024)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK(BareTM)->Arg(1024)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK(MakeTM)->Arg(1024)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK(DrawFeatures)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenHitList)->Unit(benchmark::kMillisecond);
BENCHMARK(SortHitList)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vardenix
