// Which O file goes with an L file, and where a save writes, on folders in which names
// differ by case only.
#include "levels/LevelPairs.h"

#include "support/PlainUser.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace vardenix {
namespace {

using tests::TestFolder;

class LevelPairs : public testing::Test {
protected:
    void Make(std::initializer_list<const char*> names) const {
        for (const char* name : names)
            folder_.Write(name, "x");
    }
    // The O file's path below the folder.
    std::string Below(const std::string& path) const {
        return path.substr(folder_.Path().size() + 1);
    }
    std::string OOfL2(const std::string& name) const {
        return Below(PairOfL2(folder_.File(name)).O);
    }
    std::string OOfL0(const std::string& name) const {
        return Below(PairOfL0(folder_.File(name)).O);
    }
    std::string SavedTo(const std::string& name) const {
        const LevelPair pair = PairForSaving(terrain_, folder_.File(name));
        return Below(pair.L) + " " + Below(pair.O);
    }
    int SameNameError(const std::string& name) const {
        try {
            RequireSameName(folder_.File(name));
        } catch (const RuntimeError& error) {
            return error.NumberValue();
        }
        return 0;
    }

    TestFolder folder_;
    Terrain terrain_;
};

TEST_F(LevelPairs, FoldersAreCalledAsTheyAre) {
    Make({"theater.L2 old/terrain/theater.L2", "theater.L2 old/terrain/theater.O2"});
    EXPECT_EQ(OOfL2("theater.L2 old/terrain/theater.L2"),
              "theater.L2 old/terrain/theater.O2");
}

TEST_F(LevelPairs, TheOFileOfAL2FileHasTheLettersOfItsName) {
    Make({"theater.O2", "theater.o2", "THEATER.O2", "Theater.o2"});
    EXPECT_EQ(OOfL2("theater.L2"), "theater.O2");
    EXPECT_EQ(OOfL2("theater.l2"), "theater.o2");
    EXPECT_EQ(OOfL2("Theater.l2"), "Theater.o2");
    EXPECT_EQ(OOfL2("island.l2"), "island.l2");
}

TEST_F(LevelPairs, WithoutOneOfTheVeryNameAnyCaseDoes) {
    Make({"a/Theater.O2", "b/sub/x"});
    EXPECT_EQ(OOfL2("a/theater.l2"), "a/Theater.O2");
    EXPECT_EQ(OOfL2("b/theater.l2"), "b/theater.o2");
}

TEST_F(LevelPairs, NoFolderOfAnotherNameIsLookedInto) {
    Make({"KOREA/theater.O2", "korea/other"});
    EXPECT_EQ(OOfL2("korea/theater.L2"), "korea/theater.O2");
    fs::create_directory(folder_.File("Korea"));
    EXPECT_EQ(OOfL2("Korea/theater.L2"), "Korea/theater.O2");
}

TEST_F(LevelPairs, AFolderThatOnlyLetsOneInGivesItsPairAll) {
    Make({"closed/theater.L2", "closed/theater.O2", "closed/theater.l0",
          "closed/theater.o0"});
    tests::LetOthers(folder_.Path(), 5);
    fs::permissions(folder_.File("closed"), static_cast<fs::perms>(0711));
    const tests::PlainUser user;
    EXPECT_EQ(OOfL2("closed/theater.L2"), "closed/theater.O2");
    EXPECT_EQ(OOfL0("closed/theater.l0"), "closed/theater.o0");
}

TEST_F(LevelPairs, TheO0FileHasTheToldNameElseThatOfTheL0File) {
    Make({"a/theater.O0", "a/theater.o0", "b/theater.o0", "b/THEATER.O0", "c/THEATER.O0",
          "d/x"});
    EXPECT_EQ(OOfL0("a/theater.l0"), "a/theater.O0");
    EXPECT_EQ(OOfL0("b/theater.l0"), "b/theater.o0");
    EXPECT_EQ(OOfL0("c/theater.l0"), "c/THEATER.O0");
    EXPECT_EQ(OOfL0("d/theater.l0"), "d/theater.O0");
}

TEST_F(LevelPairs, ASaveGoesIntoTheFolderGivenAndANewNameIsUpperCase) {
    Make({"OUT/X.L2", "OUT/X.O2", "out/y"});
    EXPECT_EQ(SavedTo("out/x.L2"), "out/X.L2 out/X.O2");
    EXPECT_EQ(SavedTo("Out/x.L2"), "OUT/X.L2 OUT/X.O2");
    EXPECT_EQ(SavedTo("out/new.l2.l2"), "out/NEW.L2.L2 out/NEW.O2.O2");
}

TEST_F(LevelPairs, AFileOfTheVeryNameIsTheOneMeant) {
    Make({"x.l2", "x.o2", "X.L2", "X.O2", "Y.l2", "y.O2"});
    EXPECT_EQ(SavedTo("x.l2"), "x.l2 x.o2");
    EXPECT_EQ(SavedTo("X.L2"), "X.L2 X.O2");
    EXPECT_EQ(SavedTo("x.L2"), "X.L2 X.O2");
    EXPECT_EQ(SavedTo("y.l2"), "Y.l2 y.O2");
}

TEST_F(LevelPairs, AKeptFileIsNeverReplacedByItsNeighbour) {
    Make({"a/theater.L2", "a/THEATER.L2", "B/theater.L2", "B/theater.O2"});
    EXPECT_EQ(SameNameError("a/theater.L2"), 0);
    fs::remove(folder_.File("a/theater.L2"));
    EXPECT_EQ(SameNameError("a/theater.L2"), 53);
    // Made again where nothing is in its place.
    fs::remove(folder_.File("a/THEATER.L2"));
    EXPECT_EQ(SameNameError("a/theater.L2"), 0);
    EXPECT_EQ(SameNameError("b/theater.L2"), 76);
}

} // namespace
} // namespace vardenix
