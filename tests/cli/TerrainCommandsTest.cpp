// terrain fill, mend and seams of the real vardenix-cli, on a land of red and blue tiles.
#include "cli/CliTheater.h"
#include "support/PictureMaker.h"

#include <random>

namespace vardenix::tests {
namespace {

// Tile i has blue in the corners whose bits of i are set: 1 south west, 2 south east, 4
// north west, 8 north east.
std::string RedAndBlue(unsigned tile) {
    std::string file = DdsHeader(16, 16, {.Bits = 32});
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x) {
            const unsigned corner = (y < 8 ? 2U : 0U) + (x < 8 ? 0U : 1U);
            file += Little((tile >> corner & 1) != 0 ? 0x0000FF : 0xFF0000, 4);
        }
    return file;
}

class TerrainCommands : public CliTheater {
protected:
    void SetUp() override {
        CliTheater::SetUp();
        MadeSet set;
        for (unsigned tile = 0; tile < 16; ++tile) {
            const std::string name = "TILE" + std::to_string(10 + tile);
            set.Tiles.push_back({name + ".PCX"});
            folder_.Write("my theater/texture/texture/" + name + ".dds",
                          RedAndBlue(tile));
        }
        folder_.Write("my theater/texture/Texture.bin", CatalogueBytes({set}));
        // Red in the south; blue corners here and there in the north.
        std::mt19937 random(2);
        std::vector<int> corners(33 * 33);
        for (size_t i = 33 * 8; i < corners.size(); ++i)
            corners[i] = random() % 3 == 0 ? 1 : 0;
        level_ = MadeLevel::Empty(32);
        for (int y = 0; y < 32; ++y)
            for (int x = 0; x < 32; ++x) {
                const auto corner = [&](int dx, int dy) {
                    const int at = (y + dy) * 33 + x + dx;
                    return corners[static_cast<size_t>(at)];
                };
                level_.At(x + 1, y + 1) = {corner(0, 0) | corner(1, 0) << 1 |
                                               corner(0, 1) << 2 | corner(1, 1) << 3,
                                           50, 3, 2, 1};
            }
        WriteLevel();
    }
    std::vector<int32_t> TilesOnDisk(int x1, int y1, int x2, int y2) const {
        MadeLevel level = OnDisk();
        std::vector<int32_t> tiles;
        for (int y = y1; y <= y2; ++y)
            for (int x = x1; x <= x2; ++x)
                tiles.push_back(level.At(x + 1, y + 1).Tile);
        return tiles;
    }
};

TEST_F(TerrainCommands, FillJoinsWhatItPaints) {
    const std::string before = PairOnDisk();
    const std::vector<std::string> fill{"terrain", "fill", "4",      "3",
                                        "3",       "4",    "--like", "15"};
    std::vector<std::string> dry = fill;
    dry.emplace_back("--dry-run");
    const ProgramResult told = RunOn(dry);
    EXPECT_EQ(told.ExitCode, 0) << told.Errors;
    EXPECT_EQ(told.Output, "posts changed: 16\noutside the rectangle: 12\n"
                           "seams left open: 0\nposts without a fitting tile: 0\n");
    EXPECT_EQ(PairOnDisk(), before);

    EXPECT_EQ(RunOn(fill).Output, told.Output);
    EXPECT_EQ(TilesOnDisk(2, 2, 5, 5), (std::vector<int32_t>{8, 12, 12, 4,  //
                                                             10, 15, 15, 5, //
                                                             10, 15, 15, 5, //
                                                             2, 3, 3, 1}));
    MadeLevel level = OnDisk();
    EXPECT_EQ(level.At(4, 4).Elevation, 50);
    EXPECT_EQ(level.At(4, 4).X2, 1);
}

TEST_F(TerrainCommands, FillInsideChangesNothingOutside) {
    EXPECT_EQ(RunOn({"terrain", "fill", "3", "3", "5", "5", "--like", "15", "--inside",
                     "--json"})
                  .ExitCode,
              0);
    EXPECT_EQ(TilesOnDisk(2, 3, 6, 5), (std::vector<int32_t>{0, 8, 12, 4, 0,  //
                                                             0, 10, 15, 5, 0, //
                                                             0, 2, 3, 1, 0}));
}

TEST_F(TerrainCommands, SeamsAreFoundAndMended) {
    EXPECT_EQ(RunOn({"terrain", "seams"}).ExitCode, 0);
    level_.At(4, 5).Tile = 15; // the post 3, 4
    WriteLevel();
    const ProgramResult found = RunOn({"terrain", "seams", "--in", "3", "4", "3", "4"});
    EXPECT_EQ(found.ExitCode, 1);
    EXPECT_EQ(found.Output, "X 3, Y 3: north\nX 2, Y 4: east\nX 3, Y 4: east\n"
                            "X 3, Y 4: north\n");
    EXPECT_EQ(RunOn({"terrain", "mend", "3", "4", "3", "4"}).ExitCode, 0);
    EXPECT_EQ(TilesOnDisk(3, 4, 3, 4), (std::vector<int32_t>{0}));
    EXPECT_EQ(RunOn({"terrain", "seams", "--json"}).Output, "[]\n");
}

TEST_F(TerrainCommands, WhereNothingCanBeLearnedNothingIsPainted) {
    level_ = MadeLevel::Empty(32);
    WriteLevel();
    const std::string before = PairOnDisk();
    const ProgramResult result =
        RunOn({"terrain", "fill", "3", "3", "5", "5", "--like", "15"});
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_NE(result.Errors.find("cannot learn what fits here"), std::string::npos)
        << result.Errors;
    EXPECT_EQ(RunOn({"terrain", "fill", "3", "3", "5", "32", "--like", "15"}).ExitCode,
              2);
    EXPECT_EQ(RunOn({"terrain", "fill", "3", "3", "5", "5"}).ExitCode, 2);
    EXPECT_EQ(PairOnDisk(), before);
}

} // namespace
} // namespace vardenix::tests
