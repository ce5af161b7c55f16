#include "files/KeptFiles.h"

#include "support/ErrorOf.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <unistd.h>

namespace vardenix {
namespace {

using tests::Slurp;
using tests::Spill;
using tests::TestFolder;

constexpr uid_t Somebody = 65534;

// A file that an update replaces as it must: another file takes its name.
void Replace(const std::string& path, const std::string& bytes) {
    std::filesystem::remove(path);
    Spill(path, bytes);
}

TEST(KeptFiles, AreListedWithTheirLinesAndPutBack) {
    const TestFolder folder;
    const std::string program = folder.Write("program", "old");
    const std::string gone = folder.Write("gone", "deleted by the update");
    KeptFiles kept(folder.Path());
    EXPECT_FALSE(kept.Any());
    kept.Keep({"program", "made", "gone"});
    EXPECT_TRUE(kept.Any());
    EXPECT_EQ(Slurp(folder.File("UpdateKept/kept.lst")), "+program\n-made\n+gone\n");
    EXPECT_EQ(Slurp(folder.File("UpdateKept/3")), "deleted by the update");

    Replace(program, "new");
    Spill(folder.File("made"), "new");
    std::filesystem::remove(gone);
    kept.PutBack();
    EXPECT_EQ(Slurp(program), "old");
    EXPECT_EQ(Slurp(gone), "deleted by the update");
    EXPECT_EQ(folder.Names(), "gone program");
    EXPECT_FALSE(kept.Any());
}

TEST(KeptFiles, NewOnesStayOnceTheyAreLetGo) {
    const TestFolder folder;
    const std::string program = folder.Write("program", "old");
    KeptFiles kept(folder.Path());
    kept.Keep({"program"});
    Replace(program, "new");
    kept.LetGo();
    EXPECT_EQ(Slurp(program), "new");
    EXPECT_EQ(folder.Names(), "program");
}

TEST(KeptFiles, WhoeverComesNextPutsBackAlsoAfterAPartOfIt) {
    const TestFolder folder;
    folder.Write("a", "put back already");
    folder.Write("b", "new");
    folder.Write("made", "new");
    folder.Write("UpdateKept/2", "old b");
    folder.Write("UpdateKept/kept.lst", "+a\n+b\n-made\n");
    {
        KeptFiles kept(folder.Path());
        ASSERT_TRUE(kept.Any());
        kept.PutBack();
    }
    EXPECT_EQ(Slurp(folder.File("a")), "put back already");
    EXPECT_EQ(Slurp(folder.File("b")), "old b");
    EXPECT_EQ(folder.Names(), "a b");
    EXPECT_FALSE(KeptFiles(folder.Path()).Any());
}

TEST(KeptFiles, WithoutAListNothingWasChangedYet) {
    const TestFolder folder;
    folder.Write("a", "old");
    folder.Write("UpdateKept/1", "half a copy");
    KeptFiles kept(folder.Path());
    EXPECT_FALSE(kept.Any());
    kept.Clear();
    EXPECT_EQ(Slurp(folder.File("a")), "old");
    EXPECT_EQ(folder.Names(), "a");
}

TEST(KeptFiles, AListThatNamesAnythingElseIsSetAsideWhole) {
    for (const char* line : {"+../outside", "-/etc/passwd", "=a", "", "+", "a"}) {
        const TestFolder folder;
        folder.Write("outside", "stays");
        folder.Write("program/made", "stays");
        folder.Write("program/UpdateKept/kept.lst", std::string("-made\n") + line + "\n");
        const KeptFiles kept(folder.File("program"));
        EXPECT_FALSE(kept.Any()) << line;
        EXPECT_NE(kept.SetAside(), "") << line;
        EXPECT_EQ(Slurp(folder.File("outside")), "stays") << line;
        EXPECT_EQ(Slurp(folder.File("program/made")), "stays") << line;
    }
}

TEST(KeptFiles, AFileOfAnotherUserIsNoneToKeep) {
    if (::geteuid() != 0)
        return; // only the superuser can give files away
    const TestFolder folder;
    folder.Write("a", "old");
    const std::string other = folder.Write("other", "other bytes");
    ASSERT_EQ(::lchown(other.c_str(), Somebody, Somebody), 0);
    KeptFiles kept(folder.Path());
    const RuntimeError error = tests::ErrorOf([&] { kept.Keep({"a", "other"}); });
    EXPECT_EQ(error.NumberValue(), 70);
    EXPECT_TRUE(error.Detail().ends_with("/other belongs to another user"))
        << error.Detail();
    EXPECT_EQ(folder.Names(), "a other");
}

TEST(KeptFiles, AFolderIsNotKept) {
    const TestFolder folder;
    folder.Write("a", "old");
    folder.Write("folder/file", "x");
    KeptFiles kept(folder.Path());
    EXPECT_THROW(kept.Keep({"a", "folder"}), RuntimeError);
    EXPECT_FALSE(kept.Any());
    EXPECT_EQ(folder.Names(), "a folder");
}

} // namespace
} // namespace vardenix
