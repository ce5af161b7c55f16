#include "cli/CliTheater.h"

#include <filesystem>

namespace vardenix::tests {
namespace {

namespace fs = std::filesystem;

class SaveAs : public CliTheater {
protected:
    void SetUp() override {
        CliTheater::SetUp();
        fs::create_directory(folder_.File("my copies"));
        before_ = PairOnDisk();
    }
    ProgramResult SaveAsName(const std::string& name) {
        return RunOn({"save-as", folder_.File(name)});
    }

    std::string before_;
};

TEST_F(SaveAs, ThePairGetsAnUpperCaseNameAndTheOldOneStays) {
    const ProgramResult result = SaveAsName("my copies/my island.l2");
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    // Folders that are there keep their case.
    const std::string copy = folder_.File("my copies/MY ISLAND");
    EXPECT_EQ(result.Output, copy + ".L2\n" + copy + ".O2\n");
    EXPECT_TRUE(ReadPair(copy + ".L2", copy + ".O2").Posts == level_.Posts);
    EXPECT_EQ(Slurp(copy + ".O2"),
              Int32Bytes(0) + Int32Bytes(2304) + Int32Bytes(2304) + Int32Bytes(4608));
    EXPECT_EQ(PairOnDisk(), before_);
}

TEST_F(SaveAs, EveryL2OfThePathBecomesO2) {
    fs::create_directory(folder_.File("my copies/all.l2"));
    fs::create_directory(folder_.File("my copies/all.o2"));
    EXPECT_EQ(SaveAsName("my copies/all.l2/theater.L2").ExitCode, 0);
    EXPECT_TRUE(ReadPair(folder_.File("my copies/all.l2/THEATER.L2"),
                         folder_.File("my copies/all.o2/THEATER.O2"))
                    .Posts == level_.Posts);
}

TEST_F(SaveAs, APairThatIsThereIsReplacedUnderTheNameItHas) {
    folder_.Write("my copies/Theater.l2", "old");
    folder_.Write("my copies/theater.O2", "old");
    EXPECT_EQ(SaveAsName("MY COPIES\\THEATER.L2").ExitCode, 0);
    EXPECT_EQ(fs::relative(folder_.File("my copies/Theater.l2"), folder_.Path()),
              "my copies/Theater.l2");
    EXPECT_TRUE(ReadPair(folder_.File("my copies/Theater.l2"),
                         folder_.File("my copies/theater.O2"))
                    .Posts == level_.Posts);
}

TEST_F(SaveAs, ANameOfWhichLAndOWouldBeOneFileIsRefused) {
    for (const char* name : {"my copies/island", "my copies/island.L3", "my copies/.l",
                             "my copies/theater.L2.bak", "my copies/theater.L2/"}) {
        const ProgramResult result = SaveAsName(name);
        EXPECT_EQ(result.ExitCode, 2) << name;
        EXPECT_NE(result.Errors.find(std::string(name) + " does not end in .L2"),
                  std::string::npos)
            << result.Errors;
    }
    EXPECT_TRUE(fs::is_empty(folder_.File("my copies")));
    // By way of a link it is known only when the disk is looked at.
    folder_.Write("my copies/ISLAND.L2", "mine");
    fs::create_symlink("ISLAND.L2", folder_.File("my copies/ISLAND.O2"));
    const ProgramResult linked = SaveAsName("my copies/island.L2");
    EXPECT_EQ(linked.ExitCode, 3);
    EXPECT_NE(linked.Errors.find("would be the L file and the O file at once"),
              std::string::npos)
        << linked.Errors;
    EXPECT_EQ(Slurp(folder_.File("my copies/ISLAND.L2")), "mine");
    EXPECT_EQ(PairOnDisk(), before_);
}

TEST_F(SaveAs, AnEmptyOrMissingNameIsUsageAndNotTheTheatersOwn) {
    EXPECT_EQ(RunOn({"save-as", ""}).ExitCode, 2);
    EXPECT_EQ(RunOn({"save-as"}).ExitCode, 2);
    // What the next opening of the theater would take for the rest of a save.
    EXPECT_EQ(RunOn({"save-as", Terrain("theater.l2x")}).ExitCode, 2);
    EXPECT_EQ(RunOn({"info"}).ExitCode, 0);
    EXPECT_EQ(PairOnDisk(), before_);
}

TEST_F(SaveAs, AFolderThatIsNotThereIsARunTimeError) {
    const ProgramResult result = SaveAsName("no such/island.L2");
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_NE(result.Errors.find("Run-time error '76'"), std::string::npos)
        << result.Errors;
    EXPECT_FALSE(fs::exists(folder_.File("no such")));
}

TEST_F(SaveAs, TheCopyCanBeOpenedAndEditedByItsPaths) {
    EXPECT_EQ(SaveAsName("my copies/theater.l2").ExitCode, 0);
    const std::string base = folder_.File("my theater");
    const ProgramResult result =
        Run({"set", "0", "0", "--tile", "1", "--l2", folder_.File("my copies/THEATER.L2"),
             "--bin", base + "/texture/texture.bin", "--map",
             base + "/terrain/theater.map", "--dds", base + "/texture/texture"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_EQ(ReadPair(folder_.File("my copies/THEATER.L2"),
                       folder_.File("my copies/THEATER.O2"))
                  .At(1, 1)
                  .Tile,
              1);
    EXPECT_EQ(PairOnDisk(), before_);
}

TEST_F(SaveAs, ACopyOfAnotherNameCannotBeOpenedAndThatIsSaid) {
    EXPECT_EQ(SaveAsName("my copies/my island.l2").ExitCode, 0);
    const std::string copy = folder_.File("my copies/MY ISLAND.L2");
    const ProgramResult result = Run(
        {"info", "--l2", copy, "--bin", "a.bin", "--map", "a.map", "--dds", "textures"});
    EXPECT_EQ(result.ExitCode, 2);
    EXPECT_NE(result.Errors.find("its name must be like theater.L2"), std::string::npos)
        << result.Errors;
}

} // namespace
} // namespace vardenix::tests
