// place and heights: by the real helper program, held against the field's own programs.
#include "cli/WorldTheater.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <unistd.h>

namespace vardenix::tests {
namespace {

class WorldCommands : public WorldTheater {};

TEST_F(WorldCommands, APlaceIsGuessedUntilItIsToldAndGoesToOtherMachines) {
    const ProgramResult guessed = Run({"place", "show"});
    EXPECT_EQ(guessed.ExitCode, 0) << guessed.Errors;
    EXPECT_NE(guessed.Output.find("guessed: true"), std::string::npos);
    EXPECT_NE(guessed.Output.find("south west: 47.000000 north, 8.500000 east"),
              std::string::npos)
        << guessed.Output;
    ASSERT_EQ(Run({"place", "set", "--system", "EPSG:32632", "--left", "500000",
                   "--bottom", "5200000", "--right", "564000", "--top", "5264000"})
                  .ExitCode,
              0);
    const ProgramResult told = Run({"place", "show"});
    EXPECT_NE(told.Output.find("guessed: false"), std::string::npos);
    EXPECT_NE(told.Output.find("post width: 1000"), std::string::npos) << told.Output;
    // The middle of the zone lies at 9 degrees.
    EXPECT_NE(told.Output.find(" north, 9.000000 east"), std::string::npos);
    ASSERT_EQ(Run({"place", "export", folder_.File("place.txt")}).ExitCode, 0);
    std::filesystem::remove_all(folder_.File("data"));
    EXPECT_EQ(Run({"place", "show"}).Output, guessed.Output);
    ASSERT_EQ(Run({"place", "import", folder_.File("place.txt")}).ExitCode, 0);
    EXPECT_EQ(Run({"place", "show"}).Output, told.Output);
}

// The middle of the zone, and the equator from which a southern place is counted.
TEST_F(WorldCommands, PlacesInTheSouthWestAreToldAsSuch) {
    ASSERT_EQ(Run({"place", "set", "--system", "EPSG:32721", "--left", "500000",
                   "--bottom", "9000000", "--right", "564000", "--top", "10000000"})
                  .ExitCode,
              0);
    const std::string told = Run({"place", "show"}).Output;
    EXPECT_NE(told.find(" south, 57.000000 west"), std::string::npos) << told;
    EXPECT_NE(told.find("north west: 0.000000 north, 57.000000 west"), std::string::npos)
        << told;
}

TEST_F(WorldCommands, AUserWithoutAHomeHasTheGuess) {
    std::filesystem::permissions(folder_.Path(), std::filesystem::perms(0755));
    const ProgramResult shown =
        RunProgram({"/usr/bin/setpriv", "--reuid=54321", "--clear-groups", "/usr/bin/env",
                    "-u", "HOME", "-u", "XDG_DATA_HOME", VARDENIX_CLI, "place", "show",
                    "--theater", folder_.File("theater")});
    // Only root becomes somebody else, and a checkout may be closed to them.
    constexpr int notStarted = 126;
    if (::geteuid() == 0 && shown.ExitCode != notStarted) {
        EXPECT_EQ(shown.ExitCode, 0) << shown.Errors;
        EXPECT_NE(shown.Output.find("guessed: true"), std::string::npos);
    }
}

TEST_F(WorldCommands, APlaceThatNobodyKnowsIsNotKept) {
    EXPECT_EQ(Run({"place", "set", "--system", "nonsense", "--left", "0", "--bottom", "0",
                   "--post", "10"})
                  .ExitCode,
              3);
    EXPECT_NE(Run({"place", "show"}).Output.find("guessed: true"), std::string::npos);
    EXPECT_EQ(Run({"place", "set", "--system", "EPSG:32632", "--left", "0", "--bottom",
                   "0", "--post", "0"})
                  .ExitCode,
              3);
    EXPECT_EQ(
        Run({"place", "set", "--system", "EPSG:32632", "--left", "0", "--bottom", "0"})
            .ExitCode,
        2);
}

TEST_F(WorldCommands, HeightsComeBackFromEveryForm) {
    for (const char* form : {"tif", "asc", "png"}) {
        const std::string file = folder_.File(std::string("heights.") + form);
        const ProgramResult written = Run({"heights", "export", file});
        ASSERT_EQ(written.ExitCode, 0) << written.Errors;
        ASSERT_EQ(Run({"fill", "0", "0", "63", "63", "--elevation", "7"}).ExitCode, 0);
        const ProgramResult read = Run({"heights", "import", file, "--stretch",
                                        "--resample", "nearest", "--unit", "feet"});
        EXPECT_EQ(read.ExitCode, 0) << read.Errors;
        EXPECT_EQ(Level(), before_) << form;
    }
}

TEST_F(WorldCommands, APlacedMapComesBackThroughItsPlace) {
    const std::string file = folder_.File("heights.tif");
    ASSERT_EQ(Run({"heights", "export", file}).ExitCode, 0);
    ASSERT_EQ(Run({"fill", "0", "0", "63", "63", "--elevation", "7"}).ExitCode, 0);
    ASSERT_EQ(Run({"heights", "import", file, "--unit", "feet"}).ExitCode, 0);
    EXPECT_EQ(Level(), before_);
}

TEST_F(WorldCommands, HeightsAreThoseOfTheFieldsOwnProgram) {
    const std::string map = Map();
    struct Case {
        const char* System;
        double Left;
        double Bottom;
        double Post;
    };
    for (const Case& place :
         {Case{"EPSG:32632", 480000, 5200000, 1000},
          Case{"EPSG:3035", 4250000, 2650000, 900}, Case{"EPSG:4326", 8.3, 46.9, 0.015}})
        for (const char* how : {"bilinear", "cubic", "average", "nearest"}) {
            SCOPED_TRACE(std::string(place.System) + " " + how);
            const auto text = [](double number) { return std::to_string(number); };
            ASSERT_EQ(
                Run({"place", "set", "--system", place.System, "--left", text(place.Left),
                     "--bottom", text(place.Bottom), "--post", text(place.Post)})
                    .ExitCode,
                0);
            ASSERT_EQ(
                Run({"fill", "0", "0", "63", "63", "--elevation", "-1234"}).ExitCode, 0);
            const ProgramResult result = Run({"heights", "import", map, "--map-system",
                                              "EPSG:4326", "--resample", how});
            ASSERT_EQ(result.ExitCode, 0) << result.Errors;
            const std::string raw = folder_.File("warped.bin");
            std::filesystem::remove(raw);
            ASSERT_EQ(RunProgram({"/usr/bin/gdalwarp",
                                  "-q",
                                  "-overwrite",
                                  "-s_srs",
                                  "EPSG:4326",
                                  "-t_srs",
                                  place.System,
                                  "-te",
                                  text(place.Left),
                                  text(place.Bottom),
                                  text(place.Left + Posts * place.Post),
                                  text(place.Bottom + Posts * place.Post),
                                  "-ts",
                                  "64",
                                  "64",
                                  "-r",
                                  std::string(how) == "nearest" ? "near" : how,
                                  "-ot",
                                  "Float32",
                                  "-dstnodata",
                                  "-32768",
                                  "-of",
                                  "ENVI",
                                  map,
                                  raw})
                          .ExitCode,
                      0);
            const std::string bytes = Slurp(raw);
            ASSERT_EQ(bytes.size(), Posts * Posts * sizeof(float));
            MadeLevel level = OnDisk();
            int without = 0;
            for (int y = 0; y < Posts; ++y)
                for (int x = 0; x < Posts; ++x) {
                    float metres = 0;
                    std::memcpy(&metres, bytes.data() + ((Posts - 1 - y) * Posts + x) * 4,
                                4);
                    const int16_t feet = level.At(x + 1, y + 1).Elevation;
                    if (metres == -32768) {
                        ++without;
                        EXPECT_EQ(feet, -1234) << x << ' ' << y;
                    } else {
                        EXPECT_NEAR(feet, metres / 0.3048, 0.502) << x << ' ' << y;
                    }
                }
            EXPECT_GT(without, 5);
            EXPECT_LT(without, Posts * Posts / 2);
        }
}

TEST_F(WorldCommands, WhatIsNoMapEndsInASentenceAndChangesNothing) {
    const std::string whole = folder_.File("whole.tif");
    ASSERT_EQ(Run({"heights", "export", whole}).ExitCode, 0);
    const std::string bytes = Slurp(whole);
    std::string huge = "ncols 1000000\nnrows 1000000\nxllcorner 0\nyllcorner 0\n"
                       "cellsize 1\n1 2 3\n";
    const std::string map = Map();
    std::vector<std::vector<std::string>> commands{
        {folder_.Write("text.tif", "no map at all")},
        {folder_.Write("empty.tif", "")},
        {folder_.Write("cut.tif", bytes.substr(0, bytes.size() / 2))},
        {folder_.Write("huge.asc", huge), "--stretch"},
        {folder_.File("is not there.tif")},
        {folder_.Path()},
        {map}, // tells no system
        {map, "--map-system", "EPSG:999999"},
        {"/vsimem/x.tif"}};
    for (std::vector<std::string> command : commands) {
        command.insert(command.begin(), {"heights", "import"});
        const ProgramResult result = Run(command);
        EXPECT_EQ(result.ExitCode, 3) << command[2];
        EXPECT_NE(result.Errors.find(':'), std::string::npos) << result.Errors;
        EXPECT_EQ(Level(), before_) << command[2];
    }
    // A map of another place has nothing to say here.
    ASSERT_EQ(Run({"place", "set", "--system", "EPSG:32632", "--left", "0", "--bottom",
                   "0", "--post", "1000"})
                  .ExitCode,
              0);
    EXPECT_EQ(Run({"heights", "import", map, "--map-system", "EPSG:4326"}).ExitCode, 1);
    EXPECT_EQ(Level(), before_);
}

TEST_F(WorldCommands, TheFinestElevationsTakeMapsToo) {
    const std::string elv = folder_.File("made.elv");
    const std::string map = Map();
    ASSERT_EQ(Run({"heights", "import", map, "--stretch", "--heights", elv}).ExitCode, 0);
    EXPECT_EQ(std::filesystem::file_size(elv), 4U * Posts * 4 * Posts * 2);
    EXPECT_EQ(Level(), before_);
    const std::string bytes = Slurp(elv);
    const std::string tif = folder_.File("made.tif");
    ASSERT_EQ(Run({"heights", "export", tif, "--heights", elv}).ExitCode, 0);
    ASSERT_EQ(Run({"heights", "import", map, "--in", "0", "0", "9", "9", "--stretch",
                   "--unit", "feet", "--heights", elv})
                  .ExitCode,
              0);
    EXPECT_NE(Slurp(elv), bytes);
    ASSERT_EQ(
        Run({"heights", "import", tif, "--unit", "feet", "--heights", elv}).ExitCode, 0);
    EXPECT_EQ(Slurp(elv), bytes);
}

} // namespace
} // namespace vardenix::tests
