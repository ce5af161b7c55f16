#include "bineditor/SetsAndTiles.h"

#include "bineditor/LevelTwoPass.h"
#include "bineditor/MadeCatalogue.h"
#include "support/RecordingProgress.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <random>

namespace vardenix {
namespace {

using tests::CatalogueOf;
using tests::NamesByLookup;
using tests::NamesBySets;

template <typename Work>
int NumberOf(Work work) {
    try {
        work();
    } catch (const RuntimeError& error) {
        return error.NumberValue();
    }
    return 0;
}

// The edits and the pass over level 2 once more, slowly and one post at a time, from the
// rules alone: a land of numbers, and lists of names.
class SlowModel {
public:
    explicit SlowModel(const std::vector<int>& counts, std::vector<int32_t> posts)
        : Posts(std::move(posts)) {
        for (size_t s = 0; s < counts.size(); ++s) {
            std::vector<std::string> names;
            names.reserve(static_cast<size_t>(counts[s]));
            for (int i = 0; i < counts[s]; ++i)
                names.push_back(std::to_string(s + 1) + static_cast<char>('A' + i) +
                                ".PCX");
            Sets.push_back(names);
        }
    }

    void Insert(size_t place, const std::vector<std::string>& names) {
        const auto b = static_cast<int32_t>(place - 1) * 16;
        for (int32_t& t : Posts)
            if (t >= b)
                t = t + 16;
        Sets.insert(Sets.begin() + static_cast<std::ptrdiff_t>(place - 1), names);
    }
    void DeleteSet(size_t set) {
        const auto b = static_cast<int32_t>(set - 1) * 16;
        for (int32_t& t : Posts) {
            if (b <= t && t <= b + 15)
                t = 0;
            else if (t > b + 15)
                t = t - 16;
        }
        Sets.erase(Sets.begin() + static_cast<std::ptrdiff_t>(set - 1));
    }
    void DeleteTile(size_t set, size_t slot) {
        const auto number = static_cast<int32_t>((set - 1) * 16 + slot);
        const auto end = static_cast<int32_t>((set - 1) * 16) + 15;
        for (int32_t& t : Posts) {
            if (t == number)
                t = 0;
            else if (number < t && t <= end)
                t = t - 1;
        }
        auto& names = Sets[set - 1];
        names.erase(names.begin() + static_cast<std::ptrdiff_t>(slot));
    }
    void Move(size_t source, size_t target, bool before) {
        std::vector<size_t> map(Sets.size() + 1);
        std::vector<std::vector<std::string>> moved;
        const auto put = [&](size_t old) {
            moved.push_back(Sets[old - 1]);
            map[old] = moved.size();
        };
        for (size_t i = 1; i <= Sets.size(); ++i) {
            if (i == source)
                continue;
            if (i == target && before) {
                put(source);
                put(i);
            } else if (i == target) {
                put(i);
                put(source);
            } else {
                put(i);
            }
        }
        for (int32_t& t : Posts) {
            const auto set = static_cast<size_t>(t) / 16 + 1;
            if (set < map.size())
                t = (static_cast<int32_t>(map[set]) - 1) * 16 + t % 16;
        }
        Sets = moved;
    }

    std::string Names() const {
        std::string text;
        for (const auto& set : Sets)
            for (size_t slot = 0; slot < 16; ++slot)
                text += (text.empty() ? "" : " ") +
                        (slot < set.size() ? set[slot] : std::string("-"));
        return text;
    }

    std::vector<std::vector<std::string>> Sets;
    std::vector<int32_t> Posts;
};

TileSet SetOf(const std::vector<std::string>& names) {
    TileSet set;
    set.Terrain = 9;
    for (const std::string& name : names) {
        TileRecord tile;
        tile.TileName = TileNameField(name);
        set.Tiles.push_back(tile);
        ++set.TileCount;
    }
    return set;
}

void Pass(Terrain& terrain, const TileRenumbering& numbers) {
    tests::RecordingProgress progress;
    RenumberLevelTwo(terrain, numbers, {}, progress);
}

TEST(SetsAndTiles, RandomEditsKeepNamesAndPostsAsTheSlowModelHasThem) {
    std::mt19937 random(20);
    const std::vector<int> counts{16, 3, 1, 9, 16, 2};
    std::vector<int32_t> numbers(257);
    for (int32_t& number : numbers)
        number = static_cast<int32_t>(random() % 140); // some above the catalogue
    Catalogue catalogue = CatalogueOf(counts);
    Terrain terrain = tests::TerrainOf(32, numbers);
    SlowModel slow(counts, tests::NumbersOfPosts(terrain));
    tests::RecordingProgress progress;
    for (int step = 0; step < 200; ++step) {
        const auto sets = static_cast<size_t>(catalogue.Bin.NumSets);
        const size_t set = random() % sets + 1;
        const size_t other = random() % sets + 1;
        const auto set32 = static_cast<int32_t>(set);
        TileRenumbering done;
        switch (random() % 4) {
        case 0: {
            std::vector<std::string> names;
            for (size_t i = 0; i < random() % 16 + 1; ++i)
                names.push_back("N" + std::to_string(step) + static_cast<char>('A' + i) +
                                ".PCX");
            const size_t place = set + random() % 2;
            done =
                InsertSet(catalogue, static_cast<int32_t>(place), SetOf(names), progress);
            slow.Insert(place, names);
            break;
        }
        case 1:
            if (sets < 3)
                continue;
            done = DeleteSet(catalogue, set32);
            slow.DeleteSet(set);
            break;
        case 2: {
            const size_t tiles = slow.Sets[set - 1].size();
            if (tiles < 2)
                continue;
            const size_t slot = random() % tiles;
            done = DeleteTile(catalogue, set32, static_cast<int32_t>(slot));
            slow.DeleteTile(set, slot);
            break;
        }
        default: {
            if (set == other)
                continue;
            const bool before = random() % 2 == 0;
            done =
                MoveSet(catalogue, set32, static_cast<int32_t>(other), before, progress);
            slow.Move(set, other, before);
            break;
        }
        }
        Pass(terrain, done);
        ASSERT_EQ(NamesBySets(catalogue.Bin), slow.Names()) << step;
        ASSERT_EQ(NamesByLookup(catalogue), slow.Names()) << step;
        ASSERT_EQ(tests::NumbersOfPosts(terrain), slow.Posts) << step;
        int32_t tiles = 0;
        for (const auto& names : slow.Sets)
            tiles += static_cast<int32_t>(names.size());
        ASSERT_EQ(catalogue.Bin.NumTiles, tiles);
        ASSERT_EQ(catalogue.Bin.NumSets, static_cast<int32_t>(slow.Sets.size()));
    }
}

TEST(SetsAndTiles, AnAppendKeepsTheLandscapeAsItWas) {
    Catalogue catalogue = CatalogueOf({2, 2});
    Terrain terrain = tests::TerrainOf(16, {0, 1, 16, 17});
    tests::RecordingProgress progress;
    Pass(terrain, InsertSet(catalogue, 1, SetOf({"NEW.PCX"}), progress));
    EXPECT_EQ(NamesByLookup(catalogue, 1), "NEW.PCX");
    const std::vector<std::string> seen{"1A.PCX", "1B.PCX", "2A.PCX", "2B.PCX"};
    for (int serial = 1; serial <= 256; ++serial) {
        const int32_t number = terrain.LxArr(serial).TileOffset;
        EXPECT_EQ(catalogue.Lookup.at(static_cast<size_t>(number)).Name,
                  seen[static_cast<size_t>(serial - 1) % 4]);
    }
    EXPECT_EQ(catalogue.Bin.Sets.at(1).Terrain, 9);
}

TEST(SetsAndTiles, AppendedBehindTheLastOnlyNumbersTheCatalogueNeverHadMove) {
    Catalogue catalogue = CatalogueOf({2, 2});
    tests::RecordingProgress progress;
    const TileRenumbering numbers = InsertSet(catalogue, 3, SetOf({"NEW.PCX"}), progress);
    for (const int32_t number : {0, 15, 16, 31})
        EXPECT_EQ(numbers.Of(number), number);
    EXPECT_EQ(numbers.Of(32), 48);
    EXPECT_EQ(numbers.Of(5000), 5016);
}

TEST(SetsAndTiles, ANumberThatWouldLeaveItsFieldStays) {
    const TileRenumbering numbers = TileRenumbering::SetInserted(0, 16);
    EXPECT_EQ(numbers.Of(2147483631), 2147483647);
    EXPECT_EQ(numbers.Of(2147483632), 2147483632);
    EXPECT_EQ(numbers.Of(2147483647), 2147483647);
}

TEST(SetsAndTiles, TheNewSetStandsBehindTheSelectedOneOrTakesItsNumber) {
    EXPECT_EQ(PlaceOfNewSet(3, true).Set, 4);
    EXPECT_EQ(PlaceOfNewSet(3, true).FirstNumber, 48);
    EXPECT_EQ(PlaceOfNewSet(3, false).Set, 3);
    EXPECT_EQ(PlaceOfNewSet(3, false).FirstNumber, 32);
    for (const bool after : {true, false}) {
        EXPECT_EQ(PlaceOfNewSet(0, after).Set, 1);
        EXPECT_EQ(PlaceOfNewSet(0, after).FirstNumber, 0);
    }
}

TEST(SetsAndTiles, UsesStandAtZeroAfterAnAppendOrAMoveAndAtMinusOneInEmptySlots) {
    Catalogue catalogue = CatalogueOf({2, 1});
    for (TileInfo& info : catalogue.Lookup)
        info.UseCount = 7;
    tests::RecordingProgress progress;
    InsertSet(catalogue, 2, SetOf({"NEW.PCX"}), progress);
    EXPECT_EQ(tests::Uses(catalogue, 3), "0:0 1:0 2:-1");
    for (TileInfo& info : catalogue.Lookup)
        info.UseCount = 7;
    MoveSet(catalogue, 1, 3, false, progress);
    EXPECT_EQ(tests::Uses(catalogue, 3), "0:0 1:-1 2:-1");
}

TEST(SetsAndTiles, DeletedEntriesLeaveTheOtherUsesAlone) {
    Catalogue catalogue = CatalogueOf({3, 3});
    for (size_t i = 0; i < 32; ++i)
        catalogue.Lookup[i].UseCount = static_cast<int32_t>(100 + i);
    DeleteTile(catalogue, 1, 1);
    // The empty slots' counts move down with the tiles', and the last slot is empty
    // again.
    EXPECT_EQ(tests::Uses(catalogue, 5), "0:100 1:102 2:103 3:104 4:105");
    EXPECT_EQ(catalogue.Lookup[15].UseCount, -1);
    EXPECT_EQ(catalogue.Lookup[16].UseCount, 116);
    DeleteSet(catalogue, 1);
    EXPECT_EQ(tests::Uses(catalogue, 3), "0:116 1:117 2:118");
    EXPECT_EQ(catalogue.Lookup.size(), 16U);
}

TEST(SetsAndTiles, DeletingTheLastTileClearsItsEntry) {
    Catalogue catalogue = CatalogueOf({3});
    catalogue.Lookup[0].UseCount = 5;
    DeleteTile(catalogue, 1, 2);
    EXPECT_EQ(NamesByLookup(catalogue, 4), "1A.PCX 1B.PCX - -");
    EXPECT_EQ(tests::Uses(catalogue, 3), "0:5 1:0 2:-1");
    EXPECT_EQ(catalogue.Bin.NumTiles, 2);
    EXPECT_EQ(catalogue.Bin.Sets[1].TileCount, 2);
}

TEST(SetsAndTiles, EmptyNumbersMoveLikeAnyOther) {
    const TileRenumbering deleted = TileRenumbering::SetDeleted(16, 48);
    EXPECT_EQ(deleted.Of(29), 0);
    EXPECT_EQ(deleted.Of(47), 31);
    EXPECT_EQ(deleted.Of(100), 84);
    const TileRenumbering tile = TileRenumbering::TileDeleted(17);
    EXPECT_EQ(tile.Of(16), 16);
    EXPECT_EQ(tile.Of(17), 0);
    EXPECT_EQ(tile.Of(31), 30);
    EXPECT_EQ(tile.Of(32), 32);
    const TileRenumbering moved = TileRenumbering::SetsMoved({0, 2, 1});
    EXPECT_EQ(moved.Of(13), 29);
    EXPECT_EQ(moved.Of(29), 13);
    EXPECT_EQ(moved.Of(32), 32);
}

TEST(SetsAndTiles, AMoveToWhereASetIsChangesNothing) {
    const std::vector<int> counts{1, 2, 3};
    tests::RecordingProgress progress;
    Terrain terrain = tests::TerrainOf(16, {0, 17, 34, 99});
    const auto before = tests::NumbersOfPosts(terrain);
    Catalogue catalogue = CatalogueOf(counts);
    const std::string names = NamesBySets(catalogue.Bin);
    EXPECT_FALSE(RenumberLevelTwo(terrain, MoveSet(catalogue, 2, 3, true, progress), {},
                                  progress));
    EXPECT_FALSE(RenumberLevelTwo(terrain, MoveSet(catalogue, 2, 1, false, progress), {},
                                  progress));
    EXPECT_EQ(NamesBySets(catalogue.Bin), names);
    EXPECT_EQ(tests::NumbersOfPosts(terrain), before);
}

TEST(SetsAndTiles, TheOnlySetCanGoAndAnotherCome) {
    Catalogue catalogue = CatalogueOf({2});
    DeleteSet(catalogue, 1);
    EXPECT_EQ(catalogue.Bin.NumSets, 0);
    EXPECT_EQ(catalogue.Bin.NumTiles, 0);
    EXPECT_TRUE(catalogue.Lookup.empty());
    tests::RecordingProgress progress;
    InsertSet(catalogue, 1, SetOf({"NEW.PCX"}), progress);
    EXPECT_EQ(NamesByLookup(catalogue, 2), "NEW.PCX -");
}

TEST(SetsAndTiles, ATypeIsWrittenToTheSetAndItsRealTiles) {
    Catalogue catalogue = CatalogueOf({2, 2});
    ChangeSetType(catalogue, 2, 7);
    EXPECT_EQ(catalogue.Bin.Sets[1].Terrain, 4);
    EXPECT_EQ(catalogue.Bin.Sets[2].Terrain, 7);
    EXPECT_EQ(catalogue.Lookup[15].Terrain, -1);
    EXPECT_EQ(catalogue.Lookup[16].Terrain, 7);
    EXPECT_EQ(catalogue.Lookup[17].Terrain, 7);
    EXPECT_EQ(catalogue.Lookup[18].Terrain, -1);
}

TEST(SetsAndTiles, WhatIsNotThereIsRefusedAndNothingChanges) {
    Catalogue catalogue = CatalogueOf({2, 1});
    const std::string names = NamesBySets(catalogue.Bin);
    tests::RecordingProgress progress;
    EXPECT_EQ(NumberOf([&] { DeleteSet(catalogue, 3); }), 9);
    EXPECT_EQ(NumberOf([&] { DeleteSet(catalogue, 0); }), 9);
    EXPECT_EQ(NumberOf([&] { DeleteTile(catalogue, 1, 2); }), 9);
    EXPECT_EQ(NumberOf([&] { DeleteTile(catalogue, 1, -1); }), 9);
    EXPECT_EQ(NumberOf([&] { DeleteTile(catalogue, 2, 0); }), 5); // its only one
    EXPECT_EQ(NumberOf([&] { MoveSet(catalogue, 1, 3, true, progress); }), 9);
    EXPECT_EQ(NumberOf([&] { ChangeSetType(catalogue, 3, 1); }), 9);
    EXPECT_EQ(NumberOf([&] { InsertSet(catalogue, 4, SetOf({"A"}), progress); }), 9);
    EXPECT_EQ(NumberOf([&] {
                  InsertSet(catalogue, 1, SetOf(std::vector<std::string>(17, "A")),
                            progress);
              }),
              5);
    EXPECT_EQ(NamesBySets(catalogue.Bin), names);
    EXPECT_EQ(catalogue.Bin.NumTiles, 3);
}

TEST(SetsAndTiles, ASetOfMoreThanSixteenTilesRunsIntoTheNextOnesNumbers) {
    Catalogue catalogue = CatalogueOf({18, 1});
    tests::RecordingProgress progress;
    RebuildTileLookup(catalogue, {}, progress);
    EXPECT_EQ(catalogue.Lookup[16].Name, "2A.PCX");
    EXPECT_EQ(catalogue.Lookup[17].Name, "1R.PCX");
    // One less: the seventeenth comes into the last slot.
    DeleteTile(catalogue, 1, 0);
    EXPECT_EQ(catalogue.Lookup[15].Name, "1Q.PCX");
    EXPECT_EQ(catalogue.Bin.Sets[1].TileCount, 17);
}

TEST(SetsAndTiles, TheBarRunsFromShareToShareAndEventsPassOncePerSet) {
    Catalogue catalogue = CatalogueOf({1, 1, 1});
    tests::RecordingProgress progress;
    RebuildTileLookup(catalogue, {50, 75}, progress);
    EXPECT_EQ(progress.Story(), "bar 58|events|bar 67|events|bar 75|events");
    progress.Forget();
    MoveSet(catalogue, 1, 3, true, progress);
    EXPECT_EQ(progress.Story(), "bar 0|bar 11|bar 22|bar 33|bar 44|events|bar 55|events|"
                                "bar 66|events");
    progress.Forget();
    InsertSet(catalogue, 1, TileSet(), progress);
    EXPECT_EQ(progress.Story(), "bar 25|bar 50|bar 56|events|bar 62|events|bar 69|events|"
                                "bar 75|events");
    progress.Forget();
    Terrain terrain = tests::TerrainOf(64, {0});
    RenumberLevelTwo(terrain, {}, {75, 100}, progress);
    EXPECT_EQ(progress.Story(), "bar 81|bar 88|bar 94|bar 100");
}

TEST(SetsAndTiles, ThePassFillsItsShareOfTheBarRoundedToTheNearestPercent) {
    Terrain terrain = tests::TerrainOf(128, {0});
    tests::RecordingProgress progress;
    RenumberLevelTwo(terrain, {}, {66, 100}, progress);
    EXPECT_EQ(progress.Story(),
              "bar 70|bar 74|bar 79|bar 83|bar 87|bar 92|bar 96|bar 100");
}

TEST(SetsAndTiles, AnEditTellsWhichTilesItTakesAway) {
    Catalogue catalogue = CatalogueOf({3, 3, 3});
    const auto taken = [](const TileRenumbering& numbers) {
        std::string text;
        for (int32_t number = -1; number < 60; ++number)
            text += numbers.TakesAway(number) ? " " + std::to_string(number) : "";
        return text;
    };
    EXPECT_EQ(taken(DeleteTile(catalogue, 2, 1)), " 17");
    EXPECT_EQ(taken(DeleteSet(catalogue, 1)), " 0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15");
    NoProgress quiet;
    EXPECT_EQ(taken(MoveSet(catalogue, 1, 2, false, quiet)), "");
    EXPECT_EQ(taken(InsertSet(catalogue, 1, TileSet(), quiet)), "");
}

TEST(SetsAndTiles, NamesAreCutAtTwentyCharactersAndPaddedWithBlanks) {
    EXPECT_EQ(TileNameField("H1234.PCX"), "H1234.PCX           ");
    EXPECT_EQ(TileNameField("HABCDEFGHIJKLMNOPQRST.PCX"), "HABCDEFGHIJKLMNOPQRS");
    EXPECT_EQ(TileNameField(std::string("H\0B.PCX", 7)), "H B.PCX             ");
}

TEST(SetsAndTiles, ThePassLeavesOtherFieldsAndPostsBeyondTheLastSegmentAlone) {
    Terrain terrain = tests::TerrainOf(33, {5});
    const auto posts = terrain.LxArr.Values();
    const std::vector<TerrainPost> before(posts.begin(), posts.end());
    tests::RecordingProgress progress;
    EXPECT_TRUE(
        RenumberLevelTwo(terrain, TileRenumbering::SetInserted(0, 16), {}, progress));
    for (int y = 0; y < 33; ++y)
        for (int x = 0; x < 33; ++x) {
            TerrainPost expected =
                before[static_cast<size_t>(y) * 33 + static_cast<size_t>(x)];
            if (x < 32 && y < 32)
                expected.TileOffset = 21;
            ASSERT_TRUE(posts[static_cast<size_t>(y) * 33 + static_cast<size_t>(x)] ==
                        expected);
        }
}

} // namespace
} // namespace vardenix
