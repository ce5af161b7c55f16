// Updates that are killed, run out of disk or meet a fault between any two steps, each in
// a process of its own. Whatever happens, the next start of the program finds the old
// files, whole, or the new ones, whole.
#include "support/FaultShimLink.h"
#include "updater/UpdateWorld.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

namespace fs = std::filesystem;
using tests::Files;

class KilledUpdate : public testing::Test {
protected:
    void MakeOld() {
        fs::remove_all(folder_.File("program"));
        for (const auto& [name, bytes] : Old)
            folder_.Write("program/" + name, bytes);
        for (const auto& [name, bytes] : New)
            if (name != "registry.ini")
                folder_.Write("program/UpdateTemp/" + name, bytes);
    }
    // The exit code; 99 when it was killed by the fault.
    int Run(const char* what, const char* mode, int at) {
        return tests::RunProgram({UPDATE_ONCE, what, folder_.File("program")},
                                 shim_.Environment(mode, at))
            .ExitCode;
    }
    int Run(const char* what) {
        return tests::RunProgram({UPDATE_ONCE, what, folder_.File("program")}).ExitCode;
    }
    // 'o' the old files, 'n' the new ones, '?' neither.
    char Found() {
        Files files = tests::FilesIn(folder_.File("program"));
        files.erase("UpdateTemp/");
        files.erase("Update.log");
        return files == Old ? 'o' : files == New ? 'n' : '?';
    }
    // After a start of the program.
    char FoundAfterStart() {
        EXPECT_EQ(Run("putback"), 0);
        return Found();
    }
    // One letter for each step, until nothing goes wrong any more.
    std::string KillEveryStepOf(const char* what, const char* mode) {
        std::string found;
        for (int at = 1; at < 300; ++at) {
            MakeOld();
            if (std::string_view(what) != "apply") {
                EXPECT_EQ(Run("apply"), 0);
            }
            const int code = Run(what, mode, at);
            found += FoundAfterStart();
            EXPECT_NE(found.back(), '?') << what << " " << mode << " " << at;
            if (found.back() == '?')
                for (const auto& [name, bytes] : tests::FilesIn(folder_.File("program")))
                    ADD_FAILURE() << name << ": " << bytes;
            if (code == 0 && !Interfered(what, mode, found))
                return found;
        }
        ADD_FAILURE() << "there is no end";
        return found;
    }
    // The loader tells nobody that something failed; its steps have an end when it works.
    static bool Interfered(std::string_view what, std::string_view mode,
                           const std::string& found) {
        return what == "finish" && mode != "kill" && found.back() != 'n';
    }

    const Files Old{{"NoTile.jpg", "old picture"},
                    {"old.dll", "to be deleted"},
                    {"registry.ini", "[other]\r\nkey=value\r\n"},
                    {"vardenix", "old program"}};
    const Files New{{"NoTile.jpg", "new picture"},
                    {"new file.txt", "a new file"},
                    {"registry.ini",
                     "[other]\r\nkey=value\r\n[SOFTWARE\\Vardenix]\r\nVersion=3.1.0\r\n"},
                    {"vardenix", "new program"}};
    tests::TestFolder folder_;
    tests::FaultShimLink shim_{FAULT_SHIM};
};

TEST_F(KilledUpdate, UndisturbedItIsTheNewProgram) {
    MakeOld();
    ASSERT_EQ(Run("apply"), 0);
    EXPECT_EQ(Found(), '?'); // the loader has still to come
    ASSERT_EQ(Run("finish"), 0);
    EXPECT_EQ(Found(), 'n');
    EXPECT_EQ(FoundAfterStart(), 'n');
}

TEST_F(KilledUpdate, AStartBeforeTheLoaderBringsTheOldProgramBack) {
    MakeOld();
    ASSERT_EQ(Run("apply"), 0);
    EXPECT_EQ(FoundAfterStart(), 'o');
    // A loader that comes too late has nothing to do.
    EXPECT_EQ(Run("finish"), 0);
    EXPECT_EQ(Found(), 'o');
}

TEST_F(KilledUpdate, AKillWhileTheFilesTakeTheirPlacesLeavesTheOldOnes) {
    const std::string found = KillEveryStepOf("apply", "kill");
    EXPECT_EQ(found, std::string(found.size(), 'o'));
    EXPECT_GT(found.size(), 20U);
}

TEST_F(KilledUpdate, AKillOfTheLoaderLeavesTheOldOnesOrTheNewOnes) {
    const std::string found = KillEveryStepOf("finish", "kill");
    EXPECT_EQ(found.find_first_not_of("on"), std::string::npos) << found;
    EXPECT_EQ(found.find("no"), std::string::npos) << found;
    EXPECT_EQ(found.front(), 'o');
    EXPECT_EQ(found.back(), 'n');
}

TEST_F(KilledUpdate, AKillWhileFilesArePutBackIsPutBackAtTheNextStart) {
    const std::string found = KillEveryStepOf("putback", "kill");
    EXPECT_EQ(found, std::string(found.size(), 'o'));
    EXPECT_GT(found.size(), 8U);
}

TEST_F(KilledUpdate, AFullDiskLeavesTheOldOnes) {
    const std::string found = KillEveryStepOf("apply", "full");
    EXPECT_EQ(found, std::string(found.size(), 'o'));
}

TEST_F(KilledUpdate, ADiskThatFailsOnceLeavesTheOldOnes) {
    const std::string found = KillEveryStepOf("apply", "fail");
    EXPECT_EQ(found, std::string(found.size(), 'o'));
}

TEST_F(KilledUpdate, ALoaderOnADiskThatFailsOncePutsTheOldOnesBack) {
    KillEveryStepOf("finish", "fail");
}

TEST_F(KilledUpdate, ALoaderThatLacksAFilePutsTheOldOnesBack) {
    MakeOld();
    ASSERT_EQ(Run("apply"), 0);
    fs::remove(folder_.File("program/vardenix$"));
    ASSERT_EQ(Run("finish"), 0);
    EXPECT_EQ(Found(), 'o');
    const std::string log = tests::Slurp(folder_.File("program/Update.log"));
    EXPECT_NE(log.find("The loader could not finish the update. "), std::string::npos);
    EXPECT_TRUE(log.ends_with("The files are the old ones\r\n"));
}

TEST_F(KilledUpdate, AListThatNamesOtherFilesPutsTheOldOnesBack) {
    MakeOld();
    folder_.Write("precious", "mine");
    ASSERT_EQ(Run("apply"), 0);
    folder_.Write("program/Loader.lst", "vardenix$\r\n../precious*\r\n");
    ASSERT_EQ(Run("finish"), 0);
    EXPECT_EQ(Found(), 'o');
    EXPECT_EQ(tests::Slurp(folder_.File("precious")), "mine");
}

TEST_F(KilledUpdate, AListWithoutKeptFilesIsCarriedOutAllTheSame) {
    MakeOld();
    folder_.Write("program/vardenix$", "new program");
    folder_.Write("program/Loader.lst", "vardenix$\r\nOLD.DLL*\r\n");
    ASSERT_EQ(Run("finish"), 0);
    Files expected = Old;
    expected["vardenix"] = "new program";
    expected.erase("old.dll");
    Files found = tests::FilesIn(folder_.File("program"));
    found.erase("UpdateTemp/");
    found.erase("Update.log");
    EXPECT_EQ(found, expected);
}

TEST_F(KilledUpdate, ALinkInANewFilesPlaceIsNotTaken) {
    MakeOld();
    ASSERT_EQ(Run("apply"), 0);
    fs::remove(folder_.File("program/vardenix$"));
    fs::create_symlink("/etc/passwd", folder_.File("program/vardenix$"));
    ASSERT_EQ(Run("finish"), 0);
    EXPECT_EQ(Found(), 'o');
}

TEST_F(KilledUpdate, ALinkThatIsReplacedIsALinkAgainWhenItIsPutBack) {
    MakeOld();
    folder_.Write("elsewhere", "old picture");
    fs::remove(folder_.File("program/NoTile.jpg"));
    fs::create_symlink(folder_.File("elsewhere"), folder_.File("program/NoTile.jpg"));
    ASSERT_EQ(Run("apply"), 0);
    EXPECT_EQ(tests::Slurp(folder_.File("elsewhere")), "old picture");
    EXPECT_EQ(FoundAfterStart(), 'o');
    EXPECT_TRUE(fs::is_symlink(folder_.File("program/NoTile.jpg")));
}

} // namespace
} // namespace vardenix
