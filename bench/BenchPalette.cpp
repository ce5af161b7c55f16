// The tile palette with a class of 2,000 tiles, on a screen in memory: opened, laid out
// anew, and scrolled from end to end. The pictures have been painted before, so that they
// are warm, but where the name says cold.
#include "BenchWindows.h"
#include "pictures/Dxt1Writer.h"
#include "support/RecordingCommands.h"
#include "workspace/windows/FrmVXTilePal.h"

#include <QScrollBar>
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace vardenix {
namespace {

constexpr int TileSide = 512;
constexpr int Count = 2000;

// One picture under many names: what a name costs is decoding, whatever it shows.
class TileFolder {
public:
    TileFolder() : folder_(fs::temp_directory_path() / "vardenix bench palette") {
        fs::create_directories(folder_);
        std::vector<uint8_t> rgba;
        for (int y = 0; y < TileSide; ++y)
            for (int x = 0; x < TileSide; ++x)
                for (const int part : {x * 3, y * 5, (x ^ y) * 2, 255})
                    rgba.push_back(static_cast<uint8_t>(part));
        const auto bytes = Dxt1File(rgba, TileSide, TileSide, {Dxt1Fit::Range});
        std::ofstream(folder_ / "H0.dds", std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        for (int i = 1; i < Count; ++i) {
            const fs::path link = folder_ / ("H" + std::to_string(i) + ".dds");
            std::error_code thereAlready;
            fs::create_hard_link(folder_ / "H0.dds", link, thereAlready);
        }
    }
    TileFolder(const TileFolder&) = delete;
    TileFolder& operator=(const TileFolder&) = delete;
    ~TileFolder() {
        std::error_code error;
        fs::remove_all(folder_, error);
    }
    std::string Path() const { return folder_.string() + "/"; }

private:
    fs::path folder_;
};

const TileFolder& Tiles() {
    static const TileFolder folder;
    return folder;
}

// What the window works on; it outlives windows, as in the program.
struct BenchTheater {
    BenchTheater() {
        bench::NeedApplication();
        State.Catalogue.DDSFolder = Tiles().Path();
        State.Catalogue.Lookup.resize(Count);
        for (int i = 0; i < Count; ++i) {
            TileInfo& entry = State.Catalogue.Lookup[static_cast<size_t>(i)];
            entry.Name = "H" + std::to_string(i) + ".PCX";
            entry.DayFile = "H" + std::to_string(i) + ".dds";
            entry.Terrain = 1;
            entry.HasImage = 1;
        }
    }
    std::unique_ptr<FrmVXTilePal> Open() {
        auto window =
            std::make_unique<FrmVXTilePal>(State, Interaction, Pictures, Commands);
        window->resize(618, 453);
        window->Refresh_Pal(1);
        window->show();
        QApplication::processEvents();
        window->grab();
        return window;
    }

    ProgramState State;
    MapInteraction Interaction;
    TilePictures Pictures;
    tests::RecordingCommands Commands;
};

void OpenPalette(benchmark::State& state) {
    BenchTheater theater;
    theater.Open();
    for (auto _ : state) {
        auto window = theater.Open();
        state.PauseTiming();
        window.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(OpenPalette)->Unit(benchmark::kMillisecond);

void OpenPaletteCold(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto theater = std::make_unique<BenchTheater>();
        state.ResumeTiming();
        auto window = theater->Open();
        state.PauseTiming();
        window.reset();
        theater.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(OpenPaletteCold)->Unit(benchmark::kMillisecond);

void RefreshPalette(benchmark::State& state) {
    BenchTheater theater;
    const auto window = theater.Open();
    for (auto _ : state) {
        window->Refresh_Pal(1);
        QApplication::processEvents();
        window->grab();
    }
}
BENCHMARK(RefreshPalette)->Unit(benchmark::kMillisecond);

// Every picture is seen once.
void ScrollThrough(benchmark::State& state) {
    BenchTheater theater;
    const auto window = theater.Open();
    auto* bar = window->findChild<QScrollBar*>("VScroll");
    const auto scroll = [&] {
        for (int row = 0; row <= bar->maximum(); row += bar->pageStep()) {
            bar->setValue(row);
            window->grab();
        }
    };
    scroll();
    for (auto _ : state) {
        state.PauseTiming();
        window->Refresh_Pal(1);
        state.ResumeTiming();
        scroll();
    }
    state.counters["pages"] = bar->maximum() / bar->pageStep() + 1;
}
BENCHMARK(ScrollThrough)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vardenix
