// stats, replace and search by names of the real vardenix-cli.
#include "cli/CliTheater.h"

namespace vardenix::tests {
namespace {

class LandCommands : public CliTheater {};

TEST_F(LandCommands, StatsTellWhatTheTerrainIsMadeOf) {
    const ProgramResult told = RunOn({"stats"});
    EXPECT_EQ(told.ExitCode, 0) << told.Errors;
    for (const char* line :
         {"posts: 1024\n", "sea: 1023 posts, 99.9 %, 1023 square km\n",
          "heights: -20 to 900 feet, mean 0.9\n", "  Water: 1023 posts, 99.9 %\n",
          "  Plains: 1 post, 0.1 %\n", "tiles in use: 3\n",
          "  0 SEA.PCX: 1022 posts, 99.8 %\n", "tiles not in use: 0\n",
          "unknown numbers: 0\n", "tiles without a picture: 1\n  1 SHORE.PCX\n"})
        EXPECT_NE(told.Output.find(line), std::string::npos) << line << told.Output;
    const ProgramResult json = RunOn({"stats", "--json"});
    EXPECT_NE(json.Output.find("\"sea, square km\": 1023"), std::string::npos);
    EXPECT_NE(json.Output.find("\"kind\": \"Plains\""), std::string::npos);
}

TEST_F(LandCommands, ReplaceChangesOneTileWhereItIsToldTo) {
    level_.At(8, 9).Tile = 1;
    WriteLevel();
    const ProgramResult count = RunOn({"replace", "--tile", "1", "--count"});
    EXPECT_EQ(count.Output, "2 posts\n") << count.Errors;
    EXPECT_EQ(OnDisk().Posts, level_.Posts);

    // The corners in any order, both included; At counts from 1.
    const ProgramResult in =
        RunOn({"replace", "--tile", "1", "--by", "16", "--in", "7", "9", "0", "8"});
    EXPECT_EQ(in.ExitCode, 0) << in.Errors;
    EXPECT_EQ(in.Output, "1 post set in " + Terrain("theater.L2") + "\n");
    level_.At(8, 9).Tile = 16;
    EXPECT_EQ(OnDisk().Posts, level_.Posts);

    EXPECT_EQ(RunOn({"replace", "--named", "shore", "--by", "16"}).ExitCode, 0);
    level_.At(4, 6).Tile = 16;
    EXPECT_EQ(OnDisk().Posts, level_.Posts);
    EXPECT_EQ(RunOn({"replace", "--named", "shore", "--by", "16"}).ExitCode, 1);
}

TEST_F(LandCommands, ReplaceDrawsOneOfSeveral) {
    EXPECT_EQ(RunOn({"replace", "--tile", "0", "--by", "1,16"}).ExitCode, 0);
    const MadeLevel first = OnDisk();
    int shores = 0;
    for (const MadePost& post : first.Posts)
        shores += post.Tile == 1;
    EXPECT_NEAR(shores, 512, 80);
    WriteLevel();
    EXPECT_EQ(RunOn({"replace", "--tile", "0", "--by", "1,16"}).ExitCode, 0);
    EXPECT_EQ(OnDisk().Posts, first.Posts);
    WriteLevel();
    EXPECT_EQ(RunOn({"replace", "--tile", "0", "--by", "1,16", "--seed", "1"}).ExitCode,
              0);
    EXPECT_NE(OnDisk().Posts, first.Posts);
}

TEST_F(LandCommands, ReplaceWantsBothSidesAndCornersOnTheTerrain) {
    const std::string before = PairOnDisk();
    EXPECT_EQ(RunOn({"replace", "--tile", "1"}).ExitCode, 2);
    EXPECT_EQ(RunOn({"replace", "--by", "1"}).ExitCode, 2);
    EXPECT_EQ(RunOn({"replace", "--tile", "-1", "--by", "1"}).ExitCode, 2);
    const ProgramResult outside =
        RunOn({"replace", "--tile", "1", "--by", "2", "--in", "0", "0", "32", "0"});
    EXPECT_EQ(outside.ExitCode, 2);
    EXPECT_NE(outside.Errors.find("X2: 32 lies outside"), std::string::npos)
        << outside.Errors;
    EXPECT_EQ(PairOnDisk(), before);
}

TEST_F(LandCommands, SearchTakesNamesAndKinds) {
    EXPECT_EQ(RunOn({"search", "--named", "land"}).Output, "X 29, Y 30\n");
    EXPECT_EQ(RunOn({"search", "--named", "plains,shore", "--count"}).Output, "2\n");
    EXPECT_EQ(RunOn({"search", "--named", "water", "--cell", "0:elevation=<0"}).Output,
              "X 3, Y 5\n");
    EXPECT_EQ(RunOn({"search", "--named", "nowhere"}).ExitCode, 1);
}

} // namespace
} // namespace vardenix::tests
