#include "program/ConfigurationFile.h"
#include "support/PlainUser.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>
#include <random>

namespace vardenix {
namespace {

using tests::PlainUser;
using tests::Slurp;
using tests::TestFolder;

std::string Golden(const std::string& name) {
    return Slurp(std::string(THEATER_GOLDEN) + "/" + name);
}

// Every setting away from its first value, most of them unlike any other.
Configuration Changed() {
    Configuration c;
    c.OnlineHelp = "http://help.example/a b";
    c.VersionCheck = "http://check.example/v?x=1";
    c.P = "{ABCDEF01-2345-4678-9ABC-DEF012345678}";
    c.L2File = "D:\\My Theater\\terrain\\Theater.L2";
    c.BinFile = "/home/maker/My Theater/texture.bin";
    c.MapFile = "C:\\a=b;c\\theater.map";
    c.DdsPath = "D:\\My Theater\\texture\\texture\\";
    c.Airports.Color = 0x40308;
    c.City.Color = 0x7040D;
    c.Coast.Color = 0xA0512;
    c.Labels.Color = 0xD0617;
    c.Rivers.Color = 0x10071C;
    c.Roads.Color = 0x130821;
    c.GridColor = 0x160926;
    c.ExportedAreaColor = 0x190A2B;
    c.SegmentColor = 0x1C0B30;
    c.HeightDefaultColor = 0x1F0C35;
    c.PreviewSeaColor = 0x220D3A;
    c.PreviewLevelColors[0] = 0x250E3F;
    c.PreviewLevelColors[1] = 0x280F44;
    c.PreviewLevelColors[2] = 0x2B1049;
    c.PreviewLevelColors[3] = 0x2E114E;
    c.PreviewLevelColors[4] = 0x311253;
    c.PreviewLevelColors[5] = 0x341358;
    c.PreviewLevelColors[6] = 0x37145D;
    c.PreviewLevelColors[7] = 0x3A1562;
    c.TileAreasColor = 0x3D1667;
    c.TileAreasSelectedColor = 0x40176C;
    c.TilePathsColor = 0x431871;
    c.TilePathsSelectedColor = 0x461976;
    c.Airports.Size = 2;
    c.City.Size = 3;
    c.Coast.Size = 4;
    c.Labels.Size = 5;
    c.Rivers.Size = 6;
    c.Roads.Size = 7;
    c.AirportsFont.Bold = true;
    c.LabelsFont.Bold = false;
    c.HeightsFont.Bold = true;
    c.AirportsFont.Color = 0x491A7B;
    c.LabelsFont.Color = 0x4C1B80;
    c.AirportsFont.Italic = false;
    c.LabelsFont.Italic = true;
    c.HeightsFont.Italic = true;
    c.AirportsFont.Name = "Liberation Sans";
    c.LabelsFont.Name = "Courier New";
    c.HeightsFont.Name = "";
    c.AirportsFont.Size = 8.25F;
    c.LabelsFont.Size = 12;
    c.HeightsFont.Size = 9.75F;
    c.AirportsFont.Strikethrough = true;
    c.LabelsFont.Strikethrough = true;
    c.HeightsFont.Strikethrough = false;
    c.AirportsFont.Underline = false;
    c.LabelsFont.Underline = false;
    c.HeightsFont.Underline = true;
    c.Zoom = -3;
    c.X = 70001;
    c.Y = std::numeric_limits<int32_t>::min();
    c.AutoCheckForUpdates = 1;
    c.MainWinVis = true;
    c.SearchResWinVis = false;
    c.FeatWinVis = true;
    c.PalWinVis = true;
    c.ThPrevWinVis = false;
    c.MainWinPos.Top = 1015;
    c.MainWinPos.Left = -1030;
    c.SearchResWinPos.Top = 1045;
    c.SearchResWinPos.Left = -1060;
    c.FeatWinPos.Top = 1075;
    c.FeatWinPos.Left = -1090;
    c.PalWinPos.Top = 1105;
    c.PalWinPos.Left = -1120;
    c.ThPrevWinPos.Top = 1135;
    c.ThPrevWinPos.Left = -1150;
    c.MainControlWinPos.Top = 1165;
    c.MainControlWinPos.Left = -1180;
    c.PalWinSizeH = 7005;
    c.PalWinSizeW = 9405;
    c.OptionShowGrid = true;
    c.OptionShowExpArea = true;
    c.OptionShowHeights = false;
    c.OptionShowSegments = true;
    c.OptionBrightness = -40;
    c.OptionTheaterListIndex = 12;
    c.GridSize = 32767;
    c.TileSize = 7;
    c.UseSingleHeightColor = true;
    c.VXMasterPathsAreas = true;
    c.VXShowAreas = false;
    c.VXShowPaths = false;
    c.VXAreasFilled = true;
    c.AutoL2 = false;
    c.DefInsertAfter = true;
    c.MTile = 128;
    c.LTile = 48;
    c.TTile = 24;
    c.VXPathsRiverColor = 0x4F1C85;
    c.VXPathsRoadColor = 0x521D8A;
    c.VXPathsRailColor = 0x551E8F;
    c.VXPathsBridgeColor = 0x581F94;
    c.VXAreasWaterColor = 0x5B2099;
    c.VXAreasForestColor = 0x5E219E;
    c.HeightColorList = {{0x123456, 10, 20}, {0x0, -5, 2147483647}};
    return c;
}

Configuration Read(const std::string& text) {
    return ReadConfiguration(ProfileFile(text));
}

TEST(Configuration, AFirstStartHasTheDefaultsAndANewIdentifier) {
    const TestFolder folder;
    Configuration first = ReadConfiguration(folder.Path() + "\\");
    const Configuration second = ReadConfiguration(folder.Path() + "\\");
    EXPECT_EQ(first.P.size(), 38U);
    EXPECT_NE(first.P, second.P);
    EXPECT_EQ(first.AutoCheckForUpdates, 2);
    first.P = "{01234567-89AB-4CDE-8F01-23456789ABCD}";
    EXPECT_EQ(ConfigurationText(first), Golden("VX-defaults.ini"));
}

TEST(Configuration, EverySettingIsWrittenUnderItsKey) {
    EXPECT_EQ(ConfigurationText(Changed()), Golden("VX-changed.ini"));
}

TEST(Configuration, EverySettingIsReadBack) {
    EXPECT_EQ(ConfigurationText(Read(Golden("VX-changed.ini"))),
              Golden("VX-changed.ini"));
    EXPECT_EQ(ConfigurationText(Read(Golden("VX-defaults.ini"))),
              Golden("VX-defaults.ini"));
}

TEST(Configuration, ReadsEachFormOfValue) {
    const Configuration c = Read(Golden("VX-changed.ini"));
    EXPECT_EQ(c.MapFile, "C:\\a=b;c\\theater.map");
    EXPECT_EQ(c.Rivers.Color, 0x10071CU);
    EXPECT_EQ(c.Rivers.Size, 6);
    EXPECT_EQ(c.LabelsFont.Name, "Courier New");
    EXPECT_EQ(c.AirportsFont.Size, 8.25F);
    EXPECT_TRUE(c.HeightsFont.Underline);
    EXPECT_FALSE(c.LabelsFont.Bold);
    EXPECT_EQ(c.Zoom, -3);
    EXPECT_EQ(c.MainControlWinPos.Top, 1165);
    EXPECT_EQ(c.MainControlWinPos.Left, -1180);
    EXPECT_EQ(c.PreviewLevelColors[7], 0x3A1562U);
    ASSERT_EQ(c.HeightColorList.size(), 2U);
    EXPECT_EQ(c.HeightColorList[1].Min, -5);
    EXPECT_EQ(c.HeightColorList[1].Max, 2147483647);
}

TEST(Configuration, MissingKeysOfAnExistingFileReadAsNothing) {
    const Configuration c = Read("");
    EXPECT_EQ(c.OnlineHelp, "");
    EXPECT_EQ(c.VersionCheck, "");
    EXPECT_EQ(c.AutoCheckForUpdates, 0);
    EXPECT_EQ(c.Zoom, 0);
    EXPECT_EQ(c.Roads.Color, 0U);
    EXPECT_EQ(c.Roads.Size, 0);
    EXPECT_EQ(c.LabelsFont.Name, "");
    EXPECT_EQ(c.LabelsFont.Size, 0);
    EXPECT_FALSE(c.VXShowAreas);
    EXPECT_FALSE(c.AutoL2);
    EXPECT_EQ(c.PalWinSizeW, 0);
    EXPECT_TRUE(c.HeightColorList.empty());
}

TEST(Configuration, AnEmptyIdentifierAloneIsMadeNew) {
    EXPECT_EQ(Read("[SYSTEM]\nP=\n").P.size(), 38U);
    EXPECT_EQ(Read("[SYSTEM]\nP=mine\n").P, "mine");
}

TEST(Configuration, ReadsABooleanFromAnyNumberButZero) {
    EXPECT_TRUE(Read("[BIN_SETT]\nAuto_L2=-1\n").AutoL2);
    EXPECT_TRUE(Read("[BIN_SETT]\nAuto_L2=2\n").AutoL2);
    EXPECT_FALSE(Read("[BIN_SETT]\nAuto_L2=0\n").AutoL2);
    EXPECT_FALSE(Read("[BIN_SETT]\nAuto_L2=True\n").AutoL2);
}

TEST(Configuration, RoundsHalfToEvenAndTakesTheNearestThatFits) {
    const Configuration c =
        Read("[LAST_SETT]\nZoom=2.5\nGrid_Size=3.5\nTile_Size=40000\nX=1e999\n"
             "Y=-99999999999\nOption_Brightness=nonsense\n[BIN_SETT]\nM_Tile=-1e30\n"
             "[FONT_SIZE]\nLabels=1e300\n");
    EXPECT_EQ(c.Zoom, 2);
    EXPECT_EQ(c.GridSize, 4);
    EXPECT_EQ(c.TileSize, 32767);
    EXPECT_EQ(c.X, std::numeric_limits<int32_t>::max());
    EXPECT_EQ(c.Y, std::numeric_limits<int32_t>::min());
    EXPECT_EQ(c.OptionBrightness, 0);
    EXPECT_EQ(c.MTile, -32768);
    EXPECT_EQ(c.LabelsFont.Size, std::numeric_limits<float>::max());
}

TEST(Configuration, DoesNotBringValuesIntoTheRangeOfTheirControls) {
    const Configuration c = Read("[LAST_SETT]\nZoom=0\nGrid_Size=-7\n"
                                 "Option_Theater_List_Index=999\n[SIZES]\nCity=-4\n");
    EXPECT_EQ(c.Zoom, 0);
    EXPECT_EQ(c.GridSize, -7);
    EXPECT_EQ(c.OptionTheaterListIndex, 999);
    EXPECT_EQ(c.City.Size, -4);
}

TEST(Configuration, ColoursAreHexadecimalWithoutPrefix) {
    EXPECT_EQ(HexToLong("FF"), 255U);
    EXPECT_EQ(HexToLong("ff"), 255U);
    EXPECT_EQ(HexToLong("8000FFz"), 0x8000FFU);
    EXPECT_EQ(HexToLong("000000001"), 1U);
    EXPECT_EQ(HexToLong("FFFFFFFF"), 0xFFFFFFFFU);
    EXPECT_EQ(HexToLong("1FFFFFFFF"), 0xFFFFFFFFU);
    EXPECT_EQ(HexToLong(""), 0U);
    EXPECT_EQ(HexToLong("&HFF"), 0U);
    EXPECT_EQ(HexToLong("-1"), 0U);
    ProfileWriter file;
    WriteIniHex("COLORS", "Heights", 255, file);
    WriteIniHex("COLORS", "Grid", 0, file);
    WriteIniNumber("S", "n", -2.5, file);
    EXPECT_EQ(file.Text(), "[COLORS]\r\nHEIGHTS=FF\r\nGRID=0\r\n[S]\r\nN=-2\r\n");
}

TEST(Configuration, AHeightRowWithoutKeysCountsOnlyBeforeALaterRow) {
    const Configuration c = Read("[HEIGHT_COL_LIST]\nListNumber=9\nListMax1=5\n"
                                 "ListCol3=FF\n");
    ASSERT_EQ(c.HeightColorList.size(), 3U);
    EXPECT_EQ(c.HeightColorList[0].Max, 5);
    EXPECT_EQ(c.HeightColorList[1].Max, 0);
    EXPECT_EQ(c.HeightColorList[2].Color, 255U);
}

TEST(Configuration, AHeightRowBeyondListNumberIsNotRead) {
    EXPECT_EQ(Read("[HEIGHT_COL_LIST]\nListNumber=1\nListMax1=5\nListMax2=6\n")
                  .HeightColorList.size(),
              1U);
    EXPECT_TRUE(
        Read("[HEIGHT_COL_LIST]\nListNumber=-1\nListMax1=5\n").HeightColorList.empty());
}

TEST(Configuration, AnAbsurdListNumberTakesNoMemory) {
    const std::string rows = "[HEIGHT_COL_LIST]\nListNumber=2000000000\nListMax1=5\n";
    EXPECT_EQ(Read(rows).HeightColorList.size(), 1U);
    EXPECT_EQ(Read(rows + "ListMax2000000000=6\n").HeightColorList.size(), 1U);
}

TEST(Configuration, TenMegabytesOfGarbageReadAsNothing) {
    const TestFolder folder;
    std::mt19937 random(3);
    std::string bytes;
    bytes.resize(10'000'000);
    for (char& c : bytes)
        c = static_cast<char>(random() & 0xFF);
    folder.Write("VX.ini", bytes);
    const Configuration c = ReadConfiguration(folder.Path() + "\\");
    EXPECT_EQ(c.Zoom, 0);
    EXPECT_EQ(c.OnlineHelp, "");
    EXPECT_EQ(c.P.size(), 38U);
}

TEST(Configuration, IsWrittenWholeInPlaceOfTheOldFile) {
    const TestFolder folder;
    folder.Write("vx.INI", "[LAST_SETT]\nZoom=4\n; gone afterwards\n");
    WriteConfiguration(folder.Path() + "\\", Changed());
    EXPECT_EQ(folder.Names(), "vx.INI");
    EXPECT_EQ(Slurp(folder.File("vx.INI")), Golden("VX-changed.ini"));
}

TEST(Configuration, AnUnreadableFileIsTheCallersError) {
    const TestFolder folder;
    const std::string path = folder.Write("VX.ini", "[LAST_SETT]\nZoom=4\n");
    tests::LetOthers(folder.Path(), 7);
    tests::LetOthers(path, 0);
    const PlainUser user;
    try {
        ReadConfiguration(folder.Path());
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.NumberValue(), 70);
        EXPECT_NE(error.Detail().find("VX.ini"), std::string::npos);
    }
}

TEST(Configuration, AReadOnlyFileOrFolderThrowsAndStandsWhole) {
    const TestFolder folder;
    const std::string path = folder.Write("VX.ini", "[LAST_SETT]\nZoom=4\n");
    tests::LetOthers(folder.Path(), 7);
    tests::LetOthers(path, 4);
    {
        const PlainUser user;
        EXPECT_THROW(WriteConfiguration(folder.Path(), Changed()), RuntimeError);
    }
    tests::LetOthers(folder.Path(), 5);
    tests::LetOthers(path, 6);
    {
        const PlainUser user;
        EXPECT_THROW(WriteConfiguration(folder.Path(), Changed()), RuntimeError);
    }
    tests::LetOthers(folder.Path(), 7);
    EXPECT_EQ(Slurp(path), "[LAST_SETT]\nZoom=4\n");
    EXPECT_EQ(folder.Names(), "VX.ini");
}

} // namespace
} // namespace vardenix
