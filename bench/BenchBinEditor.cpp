// What the BIN editor costs: an edit with its pass over level 2, its window on a large
// catalogue, and the intake of a set of pictures against the bare work on them.
#include "BenchWindows.h"
#include "bineditor/LevelTwoPass.h"
#include "bineditor/TileIntake.h"
#include "bineditor/windows/FrmBINTileEdit.h"
#include "catalogue/TileCheck.h"
#include "pictures/Dxt1Writer.h"
#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "platform/Clock.h"
#include "platform/ForEachInParallel.h"
#include "platform/Platform.h"
#include "platform/Processes.h"
#include "platform/Registry.h"
#include "support/TestFolder.h"

#include <QAbstractItemView>
#include <benchmark/benchmark.h>

#include <filesystem>
#include <random>

namespace vardenix {
namespace {

constexpr int32_t ManySets = 2000;
constexpr int32_t Width = 1024;
constexpr int32_t Side = 512;

// The bytes of a DDS of 512 pixels.
std::string NoisyPicture(unsigned seed) {
    std::mt19937 random(seed);
    std::vector<uint8_t> rgba(size_t{Side} * Side * 4);
    for (uint8_t& value : rgba)
        value = static_cast<uint8_t>(random());
    const auto file = Dxt1File(rgba, Side, Side, {Dxt1Fit::Range});
    return {file.begin(), file.end()};
}

TileSet FullSet(int32_t number) {
    TileSet set;
    set.Terrain = 4;
    for (int slot = 0; slot < TilesPerSet; ++slot) {
        set.Tiles.emplace_back().TileName =
            TileNameField("H" + std::to_string(number * TilesPerSet + slot) + ".PCX");
        ++set.TileCount;
    }
    return set;
}

void Fill(Catalogue& catalogue, Terrain& terrain, const std::string& folder) {
    catalogue.DDSFolder = folder;
    for (int32_t set = 0; set < ManySets; ++set)
        catalogue.Bin.Sets.push_back(FullSet(set));
    catalogue.Bin.NumSets = ManySets;
    catalogue.Bin.NumTiles = ManySets * TilesPerSet;
    NoProgress quiet;
    RebuildTileLookup(catalogue, {}, quiet);
    terrain.MapWidth = Width;
    terrain.LxArr = PostArray(int64_t{Width} * Width);
    std::mt19937 random(1);
    for (TerrainPost& post : terrain.LxArr.Values())
        post.TileOffset = static_cast<int32_t>(random() % (ManySets * TilesPerSet));
    CountTileUse(terrain, catalogue.Lookup);
}

// A set comes in before all others and goes again: two edits, two passes, one count.
void AppendAndDeleteASet(benchmark::State& state) {
    const tests::TestFolder folder;
    Catalogue catalogue;
    Terrain terrain;
    Fill(catalogue, terrain, folder.File(""));
    NoProgress quiet;
    for (auto _ : state) {
        RenumberLevelTwo(terrain, InsertSet(catalogue, 1, FullSet(ManySets), quiet), {},
                         quiet);
        RenumberLevelTwo(terrain, DeleteSet(catalogue, 1), {}, quiet);
    }
}
BENCHMARK(AppendAndDeleteASet)->Unit(benchmark::kMillisecond);

class NoVerbs : public EditorVerbs {
public:
    void OpenWorkspace(uint8_t) override {}
    void L2NeedSave() override {}
    void PostsRenumbered(const TileRenumbering&) override {}
    bool SaveBinAndL2() override { return true; }
    void TilesRenumbered(const TileRenumbering&) override {}
    bool LeaveProgram() override { return false; }
};

class NoRegistry : public Registry {
public:
    std::string ReadText(std::string_view, std::string_view) const override { return {}; }
    void WriteText(std::string_view, std::string_view, std::string_view) override {}
};

void OpenWindowOnManySets(benchmark::State& state) {
    bench::NeedApplication();
    const tests::TestFolder folder;
    ProgramState program;
    Fill(program.Catalogue, program.Terrain, folder.File(""));
    TilePictures pictures;
    bench::NoDialogs dialogs;
    NoRegistry registry;
    const SystemClock clock;
    SystemProcesses processes;
    const Platform platform{dialogs, registry, clock, processes};
    DebugLog log(clock);
    NoVerbs verbs;
    for (auto _ : state) {
        FrmBINTileEdit window({program, pictures, platform, log, verbs});
        window.Open();
        QApplication::processEvents();
    }
}
BENCHMARK(OpenWindowOnManySets)->Unit(benchmark::kMillisecond);

// One set after the other is chosen in the list, each with 16 pictures of 512 pixels
// that were shown before.
void ShowASet(benchmark::State& state) {
    bench::NeedApplication();
    const tests::TestFolder folder;
    const std::string picture = NoisyPicture(1);
    for (int tile = 0; tile < 2 * TilesPerSet; ++tile)
        folder.Write("H" + std::to_string(tile) + ".dds", picture);
    ProgramState program;
    Fill(program.Catalogue, program.Terrain, folder.File(""));
    TilePictures pictures;
    bench::NoDialogs dialogs;
    NoRegistry registry;
    const SystemClock clock;
    SystemProcesses processes;
    const Platform platform{dialogs, registry, clock, processes};
    DebugLog log(clock);
    NoVerbs verbs;
    FrmBINTileEdit window({program, pictures, platform, log, verbs});
    window.Open();
    auto* sets = window.findChild<QAbstractItemView*>("ListView1");
    int row = 0;
    const auto show = [&] {
        row = 1 - row;
        sets->setCurrentIndex(sets->model()->index(row, 0));
        QApplication::processEvents();
    };
    show();
    show();
    for (auto _ : state)
        show();
}
BENCHMARK(ShowASet)->Unit(benchmark::kMillisecond);

// Sixteen noisy pictures with a night picture each.
class Pictures {
public:
    Pictures() {
        for (int i = 10; i < 10 + TilesPerSet; ++i) {
            const std::string bytes = NoisyPicture(static_cast<unsigned>(i));
            const std::string name = "from/" + std::to_string(i);
            Chosen.push_back(folder_.Write(name + ".dds", bytes));
            Night.push_back(folder_.Write(name + "N.dds", bytes));
        }
        std::filesystem::create_directory(folder_.File("dds"));
        std::filesystem::create_directory(folder_.File("Temp"));
        Place = {folder_.File("dds/"), folder_.File("Temp/"), "", 64, 32};
    }
    std::vector<std::string> Chosen;
    std::vector<std::string> Night;
    IntakePlace Place;

private:
    tests::TestFolder folder_;
};

void TakeInSixteenPictures(benchmark::State& state) {
    const Pictures pictures;
    NoProgress quiet;
    for (auto _ : state)
        TakeInPictures(pictures.Chosen, pictures.Place, quiet);
}
BENCHMARK(TakeInSixteenPictures)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

// Each read, scaled to both sizes and these compressed, once, on all cores.
void BareWorkOnSixteenPictures(benchmark::State& state) {
    const Pictures pictures;
    std::vector<std::string> all = pictures.Chosen;
    all.insert(all.end(), pictures.Night.begin(), pictures.Night.end());
    for (auto _ : state)
        ForEachInParallel(all.size(), [&](size_t i) {
            const Bitmap picture = ImageLoadEx(all[i]);
            for (const int32_t side : {64, 32}) {
                const Bitmap scaled =
                    ConvertTo32Bits(ImageRescaleEx(picture, {side, side}));
                std::vector<uint8_t> rgba(size_t(side) * size_t(side) * 4);
                for (int32_t y = 0; y < side; ++y)
                    std::copy_n(scaled.Row(y), size_t(side) * 4,
                                &rgba[size_t(y) * size_t(side) * 4]);
                benchmark::DoNotOptimize(
                    Dxt1File(rgba, side, side, {Dxt1Fit::Cluster, Dxt1Alpha::OneBit}));
            }
        });
}
BENCHMARK(BareWorkOnSixteenPictures)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

} // namespace
} // namespace vardenix
