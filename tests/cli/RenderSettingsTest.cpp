// What a VX.ini beside the program means to `render`.
#include "cli/CliTheater.h"

#include <filesystem>

namespace vardenix::tests {
namespace {

namespace fs = std::filesystem;

class RenderSettings : public CliTheater {
protected:
    void SetUp() override {
        CliTheater::SetUp();
        CopyProgram("my program");
    }
    std::string Rendered(const std::vector<std::string>& options) {
        const std::string out = folder_.File("view.bmp");
        std::vector<std::string> command{folder_.File("my program/vardenix-cli"),
                                         "render",
                                         out,
                                         "--theater",
                                         folder_.File("my theater"),
                                         "--tile-pixels",
                                         "64",
                                         "--grid",
                                         "2"};
        command.insert(command.end(), options.begin(), options.end());
        fs::remove(out);
        const ProgramResult result = RunProgram(command);
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        return Slurp(out);
    }
    void WriteSettings(const std::string& lines) {
        folder_.Write("my program/VX.ini", lines);
    }
};

TEST_F(RenderSettings, EveryLayerCanBeDrawn) {
    const std::string elv =
        folder_.Write("heights.elv", std::string(size_t{128} * 128 * 2, '\1'));
    const std::string plain = Rendered({});
    const std::string l0 = Rendered({"--layers", "l0,grid", "--l0", elv});
    const std::string box =
        Rendered({"--layers", "export", "--export", "0", "0", "0", "0"});
    const std::string hits = Rendered({"--layers", "hits", "--cell", "0:tile=0"});
    const std::string areas = Rendered({"--layers", "areas"});
    EXPECT_NE(l0, plain);
    EXPECT_NE(l0, Rendered({"--layers", "heights,grid"})); // four by four to a post
    EXPECT_NE(box, plain);
    EXPECT_NE(box, Rendered({"--layers", "export", "--export", "0", "0", "1", "1"}));
    EXPECT_NE(hits, plain);
    EXPECT_NE(hits, box);
    EXPECT_EQ(Rendered({"--layers", "hits", "--cell", "0:tile=77"}), plain);
    EXPECT_EQ(areas, plain); // its tiles have none
}

TEST_F(RenderSettings, ALayerAndWhatItShowsAreToldTogether) {
    const std::string elv = folder_.Write("heights.elv", "12");
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{"--layers", "l0"},
          {"--l0", elv},
          {"--layers", "export"},
          {"--export", "0", "0", "1", "1"},
          {"--layers", "export", "--export", "0", "0", "1"},
          {"--layers", "export", "--export", "0", "0", "1", "32"},
          {"--layers", "hits"},
          {"--cell", "0:tile=1"},
          {"--layers", "filled"},
          {"--layers", "l0", "--l0", "heights.txt"},
          {"--layers", "hits", "--cell", "tile=1"}}) {
        std::vector<std::string> command{"render", folder_.File("view.bmp")};
        command.insert(command.end(), options.begin(), options.end());
        EXPECT_EQ(RunOn(command).ExitCode, 2) << options[0] << " " << options.back();
    }
}

TEST_F(RenderSettings, WhatIsTickedInTheEditorIsNotDrawn) {
    const std::string plain = Rendered({});
    const std::string heights = Rendered({"--layers", "heights"});
    EXPECT_NE(plain, heights);
    WriteSettings("[LAST_SETT]\r\nZOOM=3\r\nX=9\r\nY=9\r\nOPTION_SHOW_GRID=-1\r\n"
                  "OPTION_SHOW_EXPAREA=-1\r\nOPTION_SHOW_HEIGHTS=-1\r\n"
                  "OPTION_SHOW_SEGMENTS=-1\r\nOPTION_BRIGHTNESS=50\r\nGRID_SIZE=7\r\n"
                  "TILE_SIZE=1\r\nVX_MASTER_PATHS_AREAS=-1\r\nVX_SHOW_AREAS=-1\r\n"
                  "VX_SHOW_PATHS=-1\r\nVX_AREAS_FILLED=-1\r\n");
    EXPECT_EQ(Rendered({}), plain);
}

TEST_F(RenderSettings, OneColourForAllHeightsHasToBeWantedHere) {
    const std::string table =
        "[HEIGHT_COL_LIST]\r\nLISTNUMBER=1\r\nLISTCOL1=FF00\r\n"
        "LISTMAX1=9\r\nLISTMIN1=-9\r\n[COLORS]\r\nHEIGHTS=FF\r\n"
        "[FONT_SIZE]\r\nHEIGHTS=10\r\n[FONT_NAME]\r\nHEIGHTS=Arial\r\n"
        "[LAST_SETT]\r\n";
    WriteSettings(table);
    const std::string many = Rendered({"--layers", "heights"});
    WriteSettings(table + "USE_SINGLE_HEIGHT_COLOR=-1\r\n");
    EXPECT_EQ(Rendered({"--layers", "heights"}), many);
}

TEST_F(RenderSettings, TheColoursAreThoseOfTheEditor) {
    WriteSettings("[COLORS]\r\nGRID=FF\r\nSEGMENT=FF00\r\n");
    const std::string grid = Rendered({"--layers", "grid"});
    const std::string segments = Rendered({"--layers", "segments"});
    WriteSettings("[COLORS]\r\nGRID=FF00\r\nSEGMENT=FF\r\n");
    EXPECT_NE(Rendered({"--layers", "grid"}), grid);
    EXPECT_NE(Rendered({"--layers", "segments"}), segments);
}

} // namespace
} // namespace vardenix::tests
