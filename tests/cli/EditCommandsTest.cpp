// set and fill of the real vardenix-cli, seen by the tests' own reader of the files.
#include "cli/CliTheater.h"

#include <filesystem>

namespace vardenix::tests {
namespace {

class EditCommands : public CliTheater {
protected:
    // Level 2 on the disk is what the test changed `level_` to, and nothing lies about.
    void ExpectOnDisk() {
        const MadeLevel found = OnDisk();
        ASSERT_EQ(found.Width, level_.Width);
        for (int y = 1; y <= level_.Width; ++y)
            for (int x = 1; x <= level_.Width; ++x)
                EXPECT_TRUE(MadeLevel(found).At(x, y) == level_.At(x, y))
                    << "X " << x << ", Y " << y;
        std::string names;
        for (const auto& entry :
             std::filesystem::directory_iterator(folder_.File("my theater/terrain")))
            names += entry.path().filename().string().substr(7);
        EXPECT_EQ(names.size(), std::string(".L2.O2.map").size()) << names;
    }
};

TEST_F(EditCommands, SetChangesTheGivenFieldsOfOnePostAndNothingElse) {
    const ProgramResult one = RunOn({"set", "3", "5", "--elevation", "-32768"});
    EXPECT_EQ(one.ExitCode, 0) << one.Errors;
    EXPECT_EQ(one.Output, "1 post set in " + Terrain("theater.L2") + "\n");
    level_.At(4, 6) = {1, -32768, 7, 8, 9};
    ExpectOnDisk();

    EXPECT_EQ(RunOn({"set", "31", "31", "--tile", "2147483647", "--palette", "255",
                     "--x1", "254", "--x2", "253", "--elevation", "32767"})
                  .ExitCode,
              0);
    level_.At(32, 32) = {2147483647, 32767, 255, 254, 253};
    ExpectOnDisk();

    // 0 is a value like any other.
    EXPECT_EQ(RunOn({"set", "3", "5", "--x2", "0", "--palette", "0"}).ExitCode, 0);
    level_.At(4, 6) = {1, -32768, 0, 8, 0};
    ExpectOnDisk();
}

TEST_F(EditCommands, FillTakesBothCornersInEitherOrder) {
    for (const auto& [corners, tile] :
         {std::pair<std::vector<std::string>, int>{{"14", "2", "17", "4"}, 17},
          {{"17", "4", "14", "2"}, 18},
          {{"14", "4", "17", "2"}, 19}}) {
        std::vector<std::string> arguments{"fill"};
        arguments.insert(arguments.end(), corners.begin(), corners.end());
        arguments.insert(arguments.end(), {"--tile", std::to_string(tile)});
        const ProgramResult result = RunOn(arguments);
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        EXPECT_EQ(result.Output, "12 posts set in " + Terrain("theater.L2") + "\n");
        for (int y = 3; y <= 5; ++y)
            for (int x = 15; x <= 18; ++x)
                level_.At(x, y).Tile = tile;
        ExpectOnDisk();
    }
}

TEST_F(EditCommands, TheWholeTerrainCanBeFilled) {
    EXPECT_EQ(RunOn({"fill", "0", "0", "31", "31", "--elevation", "5"}).ExitCode, 0);
    for (MadePost& post : level_.Posts)
        post.Elevation = 5;
    ExpectOnDisk();
}

TEST_F(EditCommands, AllSeaIsSavedAsOneBlock) {
    // Four segments, of which the two on the diagonal are land.
    EXPECT_EQ(RunOn({"set", "3", "5", "--x1", "1"}).ExitCode, 0);
    EXPECT_EQ(Slurp(Terrain("theater.L2")).size(), 3U * 2304);
    EXPECT_EQ(Slurp(Terrain("theater.O2")),
              Int32Bytes(0) + Int32Bytes(2304) + Int32Bytes(2304) + Int32Bytes(4608));
    // Land in one of the shared ones parts it from the other.
    EXPECT_EQ(RunOn({"set", "16", "0", "--tile", "1"}).ExitCode, 0);
    EXPECT_EQ(Slurp(Terrain("theater.L2")).size(), 4U * 2304);
    level_.At(4, 6).X1 = 1;
    level_.At(17, 1).Tile = 1;
    ExpectOnDisk();
    // And sea in all of them brings them back to one.
    EXPECT_EQ(
        RunOn({"fill", "0", "0", "31", "31", "--tile", "0", "--elevation", "0"}).ExitCode,
        0);
    EXPECT_EQ(Slurp(Terrain("theater.L2")).size(), 2304U);
    EXPECT_EQ(Slurp(Terrain("theater.O2")), std::string(16, '\0'));
}

TEST_F(EditCommands, WhatSharedSeaCannotKeepIsTold) {
    const ProgramResult kept = RunOn({"set", "3", "5", "--palette", "3"});
    EXPECT_EQ(kept.Errors.find("share one block"), std::string::npos) << kept.Errors;
    const ProgramResult lost = RunOn({"fill", "16", "0", "31", "15", "--palette", "3"});
    EXPECT_EQ(lost.ExitCode, 0);
    EXPECT_NE(lost.Errors.find("all sea, here 1, share one block"), std::string::npos);
    // It is the first sea segment here, so the other one has its palette now.
    EXPECT_EQ(OnDisk().At(1, 17).Palette, 3);
}

TEST_F(EditCommands, WrongArgumentsAreExplainedAndNothingIsWritten) {
    struct Wrong {
        std::vector<std::string> Arguments;
        std::string Words;
    };
    const std::string outside = " lies outside the terrain of " + Terrain("theater.L2") +
                                "; give a number from 0 to 31";
    const std::string before = PairOnDisk();
    for (const auto& [arguments, words] : std::vector<Wrong>{
             {{"set", "1", "2"}, "--elevation, --palette"},
             {{"fill", "1", "2", "3", "4"}, "--elevation, --palette"},
             {{"set", "1", "--tile", "1"}, "Y is required"},
             {{"fill", "1", "2", "3", "--tile", "1"}, "Y2 is required"},
             {{"set", "32", "0", "--tile", "1"}, "X: 32" + outside},
             {{"set", "0", "32", "--tile", "1"}, "Y: 32" + outside},
             {{"set", "-1", "0", "--tile", "1"}, "X: -1" + outside},
             {{"fill", "32", "0", "1", "1", "--tile", "1"}, "X1: 32" + outside},
             {{"fill", "0", "-1", "1", "1", "--tile", "1"}, "Y1: -1" + outside},
             {{"fill", "0", "0", "99", "1", "--tile", "1"}, "X2: 99" + outside},
             {{"fill", "0", "0", "1", "32", "--tile", "1"}, "Y2: 32" + outside},
             {{"set", "x", "0", "--tile", "1"}, "X: 'x' is no whole number"},
             {{"set", "1.5", "0", "--tile", "1"}, "X: '1.5' is no whole number"},
             {{"set", "99999999999", "0", "--tile", "1"}, "X: '99999999999' is no whole"},
             {{"set", "1", "2", "--tile", "-1"},
              "--tile: '-1' is no whole number from 0"},
             {{"set", "1", "2", "--tile", "0x10"}, "--tile: '0x10'"},
             {{"set", "1", "2", "--tile", ""}, "--tile"},
             {{"set", "1", "2", "--tile", "1", "--tile", "2"}, "--tile"},
             {{"set", "1", "2", "--elevation", "40000"}, "from -32768 to 32767"},
             {{"set", "1", "2", "--elevation", "-32769"}, "from -32768 to 32767"},
             {{"set", "1", "2", "--palette", "256"}, "--palette: '256' is no whole "},
             {{"set", "1", "2", "--palette", "-1"}, "from 0 to 255"},
             {{"set", "1", "2", "--x1", "256"}, "from 0 to 255"},
             {{"fill", "1", "2", "3", "4", "--x2", "256"}, "from 0 to 255"},
             {{"set", "1", "2", "--tile", "1", "--x2", "256"}, "from 0 to 255"},
             {{"set", "1", "2", "3", "--tile", "1"}, "3"},
             {{"set", "1", "2", "--height", "1"}, "--height"}}) {
        const ProgramResult result = RunOn(arguments);
        EXPECT_EQ(result.ExitCode, 2) << words;
        EXPECT_NE(result.Errors.find(words), std::string::npos)
            << words << " in " << result.Errors;
        EXPECT_EQ(result.Output, "") << words;
    }
    EXPECT_EQ(PairOnDisk(), before);
}

TEST_F(EditCommands, NumbersAreDecimal) {
    EXPECT_EQ(RunOn({"set", "010", "0", "--tile", "010"}).ExitCode, 0);
    level_.At(11, 1).Tile = 10;
    ExpectOnDisk();
}

TEST_F(EditCommands, PostsBeyondTheLastWholeSegmentAreRefused) {
    // Five entries stand for 36 posts a side, of which a save keeps 32.
    folder_.Write("my theater/terrain/theater.O2", std::string(20, '\0'));
    const std::string before = PairOnDisk();
    const ProgramResult result = RunOn({"set", "32", "0", "--tile", "1"});
    EXPECT_EQ(result.ExitCode, 2);
    EXPECT_NE(result.Errors.find("give a number from 0 to 31"), std::string::npos);
    EXPECT_EQ(PairOnDisk(), before);
    folder_.Write("my theater/terrain/theater.O2", std::string(1, '\0'));
    const ProgramResult none = RunOn({"set", "0", "0", "--tile", "1"});
    EXPECT_EQ(none.ExitCode, 2);
    EXPECT_NE(none.Errors.find("which has no posts"), std::string::npos);
}

TEST_F(EditCommands, MissingAndBrokenFilesAreRunTimeErrors) {
    const std::vector<std::string> command{"set", "1", "2", "--tile", "1"};
    folder_.Write("my theater/terrain/theater.O2", "");
    EXPECT_EQ(RunOn(command).ExitCode, 3);
    EXPECT_EQ(Slurp(Terrain("theater.O2")), "");
    std::filesystem::remove(Terrain("theater.O2"));
    const ProgramResult missing = RunOn(command);
    EXPECT_EQ(missing.ExitCode, 3);
    EXPECT_NE(missing.Errors.find("O2 File not found\n" + Terrain("theater.O2") +
                                  "\nRun-time error '53'"),
              std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(Terrain("theater.O2")));
    WriteLevel();
    // A catalogue that lies about its size.
    folder_.Write("my theater/texture/Texture.bin", Int32Bytes(30000) + Int32Bytes(1));
    const std::string before = PairOnDisk();
    EXPECT_EQ(RunOn(command).ExitCode, 3);
    EXPECT_EQ(PairOnDisk(), before);
}

// As at every opening, what the L file does not hold is zero; a save would make that
// permanent, and nobody is there to be asked.
TEST_F(EditCommands, PostsThatACutFileLacksAreSeaAndAreNotSavedAsSuch) {
    folder_.Write("my theater/terrain/theater.L2", "");
    const std::string before = PairOnDisk();
    const ProgramResult info = RunOn({"info"});
    EXPECT_EQ(info.ExitCode, 0);
    EXPECT_NE(info.Errors.find("4 of 4 segments"), std::string::npos) << info.Errors;
    const ProgramResult result = RunOn({"set", "1", "2", "--tile", "1"});
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_NE(result.Errors.find("save-as under another name"), std::string::npos);
    const std::string bin = folder_.File("my theater/texture/Texture.bin");
    const std::string catalogue = Slurp(bin);
    EXPECT_EQ(RunOn({"bin", "move-set", "0", "--after", "1"}).ExitCode, 3);
    EXPECT_EQ(Slurp(bin), catalogue);
    EXPECT_EQ(PairOnDisk(), before);
    EXPECT_EQ(RunOn({"save-as", Terrain("copy.L2")}).ExitCode, 0);
    level_ = MadeLevel::Empty(32);
    EXPECT_EQ(ReadPair(Terrain("COPY.L2"), Terrain("COPY.O2")).Posts, level_.Posts);
}

} // namespace
} // namespace vardenix::tests
