#include "files/StagedFile.h"

#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace vardenix {
namespace {

using tests::Slurp;
using tests::TestFolder;

TEST(StagedFile, TheOldFileStandsUntilTheCommit) {
    const TestFolder folder;
    const std::string path = folder.Write("theater.bin", "old");
    StagedFile file(path);
    file.WriteText("new");
    file.WriteInt32(0x01020304);
    EXPECT_EQ(file.Position(), 7U);
    EXPECT_EQ(Slurp(path), "old");
    EXPECT_EQ(folder.Names(), "theater.bin theater.binx");
    file.Commit();
    EXPECT_EQ(Slurp(path), "new\x04\x03\x02\x01");
    EXPECT_EQ(folder.Names(), "theater.bin");
}

TEST(StagedFile, WhatIsNotCommittedLeavesNoTrace) {
    const TestFolder folder;
    const std::string path = folder.Write("a", "old");
    {
        StagedFile file(path);
        file.WriteText("new");
    }
    EXPECT_EQ(Slurp(path), "old");
    EXPECT_EQ(folder.Names(), "a");
}

TEST(StagedFile, BytesBeyondTheBufferComeOutWhole) {
    const TestFolder folder;
    std::string bytes;
    for (int i = 0; i < 700000; ++i)
        bytes += tests::Int32Bytes(i * 2917);
    {
        StagedFile file(folder.File("big"));
        for (size_t at = 0; at < bytes.size(); at += 99991)
            file.WriteText(std::string_view(bytes).substr(at, 99991));
        file.Commit();
    }
    EXPECT_TRUE(Slurp(folder.File("big")) == bytes);
}

TEST(StagedFile, AnotherCaseOfTheNameRewritesTheOneFile) {
    const TestFolder folder;
    folder.Write("Theater.l2", "old");
    StagedFile file(folder.File("THEATER.L2"));
    file.WriteText("new");
    file.Commit();
    EXPECT_EQ(folder.Names(), "Theater.l2");
    EXPECT_EQ(Slurp(folder.File("Theater.l2")), "new");
}

TEST(StagedFile, RightsAreKeptAndALinkIsFollowed) {
    const TestFolder folder;
    const std::string path = folder.Write("real/file", "old");
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    std::filesystem::create_symlink("real/file", folder.File("link"));
    StagedFile file(folder.File("link"));
    file.WriteText("new");
    file.Commit();
    EXPECT_TRUE(std::filesystem::is_symlink(folder.File("link")));
    EXPECT_EQ(Slurp(path), "new");
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST(StagedFile, RightsThatWritingTakesAwayAreGivenBack) {
    const TestFolder folder;
    const std::string path = folder.Write("file", "old");
    ASSERT_EQ(chmod(path.c_str(), 02755), 0);
    StagedFile file(path);
    file.WriteText("new");
    file.Commit();
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 02755U);
}

TEST(StagedFile, ANewFileHasTheRightsThatTheUserGivesToNewFiles) {
    const TestFolder folder;
    const mode_t old = umask(0);
    StagedFile file(folder.File("file"));
    umask(old);
    file.WriteText("new");
    file.Commit();
    struct stat status {};
    ASSERT_EQ(stat(folder.File("file").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0666U);
}

TEST(StagedFile, AStagedFileOfAnEarlierRunIsReplaced) {
    const TestFolder folder;
    folder.Write("ax", "left over");
    StagedFile file(folder.File("a"));
    file.WriteText("new");
    file.Commit();
    EXPECT_EQ(folder.Names(), "a");
    EXPECT_EQ(Slurp(folder.File("a")), "new");
}

TEST(StagedFile, AFolderOfTheNameIsRefused) {
    const TestFolder folder;
    std::filesystem::create_directory(folder.File("a"));
    EXPECT_THROW(StagedFile(folder.File("a")), RuntimeError);
    EXPECT_THROW(StagedFile(folder.File("no folder/a")), RuntimeError);
    EXPECT_EQ(folder.Names(), "a");
}

TEST(StagedFile, AFileThatMayNotBeWrittenIsNotReplaced) {
    const TestFolder folder;
    const std::string path = folder.Write("a", "old");
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
    // The superuser may write everything, so somebody else tries.
    const bool superuser = geteuid() == 0;
    if (superuser) {
        ASSERT_EQ(seteuid(65534), 0);
    }
    ErrorNumber number{0};
    try {
        const StagedFile file(path);
    } catch (const RuntimeError& error) {
        number = error.Number();
    }
    if (superuser) {
        ASSERT_EQ(seteuid(0), 0);
    }
    EXPECT_EQ(number, ErrorNumber::PermissionDenied);
    EXPECT_EQ(Slurp(path), "old");
}

TEST(StagedFile, IsAsSecretAsTheOldFileFromItsFirstByteOn) {
    const TestFolder folder;
    const std::string path = folder.Write("a", "old");
    ASSERT_EQ(chmod(path.c_str(), 0600), 0);
    StagedFile file(path);
    struct stat status {};
    ASSERT_EQ(stat((path + "x").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
}

TEST(StagedFile, AFileOfItsNameThatAnotherHandleWritesIsNotTakenAway) {
    const TestFolder folder;
    const std::string path = folder.Write("a", "old");
    const StagedFile first(path);
    EXPECT_FALSE(DropStaged(path + "x", std::chrono::milliseconds{0}));
    EXPECT_EQ(folder.Names(), "a ax");
}

TEST(StagedFile, AnAbandonedOneIsNobodys) {
    const TestFolder folder;
    const std::string path = folder.Write("a", "old");
    const SystemFile handle = StagedFile(path).Abandon();
    EXPECT_TRUE(handle.IsOpen());
    EXPECT_EQ(folder.Names(), "a ax");
    EXPECT_TRUE(DropStaged(path + "x", std::chrono::milliseconds{0}));
    EXPECT_EQ(folder.Names(), "a");
}

TEST(StagedFile, WhatIsNoFileIsNotReplaced) {
    const TestFolder folder;
    ASSERT_EQ(mkfifo(folder.File("pipe").c_str(), 0666), 0);
    EXPECT_THROW(StagedFile(folder.File("pipe")), RuntimeError);
    EXPECT_THROW(StagedFile("/dev/null"), RuntimeError);
    EXPECT_EQ(folder.Names(), "pipe");
}

} // namespace
} // namespace vardenix
