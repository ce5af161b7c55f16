#include "files/FolderLock.h"

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
    OtherProgram(const std::string& folder, int operation) {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        child_ = fork();
        if (child_ == 0) {
            const int handle = open(folder.c_str(), O_RDONLY);
            const bool locked = flock(handle, operation) == 0;
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

} // namespace
} // namespace vardenix
