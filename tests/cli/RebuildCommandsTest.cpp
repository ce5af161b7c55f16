// The commands that rebuild, over a theater with pictures, and rebuilds that are killed
// at some moment.
#include "builder/RebuildWorld.h"
#include "support/FaultShimLink.h"
#include "support/JournalMaker.h"
#include "support/RunProgram.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <random>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

using std::chrono::microseconds;
using Clock = std::chrono::steady_clock;

constexpr int Kills = 25;

class RebuildCommands : public testing::Test {
protected:
    RebuildCommands() {
        std::vector<MadeTile> tiles;
        tiles.reserve(RebuildWorld::Tiles);
        for (int tile = 0; tile < RebuildWorld::Tiles; ++tile)
            tiles.push_back({"HTILE" + std::to_string(tile) + ".PCX"});
        world_.Folder.Write("texture/Texture.bin", CatalogueBytes({{1, tiles}}));
        world_.Folder.Write("terrain/theater.map", std::string(1112, '\0'));
        world_.OldLevels();
    }
    std::vector<std::string> Command(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), VARDENIX_CLI);
        arguments.insert(arguments.end(), {"--theater", world_.Folder.Path()});
        return arguments;
    }
    ProgramResult Run(const std::vector<std::string>& arguments) {
        return RunProgram(Command(arguments));
    }
    void PutBack(const std::map<std::string, std::string>& files) {
        for (const auto& [name, bytes] : files)
            world_.Folder.Write(
                (name.starts_with("theater.") ? "terrain/" : "texture/") + name, bytes);
    }

    RebuildWorld world_;
};

TEST_F(RebuildCommands, AnElevationFileThatIsShortIsTakenWhenTold) {
    const auto old = world_.Files();
    // 512 heights a side, one of them missing.
    const std::string master =
        world_.Folder.Write("master.elv", std::string(512 * 512 * 2 - 2, '\2'));
    const std::vector<std::string> command{"rebuild-elevation", master, "--method",
                                           "max"};
    EXPECT_EQ(Run(command).ExitCode, 3);
    EXPECT_EQ(world_.Files(), old);
    std::vector<std::string> told = command;
    told.emplace_back("--accept-short");
    const ProgramResult result = Run(told);
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_NE(result.Errors.find("expected 2 bytes more"), std::string::npos)
        << result.Errors;
    EXPECT_NE(world_.Files(), old);
}

TEST_F(RebuildCommands, WhatAnotherProgramChangedIsReplacedOnlyWhenTold) {
    const std::string master =
        world_.Folder.Write("master.elv", std::string(512 * 512 * 2, '\2'));
    // Somebody changes a level while its new file is begun.
    const std::string level = world_.Folder.File("terrain/theater.L1");
    const FaultShimLink shim(FAULT_SHIM);
    std::vector<std::string> environment = shim.Environment("touch", 1);
    environment.push_back("FAULT_FILE=" + level + "x");
    environment.push_back("FAULT_TOUCHED=" + level);
    const std::vector<std::vector<std::string>> commands{
        {"rebuild"}, {"rebuild-elevation", master, "--method", "max"}};
    for (std::vector<std::string> command : commands) {
        const auto old = world_.Files();
        const ProgramResult refused = RunProgram(Command(command), environment);
        EXPECT_EQ(refused.ExitCode, 3) << command.front();
        EXPECT_NE(refused.Errors.find("With --overwrite it is written all the same."),
                  std::string::npos)
            << refused.Errors;
        EXPECT_EQ(world_.Files(), old) << command.front();
        command.emplace_back("--overwrite");
        const ProgramResult done = RunProgram(Command(command), environment);
        EXPECT_EQ(done.ExitCode, 0) << done.Errors;
    }
}

TEST_F(RebuildCommands, AnIntakeThatIsHalfDoneIsFinishedBeforeFarTilesAreMade) {
    const std::string pictures = world_.Folder.File("texture/texture/");
    Spill(pictures + "HX.ddsx", "new");
    JournalMaker journal;
    journal.Add("HX.dds", "new", pictures + "HX.dds");
    Spill(pictures + "vardenix.journal", journal.Text());
    EXPECT_EQ(Run({"rebuild", "--far", "--far-size", "8"}).ExitCode, 0);
    EXPECT_EQ(Slurp(pictures + "HX.dds"), "new");
}

TEST_F(RebuildCommands, ATheaterCanBeNamedFromItsOwnFolder) {
    const ProgramResult result = RunProgram(
        {"/bin/sh", "-c",
         "cd '" + world_.Folder.File("terrain") +
             "' && exec '" VARDENIX_CLI
             "' rebuild --l2 theater.L2 --bin ../texture/Texture.bin --map theater.map "
             "--dds ../texture/texture"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
}

TEST_F(RebuildCommands, RebuildMakesWhatTheWindowMakes) {
    const auto old = world_.Files();
    const ProgramResult result = Run({"rebuild", "--far", "--far-size", "8"});
    ASSERT_EQ(result.ExitCode, 0) << result.Errors;
    const auto made = world_.PlayedFiles();
    EXPECT_EQ(result.Output.substr(0, result.Output.find('\n')),
              world_.PathOf("theater.L0") + ": " +
                  std::to_string(made.at("theater.L0").size()) + " bytes");
    EXPECT_NE(result.Output.find(" second"), std::string::npos);
    PutBack(old);
    world_.Rebuild(WithFarTiles(8));
    EXPECT_EQ(world_.PlayedFiles() == made, true);
}

TEST_F(RebuildCommands, RebuildElevationMakesWhatTheWindowMakes) {
    const std::string master =
        world_.Folder.Write("master.elv", std::string(512 * 512 * 2, '\2'));
    const ProgramResult result = Run({"rebuild-elevation", master, "--method", "max"});
    ASSERT_EQ(result.ExitCode, 0) << result.Errors;
    const MadeLevel level =
        ReadPair(world_.PathOf("theater.L2"), world_.PathOf("theater.O2"));
    EXPECT_EQ(level.Posts.at(100).Elevation, 0x0202);
    EXPECT_EQ(level.Posts.at(2 * 128 + 16).Tile, world_.Level2.At(17, 3).Tile);
}

TEST_F(RebuildCommands, AFarTileIsSavedAsAPicture) {
    ASSERT_EQ(Run({"rebuild", "--far"}).ExitCode, 0);
    const std::string out = world_.Folder.File("tile.bmp");
    EXPECT_EQ(Run({"far-tile", "3", out}).ExitCode, 0);
    EXPECT_GE(Slurp(out).size(), 32U * 32 * 3);
    const std::string day = Slurp(out);
    EXPECT_EQ(Run({"far-tile", "3", out, "--night"}).ExitCode, 0);
    EXPECT_NE(Slurp(out) == day, true);
    const ProgramResult beyond = Run({"far-tile", "100000", out});
    EXPECT_EQ(beyond.ExitCode, 3);
    EXPECT_NE(beyond.Errors.find("has far tiles 0 to "), std::string::npos)
        << beyond.Errors;
}

TEST_F(RebuildCommands, WhatIsNoContainerIsSaid) {
    world_.Folder.Write("texture/fartiles.dds", std::string(4000, '\x20'));
    const ProgramResult result = Run({"far-tile", "0", world_.Folder.File("tile.bmp")});
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_NE(result.Errors.find("does not begin as a container"), std::string::npos);
}

TEST_F(RebuildCommands, AContainerWithoutFarTilesIsSaid) {
    ASSERT_EQ(Run({"rebuild", "--far"}).ExitCode, 0);
    const std::string header = Slurp(world_.TexturePathOf("fartiles.dds")).substr(0, 124);
    world_.Folder.Write("texture/fartiles.dds", header + "cut");
    const ProgramResult result = Run({"far-tile", "0", world_.Folder.File("tile.bmp")});
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_NE(result.Errors.find("has no far tile"), std::string::npos) << result.Errors;
}

TEST_F(RebuildCommands, WrongArgumentsAreUsage) {
    const auto before = world_.Files();
    EXPECT_EQ(Run({"rebuild", "--far-size", "16"}).ExitCode, 2); // without --far
    EXPECT_EQ(Run({"rebuild", "--far", "--far-size", "4"}).ExitCode, 2);
    EXPECT_EQ(Run({"rebuild-elevation", "master.txt", "--method", "max"}).ExitCode, 2);
    EXPECT_EQ(Run({"rebuild-elevation", "master.elv"}).ExitCode, 2);
    EXPECT_EQ(Run({"far-tile", "-1", "out.png"}).ExitCode, 2);
    EXPECT_EQ(Run({"far-tile", "1", "out.txt"}).ExitCode, 2);
    EXPECT_EQ(world_.Files() == before, true);
}

TEST_F(RebuildCommands, AMasterOfAnotherTheaterIsRefused) {
    const auto before = world_.Files();
    const std::string master = world_.Folder.Write("master.elv", "1234");
    const ProgramResult result = Run({"rebuild-elevation", master, "--method", "rms"});
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_NE(result.Errors.find("512 elevations a side"), std::string::npos)
        << result.Errors;
    EXPECT_EQ(world_.Files() == before, true);
}

// It comes between any two writing calls of the run.
TEST_F(RebuildCommands, TheWishToEndStopsARunAndTakesAwayWhatWasStaged) {
    const FaultShimLink shim(FAULT_SHIM);
    const auto old = world_.Files();
    int stopped = 0;
    for (int at = 1;; at += 4) {
        const ProgramResult result =
            RunProgram(Command({"rebuild", "--far", "--far-size", "8"}),
                       shim.Environment("term", at));
        if (result.ExitCode == 0)
            break;
        EXPECT_EQ(result.ExitCode, -1) << at << result.Errors; // by the signal
        if (result.Errors.empty())
            continue; // too late, all is in its place
        ++stopped;
        EXPECT_NE(result.Errors.find("stopped; no file has changed"), std::string::npos)
            << result.Errors;
        ASSERT_TRUE(world_.Files() == old) << at;
    }
    EXPECT_GE(stopped, 3);
    EXPECT_TRUE(fs::exists(world_.TexturePathOf("fartiles.dds")));
    EXPECT_FALSE(fs::exists(world_.TexturePathOf("fartiles.ddsx")));
}

// All twelve files of a rebuild are the old ones or the new ones once the theater has
// been opened again.
TEST_F(RebuildCommands, AKilledRebuildLeavesAllOldFilesOrAllNewOnes) {
    const std::vector<std::string> rebuild =
        Command({"rebuild", "--far", "--far-size", "8"});
    world_.Folder.Write("texture/fartiles.dds", "old");
    world_.Folder.Write("texture/fartilesN.dds", "old");
    const auto old = world_.Files();
    const auto begin = Clock::now();
    ASSERT_EQ(RunProgram(rebuild).ExitCode, 0);
    auto whole = std::chrono::duration_cast<microseconds>(Clock::now() - begin);
    const auto made = world_.PlayedFiles();
    ASSERT_FALSE(made == old);

    std::mt19937 random(31);
    std::uniform_real_distribution<double> moment(0, 1.2);
    int olds = 0;
    int news = 0;
    for (int i = 0; i < Kills; ++i) {
        fs::remove(world_.TexturePathOf("fartiles.index"));
        PutBack(old);
        const double share = moment(random);
        const auto start = Clock::now();
        const bool killed = RunAndKill(
            rebuild,
            microseconds(std::llround(share * static_cast<double>(whole.count()))));
        // The machine may be busier or idler than it was.
        if (!killed)
            whole = std::chrono::duration_cast<microseconds>(Clock::now() - start);
        else if (share > 1)
            whole += whole / 10;
        ASSERT_EQ(Run({"get", "0", "0"}).ExitCode, 0);
        const auto now = world_.PlayedFiles();
        olds += now == old ? 1 : 0;
        news += now == made ? 1 : 0;
        ASSERT_TRUE(now == old || now == made) << "killed at " << share;
        ASSERT_EQ(world_.Files().contains("fartiles.index"), now == made);
    }
    EXPECT_GT(olds, 0);
    EXPECT_GT(news, 0);
}

} // namespace
} // namespace vardenix::tests
