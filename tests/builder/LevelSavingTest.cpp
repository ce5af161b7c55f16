#include "builder/LevelSaving.h"

#include "builder/RebuildWorld.h"
#include "builder/SlowRebuild.h"
#include "files/FileNames.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

std::string L(int level) { return "theater.L" + std::to_string(level); }
std::string O(int level) { return "theater.O" + std::to_string(level); }

void ExpectPair(const RebuildWorld& world, int level, const PairBytes& expected) {
    EXPECT_EQ(Slurp(world.PathOf(L(level))) == expected.L, true) << "L" << level;
    EXPECT_EQ(Slurp(world.PathOf(O(level))) == expected.O, true) << "O" << level;
}

TEST(SaveFineLevel, GivesAnExistingLevelTheTilesAndKeepsAllElse) {
    RebuildWorld world(64);
    world.OldLevel(0);
    world.OldLevel(1);
    world.Rebuild({});
    ExpectPair(world, 0, SlowFineLevel(world.Level2, 0, &world.Old[0]));
    ExpectPair(world, 1, SlowFineLevel(world.Level2, 1, &world.Old[1]));
    const MadeLevel made = ReadPair(world.PathOf(L(0)), world.PathOf(O(0)));
    EXPECT_EQ(made.Posts.at(70).Tile, world.Level2.Posts.at(17).Tile + 8192);
}

TEST(SaveFineLevel, MakesAMissingLevelOfWholePosts) {
    RebuildWorld world(64);
    world.Rebuild({});
    fs::rename(world.PathOf("theater.l0"), world.PathOf(L(0)));
    fs::rename(world.PathOf("theater.o0"), world.PathOf(O(0)));
    ExpectPair(world, 0, SlowFineLevel(world.Level2, 0, nullptr));
    MadeLevel made = ReadPair(world.PathOf(L(0)), world.PathOf(O(0)));
    MadePost expected = world.Level2.At(20, 5);
    expected.Tile += 8192;
    EXPECT_EQ(made.At(77, 17), expected);
    EXPECT_EQ(made.At(80, 20), expected);
}

TEST(SaveFineLevel, TheTileWithoutElevationOfTheLevelItselfIsBlank) {
    RebuildWorld world(16);
    world.Level2.At(3, 3).Elevation = 700; // of level 2, which does not count
    world.TakeLevel2();
    world.Old[1] = MadeLevel::Empty(32);
    world.Old[1].At(32, 32).Elevation = -1;
    world.Old[1].At(1, 1).Palette = 9;
    const PairBytes old = ScatteredPair(world.Old[1]);
    world.Folder.Write("terrain/" + L(1), old.L);
    world.Folder.Write("terrain/" + O(1), old.O);
    world.Rebuild({});
    // The first three blocks share one, the last has its elevation.
    EXPECT_EQ(Slurp(world.PathOf(O(1))),
              Int32Bytes(0) + Int32Bytes(0) + Int32Bytes(0) + Int32Bytes(2304));
    EXPECT_EQ(Slurp(world.PathOf(L(1))).size(), 2U * 2304);
    const MadeLevel made = ReadPair(world.PathOf(L(1)), world.PathOf(O(1)));
    EXPECT_EQ(made.Posts.at(0), (MadePost{4096, 0, 9, 0, 0}));
}

TEST(SaveFarLevel, NumbersFarTilesInTheOrderOfStorage) {
    RebuildWorld world;
    world.OldLevels();
    world.Rebuild(WithFarTiles(8));
    std::vector<SlowFartile> fartiles;
    for (const int level : {3, 4, 5})
        ExpectPair(world, level,
                   SlowFarLevel(world.Level2, level,
                                world.Old.at(static_cast<size_t>(level)), fartiles));
    ASSERT_EQ(world.Made.FartileCount, static_cast<int32_t>(fartiles.size()));
    ASSERT_EQ(world.Made.FartileList.UpperBound(), world.Made.FartileCount);
    for (int32_t index = 0; index < world.Made.FartileCount; ++index) {
        const FartileRecord record = world.Made.FartileList.At(index);
        const SlowFartile& expected = fartiles.at(static_cast<size_t>(index));
        ASSERT_EQ(record.Level, expected.Level) << index;
        ASSERT_EQ(std::vector<int>(record.Serials.begin(), record.Serials.end()),
                  expected.Serials)
            << index;
    }
}

TEST(RebuildTheater, AgreesWithTheSlowWayOnAllLevelsOf256Posts) {
    RebuildWorld world(256);
    world.LandAt(150, 201, 40, 30, 8);
    world.TakeLevel2();
    world.OldLevels();
    world.Rebuild(WithFarTiles(8));
    std::vector<SlowFartile> fartiles;
    for (const int level : {0, 1})
        ExpectPair(world, level,
                   SlowFineLevel(world.Level2, level,
                                 &world.Old.at(static_cast<size_t>(level))));
    for (const int level : {3, 4, 5})
        ExpectPair(world, level,
                   SlowFarLevel(world.Level2, level,
                                world.Old.at(static_cast<size_t>(level)), fartiles));
    EXPECT_EQ(world.Made.FartileCount, static_cast<int32_t>(fartiles.size()));
}

TEST(SaveFarLevel, EachLevelHasOneEmptyFarTileAndEveryOtherPostItsOwn) {
    RebuildWorld world;
    world.Level2 = MadeLevel::Empty(128);
    world.Level2.At(1, 1).Tile = 1;
    world.Level2.At(100, 100).Tile = 1;
    world.TakeLevel2();
    world.OldLevels();
    world.Rebuild(WithFarTiles(8));
    // Of each level the first post, the one empty, and the post at (100, 100).
    EXPECT_EQ(world.Made.FartileCount, 9);
    for (int level = 3; level <= 5; ++level) {
        const int first = (level - 3) * 3;
        MadeLevel made = ReadPair(world.PathOf(L(level)), world.PathOf(O(level)));
        const int at = 99 / (1 << (level - 2)) + 1;
        EXPECT_EQ(made.At(1, 1).Tile, first);
        EXPECT_EQ(made.At(2, 1).Tile, first + 1);
        EXPECT_EQ(made.At(at, at).Tile, first + 2);
    }
}

TEST(SaveFarLevel, BlankIsWhatLevel2SaysNotTheLevelItself) {
    RebuildWorld world;
    world.Level2 = MadeLevel::Empty(128);
    world.Level2.At(33, 1).Elevation = 5; // block (2, 1) of level 3
    world.TakeLevel2();
    world.OldLevels();
    world.Rebuild(WithFarTiles(8));
    const MadeLevel made = ReadPair(world.PathOf(L(3)), world.PathOf(O(3)));
    EXPECT_EQ(Slurp(world.PathOf(L(3))).size(), 2U * 2304);
    EXPECT_EQ(Slurp(world.PathOf(O(3))).substr(0, 12),
              Int32Bytes(0) + Int32Bytes(2304) + Int32Bytes(0));
    // The shared block is the first one with its own old elevations and all else.
    EXPECT_EQ(made.Posts.at(64 * 20).Elevation, world.Old[3].Posts.at(64 * 4).Elevation);
    EXPECT_EQ(made.Posts.at(64 * 20).X1, world.Old[3].Posts.at(64 * 4).X1);
}

TEST(RebuildTheater, AWhollyEmptyTheaterHasOneBlockALevel) {
    RebuildWorld world;
    world.Level2 = MadeLevel::Empty(128);
    world.TakeLevel2();
    for (const int level : {3, 4, 5})
        world.OldLevel(level);
    world.Rebuild(WithFarTiles(8));
    for (const int level : {0, 1, 3, 4, 5}) {
        const LevelPair pair = PairOfLevel(world.Folder.File("terrain/"), level);
        EXPECT_EQ(Slurp(RealPath(pair.L)).size(), 2304U) << level;
        const std::string fileO = Slurp(RealPath(pair.O));
        EXPECT_EQ(fileO, std::string(fileO.size(), '\0')) << level;
        const auto blocks = static_cast<size_t>(world.WidthOf(level) / 16);
        EXPECT_EQ(fileO.size(), blocks * blocks * 4) << level;
    }
    EXPECT_EQ(world.Made.FartileCount, 3);
}

TEST(RebuildTheater, AMissingFarLevelFailsAndStillDoesTheSecondTime) {
    for (const int missing : {3, 4, 5}) {
        RebuildWorld world;
        world.OldLevels();
        fs::remove(world.PathOf(L(missing)));
        const auto before = world.Files();
        for (int run = 0; run < 2; ++run) {
            EXPECT_EQ(world.ErrorOf(WithFarTiles(8)), 9);
            EXPECT_NE(world.Detail.find("theater.l" + std::to_string(missing)),
                      std::string::npos)
                << world.Detail;
            EXPECT_EQ(world.Files(), before);
        }
    }
}

TEST(RebuildTheater, AnLFileWithoutItsOFileIsError53AndNothingChanges) {
    for (const int level : {0, 1}) {
        RebuildWorld world(64);
        world.OldLevel(0);
        world.OldLevel(1);
        fs::remove(world.PathOf(O(level)));
        const auto before = world.Files();
        EXPECT_EQ(world.ErrorOf({}), 53);
        EXPECT_NE(world.Detail.find("theater.o" + std::to_string(level)),
                  std::string::npos);
        EXPECT_EQ(world.Files(), before);
    }
}

// Opened like a file, it would wait for ever for somebody to write into it.
TEST(RebuildTheater, APipeInPlaceOfAFileIsToldAndStays) {
    for (const auto& [name, error] : {std::pair{L(0), 75}, std::pair{O(1), 53}}) {
        RebuildWorld world(64);
        world.OldLevel(0);
        world.OldLevel(1);
        fs::remove(world.PathOf(name));
        ASSERT_EQ(::mkfifo(world.PathOf(name).c_str(), 0600), 0);
        EXPECT_EQ(world.ErrorOf({}), error) << world.Detail;
        EXPECT_TRUE(fs::is_fifo(world.PathOf(name)));
    }
}

TEST(RebuildTheater, AnOFileWithTooFewEntriesIsError62) {
    RebuildWorld world(64);
    world.OldLevel(0);
    world.OldLevel(1);
    Spill(world.PathOf(O(0)), std::string(16 * 16 * 4 - 1, '\0'));
    const auto before = world.Files();
    EXPECT_EQ(world.ErrorOf({}), 62);
    EXPECT_EQ(world.Files(), before);
}

TEST(RebuildTheater, KeepsTheNamesThatAreThereAndLeavesNoOther) {
    RebuildWorld world(64);
    world.OldLevel(0);
    world.OldLevel(1);
    fs::rename(world.PathOf(L(0)), world.PathOf("THEATER.l0"));
    fs::rename(world.PathOf(O(0)), world.PathOf("Theater.O0"));
    world.Rebuild({});
    std::set<std::string> names;
    for (const auto& [name, bytes] : world.Files())
        names.insert(name);
    EXPECT_EQ(names, (std::set<std::string>{"THEATER.l0", "Theater.O0", "theater.L1",
                                            "theater.O1", "theater.L2", "theater.O2",
                                            "Texture.bin"}));
    const PairBytes expected = SlowFineLevel(world.Level2, 0, &world.Old[0]);
    EXPECT_EQ(Slurp(world.PathOf("THEATER.l0")) == expected.L, true);
    EXPECT_EQ(Slurp(world.PathOf("Theater.O0")) == expected.O, true);
}

TEST(RebuildTheater, NewFilesHaveSmallLetters) {
    RebuildWorld world(16);
    world.Rebuild({});
    for (const char* name : {"theater.l0", "theater.o0", "theater.l1", "theater.o1"})
        EXPECT_TRUE(fs::exists(world.PathOf(name))) << name;
}

TEST(RebuildTheater, WhatStandsBehindTheEntriesOfAnOFileStays) {
    RebuildWorld world(16);
    world.OldLevel(0);
    Spill(world.PathOf(O(0)), Slurp(world.PathOf(O(0))) + "behind");
    world.Rebuild({});
    const std::string fileO = Slurp(world.PathOf(O(0)));
    EXPECT_EQ(fileO.size(), 4U * 4 * 4 + 6);
    EXPECT_EQ(fileO.substr(64), "behind");
}

TEST(RebuildTheater, PostsThatTheOldFileDoesNotHoldAreZero) {
    RebuildWorld world(16);
    world.OldLevel(1);
    std::string fileL = Slurp(world.PathOf(L(1)));
    const MadeLevel& old = world.Old[1];
    // A block that begins 2 posts and 3 bytes before the end; one behind the end; a
    // negative offset.
    std::string fileO = Slurp(world.PathOf(O(1)));
    fileO.replace(0, 4, Int32Bytes(static_cast<int>(fileL.size()) - 21));
    fileO.replace(4, 4, Int32Bytes(static_cast<int>(fileL.size()) + 5));
    fileO.replace(8, 4, Int32Bytes(-1));
    Spill(world.PathOf(O(1)), fileO);
    world.Rebuild({});
    const MadeLevel made = ReadPair(world.PathOf(L(1)), world.PathOf(O(1)));
    EXPECT_EQ(made.Posts.at(2), (MadePost{4096, 0, 0, 0, 0}));
    EXPECT_EQ(made.Posts.at(16), (MadePost{4096, 0, 0, 0, 0}));
    EXPECT_EQ(made.Posts.at(32 * 16), (MadePost{4096, 0, 0, 0, 0}));
    EXPECT_EQ(made.Posts.at(32 * 16 + 16).X2, old.Posts.at(32 * 16 + 16).X2);
}

TEST(RebuildTheater, ABlockBehindOneWithANegativeOffsetIsReadWhereItLies) {
    RebuildWorld world(16);
    world.OldLevel(1);
    const std::string fileL = Slurp(world.PathOf(L(1)));
    // As far apart as blocks that follow one another.
    Spill(world.PathOf(O(1)),
          Int32Bytes(0) + Int32Bytes(0) + Int32Bytes(-1) + Int32Bytes(2303));
    world.Rebuild({});
    const MadeLevel made = ReadPair(world.PathOf(L(1)), world.PathOf(O(1)));
    EXPECT_EQ(made.Posts.at(32 * 16), (MadePost{4096, 0, 0, 0, 0}));
    // Tile, elevation, palette: the byte behind them is the post's seventh.
    const MadePost& post = made.Posts.at(32 * 16 + 16);
    EXPECT_EQ(post.Palette, static_cast<uint8_t>(fileL[2303 + 6]));
}

TEST(RebuildTheater, FarLevelsWithoutAWholeBlockStayAsTheyAre) {
    RebuildWorld world(48); // level 3 has a block and a half a side, level 4 none
    world.Folder.Write("terrain/" + L(3), ScatteredPair(MadeLevel::Empty(16)).L);
    world.Folder.Write("terrain/" + O(3), ScatteredPair(MadeLevel::Empty(16)).O);
    world.Folder.Write("terrain/" + L(4), "as it was");
    world.Folder.Write("terrain/" + O(4), "so too");
    world.Rebuild(WithFarTiles(8));
    EXPECT_EQ(Slurp(world.PathOf(O(3))), Int32Bytes(0));
    EXPECT_EQ(Slurp(world.PathOf(L(4))), "as it was");
    EXPECT_FALSE(fs::exists(world.PathOf("theater.l5")));
    EXPECT_EQ(world.Made.FartileCount, 1);
}

TEST(RebuildTheater, TheListStaysWhenARunMakesNoFarTiles) {
    RebuildWorld world;
    world.OldLevels();
    world.Rebuild(WithFarTiles(8));
    const int32_t count = world.Made.FartileCount;
    ASSERT_GT(count, 3);
    world.Rebuild({});
    EXPECT_EQ(world.Made.FartileCount, 0);
    EXPECT_EQ(world.Made.FartileList.UpperBound(), count);
    world.Rebuild(WithFarTiles(8));
    EXPECT_EQ(world.Made.FartileCount, count);
    EXPECT_EQ(world.Made.FartileList.UpperBound(), count);
}

TEST(RebuildTheater, Level2IsNeverChanged) {
    RebuildWorld world;
    world.OldLevels();
    const auto before = world.Files();
    world.Rebuild(WithFarTiles(8));
    EXPECT_EQ(world.Files().at("theater.L2") == before.at("theater.L2"), true);
    EXPECT_EQ(world.Files().at("theater.O2") == before.at("theater.O2"), true);
    EXPECT_EQ(world.Terrain.LxArr(int64_t{2} * 128 + 17).TileOffset,
              world.Level2.At(17, 3).Tile);
}

TEST(RebuildTheater, ATileNumberThatCannotBeRaisedIsError6) {
    RebuildWorld world(16);
    world.Level2.At(1, 1).Tile = 0x7FFFFFFF - 8191;
    world.TakeLevel2();
    EXPECT_EQ(world.ErrorOf({}), 6);
    world.Level2.At(1, 1).Tile = 0x7FFFFFFF - 8192;
    world.TakeLevel2();
    EXPECT_EQ(world.ErrorOf({}), 0);
}

TEST(RebuildTheater, EveryLevelsBarBeginsAtNothingAndGoesRowByRow) {
    RebuildWorld world(64);
    world.OldLevel(0);
    world.OldLevel(1);
    world.Rebuild({});
    EXPECT_EQ(world.View.Told("max1"), "16|8");
    EXPECT_EQ(world.View.Told("val1"), "0|0");
    EXPECT_EQ(world.View.Count("both"), 24);
}

// Saving an L0 under a new name leaves such a pair.
TEST(SaveFineLevel, SaysThatDeletingAnEmptyPairHelps) {
    RebuildWorld world;
    world.OldLevels();
    Spill(world.PathOf("theater.L0"), "");
    Spill(world.PathOf("theater.O0"), "");
    const auto before = world.Files();
    EXPECT_EQ(world.ErrorOf({}), 62);
    EXPECT_NE(world.Detail.find("delete the two"), std::string::npos) << world.Detail;
    EXPECT_NE(world.Detail.find("theater.O0"), std::string::npos) << world.Detail;
    EXPECT_TRUE(world.Files() == before);
    std::filesystem::remove(world.PathOf("theater.L0"));
    std::filesystem::remove(world.PathOf("theater.O0"));
    EXPECT_EQ(world.ErrorOf({}), 0);
}

} // namespace
} // namespace vardenix::tests
