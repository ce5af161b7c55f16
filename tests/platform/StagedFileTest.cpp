#include "platform/StagedFile.h"

#include "platform/RuntimeError.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace vardenix {
namespace {

using tests::Slurp;
using tests::Spill;
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

// The four states that a kill can leave.
class PairAfterKill : public testing::Test {
protected:
    void SetUp() override {
        pathL_ = folder_.Write("theater.l2", "old L");
        pathO_ = folder_.Write("theater.o2", "old O");
    }
    PairRecovery Recover() {
        return RecoverPair(folder_.File("THEATER.L2"), folder_.File("THEATER.O2"));
    }
    TestFolder folder_;
    std::string pathL_;
    std::string pathO_;
};

TEST_F(PairAfterKill, NothingStagedIsNothingToDo) {
    EXPECT_EQ(Recover(), PairRecovery::Nothing);
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
}

TEST_F(PairAfterKill, AStagedLAloneIsDropped) {
    folder_.Write("theater.l2x", "half of new");
    EXPECT_EQ(Recover(), PairRecovery::Dropped);
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
    EXPECT_EQ(Slurp(pathL_), "old L");
}

TEST_F(PairAfterKill, TwoStagedFilesAreDropped) {
    folder_.Write("theater.l2x", "new L");
    folder_.Write("theater.o2x", "half of");
    EXPECT_EQ(Recover(), PairRecovery::Dropped);
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
    EXPECT_EQ(Slurp(pathL_), "old L");
    EXPECT_EQ(Slurp(pathO_), "old O");
}

TEST_F(PairAfterKill, AStagedOAloneFinishesTheSave) {
    Spill(pathL_, "new L");
    folder_.Write("theater.o2x", "new O");
    EXPECT_EQ(Recover(), PairRecovery::Finished);
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
    EXPECT_EQ(Slurp(pathO_), "new O");
}

TEST_F(PairAfterKill, ANewSaveMendsTheOldOneFirst) {
    Spill(pathL_, "new L");
    folder_.Write("theater.o2x", "new O");
    {
        const StagedPair pair(pathL_, pathO_);
        EXPECT_EQ(Slurp(pathO_), "new O");
    }
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
}

TEST_F(PairAfterKill, BothChangeTogether) {
    StagedPair pair(pathL_, pathO_);
    pair.L.WriteText("new L");
    pair.O.WriteText("new O");
    EXPECT_EQ(Slurp(pathL_) + Slurp(pathO_), "old Lold O");
    pair.Commit();
    EXPECT_EQ(Slurp(pathL_) + Slurp(pathO_), "new Lnew O");
    EXPECT_EQ(folder_.Names(), "theater.l2 theater.o2");
}

} // namespace
} // namespace vardenix
