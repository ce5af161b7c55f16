// How a text becomes a real file: what stands as it is goes first, every other meaning is
// tried, and what the system refuses is never taken for something that is not there.
#include "files/FileNames.h"
#include "support/PlainUser.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <sys/resource.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace vardenix {
namespace {

using tests::LetOthers;
using tests::PlainUser;
using tests::Slurp;
using tests::TestFolder;

// The number of the error that `work` ends in, 0 when it does not.
int ErrorOf(const std::function<void()>& work, std::string* detail = nullptr) {
    try {
        work();
    } catch (const RuntimeError& error) {
        if (detail != nullptr)
            *detail = error.Detail();
        return error.NumberValue();
    }
    return 0;
}

// The least rights that let others enter a folder and nothing more.
void LetOthersOnlyEnter(const std::string& folder) {
    fs::permissions(folder, static_cast<fs::perms>(0711));
}

class FileLookup : public testing::Test {
protected:
    // The real path of a name below the folder, which has no blanks of its own to lose.
    std::string Real(const std::string& name) const {
        const std::string path = TextOfPath(RealPath(folder_.File(name)));
        return path.substr(folder_.Path().size() + 1);
    }
    std::string ToRead(const std::string& name) const {
        const std::string path = TextOfPath(RealPathToRead(folder_.File(name)));
        return path.substr(folder_.Path().size() + 1);
    }

    TestFolder folder_;
};

TEST_F(FileLookup, ExactNamesAreFoundInFoldersThatCannotBeListed) {
    folder_.Write("closed/theater/x.L2", "x");
    LetOthers(folder_.Path(), 5);
    LetOthersOnlyEnter(folder_.File("closed"));
    LetOthersOnlyEnter(folder_.File("closed/theater"));
    const PlainUser user;
    EXPECT_EQ(Real("closed/theater/x.L2"), "closed/theater/x.L2");
    EXPECT_EQ(Real("closed\\theater\\x.L2"), "closed/theater/x.L2");
    EXPECT_TRUE(FileExists(folder_.File("closed/theater/x.L2")));
    EXPECT_TRUE(FolderExists(folder_.File("closed/theater/")));
}

TEST_F(FileLookup, NobodyKnowsWhatElseIsInAFolderThatCannotBeListed) {
    folder_.Write("closed/x.L2", "x");
    LetOthers(folder_.Path(), 5);
    LetOthersOnlyEnter(folder_.File("closed"));
    const PlainUser user;
    std::string detail;
    EXPECT_EQ(ErrorOf([&] { FileExists(folder_.File("closed/X.L2")); }, &detail), 70);
    EXPECT_EQ(detail, "listing " + folder_.File("closed") + ": Permission denied");
}

TEST_F(FileLookup, AFolderAboveThatCannotBeListedHidesNothing) {
    folder_.Write("closed/open/x.L2", "x");
    LetOthers(folder_.Path(), 5);
    LetOthersOnlyEnter(folder_.File("closed"));
    LetOthers(folder_.File("closed/open"), 5);
    const PlainUser user;
    EXPECT_EQ(Real("closed/open/X.l2"), "closed/open/x.L2");
    // A slip of the pen is "not there", though other folders of "closed" are not seen.
    EXPECT_FALSE(FileExists(folder_.File("closed/open/none/x.L2")));
}

TEST_F(FileLookup, EveryFolderThatTheTextCanMeanIsTried) {
    fs::create_directories(folder_.File("Games/Falcon"));
    folder_.Write("gaMes/falcon/other", "x");
    folder_.Write("games/falcon/Theater.lst", "x");
    // No folder of the very name, and one of the very name that leads to nothing.
    EXPECT_EQ(Real("GAMES/FALCON/theater.lst"), "games/falcon/Theater.lst");
    EXPECT_EQ(Real("Games/falcon/theater.lst"), "games/falcon/Theater.lst");
    EXPECT_TRUE(FileExists(folder_.File("GAMES\\FALCON\\THEATER.LST")));
    EXPECT_FALSE(FileExists(folder_.File("GAMES\\FALCON\\THEATER.LS")));
}

TEST_F(FileLookup, AFolderThatIsThereAsItStandsIsTheOneMeant) {
    fs::create_directory(folder_.File("out"));
    folder_.Write("OUT/X.L2", "another theater");
    folder_.Write("OUT/sub/y", "x");
    EXPECT_EQ(Real("out/X.L2"), "out/X.L2");
    EXPECT_EQ(Real("out/x.l2"), "out/x.l2");
    EXPECT_FALSE(FileExists(folder_.File("out/X.L2")));
    // Only a file that is to be found, not written, is looked for beside an empty folder.
    EXPECT_EQ(ToRead("out/X.L2"), "OUT/X.L2");
    folder_.Write("out/something", "x");
    EXPECT_EQ(ToRead("out/X.L2"), "out/X.L2");
}

TEST_F(FileLookup, WhatIsNotThereIsNamedInTheFoldersThatAre) {
    fs::create_directories(folder_.File("Sub/Deep"));
    EXPECT_EQ(Real("sub\\deep\\New\\File.Bin"), "Sub/Deep/New/File.Bin");
    EXPECT_EQ(Real("sub\\NEW"), "Sub/NEW");
    EXPECT_EQ(Real("none/deep"), "none/deep");
    EXPECT_EQ(TextOfPath(RealPath("no such thing/x")), "no such thing/x");
    EXPECT_EQ(TextOfPath(RealPath("")), "");
}

TEST_F(FileLookup, AFolderInTheWayDoesNotHideAFile) {
    fs::create_directory(folder_.File("THEATER.L2"));
    folder_.Write("theater.l2", "x");
    EXPECT_TRUE(FileExists(folder_.File("Theater.L2")));
    EXPECT_TRUE(FileExists(folder_.File("THEATER.L2")));
    EXPECT_TRUE(FolderExists(folder_.File("theater.l2")));
    EXPECT_EQ(FileLength(folder_.File("Theater.L2")), 1U);
}

TEST_F(FileLookup, ARefusalBehindOneNameStandsOnlyWhenNoOtherLeadsAnywhere) {
    folder_.Write("GAMES/x", "x");
    folder_.Write("games/x", "x");
    LetOthers(folder_.Path(), 5);
    LetOthers(folder_.File("GAMES"), 0);
    LetOthers(folder_.File("games"), 5);
    const PlainUser user;
    EXPECT_EQ(Real("Games/x"), "games/x");
    EXPECT_EQ(ErrorOf([&] { FileExists(folder_.File("Games/y")); }), 70);
    // Who names the closed one exactly means that one.
    EXPECT_EQ(ErrorOf([&] { FileExists(folder_.File("GAMES/x")); }), 70);
}

TEST_F(FileLookup, WhatMayNotBeLookedAtIsNotAbsent) {
    folder_.Write("locked/x", "x");
    LetOthers(folder_.Path(), 5);
    LetOthers(folder_.File("locked"), 4); // its names can be read, and no more
    const PlainUser user;
    const std::string file = folder_.File("locked/x");
    std::string detail;
    EXPECT_EQ(ErrorOf([&] { FileExists(file); }, &detail), 70);
    EXPECT_EQ(detail, "looking at " + file + ": Permission denied");
    EXPECT_EQ(ErrorOf([&] { FolderExists(file); }), 70);
    EXPECT_EQ(ErrorOf([&] { FileLength(file); }), 70);
    EXPECT_EQ(ErrorOf([&] { DeleteFile(file); }), 70);
    EXPECT_EQ(ErrorOf([&] { SameFile(file, folder_.File("other")); }), 70);
    // Telling of it is no error of its own.
    EXPECT_EQ(ShownPath(folder_.File("locked\\x")), file);
}

TEST_F(FileLookup, TooManyOpenFilesAreNoAbsenceEither) {
    folder_.Write("theater.l2", "x");
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const int next = open("/dev/null", O_RDONLY);
    rlimit none{static_cast<rlim_t>(next), before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    close(open("/dev/null", O_RDONLY));
    const int number = ErrorOf([&] { FileExists(folder_.File("THEATER.L2")); });
    setrlimit(RLIMIT_NOFILE, &before);
    close(next);
    EXPECT_EQ(number, 75);
    EXPECT_TRUE(FileExists(folder_.File("THEATER.L2")));
}

TEST_F(FileLookup, BelowAFolderNothingElseIsLookedAt) {
    folder_.Write("KOREA/terrain/Theater.L2", "x");
    folder_.Write("korea/other", "x");
    const fs::path korea = folder_.File("korea");
    EXPECT_EQ(RealPathBelow(korea, "terrain\\theater.l2"), korea / "terrain/theater.l2");
    EXPECT_EQ(RealPathBelow(folder_.File("KOREA"), "\\TERRAIN\\theater.l2"),
              folder_.File("KOREA/terrain/Theater.L2"));
}

TEST_F(FileLookup, LinksAreFollowedToTheirEnd) {
    folder_.Write("a/file", "x");
    fs::create_symlink("a/file", folder_.File("one"));
    fs::create_symlink("one", folder_.File("two"));
    fs::create_symlink("nowhere", folder_.File("lost"));
    fs::create_symlink("round", folder_.File("round"));
    EXPECT_EQ(FollowLinks(folder_.File("two")), folder_.File("a/file"));
    EXPECT_EQ(FollowLinks(folder_.File("lost")), folder_.File("nowhere"));
    EXPECT_TRUE(SameFile(folder_.File("two"), folder_.File("A/FILE")));
    // Both would be one new file.
    EXPECT_TRUE(SameFile(folder_.File("lost"), folder_.File("nowhere")));
    EXPECT_FALSE(SameFile(folder_.File("lost"), folder_.File("one")));
    EXPECT_EQ(ErrorOf([&] { FollowLinks(folder_.File("round")); }), 75);
}

TEST_F(FileLookup, AnIndexOfAFolderThatCannotBeListedFindsNamesAsTheyStand) {
    folder_.Write("dds/H1.DDS", "x");
    LetOthers(folder_.Path(), 5);
    LetOthersOnlyEnter(folder_.File("dds"));
    const PlainUser user;
    const FolderIndex index(folder_.File("dds"));
    EXPECT_TRUE(index.HasFile("H1.DDS"));
    EXPECT_FALSE(index.HasFile("h1.dds"));
    EXPECT_EQ(index.Find("H1.DDS"), folder_.File("dds/H1.DDS"));
    EXPECT_EQ(index.Find("h1.dds"), std::nullopt);
}

TEST_F(FileLookup, AnIndexPrefersTheVeryName) {
    folder_.Write("H1.DDS", "x");
    folder_.Write("h1.dds", "x");
    fs::create_directory(folder_.File("A.dds"));
    folder_.Write("a.dds", "x");
    const FolderIndex index(folder_.Path());
    EXPECT_EQ(index.Find("h1.dds"), folder_.File("h1.dds"));
    EXPECT_EQ(index.Find("H1.dds"), folder_.File("H1.DDS"));
    EXPECT_TRUE(index.HasFile("A.DDS"));
}

TEST_F(FileLookup, AFolderOfOursGoesByItsVeryNameAndNoLinkIsFollowed) {
    folder_.Write("temp/of the user", "x");
    folder_.Write("elsewhere/precious", "x");
    DeleteFolderTree(folder_.Path() + "\\Temp\\");
    EXPECT_EQ(Slurp(folder_.File("temp/of the user")), "x");
    fs::create_directory_symlink("elsewhere", folder_.File("Temp"));
    DeleteFolderTree(folder_.Path() + "\\Temp\\");
    EXPECT_EQ(folder_.Names(), "elsewhere temp");
    folder_.Write("Temp/scratch", "x");
    fs::create_directory_symlink(folder_.File("elsewhere"), folder_.File("Temp/link"));
    DeleteFolderTree(folder_.Path() + "\\Temp\\");
    EXPECT_EQ(folder_.Names(), "elsewhere temp");
    EXPECT_EQ(Slurp(folder_.File("elsewhere/precious")), "x");
}

} // namespace
} // namespace vardenix
