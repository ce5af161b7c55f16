#include "search/TilesMeant.h"

#include <gtest/gtest.h>

#include <string>

namespace vardenix {
namespace {

// Water 0 "HWATR001.PCX" and 1 "LAKE", thick forest 16 "WATCHED", plains 17 "HPLNS001".
TileLookup Named() {
    TileLookup lookup(32);
    lookup[0].Name = "HWATR001.PCX";
    lookup[1].Name = "LAKE";
    lookup[0].Terrain = lookup[1].Terrain = 1;
    lookup[16].Name = "WATCHED";
    lookup[16].Terrain = 7;
    lookup[17].Name = "HPLNS001";
    lookup[17].Terrain = 4;
    return lookup;
}

std::string Meant(const TileMarks& marks) {
    std::string text;
    for (size_t number = 0; number < marks.size(); ++number)
        if (marks[number] != 0)
            text += (text.empty() ? "" : " ") + std::to_string(number);
    return text;
}

TEST(TilesMeant, ByPartOfTheNameOrBeginningOfTheKind) {
    const TileLookup lookup = Named();
    EXPECT_EQ(Meant(TilesMeant(lookup, "wat")), "0 1 16"); // 1 by its kind
    EXPECT_EQ(Meant(TilesMeant(lookup, "ATR0")), "0");
    EXPECT_EQ(Meant(TilesMeant(lookup, "thick forest")), "16");
    EXPECT_EQ(Meant(TilesMeant(lookup, "forest")), "");
    EXPECT_EQ(Meant(TilesMeant(lookup, " lake , Thick,,")), "1 16");
    EXPECT_EQ(Meant(TilesMeant(lookup, "")), "");
    EXPECT_EQ(Meant(TilesMeant(lookup, " , ")), "");
}

TEST(TilesMeant, ByKindAndBySet) {
    EXPECT_EQ(Meant(TilesOfKind(Named(), 1)), "0 1");
    EXPECT_EQ(Meant(TilesOfKind(Named(), -1)), "");
    EXPECT_EQ(Meant(TilesOfSet(Named(), 2)), "16 17");
}

TEST(TilesMeant, PostsOfThemAndBetweenHeights) {
    Terrain terrain;
    terrain.MapWidth = 2;
    terrain.LxArr = PostArray(4);
    terrain.LxArr(2) = {16, 100, 0, 0, 0};
    terrain.LxArr(3) = {-7, 200, 0, 0, 0};
    terrain.LxArr(4) = {99, 201, 0, 0, 0};
    const TileMarks marks = TilesMeant(Named(), "wat");
    EXPECT_EQ(PostsOfTiles(terrain, marks), (SearchResults{0, 1, 2}));
    EXPECT_EQ(PostsBetween(terrain, 100, 200), (SearchResults{0, 2, 3}));
    SearchResults hits{0, 2, 3, 4};
    KeepTilesMeant(terrain, marks, hits);
    EXPECT_EQ(hits, (SearchResults{0, 2}));
}

} // namespace
} // namespace vardenix
