#include "files/RunFolders.h"

#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>

namespace vardenix {
namespace {

using tests::TestFolder;

// Another program that has taken a name, until it is killed.
class OtherRun {
public:
    explicit OtherRun(const std::string& home) {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        child_ = fork();
        if (child_ == 0) {
            const RunName name(home);
            if (write(ready[1], name.Text().data(), 1) == 1)
                pause();
            _exit(1);
        }
        EXPECT_EQ(read(ready[0], &Name, 1), 1);
        close(ready[0]);
        close(ready[1]);
    }
    OtherRun(const OtherRun&) = delete;
    OtherRun& operator=(const OtherRun&) = delete;
    ~OtherRun() {
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
    }

    char Name = 0;

private:
    pid_t child_ = 0;
};

TEST(RunFolders, OnlyWhatLivingRunsHaveStays) {
    const TestFolder folder;
    const std::string home = folder.File("Temp");
    const std::string second = folder.File("UpdateTemp");
    {
        const OtherRun other(home);
        EXPECT_EQ(other.Name, '1');
        folder.Write("Temp/1/mine", "x");
        folder.Write("Temp/2/nobody's", "x");
        folder.Write("Temp/stray", "x");
        folder.Write("Temp/7.lock", "");
        folder.Write("UpdateTemp/1/mine", "x");
        folder.Write("UpdateTemp/7/nobody's", "x");
        ClearRunFolders(second, home);
        ClearRunFolders(home, home);
        EXPECT_EQ(folder.Names("Temp"), "1 1.lock");
        EXPECT_EQ(folder.Names("Temp/1"), "mine");
        EXPECT_EQ(folder.Names("UpdateTemp"), "1");
        EXPECT_EQ(RunName(home).Text(), "2");
    }
    ClearRunFolders(second, home);
    ClearRunFolders(home, home);
    EXPECT_EQ(folder.Names(), "");
}

TEST(RunFolders, ANameIsTakenForAsLongAsItsOwnerLives) {
    const TestFolder folder;
    std::optional<RunName> first(folder.File("Temp"));
    EXPECT_EQ(first->Text(), "1");
    const RunName second(folder.File("Temp"));
    EXPECT_EQ(second.Text(), "2");
    first.reset();
    ClearRunFolders(folder.File("Temp"), folder.File("Temp"));
    EXPECT_EQ(folder.Names("Temp"), "2.lock");
    EXPECT_EQ(RunName(folder.File("Temp")).Text(), "1");
}

TEST(HeldFiles, NobodyElseCanTakeOneThatIsHeldOrIsNoPlainFile) {
    const TestFolder folder;
    std::optional<HeldFile> made = HeldFile::Make(folder.File("log"));
    ASSERT_TRUE(made);
    EXPECT_FALSE(HeldFile::Make(folder.File("log")));
    EXPECT_FALSE(HeldFile::Take(folder.File("log")));
    made.reset();
    std::filesystem::create_symlink(folder.File("log"), folder.File("link"));
    EXPECT_FALSE(HeldFile::Take(folder.File("link")));
    EXPECT_FALSE(HeldFile::Take(folder.Path()));
    EXPECT_FALSE(HeldFile::Take(folder.File("nothing")));
    made = HeldFile::Take(folder.File("log"));
    ASSERT_TRUE(made);
    made->Delete();
    EXPECT_EQ(folder.Names(), "link");
}

} // namespace
} // namespace vardenix
