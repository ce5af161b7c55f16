// Several programs at work on one theater at once. For a minute of it instead of a
// moment: TWO_PROGRAMS_SECONDS=60.
#include "cli/CliTheater.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vardenix::tests {
namespace {

using Clock = std::chrono::steady_clock;

std::chrono::milliseconds TimeToRun() {
    const char* seconds = std::getenv("TWO_PROGRAMS_SECONDS");
    return std::chrono::milliseconds(seconds != nullptr ? std::atoi(seconds) * 1000
                                                        : 2500);
}

// What the four tell the test; shared with the processes that run them.
struct Told {
    int Runs[4];     // that each has done
    int Failures[4]; // and how many did not end as they should
    int Written[2];  // the height that each saver wrote last
};

class TwoPrograms : public CliTheater {
protected:
    void SetUp() override {
        CliTheater::SetUp();
        told_ = static_cast<Told*>(mmap(nullptr, sizeof(Told), PROT_READ | PROT_WRITE,
                                        MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    }
    void TearDown() override { munmap(told_, sizeof(Told)); }

    // Runs `turn` over and over in a process of its own.
    template <typename Turn>
    pid_t Start(int who, Turn turn) {
        const pid_t child = fork();
        if (child != 0)
            return child;
        const auto end = Clock::now() + TimeToRun();
        while (Clock::now() < end) {
            told_->Failures[who] += turn() ? 0 : 1;
            ++told_->Runs[who];
        }
        _exit(0);
    }
    // Each saver has a segment of its own to count up in.
    pid_t StartSaver(int who) {
        return Start(who, [this, who] {
            const std::string place = std::to_string(who * 20);
            const std::string next = std::to_string(told_->Written[who] + 1);
            const bool saved =
                RunOn({"set", place, place, "--elevation", next}).ExitCode == 0;
            told_->Written[who] += saved ? 1 : 0;
            return saved;
        });
    }
    int HeightAt(int place) { return OnDisk().At(place + 1, place + 1).Elevation; }

    Told* told_ = nullptr;
};

TEST_F(TwoPrograms, TwoSaversAndTwoReadersLoseNothingAndNeverFail) {
    const std::vector<pid_t> all{
        StartSaver(0), StartSaver(1),
        Start(2, [this] { return RunOn({"info"}).ExitCode == 0; }), Start(3, [this] {
            return RunOn({"get", "20", "20"}).ExitCode == 0;
        })};
    for (const pid_t child : all)
        waitpid(child, nullptr, 0);
    for (int who = 0; who < 4; ++who) {
        EXPECT_GT(told_->Runs[who], 0) << who;
        EXPECT_EQ(told_->Failures[who], 0) << who;
        RecordProperty("runs_" + std::to_string(who), told_->Runs[who]);
    }
    EXPECT_EQ(HeightAt(0), told_->Written[0]);
    EXPECT_EQ(HeightAt(20), told_->Written[1]);
    // What nobody touched is as it was.
    EXPECT_EQ(PostBytes(OnDisk().At(30, 31)), PostBytes(level_.At(30, 31)));
    const auto folder = std::filesystem::directory_iterator(Terrain(""));
    EXPECT_EQ(std::distance(folder, {}), 3);
}

} // namespace
} // namespace vardenix::tests
