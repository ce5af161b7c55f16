#include "bineditor/TileLists.h"

#include "bineditor/MadeCatalogue.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

using tests::CatalogueOf;

std::string Text(const TileRow& row) {
    std::string text;
    for (const std::string& column : row.Columns)
        text += column + "|";
    return text + (row.Look == TileRowLook::Used     ? "black"
                   : row.Look == TileRowLook::Unused ? "red"
                                                     : "grey");
}

TEST(TileLists, EverySlotHasARow) {
    Catalogue catalogue = CatalogueOf({2, 1});
    catalogue.Bin.Sets[2].Tiles[1].NumAreas = 3;
    catalogue.Bin.Sets[2].Tiles[1].NumPaths = 4;
    catalogue.Lookup[16].UseCount = 1;
    EXPECT_EQ(Text(TileRowOf(catalogue, 1)), "1|0|1B.PCX|0|0|red");
    EXPECT_EQ(Text(TileRowOf(catalogue, 2)), "2|0|----|-|-|grey");
    EXPECT_EQ(Text(TileRowOf(catalogue, 16)), "16|1|2A.PCX|3|4|black");
    EXPECT_EQ(Text(TileRowOf(catalogue, 31)), "31|1|----|-|-|grey");
    EXPECT_EQ(SetColumns(catalogue.Bin, 1)[0] + SetColumns(catalogue.Bin, 1)[1] +
                  SetColumns(catalogue.Bin, 1)[2],
              "1Plains1");
}

TEST(TileLists, TheCountersLineCountsTilesWhoseUseIsNotAboveZero) {
    Catalogue catalogue = CatalogueOf({2, 3});
    catalogue.Lookup[0].UseCount = 7;
    catalogue.Lookup[9].UseCount = 7; // an empty slot
    EXPECT_EQ(CountersLine(catalogue), "2 Sets || 5 Tiles || 4 Tiles not used in L2");
}

TEST(TileLists, DetailsOfAnEmptySlotAreBlank) {
    Catalogue catalogue = CatalogueOf({2});
    catalogue.Lookup[1].UseCount = 1;
    const SlotDetails tile = DetailsOf(catalogue, {1, 1});
    EXPECT_EQ(tile.TileName + "|" + tile.AreasPaths + "|" + tile.TileNumber,
              "1B.PCX|0 Areas and 0 Paths|Tile Number: 1");
    EXPECT_TRUE(tile.UsedInL2);
    EXPECT_FALSE(DetailsOf(catalogue, {1, 0}).UsedInL2);
    const SlotDetails empty = DetailsOf(catalogue, {1, 2});
    EXPECT_EQ(empty.TileName + empty.AreasPaths + empty.TileNumber, "");
    EXPECT_FALSE(empty.UsedInL2);
    EXPECT_EQ(DetailsOf(CatalogueOf({}), {0, -1}).TileName, "");
}

TEST(TileLists, DetailsSayWhyATileHasNoPicture) {
    Catalogue catalogue = CatalogueOf({2});
    const auto why = [&] { return DetailsOf(catalogue, {1, 0}).NoPicture; };
    catalogue.Lookup[0].DayFile = "1A.dds";
    EXPECT_EQ(why(), "No picture: 1A.dds is not there");
    catalogue.Lookup[0].Name = "HAVERYLONGTILE12.PCX"; // just fits
    EXPECT_EQ(why(), "No picture: 1A.dds is not there");
    catalogue.Lookup[0].Name = "HAVERYLONGTILENAME12";
    catalogue.Lookup[0].DayFile = "HAVERYLONGTILENA.dds";
    EXPECT_EQ(why(), "No picture: HAVERYLONGTILENA.dds is not there; the name was cut to "
                     "20 letters");
    catalogue.Lookup[0].HasImage = 1; // it has just come in
    EXPECT_EQ(why(), "No picture the next time: the name was cut to 20 letters");
    catalogue.Lookup[0].Name = "HAVERYLONGTILE12.PCX";
    EXPECT_EQ(why(), "");
    EXPECT_EQ(DetailsOf(catalogue, {1, 2}).NoPicture, "");
}

TEST(TileLists, TheTipOfASlotGoesByItsPictureAndItsUse) {
    Catalogue catalogue = CatalogueOf({2});
    catalogue.Lookup[0].HasImage = 1;
    catalogue.Lookup[0].UseCount = 12;
    EXPECT_EQ(TipOf(catalogue, {1, 0}).Text,
              "Loaded from DDS\r\n1A.PCX\r\nTile Number: 0\r\nUsed 12 times in L2");
    EXPECT_EQ(TipOf(catalogue, {1, 0}).Color, 0U);
    catalogue.Lookup[0].UseCount = 0;
    EXPECT_EQ(TipOf(catalogue, {1, 0}).Text,
              "Loaded from DDS\r\n1A.PCX\r\nTile Number: 0\r\nNot used in L2");
    EXPECT_EQ(TipOf(catalogue, {1, 0}).Color, 0xFFU);
    // A real tile whose file is missing, and an empty slot.
    EXPECT_EQ(TipOf(catalogue, {1, 1}).Text, "Empty Tile");
    EXPECT_EQ(TipOf(catalogue, {1, 9}).Text, "Empty Tile");
    EXPECT_EQ(TipOf(catalogue, {1, 9}).Color, 0xFFU);
    catalogue.Lookup[0].HasImage = 2;
    EXPECT_EQ(TipOf(catalogue, {1, 0}).Text.substr(0, 30),
              "Loaded from Texture.zip (PCX)\r");
}

TEST(TileLists, TheMoveSaysWhereTheSetWouldGo) {
    const std::string click =
        "Click on a set in the list above to define the move position.\n";
    EXPECT_EQ(MoveSourceText(3), "Selected Set to be Moved: 2");
    EXPECT_EQ(MovePositionText(3, 3, true),
              click + "Current move position: NONE SELECTED");
    EXPECT_EQ(MovePositionText(3, 1, true),
              click + "Current move position: Before Set# 0");
    EXPECT_EQ(MovePositionText(3, 4, false),
              click + "Current move position: After Set# 3");
}

} // namespace
} // namespace vardenix
