// The real vardenix-cli, run with no display on theaters made by the tests.
#include "cli/CliTheater.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <set>

namespace vardenix::tests {
namespace {

using Json = nlohmann::json;

class CommandLine : public CliTheater {};

TEST_F(CommandLine, InfoTellsTheSizes) {
    const ProgramResult result = RunOn({"info", "--json"});
    EXPECT_EQ(result.ExitCode, 0);
    EXPECT_EQ(result.Errors, "File SHORE.PCX wasn't found.\n");
    const Json info = Json::parse(result.Output);
    EXPECT_EQ(info["posts a side"], 32);
    EXPECT_EQ(info["segments a side"], 2);
    EXPECT_EQ(info["posts that are not sea"], 2);
    EXPECT_EQ(info["lowest post, feet"], -20);
    EXPECT_EQ(info["highest post, feet"], 900);
    EXPECT_EQ(info["sets"], 2);
    EXPECT_EQ(info["tiles"], 3);
    EXPECT_EQ(info["tiles without a picture"], 1);
}

TEST_F(CommandLine, TheFourPathsNameATheaterToo) {
    const std::string base = folder_.File("my theater");
    const ProgramResult result =
        Run({"info", "--l2", base + "/terrain/theater.l2", "--bin",
             base + "\\texture\\texture.bin", "--map", base + "/terrain/theater.map",
             "--dds", base + "/texture/texture"});
    EXPECT_EQ(result.ExitCode, 0);
    EXPECT_NE(result.Output.find("posts a side: 32\n"), std::string::npos);
}

TEST_F(CommandLine, GetTellsOnePostCountedFrom0) {
    const Json post = Json::parse(RunOn({"get", "3", "5", "--json"}).Output);
    EXPECT_EQ(post["tile"], 1);
    EXPECT_EQ(post["name"], "SHORE.PCX");
    EXPECT_EQ(post["terrain"], "Water");
    EXPECT_EQ(post["elevation"], -20);
    EXPECT_EQ(post["palette"], 7);
    EXPECT_EQ(post["x1"], 8);
    EXPECT_EQ(post["x2"], 9);
    const ProgramResult outside = RunOn({"get", "32", "0"});
    EXPECT_EQ(outside.ExitCode, 2);
    EXPECT_NE(outside.Errors.find("X: 32 lies outside the terrain of "),
              std::string::npos);
    EXPECT_NE(outside.Errors.find("give a number from 0 to 31"), std::string::npos);
}

TEST_F(CommandLine, CheckFindsPostsWithoutATile) {
    const ProgramResult clean = RunOn({"check"});
    EXPECT_EQ(clean.ExitCode, 0);
    EXPECT_EQ(clean.Output, "");
    level_.At(2, 3).Tile = 31;
    level_.At(5, 3).Tile = 4000;
    WriteLevel();
    const ProgramResult found =
        RunOn({"check", "--json", "--report", folder_.File("my report.txt")});
    EXPECT_EQ(found.ExitCode, 1);
    EXPECT_EQ(Json::parse(found.Output),
              Json::parse(R"([{"x":1,"y":2,"tile":31},{"x":4,"y":2,"tile":4000}])"));
    const std::string report = Slurp(folder_.File("my report.txt"));
    EXPECT_NE(report.find("X,Y\tTile Offset\r\n"), std::string::npos);
    EXPECT_EQ(report.substr(report.size() - 18), "2,3\t31\r\n5,3\t4000\r\n");
    EXPECT_EQ(RunOn({"check"}).Output, "X 1, Y 2: tile 31\nX 4, Y 2: tile 4000\n");
}

TEST_F(CommandLine, ANegativeTileIsARunTimeError) {
    level_.At(2, 3).Tile = -1;
    WriteLevel();
    const ProgramResult result = RunOn({"check"});
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_NE(result.Errors.find("X 1, Y 2, counted from 0, has the tile number -1"),
              std::string::npos);
}

TEST_F(CommandLine, PreviewSavesByTheNamesExtension) {
    for (const auto& [name, magic] :
         {std::pair<std::string, std::string>{"a b.png", "\x89PNG"},
          {"c.bmp", "BM"},
          {"d.jpg", "\xFF\xD8\xFF"}}) {
        const ProgramResult result = RunOn({"preview", folder_.File(name)});
        EXPECT_EQ(result.ExitCode, 0);
        EXPECT_EQ(result.Output, folder_.File(name) + "\n");
        EXPECT_EQ(Slurp(folder_.File(name)).substr(0, magic.size()), magic);
    }
}

// The four bytes of a BMP's width or height, and the colour of a pixel from its bottom
// left.
int BmpNumber(const std::string& bmp, size_t at) {
    return static_cast<unsigned char>(bmp.at(at)) |
           static_cast<unsigned char>(bmp.at(at + 1)) << 8;
}
std::string BmpPixel(const std::string& bmp, int x, int y) {
    const int stride = (BmpNumber(bmp, 18) * 3 + 3) / 4 * 4;
    const int at = BmpNumber(bmp, 10) + y * stride + x * 3;
    return bmp.substr(static_cast<size_t>(at), 3); // blue, green, red
}

// One post a hundred feet high in flat land: lines of 50 feet lie on it and on its
// neighbours below and to the left.
TEST_F(CommandLine, PreviewLaysLinesAndReliefOverTheHeights) {
    for (int y = 1; y <= 32; ++y)
        for (int x = 1; x <= 32; ++x)
            level_.At(x, y).Elevation = 10;
    level_.At(5, 5).Elevation = 110;
    WriteLevel();
    const auto picture = [this](const std::vector<std::string>& more) {
        std::vector<std::string> words{"preview", folder_.File("p.bmp")};
        words.insert(words.end(), more.begin(), more.end());
        EXPECT_EQ(RunOn(words).ExitCode, 0);
        return Slurp(folder_.File("p.bmp"));
    };
    const std::string plain = picture({});
    const std::string lines = picture({"--layers", "contours", "--contour-step", "50"});
    const std::string brown("\x1E\x46\x78"); // blue, green, red
    std::set<std::pair<int, int>> changed;
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 32; ++x)
            if (BmpPixel(plain, x, y) != BmpPixel(lines, x, y)) {
                changed.insert({x, y});
                EXPECT_EQ(BmpPixel(lines, x, y), brown);
            }
    // A post is painted a row below its own.
    EXPECT_EQ(changed, (std::set<std::pair<int, int>>{{4, 3}, {3, 3}, {4, 2}}));
    const std::string shaded = picture({"--layers", "relief", "--relief", "100"});
    EXPECT_NE(BmpPixel(plain, 3, 3), BmpPixel(shaded, 3, 3)); // west of it is light
    EXPECT_EQ(BmpPixel(plain, 12, 12), BmpPixel(shaded, 12, 12));
}

TEST_F(CommandLine, RenderPaintsTheViewThatIsAskedFor) {
    // Three quarters of the way up, post (2, 3) is the second column's; its palette entry
    // is 7.
    std::string map(1112, '\0');
    map.replace(28 + 7 * 4, 3, "\x10\x20\x30"); // red, green, blue
    folder_.Write("my theater/terrain/theater.map", map);
    const std::string out = folder_.File("view.bmp");
    const ProgramResult result =
        RunOn({"render", out, "--x", "2", "--y", "3", "--grid", "4", "--tile-pixels",
               "16", "--layers", "map,segments", "--alpha", "255"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    const std::string bmp = Slurp(out);
    EXPECT_EQ(BmpNumber(bmp, 18), 64);
    EXPECT_EQ(BmpNumber(bmp, 22), 64);
    EXPECT_EQ(BmpPixel(bmp, 16 + 8, 2 * 16 + 8), "\x30\x20\x10"); // post (3, 5)
    EXPECT_EQ(BmpPixel(bmp, 8, 8), std::string(3, '\0'));         // post (2, 3), entry 0
}

TEST_F(CommandLine, RenderWeighsTheColourOfTheMapAgainstTheTiles) {
    std::string map(1112, '\0');
    for (size_t entry = 0; entry < 256; ++entry)
        map.replace(28 + entry * 4, 3, "\x10\x20\x30");
    folder_.Write("my theater/terrain/theater.map", map);
    const std::string out = folder_.File("view.bmp");
    const auto rendered = [&](const std::vector<std::string>& options) {
        std::vector<std::string> command{"render", out, "--x",           "2", "--y", "3",
                                         "--grid", "2", "--tile-pixels", "16"};
        command.insert(command.end(), options.begin(), options.end());
        std::filesystem::remove(out);
        EXPECT_EQ(RunOn(command).ExitCode, 0);
        return Slurp(out);
    };
    // No weight: the tiles, here the substitute picture, as without the layer.
    const std::string tiles = rendered({});
    EXPECT_EQ(rendered({"--layers", "map", "--alpha", "0"}), tiles);
    const auto level = [](const std::string& bmp, int x, int y) {
        return static_cast<unsigned char>(BmpPixel(bmp, x, y)[1]);
    };
    const std::string all = rendered({"--layers", "map", "--alpha", "255"});
    const std::string some = rendered({"--layers", "map", "--alpha", "85"});
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 32; ++x) {
            EXPECT_EQ(level(all, x, y), 0x20);
            EXPECT_NEAR(level(some, x, y), (0x20 + 2 * level(tiles, x, y)) / 3.0, 1);
        }
    EXPECT_NE(all, tiles);
}

TEST_F(CommandLine, RenderRefusesWhatTheControlsDoNotOffer) {
    for (const std::vector<std::string>& wrong :
         {std::vector<std::string>{"--zoom", "21"},
          {"--zoom", "0"},
          {"--grid", "11"},
          {"--tile-pixels", "100"},
          {"--layers", "grid,clouds"},
          {"--brightness", "101"},
          {"--alpha", "256"}}) {
        std::vector<std::string> arguments{"render", folder_.File("x.png")};
        arguments.insert(arguments.end(), wrong.begin(), wrong.end());
        EXPECT_EQ(RunOn(arguments).ExitCode, 2) << wrong[0];
    }
}

TEST_F(CommandLine, SettingsWritesTheFirstIniAndNoOther) {
    // A program of our own, since the file lies beside it.
    CopyProgram("my program");
    const std::filesystem::path bin = folder_.File("my program");
    const std::vector<std::string> command{
        bin / "vardenix-cli", "settings", "--theater-index", "1", "--x", "95"};
    EXPECT_EQ(RunProgram(command).ExitCode, 0);
    const std::string ini = Slurp(bin / "VX.ini");
    for (const char* line :
         {"OPTION_THEATER_LIST_INDEX=1\r\n", "X=95\r\n", "AUTO_CHECK_FOR_UPDATES=2\r\n"})
        EXPECT_NE(ini.find(line), std::string::npos) << line;
    EXPECT_EQ(ini.find("P=\r\n"), std::string::npos);
    EXPECT_NE(RunProgram(command).Output.find("is there already"), std::string::npos);
    EXPECT_EQ(Slurp(bin / "VX.ini"), ini);
}

TEST_F(CommandLine, UsageIsExplainedOnTheStandardError) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{},
          {"paint"},
          {"info"},
          {"get", "1", "x"},
          {"info", "--l2", "x"},
          {"info", "--theater", "a", "--bin", "b"}}) {
        const ProgramResult result = Run(arguments);
        EXPECT_EQ(result.ExitCode, 2);
        EXPECT_EQ(result.Output, "");
        EXPECT_NE(result.Errors.find("--help"), std::string::npos) << result.Errors;
    }
    const ProgramResult help = Run({"--help"});
    EXPECT_EQ(help.ExitCode, 0);
    EXPECT_NE(help.Output.find("preview"), std::string::npos);
}

TEST_F(CommandLine, AMissingTheaterIsARunTimeError) {
    const ProgramResult result = Run({"info", "--theater", folder_.File("none")});
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_EQ(result.Errors, "L2 File not found\n" +
                                 folder_.File("none/terrain/theater.l2") +
                                 "\nRun-time error '53':\n\nFile not found\n"
                                 "the theater cannot be opened\n");
}

} // namespace
} // namespace vardenix::tests
