#include "files/OwnFolders.h"

#include "support/Environment.h"
#include "support/PlainUser.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <pwd.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace vardenix {
namespace {

using tests::Environment;
using tests::LetOthers;
using tests::PlainUser;
using tests::Slurp;
using tests::TestFolder;

unsigned RightsOf(const std::string& path) {
    return static_cast<unsigned>(fs::symlink_status(path).permissions()) & 07777;
}

// A program's folder that its user may not write to, and a home.
class OwnFolders : public testing::Test {
protected:
    OwnFolders() {
        fs::create_directory(folder_.File("program"));
        fs::create_directory(folder_.File("home"));
        LetOthers(folder_.Path(), 5);
        LetOthers(folder_.File("program"), 5);
        LetOthers(folder_.File("home"), 7);
    }
    std::string Own() const { return OwnFilesFolder(folder_.File("program")); }

    TestFolder folder_;
    Environment data_{"XDG_DATA_HOME", nullptr};
    Environment home_{"HOME", folder_.File("home").c_str()};
};

TEST_F(OwnFolders, AreTheProgramsFolderWhereItCanBeWritten) {
    LetOthers(folder_.File("program"), 7);
    const PlainUser user;
    EXPECT_EQ(Own(), folder_.File("program"));
}

TEST_F(OwnFolders, AreTheUsersDataFolderElseAndAreNotMadeByAsking) {
    const PlainUser user;
    EXPECT_EQ(Own(), folder_.File("home/.local/share/vardenix"));
    EXPECT_TRUE(fs::is_empty(folder_.File("home")));
    const Environment data("XDG_DATA_HOME", "/my data");
    EXPECT_EQ(Own(), "/my data/vardenix");
    const Environment relative("XDG_DATA_HOME", "data");
    EXPECT_EQ(Own(), folder_.File("home/.local/share/vardenix"));
}

TEST_F(OwnFolders, AreNotThoseOfAPackageWhoeverMayWriteThere) {
    LetOthers(folder_.File("program"), 7);
    folder_.Write("program/by-package", "");
    const PlainUser user;
    EXPECT_EQ(Own(), folder_.File("home/.local/share/vardenix"));
}

TEST_F(OwnFolders, AreMadeForTheirUserAlone) {
    const PlainUser user;
    MakeOwnFilesFolder(Own());
    EXPECT_EQ(RightsOf(Own()), 0700U);
    // One that the user has moved to another disk stays as it is.
    fs::rename(Own(), folder_.File("home/elsewhere"));
    fs::create_directory_symlink(folder_.File("home/elsewhere"), Own());
    MakeOwnFilesFolder(Own());
    EXPECT_TRUE(fs::is_symlink(Own()));
}

TEST_F(OwnFolders, OfASessionWithoutHomeAreWhereTheSystemSaysThatItIs) {
    const PlainUser user;
    const Environment homeless("HOME", nullptr);
    const std::string listed = getpwuid(geteuid())->pw_dir;
    EXPECT_EQ(Own(), listed + "/.local/share/vardenix");
    const Environment relative("HOME", "tmp");
    EXPECT_EQ(Own(), listed + "/.local/share/vardenix");
}

TEST_F(OwnFolders, OfNobodyAtAllAreASentence) {
    try {
        MakeOwnFilesFolder("");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.NumberValue(), 76);
        EXPECT_NE(error.Detail().find("HOME"), std::string::npos);
    }
}

TEST_F(OwnFolders, ScratchIsAFolderAndNoLinkToOne) {
    const std::string scratch = folder_.File("home/deep/Temp");
    MakeScratchFolder(scratch + "\\");
    EXPECT_EQ(RightsOf(scratch), 0700U);
    MakeScratchFolder(scratch); // another copy was quicker
    fs::remove(scratch);
    fs::create_directory_symlink(folder_.File("home"), scratch);
    EXPECT_THROW(MakeScratchFolder(scratch), RuntimeError);
}

// The system's folder for temporary files, in which anybody may be first.
class OwnTemporary : public OwnFolders {
protected:
    OwnTemporary() {
        fs::create_directory(folder_.File("tmp"));
        LetOthers(folder_.File("tmp"), 7);
    }
    std::string Name(const std::string& behind = "") const {
        return folder_.File("tmp/vardenix-") + std::to_string(geteuid()) + behind;
    }
    Environment temporary_{"TMPDIR", folder_.File("tmp").c_str()};
};

TEST_F(OwnTemporary, IsForItsUserAlone) {
    const PlainUser user;
    EXPECT_EQ(OwnTemporaryFolder(), Name());
    EXPECT_EQ(RightsOf(Name()), 0700U);
    // A run after this one finds the same folder with what is in it.
    tests::Spill(Name() + "/point", "x");
    EXPECT_EQ(OwnTemporaryFolder(), Name());
    EXPECT_EQ(Slurp(Name() + "/point"), "x");
    LetOthers(Name(), 7);
    EXPECT_EQ(OwnTemporaryFolder(), Name());
    EXPECT_EQ(RightsOf(Name()), 0700U);
}

TEST_F(OwnTemporary, IsNeverALinkOrAFileThatSomebodyPutThere) {
    const PlainUser user;
    fs::create_directory_symlink(folder_.File("home"), Name());
    tests::Spill(Name("-1"), "x");
    EXPECT_EQ(OwnTemporaryFolder(), Name("-2"));
    EXPECT_TRUE(fs::is_empty(folder_.File("home")));
    EXPECT_EQ(Slurp(Name("-1")), "x");
}

TEST_F(OwnTemporary, IsNeverAFolderOfAnotherUser) {
    // What belongs to the superuser, or by a link to a folder of theirs.
    const std::string plain = folder_.File("tmp/vardenix-65534");
    if (geteuid() == 0) {
        fs::create_directory(plain);
        fs::permissions(plain, fs::perms::owner_all);
    }
    const PlainUser user;
    if (Name() != plain)
        fs::create_directory_symlink("/usr", Name());
    EXPECT_EQ(OwnTemporaryFolder(), Name("-1"));
    EXPECT_THROW(KeepOwnTemporaryFolder(Name() + "\\"), RuntimeError);
}

TEST_F(OwnTemporary, ComesBackAfterTheSystemClearedItsFolder) {
    const PlainUser user;
    const std::string own = OwnTemporaryFolder();
    fs::remove(own);
    KeepOwnTemporaryFolder(own + "\\");
    EXPECT_EQ(RightsOf(own), 0700U);
}

TEST_F(OwnTemporary, IsRefusedWhenAllNamesAreTaken) {
    const PlainUser user;
    for (int i = 0; i < 10; ++i)
        tests::Spill(Name(i == 0 ? "" : "-" + std::to_string(i)), "x");
    try {
        OwnTemporaryFolder();
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.NumberValue(), 70);
        EXPECT_NE(error.Detail().find(Name()), std::string::npos);
    }
}

} // namespace
} // namespace vardenix
