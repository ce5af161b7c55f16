// tiles export and tiles import by the real helper program.
#include "cli/WorldTheater.h"

#include <filesystem>

namespace vardenix::tests {
namespace {

class TileMaps : public WorldTheater {
protected:
    std::string PairOnDisk() {
        return Slurp(folder_.File("theater/terrain/theater.L2")) +
               Slurp(folder_.File("theater/terrain/theater.O2"));
    }
    static size_t SerialOf(int x, int y) {
        return size_t{Posts} * static_cast<size_t>(y) + static_cast<size_t>(x);
    }
    // 4 by 4 posts from the north west, each line one row.
    std::string Classes(const std::string& rows) {
        return folder_.Write("classes.asc",
                             "ncols 4\nnrows 4\nxllcorner 0\nyllcorner 0\ncellsize 1\n"
                             "NODATA_value -9\n" +
                                 rows);
    }
};

TEST_F(TileMaps, ComeBackFromEveryForm) {
    for (const char* form : {"tif", "asc", "png"}) {
        SCOPED_TRACE(form);
        const std::string file = folder_.File(std::string("tiles.") + form);
        const ProgramResult written = Run({"tiles", "export", file});
        ASSERT_EQ(written.ExitCode, 0) << written.Errors;
        // Nothing changes, so nothing is written.
        const std::string bytes = PairOnDisk();
        const ProgramResult same = Run({"tiles", "import", file, "--stretch"});
        EXPECT_EQ(same.Output, "posts changed: 0\n") << same.Errors;
        EXPECT_EQ(PairOnDisk(), bytes);
        ASSERT_EQ(Run({"fill", "0", "0", "63", "63", "--tile", "7"}).ExitCode, 0);
        const ProgramResult read = Run({"tiles", "import", file, "--stretch"});
        EXPECT_EQ(read.ExitCode, 0) << read.Errors;
        EXPECT_EQ(Level(), before_);
    }
}

TEST_F(TileMaps, APlacedMapComesBackThroughItsPlaceAndIntoARectangle) {
    const std::string file = folder_.File("tiles.tif");
    ASSERT_EQ(Run({"tiles", "export", file}).ExitCode, 0);
    ASSERT_EQ(Run({"fill", "0", "0", "63", "63", "--tile", "7"}).ExitCode, 0);
    EXPECT_EQ(Run({"tiles", "import", file, "--in", "10", "20", "30", "21"}).ExitCode, 0);
    MadeLevel level = OnDisk();
    for (int y = 1; y <= Posts; ++y)
        for (int x = 1; x <= Posts; ++x) {
            const bool inside = x >= 11 && x <= 31 && y >= 21 && y <= 22;
            const auto serial = SerialOf(x - 1, y - 1);
            EXPECT_EQ(level.At(x, y).Tile, inside ? before_.at(serial).Tile : 7);
        }
    EXPECT_EQ(Run({"tiles", "import", file}).ExitCode, 0);
    EXPECT_EQ(Level(), before_);
}

TEST_F(TileMaps, TheFieldsOwnProgramReadsTheNumbers) {
    const std::string file = folder_.File("tiles.tif");
    ASSERT_EQ(Run({"tiles", "export", file}).ExitCode, 0);
    for (const auto& [x, y] : {std::pair{40, 3}, {5, 60}}) {
        const ProgramResult told =
            RunProgram({"/usr/bin/gdallocationinfo", "-valonly", file, std::to_string(x),
                        std::to_string(Posts - 1 - y)});
        EXPECT_EQ(told.Output, std::to_string(before_.at(SerialOf(x, y)).Tile) + "\n");
    }
}

TEST_F(TileMaps, NumbersThatNoTileHasAreRefused) {
    const std::string before = PairOnDisk();
    for (const auto& [rows, named] :
         {std::pair{"1 1 1 1\n1 1 -3 1\n1 1 1 1\n1 1 1 1\n", "-3"},
          {"1 1 1 1\n1 4000 1 1\n1 1 1 1\n1 1 1 1\n", "4000"},
          {"1 1 1 1\n1 1.5 1 1\n1 1 1 1\n1 1 1 1\n", "1.5"}}) {
        const ProgramResult result = Run(
            {"tiles", "import", Classes(rows), "--stretch", "--in", "0", "0", "3", "3"});
        EXPECT_EQ(result.ExitCode, 3);
        EXPECT_NE(result.Errors.find(named), std::string::npos) << result.Errors;
        EXPECT_EQ(PairOnDisk(), before);
    }
}

TEST_F(TileMaps, AnUnknownNumberThatStandsThereStays) {
    ASSERT_EQ(Run({"set", "5", "6", "--tile", "70000"}).ExitCode, 0);
    const std::string tif = folder_.File("tiles.tif");
    ASSERT_EQ(Run({"tiles", "export", tif}).ExitCode, 0);
    ASSERT_EQ(Run({"set", "7", "7", "--tile", "1"}).ExitCode, 0);
    EXPECT_EQ(Run({"tiles", "import", tif}).Output, "posts changed: 1\n");
    EXPECT_EQ(OnDisk().At(6, 7).Tile, 70000);
    // More than 16 bits hold.
    const std::string png = folder_.File("tiles.png");
    const ProgramResult refused = Run({"tiles", "export", png});
    EXPECT_EQ(refused.ExitCode, 3);
    EXPECT_NE(refused.Errors.find("there is 70000"), std::string::npos) << refused.Errors;
    EXPECT_FALSE(std::filesystem::exists(png));
}

TEST_F(TileMaps, ANameWithoutAKnownEndingIsRefused) {
    for (const char* name : {"tiles", "tiles.jpg", "."}) {
        EXPECT_EQ(Run({"tiles", "export", folder_.File(name)}).ExitCode, 3) << name;
        EXPECT_EQ(Run({"heights", "export", folder_.File(name)}).ExitCode, 3) << name;
    }
    EXPECT_FALSE(std::filesystem::exists(folder_.File("tiles")));
}

TEST_F(TileMaps, ClassesBecomeSingleTilesByTheTable) {
    const std::string map = Classes("1 1 2 2\n1 1 2 2\n3 3 -9 1\n3 3 1 1\n");
    const std::string table =
        folder_.Write("cover.table", "1 tile 11\n2 tile 22 # hills\n3 leave\n");
    const ProgramResult done = Run({"tiles", "import", map, "--stretch", "--in", "20",
                                    "30", "23", "33", "--table", table});
    EXPECT_EQ(done.ExitCode, 0) << done.Errors;
    EXPECT_NE(done.Output.find("posts of class 1: 7\n"), std::string::npos)
        << done.Output;
    MadeLevel level = OnDisk();
    // The northern rows first; 0 stays.
    constexpr std::array tiles{11, 11, 22, 22, 11, 11, 22, 22, 0, 0, 0, 11, 0, 0, 11, 11};
    for (size_t i = 0; i < tiles.size(); ++i) {
        const int x = 20 + static_cast<int>(i) % 4;
        const int y = 33 - static_cast<int>(i) / 4;
        const size_t serial = SerialOf(x, y);
        EXPECT_EQ(level.At(x + 1, y + 1).Tile,
                  tiles.at(i) == 0 ? before_.at(serial).Tile : tiles.at(i));
        level.At(x + 1, y + 1).Tile = before_.at(serial).Tile;
    }
    EXPECT_EQ(level.Posts, before_);
}

TEST_F(TileMaps, MostOfWhatAPostCoversIsItsClass) {
    const std::string map = Classes("1 1 2 2\n1 2 2 2\n2 2 1 1\n1 2 1 2\n");
    const std::string table = folder_.Write("cover.table", "1 tile 11\n2 tile 22\n");
    ASSERT_EQ(Run({"tiles", "import", map, "--stretch", "--in", "0", "0", "1", "1",
                   "--table", table})
                  .ExitCode,
              0);
    MadeLevel level = OnDisk();
    EXPECT_EQ(level.At(1, 2).Tile, 11);
    EXPECT_EQ(level.At(2, 2).Tile, 22);
    EXPECT_EQ(level.At(1, 1).Tile, 22);
    EXPECT_EQ(level.At(2, 1).Tile, 11);
}

TEST_F(TileMaps, WhatATableDoesNotTellIsRefusedOrLeft) {
    const std::string before = PairOnDisk();
    const std::string map = Classes("1 1 5 5\n1 1 6 5\n1 1 1 1\n1 1 1 1\n");
    const auto import = [&](const std::string& table, std::vector<std::string> more) {
        more.insert(more.begin(),
                    {"tiles", "import", map, "--stretch", "--in", "0", "0", "3", "3",
                     "--table", folder_.Write("cover.table", table)});
        return Run(more);
    };
    const ProgramResult unknown = import("1 tile 1\n", {});
    EXPECT_EQ(unknown.ExitCode, 3);
    EXPECT_NE(unknown.Errors.find(": 5, 6;"), std::string::npos) << unknown.Errors;
    EXPECT_EQ(import("1 tile 1\n5 tile 9999\n6 leave\n", {}).ExitCode, 3);
    EXPECT_EQ(import("1 till 1\n", {}).ExitCode, 3);
    EXPECT_EQ(import("", {}).ExitCode, 3);
    EXPECT_EQ(import("1 tile 1\n", {"--leave-unknown", "--dry-run"}).ExitCode, 0);
    EXPECT_EQ(PairOnDisk(), before);
    EXPECT_EQ(import("1 tile 1\n", {"--leave-unknown"}).ExitCode, 0);
    EXPECT_EQ(OnDisk().At(1, 1).Tile, 1);
    EXPECT_EQ(OnDisk().At(4, 4).Tile, before_.at(3 * Posts + 3).Tile);
}

TEST_F(TileMaps, WhereNoGroundCanBeLearnedNothingIsPainted) {
    ASSERT_EQ(Run({"fill", "0", "0", "63", "63", "--tile", "1"}).ExitCode, 0);
    const std::string before = PairOnDisk();
    const ProgramResult result = Run(
        {"tiles", "import", Classes("1 1 2 2\n1 1 2 2\n1 1 1 1\n1 1 1 1\n"), "--stretch",
         "--table", folder_.Write("cover.table", "1 ground 1\n2 tile 5\n")});
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_NE(result.Errors.find("cannot learn what fits here"), std::string::npos)
        << result.Errors;
    EXPECT_EQ(PairOnDisk(), before);
}

TEST_F(TileMaps, AMapOfElsewhereChangesNothing) {
    const std::string before = PairOnDisk();
    const std::string map = Classes("1 1 1 1\n1 1 1 1\n1 1 1 1\n1 1 1 1\n");
    EXPECT_EQ(Run({"tiles", "import", map, "--map-system", "EPSG:4326"}).ExitCode, 1);
    EXPECT_EQ(PairOnDisk(), before);
}

} // namespace
} // namespace vardenix::tests
