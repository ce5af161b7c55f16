#include "files/FolderLock.h"

#include "files/LockWait.h"
#include "support/PlainUser.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vardenix {
namespace {

using std::chrono::milliseconds;
using tests::TestFolder;

// Another program that holds a folder until it is let go or killed.
class OtherProgram {
public:
    // As another user where one is told; for the superuser only.
    OtherProgram(const std::string& folder, int operation, uid_t user = 0) {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        child_ = fork();
        if (child_ == 0) {
            const int handle = open(folder.c_str(), O_RDONLY);
            const bool locked =
                flock(handle, operation) == 0 && (user == 0 || setuid(user) == 0);
            if (locked && write(ready[1], "", 1) == 1)
                pause();
            _exit(1);
        }
        char byte = 0;
        EXPECT_EQ(read(ready[0], &byte, 1), 1);
        close(ready[0]);
        close(ready[1]);
    }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;
    ~OtherProgram() {
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
    }

    pid_t Process() const { return child_; }

private:
    pid_t child_ = 0;
};

bool CanTake(const std::string& folder, FolderLock::Kind kind) {
    try {
        return FolderLock(folder, kind, milliseconds{0}).Held();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::PermissionDenied);
        EXPECT_NE(error.Detail().find(folder), std::string::npos);
        return false;
    }
}

TEST(FolderLocks, ReadersShareAndAWriterIsAlone) {
    const TestFolder folder;
    {
        const OtherProgram reader(folder.Path(), LOCK_SH);
        EXPECT_TRUE(CanTake(folder.Path(), FolderLock::Shared));
        EXPECT_FALSE(CanTake(folder.Path(), FolderLock::Exclusive));
    }
    {
        const OtherProgram writer(folder.Path(), LOCK_EX);
        EXPECT_FALSE(CanTake(folder.Path(), FolderLock::Shared));
        EXPECT_FALSE(CanTake(folder.Path(), FolderLock::Exclusive));
    }
    // It was killed, and its lock is gone.
    EXPECT_TRUE(CanTake(folder.Path(), FolderLock::Exclusive));
}

TEST(FolderLocks, OfOneProgramNeverWaitForOneAnother) {
    const TestFolder folder;
    const FolderLock reading(folder.Path(), FolderLock::Shared);
    {
        const FolderLock writing(folder.Path(), FolderLock::Exclusive, milliseconds{0});
        EXPECT_TRUE(writing.Held());
        EXPECT_TRUE(CanTake(folder.Path() + "/.", FolderLock::Shared));
        const int other = open(folder.Path().c_str(), O_RDONLY | O_CLOEXEC);
        EXPECT_NE(flock(other, LOCK_SH | LOCK_NB), 0);
        close(other);
    }
    // Readers of other programs may come again, writers not yet.
    const int other = open(folder.Path().c_str(), O_RDONLY | O_CLOEXEC);
    EXPECT_EQ(flock(other, LOCK_SH | LOCK_NB), 0);
    EXPECT_NE(flock(other, LOCK_EX | LOCK_NB), 0);
    close(other);
}

TEST(FolderLocks, LeaveNothingBehind) {
    const TestFolder folder;
    { const FolderLock writing(folder.Path(), FolderLock::Exclusive); }
    EXPECT_EQ(folder.Names(), "");
    const int other = open(folder.Path().c_str(), O_RDONLY | O_CLOEXEC);
    EXPECT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
    close(other);
}

TEST(FolderLocks, AFolderThatMayNotBeListedIsGoneOnWith) {
    const TestFolder folder;
    tests::LetOthers(folder.Path(), 1);
    {
        const tests::PlainUser user;
        EXPECT_FALSE(FolderLock(folder.Path(), FolderLock::Exclusive).Held());
    }
    tests::LetOthers(folder.Path(), 7);
    EXPECT_FALSE(FolderLock(folder.File("none"), FolderLock::Shared).Held());
}

TEST(FolderLocks, OfSeveralFilesTakeEachFolderOnce) {
    const TestFolder folder;
    folder.Write("terrain/theater.L2", "");
    folder.Write("texture/Texture.bin", "");
    const auto locks = LockFoldersOf({folder.File("texture/Texture.bin"),
                                      folder.File("terrain/theater.L2"),
                                      folder.File("terrain/theater.O2")},
                                     FolderLock::Exclusive);
    EXPECT_EQ(locks.size(), 2U);
}

// Answers each look, and notes what it was shown.
class AnsweringWatcher : public LockWatcher {
public:
    explicit AnsweringWatcher(WaitAnswer answer)
        : answer_(answer), before_(WatchLocks(this)) {}
    ~AnsweringWatcher() override { WatchLocks(before_); }

    WaitAnswer Waiting(const LockWait& wait) override {
        Seen = wait;
        ++Looks;
        return answer_;
    }
    void WaitIsOver() override { ++Ends; }

    LockWait Seen;
    int Looks = 0;
    int Ends = 0;

private:
    WaitAnswer answer_;
    LockWatcher* before_;
};

constexpr milliseconds Long{20000};

TEST(LockWait, TellsWhoHoldsTheFolderAndEndsWhenItIsGivenUp) {
    const TestFolder folder;
    const OtherProgram other(folder.Path(), LOCK_EX);
    AnsweringWatcher watcher(WaitAnswer::GiveUp);
    const auto start = std::chrono::steady_clock::now();
    try {
        const FolderLock lock(folder.Path(), FolderLock::Shared, Long);
        ADD_FAILURE() << "taken";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.NumberValue(), 70);
        EXPECT_NE(error.Detail().find("process " + std::to_string(other.Process())),
                  std::string::npos)
            << error.Detail();
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, Long);
    EXPECT_EQ(watcher.Looks, 1);
    EXPECT_EQ(watcher.Ends, 1);
    ASSERT_EQ(watcher.Seen.Holders.size(), 1U);
    const LockHolder& holder = watcher.Seen.Holders.front();
    EXPECT_EQ(holder.Process, other.Process());
    EXPECT_TRUE(holder.Program.starts_with("files_tests")) << holder.Program;
    EXPECT_EQ(holder.UserId, geteuid());
    EXPECT_TRUE(holder.Writes);
    EXPECT_FALSE(watcher.Seen.MayPassOver);
    EXPECT_EQ(TextOfWait({folder.Path(), {}, false}),
              "Waiting for another program, which reads or saves the files of " +
                  folder.Path());
}

// A lock of one's own user is waited for: it is one's own work.
TEST(LockWait, IsNeverPassedOverForAReaderOfTheSameUser) {
    const TestFolder folder;
    const OtherProgram other(folder.Path(), LOCK_SH);
    AnsweringWatcher watcher(WaitAnswer::PassOver);
    EXPECT_THROW(FolderLock(folder.Path(), FolderLock::Exclusive, milliseconds{500}),
                 RuntimeError);
    EXPECT_GT(watcher.Looks, 1);
    EXPECT_FALSE(watcher.Seen.MayPassOver);
}

// Needs a second user, which only the superuser can be.
TEST(LockWait, TheOwnerPassesOverReadersOfOthersToSave) {
    const TestFolder folder;
    if (geteuid() != 0)
        return;
    constexpr uid_t Nobody = 65534;
    const OtherProgram reader(folder.Path(), LOCK_SH, Nobody);
    {
        AnsweringWatcher watcher(WaitAnswer::PassOver);
        const FolderLock lock(folder.Path(), FolderLock::Exclusive, Long);
        EXPECT_TRUE(lock.Held());
        EXPECT_TRUE(watcher.Seen.MayPassOver);
        EXPECT_EQ(watcher.Looks, 1);
    }
    // With nobody who watches, when the patience has come to its end.
    EXPECT_TRUE(FolderLock(folder.Path(), FolderLock::Exclusive, milliseconds{0}).Held());
    AnsweringWatcher watcher(WaitAnswer::GiveUp);
    EXPECT_THROW(FolderLock(folder.Path(), FolderLock::Exclusive, Long), RuntimeError);
    ASSERT_EQ(chown(folder.Path().c_str(), Nobody, Nobody), 0);
    EXPECT_THROW(FolderLock(folder.Path(), FolderLock::Exclusive, milliseconds{0}),
                 RuntimeError);
}

} // namespace
} // namespace vardenix
