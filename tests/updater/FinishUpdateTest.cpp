// The loader's part, and what it makes of a list that does not count.
#include "files/KeptFiles.h"
#include "loader/LoaderList.h"
#include "updater/UpdateWorld.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace vardenix {
namespace {

namespace fs = std::filesystem;
using tests::Files;
using tests::FilesIn;
using tests::Slurp;

constexpr uid_t Somebody = 65534;

class FinishUpdateTest : public testing::Test {
protected:
    FinishUpdateTest() {
        folder_.Write("program/a", "old a");
        folder_.Write("program/b", "old b");
        folder_.Write("program/a$", "new a");
        folder_.Write("program/Loader.lst", "a$\r\nb*\r\n");
    }
    void Keep() {
        KeptFiles(folder_.File("program")).Keep({"a", "a$", "b", "Loader.lst"});
    }
    bool Finish() { return FinishUpdate(folder_.File("program")); }
    Files Found() const {
        Files files = FilesIn(folder_.File("program"));
        files.erase("Update.log");
        return files;
    }
    std::string Log() const { return Slurp(folder_.File("program/Update.log")); }
    bool LogSays(const std::string& text) const {
        return Log().find(text) != std::string::npos;
    }
    void Give(const std::string& name) {
        const std::string path = folder_.File("program/" + name);
        ASSERT_EQ(::lchown(path.c_str(), Somebody, Somebody), 0);
    }

    tests::TestFolder folder_;
};

TEST_F(FinishUpdateTest, ItsStepsAreDoneAndTheListGoes) {
    Keep();
    EXPECT_FALSE(Finish());
    EXPECT_EQ(Found(), (Files{{"a", "new a"}}));
    EXPECT_TRUE(LogSays("> The loader has finished the update\r\n"));
}

TEST_F(FinishUpdateTest, OldFilesThatArePutBackAreSaidToBe) {
    Keep();
    fs::remove(folder_.File("program/a$"));
    EXPECT_TRUE(Finish());
    EXPECT_EQ(Found()["a"], "old a");
    EXPECT_TRUE(Log().ends_with("> The files are the old ones\r\n"));
}

TEST_F(FinishUpdateTest, WithoutKeptFilesAListThatLacksOneChangesNothing) {
    folder_.Write("program/Loader.lst", "a$\r\nb$\r\n");
    EXPECT_FALSE(Finish());
    EXPECT_EQ(Found(), (Files{{"a", "old a"}, {"a$", "new a"}, {"b", "old b"}}));
    EXPECT_TRUE(Log().ends_with("> Nothing was changed\r\n")) << Log();
}

TEST_F(FinishUpdateTest, WithoutKeptFilesWhatIsDoneStaysAndIsSaidTo) {
    // The second step finds that the first has taken its file.
    folder_.Write("program/Loader.lst", "a$\r\na$\r\n");
    EXPECT_FALSE(Finish());
    EXPECT_EQ(Found(), (Files{{"a", "new a"}, {"b", "old b"}}));
    EXPECT_TRUE(
        Log().ends_with("> No old files were kept; what was done so far stays\r\n"))
        << Log();
    EXPECT_FALSE(LogSays("The files are the old ones"));
}

TEST_F(FinishUpdateTest, WithADamagedListOfKeptFilesTheNewOnesTakeTheirPlaces) {
    Keep();
    folder_.Write("program/UpdateKept/kept.lst", "+a");
    EXPECT_FALSE(Finish());
    EXPECT_EQ(Found(), (Files{{"a", "new a"}, {"UpdateKept.aside/", ""}}));
    EXPECT_TRUE(LogSays(" does not count: kept.lst is cut. "));
    EXPECT_TRUE(LogSays("The loader has finished the update"));
}

TEST_F(FinishUpdateTest, AListOrAFileOfAnotherUserDoesNotCount) {
    if (::geteuid() != 0)
        return; // only the superuser can give files away
    for (const char* name : {"Loader.lst", "a$", "a", "b"}) {
        for (const auto& [file, bytes] :
             {std::pair{"a", "old a"}, {"b", "old b"}, {"a$", "new a"}}) {
            fs::remove(folder_.File(std::string("program/") + file));
            folder_.Write(std::string("program/") + file, bytes);
        }
        folder_.Write("program/Loader.lst", "a$\r\nb*\r\n");
        Give(name);
        EXPECT_FALSE(Finish());
        EXPECT_EQ(Found(), (Files{{"a", "old a"}, {"a$", "new a"}, {"b", "old b"}}))
            << name;
        EXPECT_TRUE(LogSays(std::string("/") + name + " belongs to another user"))
            << Log();
        EXPECT_TRUE(Log().ends_with("> Nothing was changed\r\n")) << name;
    }
}

} // namespace
} // namespace vardenix
