#include "catalogue/TextureBinFile.h"

#include "catalogue/TypeNames.h"
#include "support/ImpatientDialogs.h"
#include "support/RecordingProgress.h"
#include "support/ScriptedDialogs.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vardenix {
namespace {

using tests::CatalogueBytes;
using tests::Int32Bytes;
using tests::MadeSet;
using tests::Slurp;
using tests::TestFolder;

class TextureBinFile : public testing::Test {
protected:
    // A day picture that is there, in another case than the catalogue's.
    void Picture(const std::string& name) { folder_.Write("texture/" + name, "DDS"); }
    void Open(const std::string& bytes) { OpenTelling(bytes, dialogs_); }
    void OpenTelling(const std::string& bytes, Dialogs& dialogs) {
        catalogue_.BinPath = folder_.Write("Texture.bin", bytes);
        catalogue_.DDSFolder = folder_.Path() + "\\texture\\";
        OpenBinFile(catalogue_, progress_, dialogs, log_);
    }
    RuntimeError ErrorOf(const std::string& bytes) {
        try {
            Open(bytes);
        } catch (const RuntimeError& error) {
            return error;
        }
        return RuntimeError(ErrorNumber{0});
    }

    TestFolder folder_;
    SystemClock clock_;
    DebugLog log_{clock_};
    tests::RecordingProgress progress_;
    tests::ScriptedDialogs dialogs_;
    Catalogue catalogue_;
};

TEST_F(TextureBinFile, ReadsSetsTilesAreasAndPathsFromIndex1) {
    for (const char* name : {"hone.dds", "HTWO.DDS", "hthree.dds"})
        Picture(name);
    Open(CatalogueBytes(
        {{1, {{"HONE.PCX", 0, 0}, {"HTWO.PCX", 2, 0}}}, {9, {{"HTHREE.PCX", 1, 1}}}}));
    const TextureBin& bin = catalogue_.Bin;
    EXPECT_EQ(bin.NumSets, 2);
    EXPECT_EQ(bin.NumTiles, 3);
    ASSERT_EQ(bin.Sets.size(), 3U);
    EXPECT_EQ(bin.Sets[1].TileCount, 2);
    EXPECT_EQ(bin.Sets[1].Terrain, 1);
    EXPECT_EQ(bin.Sets[2].Terrain, 9);
    const TileRecord& two = bin.Sets[1].Tiles[2];
    EXPECT_EQ(two.TileName, "HTWO.PCX            ");
    ASSERT_EQ(two.Areas.size(), 3U);
    EXPECT_EQ(two.Areas[1].Type, 7);
    EXPECT_FLOAT_EQ(two.Areas[1].Radius, 0.6F);
    EXPECT_FLOAT_EQ(two.Areas[2].CenterY, 1.1F);
    EXPECT_EQ(two.Paths.size(), 1U);
    const TileRecord& three = bin.Sets[2].Tiles[1];
    EXPECT_EQ(three.Paths[1].Type, 10);
    EXPECT_FLOAT_EQ(three.Paths[1].Width, 1.5F);
    EXPECT_FLOAT_EQ(three.Paths[1].EndY, 1.9F);
}

TEST_F(TextureBinFile, EverySetOwns16Numbers) {
    Picture("A.dds");
    Picture("B.dds");
    Picture("C.dds");
    Open(CatalogueBytes({{1, {{"A.PCX"}, {"B.PCX"}}}, {4, {{"C.PCX"}}}}));
    const TileLookup& lookup = catalogue_.Lookup;
    ASSERT_EQ(lookup.size(), 32U);
    EXPECT_EQ(lookup[1].Name, "B.PCX");
    EXPECT_EQ(lookup[16].Name, "C.PCX");
    EXPECT_EQ(lookup[16].DayFile, "C.dds");
    EXPECT_EQ(lookup[16].NightFile, "CN.dds");
    EXPECT_EQ(lookup[16].Terrain, 4);
    EXPECT_EQ(lookup[16].UseCount, 0);
    EXPECT_EQ(lookup[16].HasImage, 1);
    const TileInfo& empty = lookup[2];
    EXPECT_EQ(empty.Name + empty.DayFile + empty.NightFile, "");
    EXPECT_EQ(empty.Terrain, -1);
    EXPECT_EQ(empty.UseCount, -1);
    EXPECT_EQ(empty.HasImage, 0);
}

TEST_F(TextureBinFile, EachMissingDayPictureIsToldOnce) {
    Picture("b.DDS");
    dialogs_.ExpectBox("", "File A.PCX wasn't found.", BoxAnswer::Ok);
    dialogs_.ExpectBox("", "File C D.PCX wasn't found.", BoxAnswer::Ok);
    Open(CatalogueBytes({{1, {{"A.PCX"}, {"B.PCX"}, {"C D.PCX"}}}}));
    EXPECT_EQ(dialogs_.LastIcon(), BoxIcon::Information);
    EXPECT_EQ(catalogue_.Lookup[0].HasImage, 0);
    EXPECT_EQ(catalogue_.Lookup[1].HasImage, 1);
    EXPECT_EQ(catalogue_.Lookup[2].HasImage, 0);
}

TEST_F(TextureBinFile, AMissingPictureIsToldWithItsPathAndHowManyAreToCome) {
    Picture("b.DDS");
    tests::ImpatientDialogs dialogs(100);
    OpenTelling(CatalogueBytes({{1, {{"A.PCX"}, {"B.PCX"}, {"C D.PCX"}}},
                                {4, {{"E.PCX"}, {"F.PCX"}}}}),
                dialogs);
    const std::string folder = folder_.Path() + "/texture/";
    EXPECT_EQ(dialogs.Story, "File A.PCX wasn't found. " + folder + "A.dds +3\n" +
                                 "File C D.PCX wasn't found. " + folder + "C D.dds +2\n" +
                                 "File E.PCX wasn't found. " + folder + "E.dds +1\n" +
                                 "File F.PCX wasn't found. " + folder + "F.dds +0\n");
    EXPECT_EQ(dialogs.Title, "");
    EXPECT_EQ(dialogs.Icon, BoxIcon::Information);
}

// Tiles that run out of numbers are told of like any other, so they count.
TEST_F(TextureBinFile, NobodyHearsOfTheOthersWhoHasAskedToBeSpared) {
    tests::ImpatientDialogs dialogs(2);
    const std::vector<tests::MadeTile> many(18, {"T.PCX"});
    OpenTelling(CatalogueBytes({{1, {{"A.PCX"}}}, {4, many}}), dialogs);
    const std::string folder = folder_.Path() + "/texture/";
    EXPECT_EQ(dialogs.Story, "File A.PCX wasn't found. " + folder + "A.dds +18\n" +
                                 "File T.PCX wasn't found. " + folder + "T.dds +17\n");
    EXPECT_EQ(catalogue_.Lookup[0].HasImage, 0);
    EXPECT_EQ(catalogue_.Lookup[16].HasImage, 0);
    EXPECT_EQ(catalogue_.Lookup[31].HasImage, 0);
}

TEST_F(TextureBinFile, AFolderThatIsNotThereMissesEveryPicture) {
    catalogue_.BinPath = folder_.Write("Texture.bin", CatalogueBytes({{1, {{"A.PCX"}}}}));
    catalogue_.DDSFolder = folder_.Path() + "\\no such\\";
    dialogs_.ExpectBox("", "File A.PCX wasn't found.", BoxAnswer::Ok);
    OpenBinFile(catalogue_, progress_, dialogs_, log_);
    EXPECT_EQ(catalogue_.Bin.NumSets, 1);
}

TEST_F(TextureBinFile, ReportsEachSetAndLogsTheCounts) {
    log_.DebugFlag = true;
    log_.StartDebugLog(folder_.Path() + "/");
    Open(CatalogueBytes({{1, {}}, {4, {}}, {9, {}}}));
    log_.DebugFlag = false;
    EXPECT_EQ(progress_.Story(), "bar 0|bar 33|events|bar 67|events|bar 100|events");
    const std::string text = Slurp(folder_.File("Debug.txt"));
    EXPECT_EQ(text.substr(text.find('\n') + 1),
              "Opened BinPath...\r\nNumber of Sets: 3\r\nNumber of Tiles: 0\r\n"
              "Closed BinPath...\r\nExiting OpenBinFile...\r\n");
}

TEST_F(TextureBinFile, NoSetsGiveAnEmptyLookup) {
    catalogue_.NewTilesList = {"left over"};
    Open(CatalogueBytes({}));
    EXPECT_EQ(catalogue_.Bin.NumSets, 0);
    EXPECT_EQ(catalogue_.Bin.NumTiles, 0);
    EXPECT_TRUE(catalogue_.Lookup.empty());
    EXPECT_TRUE(catalogue_.NewTilesList.empty());
}

TEST_F(TextureBinFile, ASetOfMoreThan16TilesRunsIntoTheNext) {
    MadeSet big{3, {}};
    for (int i = 0; i < 18; ++i) {
        big.Tiles.push_back({"T" + std::to_string(i) + ".PCX"});
        Picture("T" + std::to_string(i) + ".dds");
    }
    MadeSet last = big;
    last.Terrain = 8;
    Open(CatalogueBytes({big, {4, {{"T0.PCX"}}}, last}));
    EXPECT_EQ(catalogue_.Bin.Sets[1].TileCount, 18);
    ASSERT_EQ(catalogue_.Lookup.size(), 48U);
    EXPECT_EQ(catalogue_.Lookup[16].Terrain, 4); // the later set wins
    EXPECT_EQ(catalogue_.Lookup[17].Name, "T17.PCX");
    EXPECT_EQ(catalogue_.Lookup[17].Terrain, 3);
    EXPECT_EQ(catalogue_.Lookup[47].Name, "T15.PCX");
}

TEST_F(TextureBinFile, EveryZeroByteOfANameBecomesABlank) {
    Picture("AB C.dds");
    Open(CatalogueBytes({{1, {{std::string("AB\0C.PCX\0\0", 10)}}}}));
    EXPECT_EQ(catalogue_.Bin.Sets[1].Tiles[1].TileName, "AB C.PCX            ");
    EXPECT_EQ(catalogue_.Lookup[0].Name, "AB C.PCX");
}

TEST_F(TextureBinFile, NamesOfBytesBeyondAsciiNameUnicodeFiles) {
    Picture("H\xC3\xA4.dds");
    Open(CatalogueBytes({{1, {{"H\xE4.PCX"}}}}));
    EXPECT_EQ(catalogue_.Lookup[0].DayFile, "H\xE4.dds");
    EXPECT_EQ(catalogue_.Lookup[0].HasImage, 1);
}

TEST_F(TextureBinFile, ARoundTripKeepsEveryByte) {
    for (const char* name : {"A.dds", "B.dds", "TWENTYCHARACTERSNAME.dds"})
        Picture(name);
    std::string bytes =
        CatalogueBytes({{1, {{"A.PCX", 3, 2}, {std::string("B\0\0.PCX", 7), 0, 1}}},
                        {0, {}},
                        {200, {}}});
    bytes.replace(4, 4, Int32Bytes(-5)); // a count of tiles that is not true is kept
    Picture("B  .dds");
    Open(bytes);
    SaveBinFile(catalogue_, log_);
    EXPECT_EQ(Slurp(catalogue_.BinPath), bytes);
}

TEST_F(TextureBinFile, BlanksInANameAreWrittenAsZeroBytes) {
    Picture("A.dds");
    Open(CatalogueBytes({{1, {{"A.PCX"}}}}));
    catalogue_.Bin.Sets[1].Tiles[1].TileName = "A B.PCX             ";
    SaveBinFile(catalogue_, log_);
    EXPECT_EQ(Slurp(catalogue_.BinPath).substr(13, 20),
              std::string("A\0B.PCX\0\0\0\0\0\0\0\0\0\0\0\0\0", 20));
    EXPECT_EQ(catalogue_.Bin.Sets[1].Tiles[1].TileName, "A B.PCX             ");
}

TEST_F(TextureBinFile, SavingWhatIsNotThereChangesNothing) {
    Open(CatalogueBytes({{1, {}}}));
    std::filesystem::remove(catalogue_.BinPath);
    try {
        SaveBinFile(catalogue_, log_);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.NumberValue(), 53);
    }
    EXPECT_EQ(folder_.Names(), "");
    EXPECT_EQ(catalogue_.Bin.NumSets, 1);
}

TEST_F(TextureBinFile, BadFilesEndInAMessageBeforeMemoryIsTaken) {
    const std::string path = folder_.File("Texture.bin");
    EXPECT_EQ(ErrorOf("").Detail(),
              path + ", offset 0: expected 4 bytes, found 0 bytes left");
    EXPECT_EQ(
        ErrorOf(Int32Bytes(2000000000) + Int32Bytes(0)).Detail(),
        path + ", offset 8: expected 2000000000 sets of 5 bytes or more, found 0 bytes "
               "left");
    EXPECT_EQ(ErrorOf(Int32Bytes(-1) + Int32Bytes(0)).NumberValue(), 62);
    const std::string head = Int32Bytes(1) + Int32Bytes(1);
    EXPECT_EQ(ErrorOf(head + Int32Bytes(1 << 30) + "\4").NumberValue(), 62);
    const std::string tile = head + Int32Bytes(1) + "\4" + std::string(20, 'A');
    EXPECT_EQ(ErrorOf(tile + Int32Bytes(5) + Int32Bytes(0)).NumberValue(), 62);
    EXPECT_EQ(ErrorOf(tile + Int32Bytes(0) + Int32Bytes(-3)).NumberValue(), 62);
    // Sets of nothing: far more numbers than any terrain can use.
    EXPECT_EQ(ErrorOf(Int32Bytes(40000) + Int32Bytes(0) + std::string(200000, '\0'))
                  .NumberValue(),
              7);
}

TEST_F(TextureBinFile, AFailedReadLeavesTheCatalogue) {
    Picture("A.dds");
    Open(CatalogueBytes({{1, {{"A.PCX"}}}}));
    EXPECT_EQ(ErrorOf("garbage").NumberValue(), 62);
    EXPECT_EQ(catalogue_.Bin.NumSets, 1);
    EXPECT_EQ(catalogue_.Lookup[0].Name, "A.PCX");
}

TEST(TypeNames, CodesWithoutANameShowTheirNumber) {
    EXPECT_EQ(TerrainName(1), "Water");
    EXPECT_EQ(TerrainName(2), "2");
    EXPECT_EQ(TerrainName(5), "Brush");
    EXPECT_EQ(TerrainName(7), "Thick Forest");
    EXPECT_EQ(AreaTypeName(9), "Urban");
    EXPECT_EQ(AreaTypeName(-1), "-1");
    EXPECT_EQ(PathTypeName(2), "River");
    EXPECT_EQ(PathTypeName(11), "RailRoad");
    EXPECT_EQ(PathTypeName(3), "3");
}

TEST(TypeNames, ListsRunByIndex) {
    const int terrain[] = {1, 3, 4, 5, 6, 7, 8, 9};
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(TerrainFromIndex(i), terrain[i]);
    EXPECT_EQ(TerrainFromIndex(8), 0);
    EXPECT_EQ(TerrainFromIndex(-1), 0);
    EXPECT_EQ(AreaTypeFromIndex(0), 1);
    EXPECT_EQ(AreaTypeFromIndex(1), 7);
    EXPECT_EQ(AreaTypeFromIndex(2), 0);
    const int paths[] = {2, 10, 11, 12};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(PathTypeFromIndex(i), paths[i]);
    EXPECT_EQ(PathTypeFromIndex(4), 0);
}

} // namespace
} // namespace vardenix
