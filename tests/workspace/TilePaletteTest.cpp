#include "workspace/TilePalette.h"

#include "catalogue/TypeNames.h"

#include <gmock/gmock.h>

namespace vardenix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TileInfo Tile(const std::string& name, int16_t terrain) {
    TileInfo tile;
    tile.Name = name;
    tile.Terrain = terrain;
    return tile;
}

std::vector<std::pair<int32_t, int32_t>> PlacesOf(const PaletteLayout& layout) {
    std::vector<std::pair<int32_t, int32_t>> places;
    places.reserve(layout.Buttons.size());
    for (const PalettePlace& place : layout.Buttons)
        places.emplace_back(place.Left, place.Top);
    return places;
}

TEST(TilePalette, ListsEightClassesWithTheirCodes) {
    EXPECT_THAT(PaletteClasses,
                ElementsAre("Water", "Swamp", "Plains", "Bush", "Thin Forest",
                            "Thick Forest", "Rocky", "Urban"));
    std::vector<int> codes;
    for (int index = -1; index <= 8; ++index)
        codes.push_back(TerrainFromIndex(index));
    EXPECT_THAT(codes, ElementsAre(0, 1, 3, 4, 5, 6, 7, 8, 9, 0));
}

TEST(TilePalette, FindsTheEntryOfAClass) {
    EXPECT_EQ(PaletteIndex(1), 0);
    EXPECT_EQ(PaletteIndex(3), 1);
    EXPECT_EQ(PaletteIndex(9), 7);
}

TEST(TilePalette, HasNoEntryForOtherCodes) {
    for (const int32_t code : {-1, 0, 2, 10, 255})
        EXPECT_EQ(PaletteIndex(code), -1) << code;
}

TEST(TilePalette, ShowsTheNamedTilesOfTheClassInTheirOrder) {
    const TileLookup lookup{Tile("SEA.PCX", 1), Tile("HILL.PCX", 4), Tile("", 1),
                            Tile("COAST.PCX", 1), Tile("", -1)};
    EXPECT_THAT(TilesOfClass(lookup, 1), ElementsAre(0, 3));
    EXPECT_THAT(TilesOfClass(lookup, 4), ElementsAre(1));
}

TEST(TilePalette, AFilterLeavesTheTilesWhoseNamesHoldIt) {
    const TileLookup lookup{Tile("HSEA1.PCX", 1), Tile("HCOAST.PCX", 1),
                            Tile("hsea2.pcx", 1), Tile("\xC5SEA.PCX", 1)};
    const std::vector<int32_t> all{0, 1, 2, 3};
    EXPECT_THAT(TilesNamed(lookup, all, "sea"), ElementsAre(0, 2, 3));
    EXPECT_THAT(TilesNamed(lookup, all, " SEA2 "), ElementsAre(2));
    EXPECT_THAT(TilesNamed(lookup, all, "\xC5"), ElementsAre(3));
    EXPECT_THAT(TilesNamed(lookup, all, ""), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(TilesNamed(lookup, {1, 2}, ".p"), ElementsAre(1, 2));
    EXPECT_THAT(TilesNamed(lookup, all, "river"), IsEmpty());
}

// Rows by hand: a frame of three buttons, of which it shows two rows whole.
TEST(TilePalette, ScrollingEndsWithTheLastRowSeenWhole) {
    const auto end = [](size_t buttons, int32_t wholeRows) {
        return PaletteScrollEnd(LayOutPalette(buttons, 3 * 960), wholeRows);
    };
    EXPECT_EQ(end(0, 2), 0);
    EXPECT_EQ(end(6, 2), 0);
    EXPECT_EQ(end(7, 2), 1);
    EXPECT_EQ(end(9, 2), 1); // the empty row behind a full one counts for nothing
    EXPECT_EQ(end(10, 2), 2);
    EXPECT_EQ(end(10, 1), 3);
    EXPECT_EQ(end(10, 50), 0);
}

TEST(TilePalette, AClassWithoutTilesShowsNone) {
    const TileLookup lookup{Tile("SEA.PCX", 1), Tile("", -1)};
    EXPECT_THAT(TilesOfClass(lookup, 9), IsEmpty());
    EXPECT_THAT(TilesOfClass(lookup, -1), IsEmpty());
    EXPECT_THAT(TilesOfClass({}, 1), IsEmpty());
}

TEST(TilePalette, WrapsBeforeAButtonThatWouldReachPastTheFrame) {
    const PaletteLayout layout = LayOutPalette(4, 3 * 960 + 959);
    EXPECT_THAT(PlacesOf(layout), ElementsAre(std::pair(0, 0), std::pair(960, 0),
                                              std::pair(1920, 0), std::pair(0, 960)));
    EXPECT_EQ(layout.Columns, 3);
    EXPECT_EQ(layout.Frame1Height, 1920);
}

TEST(TilePalette, AButtonMayEndAtTheFramesEdge) {
    EXPECT_EQ(LayOutPalette(3, 3 * 960).Buttons[2].Left, 1920);
    EXPECT_EQ(LayOutPalette(3, 3 * 960 - 1).Buttons[2].Left, 0);
    EXPECT_EQ(LayOutPalette(3, 3 * 960 - 1).Columns, 2);
}

TEST(TilePalette, AFullLastRowHasAnEmptyOneBehindIt) {
    EXPECT_EQ(LayOutPalette(2, 3 * 960).Frame1Height, 960);
    EXPECT_EQ(LayOutPalette(3, 3 * 960).Frame1Height, 1920);
    EXPECT_EQ(LayOutPalette(6, 3 * 960).Frame1Height, 2880);
}

TEST(TilePalette, AFrameWithoutButtonsIsOneRowHigh) {
    EXPECT_EQ(LayOutPalette(0, 9000).Frame1Height, 960);
}

TEST(TilePalette, ANarrowFrameHasOneColumn) {
    for (const int32_t width : {0, 500, 1919}) {
        const PaletteLayout layout = LayOutPalette(2, width);
        EXPECT_THAT(PlacesOf(layout), ElementsAre(std::pair(0, 0), std::pair(0, 960)))
            << width;
        EXPECT_EQ(layout.Columns, 1);
    }
}

TEST(TilePalette, ScrollsToTheLastRow) {
    EXPECT_EQ(PaletteScrollMax(960), 0);
    EXPECT_EQ(PaletteScrollMax(1920), 1);
    EXPECT_EQ(PaletteScrollMax(96000), 99);
}

TEST(TilePalette, RoundsHalfARowToTheEvenNumber) {
    EXPECT_EQ(PaletteScrollMax(1440), 0); // 0.5
    EXPECT_EQ(PaletteScrollMax(2400), 2); // 1.5
    EXPECT_EQ(PaletteScrollMax(3360), 2); // 2.5
    EXPECT_EQ(PaletteScrollMax(3361), 3);
}

TEST(TilePalette, TheFrameGoesUpARowForEachStep) {
    EXPECT_EQ(Frame1Top(0), 1200);
    EXPECT_EQ(Frame1Top(1), 240);
    EXPECT_EQ(Frame1Top(5), -3600);
}

TEST(TilePalette, ScrollsNoFurtherThanARowNeeds) {
    EXPECT_EQ(ScrollToRow(3, 0, 4), 0); // rows 0 to 3 are seen
    EXPECT_EQ(ScrollToRow(4, 0, 4), 1);
    EXPECT_EQ(ScrollToRow(9, 0, 4), 6);
    EXPECT_EQ(ScrollToRow(2, 6, 4), 2);
    EXPECT_EQ(ScrollToRow(0, 0, 4), 0);
    EXPECT_EQ(ScrollToRow(5, 0, 0), 5); // a frame lower than a row
}

// Buttons 0 to 10 in rows of 4, two rows a page.
int32_t Move(int32_t index, PaletteMove move) {
    return MoveInPalette(index, move, 11, 4, 2);
}

TEST(TilePalette, SidewaysKeysGoThroughAllRows) {
    EXPECT_EQ(Move(3, PaletteMove::Right), 4);
    EXPECT_EQ(Move(4, PaletteMove::Left), 3);
    EXPECT_EQ(Move(0, PaletteMove::Left), 0);
    EXPECT_EQ(Move(10, PaletteMove::Right), 10);
}

TEST(TilePalette, UpAndDownKeepTheColumn) {
    EXPECT_EQ(Move(2, PaletteMove::Down), 6);
    EXPECT_EQ(Move(6, PaletteMove::Up), 2);
    EXPECT_EQ(Move(2, PaletteMove::Up), 2);
    EXPECT_EQ(Move(9, PaletteMove::Down), 9);
}

TEST(TilePalette, DownIntoAShortRowLeadsToItsEnd) {
    EXPECT_EQ(Move(7, PaletteMove::Down), 10);
    EXPECT_EQ(Move(6, PaletteMove::Down), 10);
}

TEST(TilePalette, PagesAreTheRowsThatAreSeen) {
    EXPECT_EQ(Move(1, PaletteMove::PageDown), 9);
    EXPECT_EQ(Move(3, PaletteMove::PageDown), 10);
    EXPECT_EQ(Move(9, PaletteMove::PageUp), 1);
    EXPECT_EQ(Move(6, PaletteMove::PageUp), 2);
    EXPECT_EQ(MoveInPalette(1, PaletteMove::PageDown, 11, 4, 0), 5);
}

TEST(TilePalette, HomeAndEndLeadToTheFirstAndTheLast) {
    EXPECT_EQ(Move(6, PaletteMove::First), 0);
    EXPECT_EQ(Move(6, PaletteMove::Last), 10);
}

TEST(TilePalette, AFilterThatItsKindHasNothingForSearchesAllOthers) {
    const TileLookup lookup{Tile("HSEA1.PCX", 1), Tile("HRIVER2.PCX", 3),
                            Tile("HSEA3.PCX", 3), Tile("", -1)};
    EXPECT_THAT(TilesToShow(lookup, 1, ""), ElementsAre(0));
    EXPECT_THAT(TilesToShow(lookup, 3, "sea"), ElementsAre(2)); // its own alone
    EXPECT_THAT(TilesToShow(lookup, 1, "river"), ElementsAre(1));
    EXPECT_THAT(TilesToShow(lookup, 5, "sea"), ElementsAre(0, 2));
    EXPECT_THAT(TilesToShow(lookup, 5, ""), IsEmpty()); // nothing is looked for
    EXPECT_THAT(TilesToShow(lookup, 1, "lake"), IsEmpty());
}

TEST(TilePalette, ATileIsFoundByItsNumberInAnyKind) {
    const TileLookup lookup{Tile("HSEA1.PCX", 1), Tile("HRIVER5.PCX", 3),
                            Tile("HLAKE.PCX", 3)};
    EXPECT_THAT(TilesToShow(lookup, 1, "2"), ElementsAre(2));
    EXPECT_THAT(TilesToShow(lookup, 3, " 2 "), ElementsAre(2));
    EXPECT_THAT(TilesToShow(lookup, 1, "3"), IsEmpty());
}

TEST(TilePalette, ASecondClickOnTheChosenTileChoosesNone) {
    EXPECT_EQ(ChooseTile(-1, 17), 17);
    EXPECT_EQ(ChooseTile(17, 18), 18);
    EXPECT_EQ(ChooseTile(17, 17), -1);
    EXPECT_EQ(ChooseTile(-1, 0), 0);
}

TEST(TilePalette, CtrlChoosesTilesBesideTheFirst) {
    ChosenTiles chosen = ChooseAlso({}, 5);
    EXPECT_EQ(chosen, (ChosenTiles{5}));
    chosen = ChooseAlso(ChooseAlso(chosen, 9), 2);
    EXPECT_EQ(chosen, (ChosenTiles{5, {9, 2}}));
    EXPECT_EQ(ChooseAlso(chosen, 9), (ChosenTiles{5, {2}}));
    EXPECT_EQ(ChooseAlso(chosen, 5), (ChosenTiles{9, {2}}));
    EXPECT_EQ(ChooseAlso({5}, 5), ChosenTiles{});
}

TEST(TilePalette, ShiftChoosesAllUpToAnother) {
    const std::vector<int32_t> shown{2, 5, 7, 9, 11};
    EXPECT_EQ(ChooseUpTo({5, {2}}, 9, shown), (ChosenTiles{5, {7, 9}}));
    EXPECT_EQ(ChooseUpTo({9}, 2, shown), (ChosenTiles{9, {2, 5, 7}}));
    EXPECT_EQ(ChooseUpTo({100}, 7, shown), (ChosenTiles{100, {7}}));
    EXPECT_EQ(ChooseUpTo({}, 7, shown), (ChosenTiles{7}));
}

TEST(TilePalette, ATileIsCalledByNameAndNumber) {
    const TileLookup lookup{Tile("H0000.PCX", 1), Tile("", -1)};
    EXPECT_EQ(TileCaption(lookup, 0), "H0000.PCX | Tile #:0");
    EXPECT_EQ(TileCaption(lookup, 1), "Tile #:1");
    EXPECT_EQ(TileCaption(lookup, 2), "Tile #:2"); // gone from the catalogue since
}

TEST(TilePalette, TellsTheChosenTile) {
    const TileLookup lookup{Tile("H0000.PCX", 1)};
    EXPECT_EQ(PaletteStatus(lookup, 0), "Chosen: H0000.PCX | Tile #:0");
    EXPECT_EQ(PaletteStatus(lookup, -1), "No tile chosen");
}

TEST(TilePalette, CountsItsTiles) {
    EXPECT_EQ(TileCount(0), "0 tiles");
    EXPECT_EQ(TileCount(1), "1 tile");
    EXPECT_EQ(TileCount(2000), "2000 tiles");
}

} // namespace
} // namespace vardenix
