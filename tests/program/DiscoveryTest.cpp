#include "program/Discovery.h"

#include "support/PlainUser.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

namespace vardenix {
namespace {

using tests::Int32Bytes;
using tests::TestFolder;

class FakeRegistry : public Registry {
public:
    std::string ReadText(std::string_view key, std::string_view name) const override {
        const auto found = Values.find(std::string(key) + "|" + std::string(name));
        return found == Values.end() ? std::string() : found->second;
    }
    void WriteText(std::string_view, std::string_view, std::string_view) override {
        FAIL() << "discovery only reads";
    }
    std::map<std::string, std::string> Values;
};

std::string MapOfWidth(int segments, size_t size) {
    std::string bytes(2000, '\x55');
    bytes.replace(1068, 4, Int32Bytes(segments));
    bytes.resize(size);
    return bytes;
}

std::span<const std::byte> Bytes(const std::string& text) {
    return std::as_bytes(std::span(text));
}

// An install of two theaters, named with the wrong case here and there.
class Install : public testing::Test {
protected:
    Install() {
        folder.Write("Theater.LST", "# all theaters\r\n\r\n"
                                    "  Terrdata/TheaterDefinition/korea.tdf  \r\n"
                                    "   #gone.tdf\r\n"
                                    "terrdata\\theaterdefinition\\BALKANS.tdf");
        folder.Write("terrdata/theaterdefinition/korea.tdf",
                     "# Korea\nname   Korean  Peninsula \nTERRAINDIR terrdata\\korea\n"
                     "MINTACAN 70.5\nname2 x\n3ddatadir data3d\nDESC\n");
        folder.Write("terrdata/theaterdefinition/balkans.tdf",
                     "NAME Balkans\rTERRAINDIR terrdata/Balkans\r\nNAME New Balkans\n"
                     "CAMPAIGNDIR c\nOBJECTDIR o\nBITMAP b\nARTDIR a\nMOVIEDIR m\n"
                     "UISOUNDDIR u\nMISCTEXDIR t\nSOUNDDIR s\nDESC a  b\n");
        folder.Write("terrdata/KOREA/Terrain/Theater.map", MapOfWidth(64, 1112));
        folder.Write("terrdata/Balkans/terrain/theater.map", MapOfWidth(128, 2000));
        registry.Values[key + "baseDir"] = folder.Path() + std::string(1, '\0');
        registry.Values[key + "curTheater"] = std::string("Kor\0ea\0", 7);
    }
    int ErrorNumberOf() {
        try {
            DiscoverTheaters(registry, discovery);
        } catch (const RuntimeError& error) {
            detail = error.Detail();
            return error.NumberValue();
        }
        return 0;
    }

    const std::string key = "SOFTWARE\\Microprose\\Falcon\\4.0|";
    TestFolder folder;
    FakeRegistry registry;
    Discovery discovery;
    std::string detail;
};

TEST_F(Install, IsFoundWithItsTheaters) {
    ASSERT_EQ(ErrorNumberOf(), 0) << detail;
    EXPECT_EQ(discovery.FalconBaseDir, folder.Path() + "\\");
    EXPECT_EQ(discovery.FalconCurTheater, "Korea");
    EXPECT_EQ(discovery.FalconState, 1);
    ASSERT_EQ(discovery.TheaterList.size(), 3U);

    const TheaterInfo& korea = discovery.TheaterList[1];
    EXPECT_EQ(korea.TdfFile, "Terrdata\\TheaterDefinition\\korea.tdf");
    EXPECT_EQ(korea.Name, "Korean  Peninsula");
    EXPECT_EQ(korea.TerrainDir, "terrdata\\korea");
    EXPECT_EQ(korea.MinTacan, 70);
    EXPECT_EQ(korea.DataDir3D, "data3d");
    EXPECT_EQ(korea.Desc, "");
    EXPECT_EQ(korea.WidthText, "1024");

    const TheaterInfo& balkans = discovery.TheaterList[2];
    EXPECT_EQ(balkans.Name, "New Balkans");
    EXPECT_EQ(balkans.TerrainDir, "terrdata/Balkans");
    EXPECT_EQ(balkans.CampaignDir + balkans.ObjectDir + balkans.Bitmap + balkans.ArtDir +
                  balkans.MovieDir + balkans.UISoundDir + balkans.MiscTexDir +
                  balkans.SoundDir,
              "cobamuts");
    EXPECT_EQ(balkans.Desc, "a  b");
    EXPECT_EQ(balkans.WidthText, "2048");
}

TEST_F(Install, LettersBeyondAsciiNameFilesInUnicode) {
    folder.Write("Theater.LST", "Cor\xE9.tdf\n");
    folder.Write("Cor\xC3\xA9.tdf", "NAME Cor\xE9\nTERRAINDIR \xDF\n");
    folder.Write("\xC3\x9F/terrain/theater.map", MapOfWidth(64, 1112));
    ASSERT_EQ(ErrorNumberOf(), 0) << detail;
    EXPECT_EQ(discovery.TheaterList.at(1).Name, "Cor\xE9");
    EXPECT_EQ(discovery.TheaterList.at(1).WidthText, "1024");
}

TEST_F(Install, WithTheKoreaObjectsIsReadButNotOffered) {
    folder.Write("terrdata/objects/koreaobj.DXL", "");
    ASSERT_EQ(ErrorNumberOf(), 0);
    EXPECT_EQ(discovery.FalconState, 2);
    EXPECT_EQ(discovery.TheaterList.size(), 3U);
}

TEST_F(Install, ThatTheRegistryDoesNotNameIsNone) {
    registry.Values[key + "baseDir"] = std::string(2, '\0');
    ASSERT_EQ(ErrorNumberOf(), 0);
    EXPECT_EQ(discovery.FalconState, 0);
    EXPECT_EQ(discovery.FalconBaseDir, "");
    EXPECT_EQ(discovery.FalconCurTheater, "Korea");
    EXPECT_EQ(discovery.TheaterList.size(), 1U);
}

TEST_F(Install, ThatTheUserNamesIsListedWithoutTheRegistry) {
    EXPECT_TRUE(IsInstall(folder.Path()));
    EXPECT_FALSE(IsInstall(folder.Path() + "/terrdata"));
    discovery.FalconCurTheater = "kept";
    DiscoverTheatersIn(folder.Path(), discovery);
    ASSERT_EQ(discovery.TheaterList.size(), 3U);
    EXPECT_EQ(discovery.TheaterList[2].Name, "New Balkans");
    EXPECT_EQ(discovery.FalconState, FalconListed);
    EXPECT_EQ(discovery.FalconCurTheater, "kept");
    EXPECT_THROW(DiscoverTheatersIn(folder.Path() + "/terrdata", discovery),
                 RuntimeError);
    EXPECT_EQ(discovery.TheaterList.size(), 1U); // nothing half read
}

TEST_F(Install, WithoutItsListIsError53) {
    std::filesystem::remove(folder.File("Theater.LST"));
    EXPECT_EQ(ErrorNumberOf(), 53);
    EXPECT_NE(detail.find("theater.lst"), std::string::npos);
}

TEST_F(Install, ATheaterWithoutItsDescriptionLeavesNothingHalfRead) {
    ASSERT_EQ(ErrorNumberOf(), 0);
    std::filesystem::remove(folder.File("terrdata/theaterdefinition/balkans.tdf"));
    EXPECT_EQ(ErrorNumberOf(), 53);
    EXPECT_NE(detail.find("BALKANS.tdf"), std::string::npos);
    EXPECT_EQ(discovery.FalconState, 0);
    EXPECT_EQ(discovery.FalconBaseDir, "");
    EXPECT_EQ(discovery.TheaterList.size(), 1U);
}

TEST_F(Install, ATheaterWithoutItsMapIsError53) {
    std::filesystem::remove(folder.File("terrdata/KOREA/Terrain/Theater.map"));
    EXPECT_EQ(ErrorNumberOf(), 53);
    EXPECT_NE(detail.find("/terrdata/KOREA/Terrain/theater.map"), std::string::npos);
    EXPECT_EQ(discovery.TheaterList.size(), 1U);
}

TEST_F(Install, ADescriptionThatIsAFolderOrUnreadableIsAnError) {
    folder.Write("theater.lst", "terrdata\n");
    std::filesystem::remove(folder.File("Theater.LST"));
    EXPECT_EQ(ErrorNumberOf(), 75);
    folder.Write("theater.lst", "secret.tdf\n");
    tests::LetOthers(folder.Path(), 5);
    tests::LetOthers(folder.Write("secret.tdf", "NAME x\n"), 0);
    const tests::PlainUser user;
    EXPECT_EQ(ErrorNumberOf(), 70);
    EXPECT_NE(detail.find("secret.tdf"), std::string::npos);
}

TEST(TheaterList, OnlyALineThatLeadsOutsideIsLeftOut) {
    for (const std::string line :
         {"../x.tdf", "a\\..\\..\\x.tdf", "a/.. /x.tdf", "..", "/etc/passwd",
          "\\\\server\\x.tdf", "C:\\x.tdf", "c:x.tdf"}) {
        std::vector<std::string> leftOut;
        const auto theaters =
            ReadTheaterList("good.tdf\n" + line + "\nbest.tdf\n", "my.lst", leftOut);
        ASSERT_EQ(theaters.size(), 2U) << line;
        EXPECT_EQ(theaters[0].TdfFile, "good.tdf");
        EXPECT_EQ(theaters[1].TdfFile, "best.tdf");
        EXPECT_EQ(leftOut,
                  std::vector<std::string>{"my.lst: the line \"" + line +
                                           "\" leads outside the folder of the game"});
    }
    std::vector<std::string> leftOut;
    EXPECT_EQ(ReadTheaterList("a..b\\c...tdf\n", "", leftOut).at(0).TdfFile,
              "a..b\\c...tdf");
    EXPECT_TRUE(leftOut.empty());
}

TEST_F(Install, ALineThatLeadsOutsideLeavesTheOtherTheatersInTheList) {
    folder.Write("Theater.LST", "../../x.tdf\nTerrdata/TheaterDefinition/korea.tdf\n"
                                "/y.tdf\n");
    ASSERT_EQ(ErrorNumberOf(), 0) << detail;
    ASSERT_EQ(discovery.TheaterList.size(), 2U);
    EXPECT_EQ(discovery.TheaterList[1].Name, "Korean  Peninsula");
    EXPECT_EQ(discovery.LeftOut.size(), 2U);
}

TEST_F(Install, ATerrainDirThatLeadsOutsideLeavesItsTheaterOut) {
    folder.Write("terrdata/theaterdefinition/balkans.tdf",
                 "NAME Balkans\nTERRAINDIR terrdata/../../Balkans\n");
    ASSERT_EQ(ErrorNumberOf(), 0) << detail;
    ASSERT_EQ(discovery.TheaterList.size(), 2U);
    EXPECT_EQ(discovery.TheaterList[1].Name, "Korean  Peninsula");
    ASSERT_EQ(discovery.LeftOut.size(), 1U);
    EXPECT_EQ(discovery.LeftOut[0],
              folder.File("terrdata/theaterdefinition/balkans.tdf") +
                  ": TERRAINDIR terrdata/../../Balkans leads outside the folder of the "
                  "game");
}

TEST_F(Install, BesideAnEmptyFolderOfNearlyTheSameNameIsFound) {
    const std::string parent = folder.Path() + " disk/";
    std::filesystem::create_directories(parent + "Games/Falcon");
    std::filesystem::create_directories(parent + "games");
    std::filesystem::rename(folder.Path(), parent + "games/falcon");
    std::filesystem::create_directories(folder.Path());
    std::filesystem::rename(parent, folder.File("disk"));
    registry.Values[key + "baseDir"] = folder.File("disk\\Games\\Falcon");
    ASSERT_EQ(ErrorNumberOf(), 0) << detail;
    EXPECT_EQ(discovery.FalconBaseDir, folder.File("disk/games/falcon") + "\\");
    EXPECT_EQ(discovery.TheaterList.size(), 3U);
}

TEST(TheaterList, MoreTheatersThanTheStoredIndexCanCountAreRefused) {
    std::string text;
    for (int i = 0; i < 32767; ++i)
        text += "a\n";
    std::vector<std::string> leftOut;
    EXPECT_EQ(ReadTheaterList(text, "", leftOut).size(), 32767U);
    try {
        ReadTheaterList(text + "a", "theater.lst", leftOut);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.NumberValue(), 6);
    }
}

TEST(TheaterDescription, AFileCutAnywhereGivesWhatItStillSays) {
    TheaterInfo theater;
    ReadDescription("NAME Korea\nTERRAINDI", theater);
    EXPECT_EQ(theater.Name, "Korea");
    EXPECT_EQ(theater.TerrainDir, "");
    ReadDescription("", theater);
    EXPECT_EQ(theater.Name, "Korea");
}

TEST(TheaterDescription, AnAbsurdTacanBecomesTheNearestThatFits) {
    TheaterInfo theater;
    ReadDescription("MINTACAN 99999\n", theater);
    EXPECT_EQ(theater.MinTacan, 32767);
    ReadDescription("MINTACAN none\n", theater);
    EXPECT_EQ(theater.MinTacan, 0);
}

TEST(TheaterWidth, CountsWhatAShortMapLacksAsZero) {
    EXPECT_EQ(ReadTheaterWidth(Bytes(MapOfWidth(64, 0))), "0");
    EXPECT_EQ(ReadTheaterWidth(Bytes(MapOfWidth(64, 1068))), "0");
    EXPECT_EQ(ReadTheaterWidth(Bytes(MapOfWidth(0x1234, 1069))), "832"); // 0x34 * 16
    EXPECT_EQ(ReadTheaterWidth(Bytes(MapOfWidth(64, 1111))), "1024");
    EXPECT_EQ(ReadTheaterWidth(Bytes(MapOfWidth(64, 2000))), "1024");
    EXPECT_EQ(ReadTheaterWidth(Bytes(MapOfWidth(2147483647, 1112))), "34359738352");
    EXPECT_EQ(ReadTheaterWidth(Bytes(MapOfWidth(-1, 1112))), "-16");
}

TEST(DataLine, IsNeitherEmptyNorAComment) {
    EXPECT_TRUE(IsDataLine("  x", "#"));
    EXPECT_TRUE(IsDataLine("x # y", "#"));
    EXPECT_FALSE(IsDataLine("  # x", "#"));
    EXPECT_FALSE(IsDataLine("   ", "#"));
    EXPECT_FALSE(IsDataLine("", "#"));
    EXPECT_TRUE(IsDataLine("\t", "#"));
    EXPECT_TRUE(IsDataLine("/x", "//"));
}

TEST(Words, ArePartedByTheFirstBlankOnly) {
    EXPECT_EQ(GetWord("  NAME   Two  Words ", 1), "NAME");
    EXPECT_EQ(GetWord("  NAME   Two  Words ", 2), "Two  Words");
    EXPECT_EQ(GetWord("NAME", 1), "NAME");
    EXPECT_EQ(GetWord("NAME", 2), "");
    EXPECT_EQ(GetWord("NAME\tx y", 1), "NAME\tx");
    EXPECT_EQ(GetWord("NAME\tx y", 2), "y");
    EXPECT_EQ(GetWord("", 1), "");
}

TEST(Slashes, BecomeBackslashes) { EXPECT_EQ(NormalizeSlashes("a/b\\c/"), "a\\b\\c\\"); }

} // namespace
} // namespace vardenix
