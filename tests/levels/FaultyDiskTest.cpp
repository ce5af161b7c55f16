// Saves that are killed, run out of disk, or may not write: each in a process of its own,
// with every call that changes the disk made to fail in turn.
#include "files/Mending.h"
#include "support/FaultShimLink.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vardenix {
namespace {

using tests::MadeLevel;
using tests::TestFolder;

MadeLevel OneHigher(MadeLevel level) {
    for (tests::MadePost& post : level.Posts)
        post.Elevation = static_cast<int16_t>(post.Elevation + 1);
    return level;
}

class FaultyDisk : public testing::Test {
protected:
    void SetUp() override {
        old_ = MadeLevel::Random(64, 1);
        new_ = OneHigher(old_);
        WriteOld();
    }
    void WriteOld() {
        const tests::PairBytes pair = tests::ScatteredPair(old_);
        folder_.Write("theater.L2", pair.L);
        folder_.Write("theater.O2", pair.O);
    }
    // The exit code of a save in which the fault comes at that call; -1 when a signal
    // ended it.
    int SaveWith(const char* mode, int at, void (*prepare)() = nullptr) {
        const std::vector<std::string> environment =
            mode == nullptr ? std::vector<std::string>{} : shim_.Environment(mode, at);
        const pid_t child = fork();
        if (child == 0) {
            for (const std::string& variable : environment)
                putenv(const_cast<char*>(variable.c_str()));
            if (freopen("/dev/null", "w", stderr) == nullptr)
                _exit(98);
            if (prepare != nullptr)
                prepare();
            execl(SAVE_ONCE, SAVE_ONCE, folder_.File("theater.L2").c_str(), nullptr);
            _exit(97);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    // What the next opening makes of the pair: 'o' the old posts, 'n' the new ones, '?'
    // neither.
    char Reopened() {
        MendFiles({folder_.File("theater.L2"), folder_.File("theater.O2")});
        const MadeLevel found =
            tests::ReadPair(folder_.File("theater.L2"), folder_.File("theater.O2"));
        return found.Posts == old_.Posts ? 'o' : found.Posts == new_.Posts ? 'n' : '?';
    }

    TestFolder folder_;
    tests::FaultShimLink shim_{FAULT_SHIM};
    MadeLevel old_;
    MadeLevel new_;
};

TEST_F(FaultyDisk, AKillBetweenAnyTwoStepsLeavesAWholePair) {
    std::string found;
    int at = 1;
    for (int code = 99; code == 99; ++at) {
        WriteOld();
        code = SaveWith("kill", at);
        ASSERT_TRUE(code == 99 || code == 0) << "step " << at << ": " << code;
        found += Reopened();
        EXPECT_EQ(folder_.Names(), "theater.L2 theater.O2") << "step " << at;
        ASSERT_LT(at, 100);
    }
    // First the old pair, from the first rename on the new one, never anything else.
    EXPECT_EQ(found.find_first_not_of("on"), std::string::npos) << found;
    EXPECT_EQ(found.find("no"), std::string::npos) << found;
    EXPECT_EQ(found.front(), 'o');
    EXPECT_EQ(found.back(), 'n');
    EXPECT_GE(found.size(), 9U); // two opens, writes, flushes, renames, folder flushes
}

TEST_F(FaultyDisk, ADiskThatFillsUpAtAnyStepLeavesTheOldPair) {
    int at = 1;
    for (int code = 3; code == 3; ++at) {
        WriteOld();
        code = SaveWith("full", at);
        ASSERT_TRUE(code == 3 || code == 0) << "step " << at << ": " << code;
        const char found = Reopened();
        EXPECT_TRUE(found == 'o' || (found == 'n' && at > 6)) << "step " << at;
        EXPECT_EQ(folder_.Names(), "theater.L2 theater.O2") << "step " << at;
        ASSERT_LT(at, 100);
    }
    // There is room again.
    WriteOld();
    EXPECT_EQ(SaveWith(nullptr, 0), 0);
    EXPECT_EQ(Reopened(), 'n');
}

TEST_F(FaultyDisk, AShortWriteIsGoneOnWith) {
    for (int at = 1; at <= 4; ++at) {
        WriteOld();
        EXPECT_EQ(SaveWith("short", at), 0);
        EXPECT_EQ(Reopened(), 'n') << "step " << at;
    }
}

TEST_F(FaultyDisk, AFileSizeLimitIsAMessageAndTheOldPairStands) {
    EXPECT_EQ(SaveWith(nullptr, 0,
                       [] {
                           signal(SIGXFSZ, SIG_IGN);
                           const rlimit limit{10000, 10000};
                           setrlimit(RLIMIT_FSIZE, &limit);
                       }),
              3);
    EXPECT_EQ(folder_.Names(), "theater.L2 theater.O2");
    EXPECT_EQ(Reopened(), 'o');
}

TEST_F(FaultyDisk, AReadOnlyFolderIsAMessageAndTheOldPairStands) {
    ASSERT_EQ(chmod(folder_.Path().c_str(), 0555), 0);
    const int code = SaveWith(nullptr, 0, [] {
        // The superuser may write everywhere.
        if (geteuid() == 0 && setuid(65534) != 0)
            _exit(96);
    });
    ASSERT_EQ(chmod(folder_.Path().c_str(), 0755), 0);
    EXPECT_EQ(code, 3);
    EXPECT_EQ(Reopened(), 'o');
}

} // namespace
} // namespace vardenix
