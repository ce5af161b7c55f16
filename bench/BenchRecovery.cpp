// What the log of changes, as it is kept for recovery, costs the window's thread, against
// the bare copying of a change's bytes; and what it takes of the disk.
#include "program/ProgramState.h"
#include "recovery/LogKeeper.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vardenix {
namespace {

constexpr int32_t Side = 2048; // of the theater that is filled

class KeptLog {
public:
    KeptLog() {
        std::filesystem::remove_all(folder_);
        Begin();
    }
    KeptLog(const KeptLog&) = delete;
    KeptLog& operator=(const KeptLog&) = delete;
    ~KeptLog() {
        keeper_.reset();
        std::filesystem::remove_all(folder_);
    }

    LogKeeper& Keeper() { return *keeper_; }
    // All that was told is written, and a new file has begun.
    void Begin() {
        if (keeper_)
            keeper_->GiveUp();
        keeper_.emplace(state_, folder_);
        Change first{.Name = "First"};
        first.Posts.Runs = {{1, 1, 0, 1}};
        keeper_->Added(first);
        keeper_->Drain();
    }
    uint64_t Bytes() {
        keeper_->Drain();
        return std::filesystem::file_size(folder_ + "/1.log");
    }

private:
    std::string folder_ = std::filesystem::temp_directory_path() / "vardenix bench";
    ProgramState state_;
    std::optional<LogKeeper> keeper_;
};

Change StrokeEvent() {
    Change change{.Name = "Paint 25 posts"};
    for (int32_t i = 0; i < 4; ++i)
        change.Posts.Runs.push_back({1000 + i * Side, 3, 5, 9});
    return change;
}

// A fill of every post, as the tool tells it.
Change Fill() {
    Change change{.Name = "Fill 4194304 posts"};
    for (int32_t y = 0; y < Side; ++y)
        change.Posts.Runs.push_back({y * Side + 1, Side, 5, 9});
    return change;
}

// Every post another one, found by comparison.
Change Restored() {
    Change change{.Name = "RESTORE"};
    const auto count = static_cast<size_t>(Side) * Side;
    change.Posts.Values.Stretches = {{1, Side * Side}};
    change.Posts.Values.Old.assign(count, {5, 100, 1, 2, 3});
    change.Posts.Values.New.assign(count, {9, 200, 1, 2, 3});
    return change;
}

// A set of 16 tiles put into a catalogue of a megabyte.
Change CatalogueEdit() {
    Change change{.Name = "Append set"};
    change.Catalogue.Offset = 500000;
    change.Catalogue.New.resize(1600);
    return change;
}

template <typename Make>
void Tell(benchmark::State& state, Make make) {
    const Change change = make();
    KeptLog log;
    const uint64_t before = log.Bytes();
    log.Keeper().Added(change);
    const uint64_t grown = log.Bytes() - before;
    for (auto _ : state) {
        log.Keeper().Added(change);
        state.PauseTiming();
        log.Keeper().Drain();
        if (change.Bytes() > 1000000)
            log.Begin();
        state.ResumeTiming();
    }
    state.counters["file"] = static_cast<double>(grown);
}

template <typename Make>
void BareCopy(benchmark::State& state, Make make) {
    const size_t size = make().Bytes();
    const std::vector<std::byte> from(size, std::byte{7});
    for (auto _ : state) {
        std::vector<std::byte> bytes(from);
        benchmark::DoNotOptimize(bytes.data());
        state.PauseTiming();
        bytes = {};
        state.ResumeTiming();
    }
}

void StrokeEventTold(benchmark::State& state) {
    const Change change = StrokeEvent();
    KeptLog log;
    const uint64_t before = log.Bytes();
    log.Keeper().Grown(change);
    const uint64_t grown = log.Bytes() - before;
    for (auto _ : state)
        log.Keeper().Grown(change);
    state.counters["file"] = static_cast<double>(grown);
}

// So many that the log does not fill up, and the disk keeps up.
BENCHMARK(StrokeEventTold)->Iterations(20000);
BENCHMARK_CAPTURE(Tell, Fill, Fill)->Iterations(2000);
BENCHMARK_CAPTURE(BareCopy, Fill, Fill)->Iterations(2000);
BENCHMARK_CAPTURE(Tell, Restored, Restored)->Iterations(5);
BENCHMARK_CAPTURE(BareCopy, Restored, Restored)->Iterations(5);
BENCHMARK_CAPTURE(Tell, CatalogueEdit, CatalogueEdit)->Iterations(2000);
BENCHMARK_CAPTURE(BareCopy, CatalogueEdit, CatalogueEdit)->Iterations(2000);

} // namespace
} // namespace vardenix
