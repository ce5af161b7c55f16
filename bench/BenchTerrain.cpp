// Level 2 and the halving of grids, each beside the bare work: the same bytes read,
// written and flushed, or walked over with nothing else. bench/ratios.py turns the output
// into a table.
#include "catalogue/TextureBin.h"
#include "catalogue/TileCheck.h"
#include "companion/Vardenix.h"
#include "files/BinaryReader.h"
#include "files/ReadableFile.h"
#include "files/StagedFile.h"
#include "levels/TerrainStore.h"
#include "platform/Clock.h"
#include "platform/Progress.h"
#include "platform/ZeroPages.h"
#include "search/Statistics.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <malloc.h>
#include <map>
#include <memory>
#include <random>
#include <unistd.h>
#include <vector>

namespace vardenix {
namespace {

// A land of which a third of the segments is sea, in a folder of its own.
class Land {
public:
    explicit Land(int32_t width) : folder_(MakeFolder()) {
        terrain.MapWidth = width;
        terrain.LxArr = PostArray(int64_t{width} * width);
        terrain.LFilename = folder_ / "theater.L2";
        terrain.OFilename = folder_ / "theater.O2";
        std::mt19937 random(1);
        int32_t serial = 0;
        for (TerrainPost& post : terrain.LxArr.Values()) {
            const int32_t x = serial % width;
            if (x * 3 > width)
                post = {static_cast<int32_t>(random() % 2000),
                        static_cast<int16_t>(random() % 5000), 1, 2, 3};
            ++serial;
        }
        NoProgress progress;
        SaveTheater(terrain, "", progress);
    }
    Land(const Land&) = delete;
    Land& operator=(const Land&) = delete;
    ~Land() { std::filesystem::remove_all(folder_); }

    static Land& Of(int64_t width) {
        static std::map<int64_t, std::unique_ptr<Land>> lands;
        auto& land = lands[width];
        if (!land)
            land = std::make_unique<Land>(static_cast<int32_t>(width));
        return *land;
    }

    std::string File(const char* name) const { return folder_ / name; }

    Terrain terrain;

private:
    static std::filesystem::path MakeFolder() {
        std::string pattern =
            std::filesystem::temp_directory_path() / "vardenix bench XXXXXX";
        return mkdtemp(pattern.data());
    }
    std::filesystem::path folder_;
};

// The bytes of both files in large pieces, through one buffer.
void BareRead(benchmark::State& state) {
    const Land& land = Land::Of(state.range(0));
    std::vector<std::byte> piece(size_t{1} << 20);
    for (auto _ : state)
        for (const std::string& path : {land.terrain.LFilename, land.terrain.OFilename}) {
            const ReadableFile file(path);
            for (uint64_t at = 0; at < file.Size(); at += piece.size())
                benchmark::DoNotOptimize(file.ReadAt(at, piece));
        }
}

// The same, laid one behind the other into fresh memory of the posts' size, which the
// system clears first.
void BareLay(benchmark::State& state) {
    const Land& land = Land::Of(state.range(0));
    const auto width = static_cast<size_t>(state.range(0));
    const size_t room = width * width * sizeof(TerrainPost);
    std::vector<std::byte> piece(size_t{1} << 20);
    for (auto _ : state) {
        const ZeroPages pages(room);
        auto* const posts = static_cast<std::byte*>(pages.Data());
        const ReadableFile file(land.terrain.LFilename);
        // A block that all sea shares is laid once for each: the room is filled.
        for (size_t at = 0, from = 0; at < room; at += piece.size()) {
            const size_t read = file.ReadAt(from, piece);
            std::memcpy(posts + at, piece.data(), std::min(room - at, piece.size()));
            from = read == piece.size() ? from + read : 0;
        }
        benchmark::DoNotOptimize(posts);
    }
}

void Load(benchmark::State& state) {
    const SystemClock clock;
    DebugLog log(clock);
    NoProgress progress;
    Terrain& terrain = Land::Of(state.range(0)).terrain;
    for (auto _ : state)
        LoadLFile(terrain, progress, log);
}

// The same bytes beside the old ones, as plainly as can be: for each file one write and
// one flush, then the old file goes.
void BareWrite(benchmark::State& state) {
    const Land& land = Land::Of(state.range(0));
    const FileBytes bytesL = ReadWholeFile(land.terrain.LFilename, uint64_t{1} << 30);
    const FileBytes bytesO = ReadWholeFile(land.terrain.OFilename, uint64_t{1} << 30);
    const auto put = [](const std::string& path, const std::string& old,
                        const FileBytes& bytes) {
        const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        benchmark::DoNotOptimize(::write(file, bytes.data(), bytes.size()));
        ::fsync(file);
        ::close(file);
        ::unlink(old.c_str());
    };
    bool odd = false;
    for (auto _ : state) {
        put(land.File(odd ? "odd.L" : "even.L"), land.File(odd ? "even.L" : "odd.L"),
            bytesL);
        put(land.File(odd ? "odd.O" : "even.O"), land.File(odd ? "even.O" : "odd.O"),
            bytesO);
        odd = !odd;
    }
}

void Save(benchmark::State& state) {
    NoProgress progress;
    Terrain& terrain = Land::Of(state.range(0)).terrain;
    for (auto _ : state)
        SaveTheater(terrain, "", progress);
}

void BarePass(benchmark::State& state) {
    const Terrain& terrain = Land::Of(state.range(0)).terrain;
    for (auto _ : state) {
        int64_t sum = 0;
        for (const TerrainPost& post : terrain.LxArr.Values())
            sum += post.TileOffset;
        benchmark::DoNotOptimize(sum);
    }
}

void Check(benchmark::State& state) {
    const Terrain& terrain = Land::Of(state.range(0)).terrain;
    TileLookup lookup(2000);
    for (TileInfo& tile : lookup)
        tile.Terrain = 4;
    for (auto _ : state)
        benchmark::DoNotOptimize(CountTileUse(terrain, lookup));
}

void Counts(benchmark::State& state) {
    const Terrain& terrain = Land::Of(state.range(0)).terrain;
    TileLookup lookup(2000);
    for (TileInfo& tile : lookup)
        tile.Terrain = 4;
    for (auto _ : state)
        benchmark::DoNotOptimize(StatisticsOf(terrain, lookup));
}

std::vector<int16_t> Grid(int64_t width) {
    std::vector<int16_t> grid(static_cast<size_t>(width * width));
    std::mt19937 random(1);
    for (int16_t& value : grid)
        value = static_cast<int16_t>(random() % 9000);
    return grid;
}

void BareCopy(benchmark::State& state) {
    const std::vector<int16_t> source = Grid(state.range(0));
    std::vector<int16_t> target(source.size());
    for (auto _ : state) {
        std::memcpy(target.data(), source.data(), source.size() * 2);
        benchmark::ClobberMemory();
    }
}

void Halve(benchmark::State& state) {
    const std::vector<int16_t> source = Grid(state.range(0));
    std::vector<int16_t> target(source.size() / 4);
    for (auto _ : state) {
        BreakElv(source.data(), static_cast<int32_t>(source.size()),
                 static_cast<int32_t>(state.range(0)),
                 static_cast<int32_t>(state.range(1)), target.data());
        benchmark::ClobberMemory();
    }
}

// A theater is opened once: memory comes fresh from the system each time, for the job and
// for the bare work alike.
const bool FreshMemory = mallopt(M_MMAP_THRESHOLD, 1 << 17) == 1;

BENCHMARK(BareRead)->Arg(1024)->Arg(2048)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(BareLay)->Arg(1024)->Arg(2048)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(Load)->Arg(1024)->Arg(2048)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(BareWrite)->Arg(1024)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK(Save)->Arg(1024)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK(BarePass)->Arg(1024)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK(Check)->Arg(1024)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK(Counts)->Arg(1024)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK(BareCopy)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(Halve)->Args({4096, 1})->Args({4096, 2})->Args({4096, 3})->Unit(
    benchmark::kMillisecond);

} // namespace
} // namespace vardenix
