// The sample world, and the whole way from its maps to a theater by the real programs.
#include "support/RunProgram.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>

namespace vardenix::tests {
namespace {

constexpr int Posts = 96;
constexpr int Transition = 3; // posts that lead from one ground to another

size_t At(int x, int y) {
    return size_t{Posts} * static_cast<size_t>(y) + static_cast<size_t>(x);
}

class SampleWorld : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(RunProgram({SAMPLE_PROGRAM, folder_.File("install"), "--posts",
                              std::to_string(Posts)})
                      .ExitCode,
                  0);
        const ProgramResult made = RunProgram({SAMPLE_WORLD_PROGRAM, World("")});
        ASSERT_EQ(made.ExitCode, 0) << made.Errors;
        ASSERT_EQ(On({"place", "import", World("theater.place")}).ExitCode, 0);
    }
    std::string World(const std::string& name) const {
        return folder_.File("world/" + name);
    }
    ProgramResult On(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), VARDENIX_CLI);
        arguments.insert(arguments.end(),
                         {"--theater", folder_.File("install/terrdata/sorrelund")});
        return RunProgram(arguments, {"XDG_DATA_HOME=" + folder_.File("data")});
    }
    // The classes of the posts by the field's own program, from the south west.
    std::vector<int32_t> Classes() const {
        const std::string raw = folder_.File("classes.bin");
        EXPECT_EQ(RunProgram({"/usr/bin/gdalwarp",
                              "-q",
                              "-t_srs",
                              "EPSG:32624",
                              "-te",
                              "300000",
                              "4150000",
                              std::to_string(300000 + 1000 * Posts),
                              std::to_string(4150000 + 1000 * Posts),
                              "-ts",
                              std::to_string(Posts),
                              std::to_string(Posts),
                              "-r",
                              "mode",
                              "-ot",
                              "Int32",
                              "-of",
                              "ENVI",
                              World("landcover.tif"),
                              raw})
                      .ExitCode,
                  0);
        const std::string bytes = Slurp(raw);
        std::vector<int32_t> classes(Posts * Posts);
        for (int y = 0; y < Posts; ++y)
            std::memcpy(&classes[At(0, y)], bytes.data() + (Posts - 1 - y) * Posts * 4,
                        Posts * 4);
        return classes;
    }
    std::vector<int32_t> Tiles() const {
        const std::string file = folder_.File("tiles.asc");
        EXPECT_EQ(On({"tiles", "export", file}).ExitCode, 0);
        std::ifstream in(file);
        std::string line;
        std::vector<int32_t> tiles(Posts * Posts);
        int row = Posts;
        while (row > 0 && std::getline(in, line)) {
            if (line.find_first_not_of("0123456789 ") != std::string::npos)
                continue; // of the head
            --row;
            std::istringstream numbers(line);
            for (int x = 0; x < Posts; ++x)
                numbers >> tiles[At(x, row)];
        }
        EXPECT_EQ(row, 0);
        return tiles;
    }
    // The sample tile of each class.
    std::map<int32_t, int32_t> Table() const {
        std::ifstream in(World("landcover.table"));
        std::map<int32_t, int32_t> table;
        std::string line;
        while (std::getline(in, line)) {
            std::istringstream words(line);
            std::string ground;
            int32_t number = 0;
            if (words >> number >> ground)
                words >> table[number];
        }
        return table;
    }
    TestFolder folder_;
};

TEST_F(SampleWorld, LandCoverBecomesTheGroundsOfItsTable) {
    const ProgramResult painted = On({"tiles", "import", World("landcover.tif"),
                                      "--table", World("landcover.table"), "--json"});
    ASSERT_EQ(painted.ExitCode, 0) << painted.Errors;
    const std::vector<int32_t> classes = Classes();
    const std::vector<int32_t> tiles = Tiles();
    const auto table = Table();
    int inner = 0;
    int right = 0;
    std::map<int32_t, int> kinds;
    for (int y = Transition; y + Transition < Posts; ++y)
        for (int x = Transition; x + Transition < Posts; ++x) {
            const auto at = [&](int dx, int dy) { return At(x + dx, y + dy); };
            const int32_t number = classes[at(0, 0)];
            bool alike = true;
            for (int dy = -Transition; dy <= Transition; ++dy)
                for (int dx = -Transition; dx <= Transition; ++dx)
                    alike = alike && classes[at(dx, dy)] == number;
            if (!alike)
                continue;
            ++inner;
            ++kinds[number];
            // Tiles of a ground stand in one set of 16.
            right += tiles[at(0, 0)] / 16 == table.at(number) / 16 ? 1 : 0;
        }
    EXPECT_GT(kinds.size(), 2U);
    EXPECT_GT(inner, 1000);
    EXPECT_GT(right, inner * 98 / 100) << inner;
    // What was asked for once is there.
    const ProgramResult seams = On({"terrain", "seams"});
    const auto count = std::ranges::count(seams.Output, '\n');
    EXPECT_LT(count, 2 * Posts * Posts / 100);
}

TEST_F(SampleWorld, ElevationsAndFeaturesFitTheTheater) {
    const ProgramResult heights = On({"heights", "import", World("elevations.tif")});
    EXPECT_EQ(heights.ExitCode, 0) << heights.Errors;
    EXPECT_EQ(heights.Errors.find("without a height"), std::string::npos)
        << heights.Errors;
    const ProgramResult features =
        On({"features", "import", World("coast.geojson"), World("towns.geojson"),
            World("ways.geojson"), "--out", folder_.File("land.tdf")});
    EXPECT_EQ(features.ExitCode, 0) << features.Errors;
    const std::string lines = Slurp(folder_.File("land.tdf"));
    for (const char* word : {"COAST ", "CITY ", "LABEL ", "ROAD "})
        EXPECT_NE(lines.find(word), std::string::npos) << word;
    EXPECT_EQ(folder_.Names("world"),
              "coast.geojson elevations.tif landcover.table landcover.tif theater.place "
              "towns.geojson ways.geojson");
}

} // namespace
} // namespace vardenix::tests
