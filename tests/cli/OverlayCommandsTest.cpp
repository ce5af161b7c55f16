// features, search, region, mea, tc and tm of the real vardenix-cli; what they write is
// read by plain arithmetic.
#include "cli/CliTheater.h"

#include <filesystem>

namespace vardenix::tests {
namespace {

class OverlayCommands : public CliTheater {
protected:
    // Wrong arguments end with 2 and these words, and nothing is printed or written.
    void ExpectUsage(const std::vector<std::string>& arguments,
                     const std::string& words) {
        const std::string before = PairOnDisk();
        const ProgramResult result = RunOn(arguments);
        EXPECT_EQ(result.ExitCode, 2) << words;
        EXPECT_NE(result.Errors.find(words), std::string::npos)
            << words << " in " << result.Errors;
        EXPECT_EQ(result.Output, "") << words;
        EXPECT_EQ(PairOnDisk(), before);
    }
    std::string Tdf(const std::string& lines) { return folder_.Write("in.tdf", lines); }
    std::string Out() const { return folder_.File("out file"); }
};

TEST_F(OverlayCommands, FeaturesInfoCountsThem) {
    const std::string file = Tdf("AIRPORT 1 1,1 0 Kimpo\nROAD 2 1,1 2,2 0\nroad 1 3,3\n");
    const ProgramResult told = Run({"features", "info", file});
    EXPECT_EQ(told.ExitCode, 0) << told.Errors;
    EXPECT_EQ(told.Output, "Airports: 1\nCities: 0\nCoasts: 0\nLabels: 0\nRivers: 0\n"
                           "Roads: 2\npoints: 4\n");
    const ProgramResult twice = Run({"features", "info", file, file, "--json"});
    EXPECT_NE(twice.Output.find("\"Roads\": 4"), std::string::npos) << twice.Output;
    EXPECT_EQ(Run({"features", "info", folder_.File("none.tdf")}).ExitCode, 3);
    EXPECT_EQ(Run({"features", "info"}).ExitCode, 2);
}

TEST_F(OverlayCommands, FeaturesExportWritesOneFileOrOneForEachKind) {
    const std::string file =
        Tdf("CITY 1 1.5,1 7\nROAD 2 2,2 50,50 8\nROAD 1 9,9 9\nLABEL 1 0,0 1 A  B\n");
    const ProgramResult one =
        Run({"features", "export", "5", "5", "0", "0", file, "--out", Out()});
    EXPECT_EQ(one.ExitCode, 0) << one.Errors;
    EXPECT_EQ(one.Output, Out() + "\n");
    EXPECT_EQ(Slurp(Out()),
              "CITY 1 2,1 7\r\nLABEL 1 0,0 1 A B\r\nROAD 2 2,2 50,50 8\r\n");

    const std::string folder = folder_.File("a folder");
    std::filesystem::create_directory(folder);
    const ProgramResult each =
        Run({"features", "export", "0", "0", "5", "5", file, "--out", folder});
    EXPECT_EQ(each.Output, folder + "/Cities.tdf\n" + folder + "/Labels.tdf\n" + folder +
                               "/Roads.tdf\n");
    EXPECT_EQ(Slurp(folder + "/Roads.tdf"), "ROAD 2 2,2 50,50 8\r\n");

    const ProgramResult none =
        Run({"features", "export", "70", "70", "80", "80", file, "--out", Out() + "2"});
    EXPECT_EQ(none.ExitCode, 1);
    EXPECT_FALSE(std::filesystem::exists(Out() + "2"));
    EXPECT_EQ(Run({"features", "export", "0", "0", "5", file}).ExitCode, 2);
}

TEST_F(OverlayCommands, FeaturesExportReplacesFilesOnlyWhenTold) {
    const std::string file = Tdf("CITY 1 1,1 7\nCITY 1 50,50 8\nROAD 1 2,2 9\n");
    const std::string folder = folder_.File("a folder");
    folder_.Write("a folder/Cities.tdf", "my work");
    const std::vector<std::string> each{"features", "export", "0",     "0",   "5",
                                        "5",        file,     "--out", folder};
    const ProgramResult refused = Run(each);
    EXPECT_EQ(refused.ExitCode, 2);
    EXPECT_NE(refused.Errors.find("Cities.tdf: already there"), std::string::npos)
        << refused.Errors;
    EXPECT_EQ(Slurp(folder + "/Cities.tdf"), "my work");
    EXPECT_FALSE(std::filesystem::exists(folder + "/Roads.tdf"));
    std::vector<std::string> told = each;
    told.emplace_back("--overwrite");
    EXPECT_EQ(Run(told).ExitCode, 0);
    EXPECT_EQ(Slurp(folder + "/Cities.tdf"), "CITY 1 1,1 7\r\n");
    // Its own input is such a file as well.
    const std::string before = Slurp(file);
    EXPECT_EQ(
        Run({"features", "export", "0", "0", "5", "5", file, "--out", file}).ExitCode, 2);
    EXPECT_EQ(Slurp(file), before);
}

TEST_F(OverlayCommands, SearchListsThePostsThatFit) {
    const ProgramResult tile = RunOn({"search", "--cell", "0:tile=>0"});
    EXPECT_EQ(tile.ExitCode, 0) << tile.Errors;
    EXPECT_EQ(tile.Output, "X 3, Y 5\nX 29, Y 30\n");
    // The post at 3, 5 is above and to the left of this one.
    EXPECT_EQ(
        RunOn({"search", "--cell", "8:tile=1,elevation=<-19", "--cell", "0:elevation=!5"})
            .Output,
        "X 4, Y 4\n");
    EXPECT_EQ(RunOn({"search", "--cell", "0:tile=>0", "--count"}).Output, "2\n");
    const ProgramResult none = RunOn({"search", "--cell", "0:x1=77"});
    EXPECT_EQ(none.ExitCode, 1);
    EXPECT_EQ(none.Output, "");
    EXPECT_EQ(RunOn({"search", "--count"}).Output, "1024\n");
}

TEST_F(OverlayCommands, SearchPrintsJson) {
    std::string told = RunOn({"search", "--cell", "0:tile=>0", "--json"}).Output;
    std::erase_if(told, [](char c) { return c == ' ' || c == '\n'; });
    EXPECT_EQ(told, R"({"count":2,"hits":[[3,5],[29,30]]})");
    told = RunOn({"search", "--cell", "0:x1=77", "--json"}).Output;
    std::erase_if(told, [](char c) { return c == ' ' || c == '\n'; });
    EXPECT_EQ(told, R"({"count":0,"hits":[]})");
}

TEST_F(OverlayCommands, SearchSetsWhatItFindsAndSaves) {
    const ProgramResult set = RunOn({"search", "--cell", "0:tile=>0", "--set",
                                     "elevation=-7", "--set", "palette=9", "--count"});
    EXPECT_EQ(set.ExitCode, 0) << set.Errors;
    EXPECT_EQ(set.Output, "2\n");
    EXPECT_NE(set.Errors.find("2 posts set in " + Terrain("theater.L2")),
              std::string::npos);
    MadeLevel found = OnDisk();
    EXPECT_TRUE((found.At(4, 6) == MadePost{1, -7, 9, 8, 9}));
    EXPECT_TRUE((found.At(30, 31) == MadePost{16, -7, 9, 0, 0}));
    EXPECT_TRUE((found.At(1, 1) == MadePost{}));
    const std::string before = PairOnDisk();
    EXPECT_EQ(RunOn({"search", "--cell", "0:x1=77", "--set", "tile=5"}).ExitCode, 1);
    EXPECT_EQ(PairOnDisk(), before);
    const ProgramResult sea =
        RunOn({"search", "--cell", "0:tile=0", "--set", "palette=9", "--count"});
    EXPECT_NE(sea.Errors.find("all sea, here 2, share one block"), std::string::npos)
        << sea.Errors;
}

TEST_F(OverlayCommands, WrongSearchesAreUsage) {
    for (const char* cell : {"tile=5", "9:tile=5", "0:tile", "0:tile=", "0:tile=>",
                             "0:height=5", "0:tile=5x", "0:tile=5.5", "0:", "0:tile=!!5"})
        ExpectUsage({"search", "--cell", cell}, "is not N:FIELD=CONDITION");
    ExpectUsage({"search", "--cell", "0:tile=1", "--cell", "0:tile=2"}, "given twice");
    ExpectUsage({"search", "--set", "tile=5"}, "every post of the terrain");
    for (const char* set : {"tile=-1", "elevation=40000", "palette=256", "x1=", "x2=1x"})
        ExpectUsage({"search", "--cell", "0:tile=1", "--set", set}, "whole number from");
    ExpectUsage({"search", "--cell", "0:tile=1", "--set", "name=5"}, "FIELD=VALUE");
    ExpectUsage({"search", "--cell", "0:tile=1", "--set", "x1=1", "--set", "x1=2"},
                "given twice");
}

TEST_F(OverlayCommands, ARegionIsExportedAndStampedElsewhere) {
    const ProgramResult out = RunOn({"region", "export", Out(), "4", "6", "3", "5"});
    EXPECT_EQ(out.ExitCode, 0) << out.Errors;
    EXPECT_EQ(Slurp(Out()), Int32Bytes(2) + Int32Bytes(2) + Int32Bytes(1) +
                                Int32Bytes(0) + Int32Bytes(0) + Int32Bytes(0));
    const ProgramResult in = RunOn({"region", "import", Out(), "20", "10"});
    EXPECT_EQ(in.ExitCode, 0) << in.Errors;
    EXPECT_EQ(in.Output, "4 posts set in " + Terrain("theater.L2") + "\n");
    level_.At(21, 11).Tile = 1;
    EXPECT_TRUE(std::ranges::equal(OnDisk().Posts, level_.Posts));
}

TEST_F(OverlayCommands, PastTheEdgeOnlyTheClippedPartIsStamped) {
    Spill(Out(), Int32Bytes(2) + Int32Bytes(2) + Int32Bytes(7) + Int32Bytes(8) +
                     Int32Bytes(9) + Int32Bytes(10));
    ExpectUsage({"region", "import", Out(), "31", "31"}, "give --clip");
    ExpectUsage({"region", "import", Out(), "32", "0", "--clip"}, "X: 32 lies outside");
    const ProgramResult in = RunOn({"region", "import", Out(), "31", "31", "--clip"});
    EXPECT_EQ(in.Output, "1 post set in " + Terrain("theater.L2") + "\n") << in.Errors;
    level_.At(32, 32).Tile = 7;
    EXPECT_TRUE(std::ranges::equal(OnDisk().Posts, level_.Posts));
}

TEST_F(OverlayCommands, BrokenRegionsChangeNothing) {
    const std::string before = PairOnDisk();
    for (const std::string& bytes :
         {std::string("short"), Int32Bytes(1) + Int32Bytes(2) + Int32Bytes(3),
          Int32Bytes(1) + Int32Bytes(1) + Int32Bytes(-5)}) {
        Spill(Out(), bytes);
        EXPECT_EQ(RunOn({"region", "import", Out(), "0", "0"}).ExitCode, 3);
    }
    EXPECT_EQ(PairOnDisk(), before);
    ExpectUsage({"region", "export", Out(), "0", "0", "0", "32"}, "Y2: 32 lies outside");
    EXPECT_EQ(Slurp(Out()).size(), 12U); // the export wrote nothing
}

TEST_F(OverlayCommands, TheDerivedFilesAreWritten) {
    const auto made = [this](const char* command) {
        const ProgramResult result = RunOn({command, Out()});
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        EXPECT_EQ(result.Output, Out() + "\n");
        return Slurp(Out());
    };
    std::string mea(4 * 4 * 2, '\0');
    mea.replace((3 * 4 + 3) * 2, 2, Int16Bytes(900));
    EXPECT_EQ(made("mea"), mea);
    EXPECT_EQ(made("tc"), "0\t SEA.PCX\t | Used 1022 times\r\n"
                          "1\t SHORE.PCX\t | Used 1 times\r\n"
                          "10\t LAND.PCX\t | Used 1 times\r\n"
                          "FFFF     END MARK    | Used 0 times\r\n");
    std::string tm(32 * 32 * 2, '\0');
    tm.replace(((32 - 6) * 32 + 3) * 2, 2, Int16Bytes(1));
    tm.replace(((32 - 31) * 32 + 29) * 2, 2, Int16Bytes(16));
    EXPECT_EQ(made("tm"), tm);
}

TEST_F(OverlayCommands, NumbersThatDoNotFitAreRunTimeErrors) {
    Spill(Out(), "old");
    level_.At(2, 3).Tile = 40000;
    WriteLevel();
    const ProgramResult tm = RunOn({"tm", Out()});
    EXPECT_EQ(tm.ExitCode, 3);
    EXPECT_NE(tm.Errors.find("X 1, Y 2"), std::string::npos) << tm.Errors;
    EXPECT_EQ(RunOn({"tc", Out()}).ExitCode, 3);
    EXPECT_EQ(Slurp(Out()), "old");
}

TEST_F(OverlayCommands, RenderDrawsFeatures) {
    const auto painted = [this](std::vector<std::string> more) {
        std::vector<std::string> arguments{"render", Out() + ".bmp",  "--grid",
                                           "2",      "--tile-pixels", "16"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ProgramResult result = RunOn(arguments);
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        return Slurp(Out() + ".bmp");
    };
    const std::string plain = painted({});
    const std::string road = painted({"--features", Tdf("ROAD 2 0,0 1,1 0\n")});
    EXPECT_NE(plain, road);
    EXPECT_EQ(plain, painted({"--features", Tdf("ROAD 2 9,9 8,8 0\n")}));
}

} // namespace
} // namespace vardenix::tests
