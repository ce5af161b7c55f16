// What a rebuild costs: levels and elevations against reading and writing the same bytes,
// far tiles in processor time. Arguments of the far tiles are the size of a far tile and
// the threads.
#include "builder/ElevationRebuild.h"
#include "builder/TheaterRebuild.h"
#include "files/StagedFile.h"
#include "pictures/Dxt1Writer.h"
#include "platform/Clock.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>

namespace fs = std::filesystem;

namespace vardenix {
namespace {

constexpr int32_t Posts = 1024;
constexpr int Tiles = 2000;
constexpr int TileSide = 512;

class SilentView : public RebuildView {
public:
    void ResetPBs() override {}
    void Increase_PBs() override {}
    void Increase_PB1() override {}
    void SetPB1_Max(int32_t) override {}
    void SetPB1_val(int32_t) override {}
    void SetPB2_Max(int32_t) override {}
    void SetPB2_val(int32_t) override {}
    void SetStatus(const std::string&) override {}
    void SetLabel2(const std::string&) override {}
    void SetLblTime(const std::string&) override {}
    void BeginStep(int, int) override {}
    void ShowFartile(std::span<const uint8_t>, std::span<const uint8_t>,
                     int32_t) override {}
    void BeginTakingPlaces() override {}
    void LetEventsThrough() override {}
    bool StopWanted() override { return false; }
    int64_t Seconds() override { return 0; }
};

void Spill(const fs::path& path, std::span<const std::byte> bytes) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

// Land everywhere, of patches of eight by eight posts that share sixteen tiles each.
class World {
public:
    World() : folder_(fs::temp_directory_path() / "vardenix-bench-rebuild") {
        fs::remove_all(folder_);
        fs::create_directories(folder_ / "texture");
        terrain.LFilename = (folder_ / "theater.L2").string();
        terrain.OFilename = (folder_ / "theater.O2").string();
        terrain.MapWidth = Posts;
        terrain.LxArr = PostArray(int64_t{Posts} * Posts);
        std::mt19937 random(1);
        std::vector<int32_t> patches(Posts / 8 * Posts / 8);
        for (int32_t& patch : patches)
            patch = static_cast<int32_t>(random() % (Tiles / 16));
        for (int32_t y = 0; y < Posts; ++y)
            for (int32_t x = 0; x < Posts; ++x) {
                TerrainPost& post = terrain.LxArr(int64_t{y} * Posts + x + 1);
                post.TileOffset =
                    patches[static_cast<size_t>(y / 8 * (Posts / 8) + x / 8)] * 16 +
                    static_cast<int32_t>(random() % 16);
                post.Elevation = static_cast<int16_t>(1 + random() % 3000);
            }
        MakeFarLevels();
        catalogue.BinPath = (folder_ / "texture.bin").string();
        catalogue.DDSFolder = (folder_ / "texture").string() + "/";
        for (int tile = 0; tile < Tiles; ++tile) {
            TileInfo info;
            info.DayFile = "T" + std::to_string(tile) + ".dds";
            info.NightFile = "T" + std::to_string(tile) + "N.dds";
            catalogue.Lookup.push_back(info);
        }
        SaveTheater(terrain, "", progress_);
        RebuildTheater(parts, {}, fartiles);
    }
    ~World() { fs::remove_all(folder_); }

    void MakePictures() {
        if (fs::exists(catalogue.DDSFolder + "T0.dds"))
            return;
        const auto header = Dxt1FileHeader(TileSide, TileSide);
        std::mt19937 random(2);
        std::vector<uint8_t> blocks(size_t{TileSide} * TileSide / 2);
        for (const TileInfo& info : catalogue.Lookup)
            for (const std::string& name : {info.DayFile, info.NightFile}) {
                for (size_t i = 0; i < blocks.size(); i += 4) {
                    const uint32_t word = static_cast<uint32_t>(random());
                    std::memcpy(&blocks[i], &word, 4);
                }
                std::ofstream file(catalogue.DDSFolder + name, std::ios::binary);
                file.write(reinterpret_cast<const char*>(header.data()),
                           static_cast<std::streamsize>(header.size()));
                file.write(reinterpret_cast<const char*>(blocks.data()),
                           static_cast<std::streamsize>(blocks.size()));
            }
    }
    std::string MakeMaster() {
        const std::string path = (folder_ / "master.elv").string();
        std::vector<int16_t> heights(size_t{16} * Posts * Posts);
        std::mt19937 random(3);
        for (int16_t& height : heights)
            height = static_cast<int16_t>(random() % 3000);
        Spill(path, std::as_bytes(std::span(heights)));
        return path;
    }
    fs::path Folder() const { return folder_; }

    Terrain terrain;
    Catalogue catalogue;
    SilentView view;
    SystemClock clock;
    DebugLog log{clock};
    Fartiles fartiles;
    RebuildParts parts{terrain, catalogue, view, log};

private:
    // Files of the right size: a rebuild needs them there.
    void MakeFarLevels() {
        for (int level = 3; level <= 5; ++level) {
            const size_t side = static_cast<size_t>(Posts) >> (level - 2) >> 4;
            std::vector<int32_t> offsets;
            for (size_t i = 0; i < side * side; ++i)
                offsets.push_back(static_cast<int32_t>(i) * BlockBytes);
            const std::vector<std::byte> blocks(side * side * BlockBytes);
            const std::string number = std::to_string(level);
            Spill(folder_ / ("theater.L" + number), blocks);
            Spill(folder_ / ("theater.O" + number), std::as_bytes(std::span(offsets)));
        }
    }

    fs::path folder_;
    NoProgress progress_;
};

World& TheWorld() {
    static World world;
    return world;
}

// Reads each file in large pieces and writes the same bytes beside it, flushed, then
// takes the old one's place.
void CopyFiles(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        const std::string path = (TheWorld().Folder() / name).string();
        std::ifstream file(path, std::ios::binary);
        StagedFile copy(path);
        std::vector<char> buffer(size_t{1} << 20);
        while (file.read(buffer.data(), static_cast<std::streamsize>(buffer.size())),
               file.gcount() > 0)
            copy.Write(std::as_bytes(
                std::span(buffer.data(), static_cast<size_t>(file.gcount()))));
        copy.Commit();
    }
}

std::vector<std::string> FilesOf(std::initializer_list<int> levels) {
    std::vector<std::string> names;
    for (const int level : levels)
        for (const char* letter : level < 2 ? std::array{"l", "o"} : std::array{"L", "O"})
            names.push_back("theater." + std::string(letter) + std::to_string(level));
    return names;
}

void BareFine(benchmark::State& state) {
    const auto names = FilesOf({0, 1});
    for (auto _ : state)
        CopyFiles(names);
}
void Fine(benchmark::State& state) {
    for (auto _ : state)
        RebuildTheater(TheWorld().parts, {}, TheWorld().fartiles);
}
void BareElevations(benchmark::State& state) {
    auto names = FilesOf({0, 1, 2, 3, 4, 5});
    TheWorld().MakeMaster();
    for (auto _ : state) {
        CopyFiles(names);
        benchmark::DoNotOptimize(ReadWholeFile(
            (TheWorld().Folder() / "master.elv").string(), uint64_t{1} << 30));
    }
}
class NoDialogs : public Dialogs {
    BoxAnswer MessageBox(const std::string&, const std::string&, BoxIcon,
                         BoxButtons) override {
        return BoxAnswer::No;
    }
    FileAnswer OpenFile(const FileQuestion&) override { return {}; }
    std::vector<std::string> OpenFiles(const FileQuestion&) override { return {}; }
    FileAnswer SaveFile(const FileQuestion&) override { return {}; }
    std::optional<std::string> Folder(const std::string&, const std::string&) override {
        return {};
    }
    uint32_t Color(uint32_t current) override { return current; }
    FontChoice Font(const FontChoice& current) override { return current; }
};
void Elevations(benchmark::State& state) {
    const std::string master = TheWorld().MakeMaster();
    NoDialogs dialogs;
    World& world = TheWorld();
    for (auto _ : state)
        RebuildElevations({world.terrain, world.view, dialogs, world.log},
                          {ElevationKind::Elv, master},
                          static_cast<Downsampling>(state.range(0)), {});
}
void FarTiles(benchmark::State& state) {
    TheWorld().MakePictures();
    RebuildOptions options;
    options.MakeL3 = true;
    options.FarSize = static_cast<int32_t>(state.range(0));
    options.Threads = static_cast<unsigned>(state.range(1));
    for (auto _ : state)
        RebuildTheater(TheWorld().parts, options, TheWorld().fartiles);
    state.counters["tiles"] = TheWorld().fartiles.FartileCount;
}

// After one post was painted.
void FarTilesOnlyChanged(benchmark::State& state) {
    World& world = TheWorld();
    world.MakePictures();
    RebuildOptions options;
    options.MakeL3 = true;
    RebuildTheater(world.parts, options, world.fartiles);
    options.OnlyChanged = true;
    int64_t post = 1;
    FartileCounts counts;
    for (auto _ : state) {
        TerrainPost& painted = world.terrain.LxArr(post += 1000);
        painted.TileOffset = (painted.TileOffset + 1) % Tiles;
        counts = RebuildTheater(world.parts, options, world.fartiles).Fartiles;
    }
    state.counters["made"] = counts.Made;
    state.counters["copied"] = counts.Copied;
}

BENCHMARK(BareFine)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Fine)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BareElevations)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Elevations)
    ->Arg(1)
    ->Arg(2)
    ->Arg(3)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(FarTiles)
    ->Args({32, 0})
    ->Args({32, 1})
    ->Args({30, 0})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->MeasureProcessCPUTime();

BENCHMARK(FarTilesOnlyChanged)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->MeasureProcessCPUTime();

} // namespace
} // namespace vardenix
