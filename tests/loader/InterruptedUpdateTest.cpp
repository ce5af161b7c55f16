#include "loader/InterruptedUpdate.h"

#include "files/KeptFiles.h"
#include "support/FolderFiles.h"
#include "support/PlainUser.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace vardenix {
namespace {

namespace fs = std::filesystem;
using tests::Files;
using tests::FilesIn;
using tests::Slurp;

constexpr uid_t Somebody = 65534;

class InterruptedUpdateTest : public testing::Test {
protected:
    void SetUp() override { Begin(); }
    void Begin() {
        fs::remove_all(Program());
        folder_.Write("program/old", "old bytes");
        folder_.Write("program/other", "other bytes");
    }
    // Half done: "old" has its new bytes, and "new" is there.
    void Interrupt() {
        KeptFiles kept(Program());
        kept.Keep({"old", "new"});
        fs::remove(folder_.File("program/old"));
        folder_.Write("program/old", "new bytes");
        folder_.Write("program/new", "new bytes");
    }
    std::string Program() const { return folder_.File("program"); }
    std::string Aside(const std::string& name) const {
        return folder_.File("program/UpdateKept/" + name);
    }
    // Files alone.
    Files Found() const {
        Files files = FilesIn(Program());
        std::erase_if(files, [](const auto& file) {
            return file.first.ends_with('/') || file.first == "Update.log";
        });
        return files;
    }
    std::string Log() const { return Slurp(folder_.File("program/Update.log")); }

    // Why, as told, written down, and the folder put out of the way.
    void ExpectSetAside(const std::string& why) {
        const Files before = Found();
        const PutBack outcome = PutBackInterrupted(Program());
        EXPECT_FALSE(outcome.Done);
        EXPECT_EQ(outcome.Told, "What an update kept of the old files in " +
                                    folder_.File("program/UpdateKept") +
                                    " does not count: " + why +
                                    ". Nothing of it has been put back; it lies in " +
                                    folder_.File("program/UpdateKept.aside") + " now.");
        EXPECT_NE(Log().find(outcome.Told), std::string::npos);
        EXPECT_EQ(Found(), before) << why;
        // The way of the next update is free.
        KeptFiles next(Program());
        EXPECT_EQ(next.SetAside(), "");
        next.Keep({"other"});
        next.LetGo();
        fs::remove_all(folder_.File("program/UpdateKept.aside"));
    }
    void Write(const std::string& list) {
        fs::remove_all(Aside("kept.lst"));
        folder_.Write("program/UpdateKept/kept.lst", list);
    }
    void Give(const std::string& path) {
        ASSERT_EQ(::lchown(path.c_str(), Somebody, Somebody), 0);
    }

    tests::TestFolder folder_;
    const Files old_{{"old", "old bytes"}, {"other", "other bytes"}};
    const Files half_{
        {"new", "new bytes"}, {"old", "new bytes"}, {"other", "other bytes"}};
};

TEST_F(InterruptedUpdateTest, WhatWasInterruptedIsPutBackAndWrittenDown) {
    Interrupt();
    EXPECT_EQ(Found(), half_);
    const PutBack outcome = PutBackInterrupted(Program());
    EXPECT_TRUE(outcome.Done);
    EXPECT_EQ(outcome.Told, "");
    EXPECT_EQ(Found(), old_);
    const size_t begun = Log().find("> An update was interrupted, and is put back\r\n");
    const size_t done = Log().find("> The files are the old ones\r\n");
    EXPECT_LT(begun, done);
    EXPECT_NE(done, std::string::npos);
    EXPECT_FALSE(fs::exists(folder_.File("program/UpdateKept")));
    EXPECT_FALSE(PutBackInterrupted(Program()).Done);
}

TEST(PutBackNotice, IsTakenOnce) {
    EXPECT_EQ(TakeNotice(), "");
    LeaveNotice();
    EXPECT_TRUE(TakeNotice().find("the old program has been put back") !=
                std::string::npos);
    EXPECT_EQ(TakeNotice(), "");
}

TEST_F(InterruptedUpdateTest, AListThatIsDamagedIsSetAsideAndHoldsNoLaterUpdateUp) {
    folder_.Write("mine", "precious");
    for (const auto& [list, why] :
         {std::pair{"", "kept.lst is cut"},
          {"+old\n-new", "kept.lst is cut"},
          {"old\n", "line 1 of kept.lst begins with neither + nor -"},
          {"+old\n\n", "line 2 of kept.lst begins with neither + nor -"},
          {"+old\n-../mine\n", "line 2 of kept.lst holds a slash"},
          {"+old\n-\n", "line 2 of kept.lst is empty"},
          {"+old\n-old\n", "line 2 of kept.lst comes twice"},
          {"+old\n-folder\n", "line 2 of kept.lst names what is no file"},
          {"-new\n", "kept.lst lacks files"},
          {"-old\n-new\n", "kept.lst lacks files"}}) {
        Begin();
        fs::create_directory(folder_.File("program/folder"));
        Interrupt();
        Write(list);
        ExpectSetAside(why);
    }
    EXPECT_EQ(Slurp(folder_.File("mine")), "precious");
}

TEST_F(InterruptedUpdateTest, AListThatIsNoListIsSetAside) {
    Interrupt();
    fs::remove(Aside("kept.lst"));
    fs::create_symlink(folder_.Write("list", "-old\n"), Aside("kept.lst"));
    ExpectSetAside("kept.lst is no list");
    Interrupt();
    Write(std::string((1 << 20) + 1, '\n'));
    ExpectSetAside("kept.lst is no list");
    Interrupt();
    fs::remove(Aside("1"));
    fs::create_directory(Aside("1"));
    ExpectSetAside("line 1 of kept.lst names what is no file");
}

TEST_F(InterruptedUpdateTest, WhatIsSetAsideStaysBesideWhatWasSetAsideBefore) {
    for (const char* name : {"UpdateKept.aside", "UpdateKept.aside2"}) {
        Interrupt();
        Write("+old");
        EXPECT_NE(PutBackInterrupted(Program()).Told.find(name), std::string::npos);
        EXPECT_EQ(Slurp(folder_.File("program/") + name + "/kept.lst"), "+old");
    }
}

TEST_F(InterruptedUpdateTest, FilesOfAnotherUserAreNeitherTakenNorTouched) {
    if (::geteuid() != 0)
        return; // only the superuser can give files away
    for (const auto& [file, why] :
         {std::pair{"UpdateKept", "it belongs to another user"},
          {"UpdateKept/kept.lst", "kept.lst belongs to another user"},
          {"UpdateKept/1", "line 1 of kept.lst names a file of another user"},
          {"old", "line 1 of kept.lst names a file of another user"},
          {"new", "line 2 of kept.lst names a file of another user"}}) {
        Begin();
        Interrupt();
        Give(folder_.File("program/") + file);
        ExpectSetAside(why);
    }
}

TEST_F(InterruptedUpdateTest, FilesOfWhomTheFolderBelongsToAreTaken) {
    if (::geteuid() != 0)
        return; // only the superuser can give files away
    Interrupt();
    for (const char* file :
         {"", "/UpdateKept", "/UpdateKept/kept.lst", "/UpdateKept/1", "/old", "/new"})
        Give(Program() + file);
    EXPECT_TRUE(PutBackInterrupted(Program()).Done);
    EXPECT_EQ(Found(), old_);
}

TEST_F(InterruptedUpdateTest, AnUpdateThatAnotherUserHasAtWorkIsLeftAlone) {
    if (::geteuid() != 0)
        return; // only the superuser can give files away
    Interrupt();
    tests::LetOthers(folder_.Path(), 7);
    tests::LetOthers(Program(), 7);
    fs::permissions(folder_.File("program/UpdateKept"), fs::perms::owner_all);
    Give(folder_.File("program/old"));
    fs::remove(folder_.File("program/Update.log"));
    // Of the superuser, in a folder of a third one's.
    ASSERT_EQ(::chown(Program().c_str(), 1234, 1234), 0);
    {
        const tests::PlainUser plain;
        EXPECT_FALSE(PutBackInterrupted(Program()).Done);
    }
    EXPECT_EQ(Found(), half_);
    EXPECT_TRUE(fs::exists(Aside("kept.lst")));
}

} // namespace
} // namespace vardenix
