// Which files vardenix-cli opens and writes, where names differ by case only, folders may
// be entered and not listed, or the disk refuses to be looked at.
#include "cli/CliTheater.h"
#include "support/Environment.h"
#include "support/FaultShimLink.h"
#include "support/PlainUser.h"

#include <filesystem>

namespace vardenix::tests {
namespace {

namespace fs = std::filesystem;

class Identity : public CliTheater {
protected:
    // A copy of the theater whose first post has a tile number of its own.
    void MakeTheater(const std::string& name, int tile) {
        level_.At(1, 1).Tile = tile;
        WriteLevel();
        fs::copy(folder_.File("my theater"), folder_.File(name),
                 fs::copy_options::recursive);
    }
    MadeLevel OnDiskOf(const std::string& theater) const {
        const std::string file = folder_.File(theater) + "/terrain/theater.";
        return ReadPair(file + "L2", file + "O2");
    }
    ProgramResult RunAt(const std::string& theater, std::vector<std::string> arguments,
                        const std::vector<std::string>& environment = {}) {
        arguments.insert(arguments.end(), {"--theater", folder_.File(theater)});
        return Run(arguments, environment);
    }
};

TEST_F(Identity, TheatersWhoseNamesDifferByCaseOnlyAreNeverMixed) {
    const std::vector<std::string> names{"KOREA", "Korea", "korea"};
    for (size_t i = 0; i < names.size(); ++i)
        MakeTheater(names[i], static_cast<int>(i) + 20);
    for (size_t i = 0; i < names.size(); ++i) {
        const ProgramResult told = RunAt(names[i], {"get", "0", "0"});
        EXPECT_NE(told.Output.find("tile: " + std::to_string(i + 20) + "\n"),
                  std::string::npos)
            << names[i] << told.Output << told.Errors;
        const ProgramResult set =
            RunAt(names[i], {"set", "1", "0", "--tile", std::to_string(i + 30)});
        EXPECT_EQ(set.ExitCode, 0) << set.Errors;
        EXPECT_EQ(set.Output,
                  "1 post set in " + folder_.File(names[i]) + "/terrain/theater.L2\n");
    }
    for (size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(OnDiskOf(names[i]).At(1, 1).Tile, static_cast<int>(i) + 20);
        EXPECT_EQ(OnDiskOf(names[i]).At(2, 1).Tile, static_cast<int>(i) + 30);
    }
}

TEST_F(Identity, ThePositionsOfATheaterAreNotThoseOfItsNeighbour) {
    const std::string tile = std::to_string(level_.At(30, 31).Tile);
    MakeTheater("korea", 1);
    level_ = MadeLevel::Empty(16);
    MakeTheater("KOREA", 2);
    const ProgramResult told = RunAt("korea", {"get", "29", "30"});
    EXPECT_EQ(told.ExitCode, 0) << told.Errors;
    EXPECT_NE(told.Output.find("tile: " + tile + "\n"), std::string::npos);
    EXPECT_EQ(RunAt("KOREA", {"get", "29", "30"}).ExitCode, 2);
}

TEST_F(Identity, PairsInOneFolderWhoseNamesDifferByCaseOnlyAreNeverMixed) {
    const PairBytes backup = ScatteredPair(MadeLevel::Random(32, 3));
    folder_.Write("my theater/terrain/THEATER.L2", backup.L);
    folder_.Write("my theater/terrain/THEATER.O2", backup.O);
    const std::string base = folder_.File("my theater");
    const ProgramResult set =
        Run({"set", "1", "0", "--tile", "7", "--l2", Terrain("theater.L2"), "--bin",
             base + "/texture/Texture.bin", "--map", Terrain("theater.map"), "--dds",
             base + "/texture/texture"});
    EXPECT_EQ(set.ExitCode, 0) << set.Errors;
    level_.At(2, 1).Tile = 7;
    EXPECT_TRUE(OnDisk().Posts == level_.Posts);
    EXPECT_EQ(Slurp(Terrain("THEATER.L2")), backup.L);
    EXPECT_EQ(Slurp(Terrain("THEATER.O2")), backup.O);
}

TEST_F(Identity, WhatATheaterLacksIsNotTakenFromItsNeighbour) {
    MakeTheater("Korea", 1);
    MakeTheater("korea", 2);
    fs::remove_all(folder_.File("korea/texture"));
    const ProgramResult told = RunAt("korea", {"info"});
    EXPECT_EQ(told.ExitCode, 3);
    EXPECT_NE(told.Errors.find("Texture.bin File not found\n" +
                               folder_.File("korea/texture/texture.bin") + "\n"),
              std::string::npos)
        << told.Errors;
}

TEST_F(Identity, ATheaterBesideAnEmptyFolderOfNearlyTheSameNameIsFound) {
    MakeTheater("games", 1);
    fs::create_directory(folder_.File("Games"));
    for (const char* name : {"games", "GAMES", "Games"}) {
        const ProgramResult told = RunAt(name, {"info"});
        EXPECT_EQ(told.ExitCode, 0) << name << told.Errors;
        EXPECT_NE(told.Output.find(folder_.File("games/terrain/theater.L2")),
                  std::string::npos)
            << told.Output;
    }
}

TEST_F(Identity, SaveAsWritesIntoTheFolderThatItIsGiven) {
    fs::create_directory(folder_.File("out"));
    folder_.Write("OUT/X.L2", "another's");
    const ProgramResult saved = RunOn({"save-as", folder_.File("out/x.L2")});
    EXPECT_EQ(saved.ExitCode, 0) << saved.Errors;
    EXPECT_EQ(saved.Output,
              folder_.File("out/X.L2") + "\n" + folder_.File("out/X.O2") + "\n");
    EXPECT_TRUE(ReadPair(folder_.File("out/X.L2"), folder_.File("out/X.O2")).Posts ==
                level_.Posts);
    EXPECT_EQ(Slurp(folder_.File("OUT/X.L2")), "another's");
    EXPECT_FALSE(fs::exists(folder_.File("OUT/X.O2")));
}

TEST_F(Identity, SaveAsOntoAVeryNameWritesThatFile) {
    folder_.Write("out/x.l2", "old");
    folder_.Write("out/x.o2", "old");
    folder_.Write("out/X.L2", "another's");
    folder_.Write("out/X.O2", "another's");
    EXPECT_EQ(RunOn({"save-as", folder_.File("out/x.l2")}).ExitCode, 0);
    EXPECT_TRUE(ReadPair(folder_.File("out/x.l2"), folder_.File("out/x.o2")).Posts ==
                level_.Posts);
    EXPECT_EQ(Slurp(folder_.File("out/X.L2")), "another's");
    EXPECT_EQ(Slurp(folder_.File("out/X.O2")), "another's");
}

TEST_F(Identity, ATheaterInFoldersThatCannotBeListedIsOpenedByItsExactNames) {
    const std::string base = folder_.File("my theater");
    for (const fs::path folder : {folder_.Path(), base, base + "/terrain",
                                  base + "/texture", base + "/texture/texture"})
        fs::permissions(folder, static_cast<fs::perms>(0711));
    const PlainUser user;
    const ProgramResult told = Run(
        {"info", "--l2", Terrain("theater.L2"), "--bin", base + "/texture/Texture.bin",
         "--map", Terrain("theater.map"), "--dds", base + "/texture/texture"});
    EXPECT_EQ(told.ExitCode, 0) << told.Errors;
    EXPECT_NE(told.Output.find("posts a side: 32"), std::string::npos);
}

TEST_F(Identity, WhatMayNotBeLookedAtIsARefusalAndNotAMissingFile) {
    fs::permissions(folder_.Path(), static_cast<fs::perms>(0755));
    LetOthers(folder_.File("my theater/terrain"), 0);
    const PlainUser user;
    const ProgramResult told = RunOn({"info"});
    EXPECT_EQ(told.ExitCode, 3);
    EXPECT_EQ(told.Errors.find("not found"), std::string::npos) << told.Errors;
    EXPECT_NE(told.Errors.find("Run-time error '70'"), std::string::npos) << told.Errors;
    EXPECT_NE(told.Errors.find(folder_.File("my theater/terrain")), std::string::npos);
}

// A disk that fails at a look at one of the two files, be it the first or the last: the
// height is set or it is not, and nothing else is changed.
TEST_F(Identity, ADiskThatRefusesALookNeverCostsAL0Pair) {
    const MadeLevel finest = MadeLevel::Random(128, 5);
    const PairBytes pair = ScatteredPair(finest);
    const FaultShimLink shim(FAULT_SHIM);
    const std::string l0 = Terrain("theater.L0");
    const std::string o0 = Terrain("theater.O0");
    for (const std::string& refused : {l0, o0}) {
        int refusals = 0;
        int last = 0;
        for (int at = 1; at <= last + 5; ++at) {
            folder_.Write("my theater/terrain/theater.L0", pair.L);
            folder_.Write("my theater/terrain/theater.O0", pair.O);
            std::vector<std::string> environment = shim.Environment("refuse", at);
            environment.push_back("FAULT_FILE=" + refused);
            const ProgramResult result =
                RunOn({"elevation", "set", l0, "5", "7", "-3000"}, environment);
            if (result.ExitCode == 3) {
                ++refusals;
                last = at;
            }
            MadeLevel expected = finest;
            if (result.ExitCode == 0)
                expected.At(6, 8).Elevation = -3000;
            ASSERT_EQ(Slurp(o0).size(), pair.O.size()) << refused << at << result.Errors;
            ASSERT_TRUE(ReadPair(l0, o0).Posts == expected.Posts) << refused << at;
        }
        EXPECT_GT(refusals, 2);
    }
}

// A copy of the program in a folder that its user may not write to, and no home.
class Installed : public Identity {
protected:
    void SetUp() override {
        Identity::SetUp();
        CopyProgram("program");
        for (const fs::path folder : {folder_.Path(), folder_.File("program")})
            fs::permissions(folder, static_cast<fs::perms>(0755));
        fs::create_directory(folder_.File("tmp"));
        LetOthers(folder_.File("tmp"), 7);
        LetOthers(folder_.File("my theater"), 5);
    }
    std::string Program() const { return folder_.File("program/vardenix-cli"); }
    // The map, every tile of which is without its picture.
    std::string Rendered(const std::vector<std::string>& options = {}) {
        const std::string picture = folder_.File("tmp/map.bmp");
        std::vector<std::string> command{Program(), "render", picture, "--theater",
                                         folder_.File("my theater")};
        command.insert(command.end(), options.begin(), options.end());
        const ProgramResult result = RunProgram(command);
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        return Slurp(picture);
    }
};

TEST_F(Installed, ThePictureOfMissingTilesComesWithTheProgram) {
    for (const char* name : {"sea.dds", "land.dds"})
        fs::remove(folder_.File("my theater/texture/texture/") + name);
    const std::string bare = Rendered();
    fs::copy(SHIPPED_NOTILE, folder_.File("program/NoTile.jpg"));
    const std::string beside = Rendered();
    EXPECT_TRUE(beside != bare);
    LetOthers(folder_.File("program"), 5);
    fs::remove(folder_.File("tmp/map.bmp"));
    const PlainUser user;
    const Environment data("XDG_DATA_HOME", folder_.File("tmp").c_str());
    EXPECT_TRUE(Rendered() == beside);
}

TEST_F(Installed, TextsAreDrawnFromAFolderThatMayBeEnteredAndNoMore) {
    const std::string bare = Rendered();
    LetOthers(folder_.File("program"), 1);
    fs::remove(folder_.File("tmp/map.bmp"));
    const PlainUser user;
    const Environment data("XDG_DATA_HOME", folder_.File("tmp").c_str());
    EXPECT_TRUE(Rendered() == bare);
    EXPECT_TRUE(Rendered({"--layers", "heights"}) != bare);
}

TEST_F(Installed, SettingsThatMayNotBeReadKeepNobodyFromLooking) {
    LetOthers(folder_.File("program"), 5);
    fs::create_directory(folder_.File("home"));
    LetOthers(folder_.File("home"), 0);
    const PlainUser user;
    const Environment home("HOME", folder_.File("home").c_str());
    const Environment data("XDG_DATA_HOME", nullptr);
    const ProgramResult told =
        RunProgram({Program(), "info", "--theater", folder_.File("my theater")});
    EXPECT_EQ(told.ExitCode, 0);
    EXPECT_NE(told.Errors.find("The settings are those of a first start: looking at " +
                               folder_.File("home/.local/share/vardenix/VX.ini")),
              std::string::npos)
        << told.Errors;
    EXPECT_EQ(RunProgram({Program(), "settings"}).ExitCode, 3);
}

TEST_F(Installed, ACommandThatOnlyReadsMakesNoFolderAnywhere) {
    LetOthers(folder_.File("program"), 5);
    fs::create_directory(folder_.File("home"));
    LetOthers(folder_.File("home"), 7);
    const PlainUser user;
    const Environment home("HOME", folder_.File("home").c_str());
    const Environment data("XDG_DATA_HOME", nullptr);
    const Environment temporary("TMPDIR", folder_.File("tmp").c_str());
    const ProgramResult told =
        RunProgram({Program(), "info", "--theater", folder_.File("my theater")});
    EXPECT_EQ(told.ExitCode, 0) << told.Errors;
    EXPECT_TRUE(fs::is_empty(folder_.File("home")));
    EXPECT_TRUE(fs::is_empty(folder_.File("tmp")));
    // One that writes makes it, for its user alone.
    const ProgramResult written = RunProgram({Program(), "settings"});
    const std::string own = folder_.File("home/.local/share/vardenix");
    EXPECT_EQ(written.Output, own + "/VX.ini\n") << written.Errors;
    EXPECT_EQ(fs::status(own).permissions(), static_cast<fs::perms>(0700));
}

} // namespace
} // namespace vardenix::tests
