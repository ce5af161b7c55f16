#include "builder/FartileMaking.h"

#include "builder/FartileDrawing.h"
#include "builder/FartilePicture.h"
#include "builder/FartileShape.h"
#include "builder/RebuildWorld.h"
#include "builder/SlowRebuild.h"
#include "builder/SmallTiles.h"
#include "support/ErrorOf.h"
#include "support/PictureMaker.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <filesystem>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

std::vector<SlowFartile> SlowFartilesOf(const RebuildWorld& world) {
    std::vector<SlowFartile> fartiles;
    for (int level = 3; level <= 5; ++level)
        SlowFarLevel(world.Level2, level, world.Old.at(static_cast<size_t>(level)),
                     fartiles);
    return fartiles;
}

std::string SlowContainerOf(const RebuildWorld& world, int farSize, bool night) {
    return SlowContainer(world.Level2, SlowFartilesOf(world), farSize,
                         [&](int tile) { return world.PicturePathOf(tile, night); });
}

// Compares by bool: a difference of a megabyte says nothing.
void ExpectContainers(const RebuildWorld& world, int farSize) {
    for (const bool night : {false, true}) {
        const std::string made =
            Slurp(world.TexturePathOf(night ? "fartilesN.dds" : "fartiles.dds"));
        const std::string expected = SlowContainerOf(world, farSize, night);
        EXPECT_EQ(made.size(), expected.size()) << farSize;
        EXPECT_TRUE(made == expected) << farSize << (night ? " night" : " day");
    }
}

TEST(MakeFartiles, AgreesWithTheSlowWayOnAnyNumberOfThreads) {
    RebuildWorld world;
    world.OldLevels();
    for (const unsigned threads : {1U, 2U, 7U}) {
        world.Rebuild(WithFarTiles(32, threads));
        ExpectContainers(world, 32);
    }
}

// 5 is the smallest; at 12 the tiles of level 5 reach past the far tile, at 36 those of
// level 4 and 5 leave a rest; 30 and 18 are no multiples of 4; 40 has tiles of 5 pixels
// in a far tile of whole blocks.
TEST(MakeFartiles, AgreesWithTheSlowWayForSizesThatDoNotDivide) {
    RebuildWorld world;
    world.Level2 = MadeLevel::Empty(128);
    world.LandAt(19, 20, 4, 5, 3);
    world.TakeLevel2();
    world.OldLevels();
    for (const int farSize : {5, 8, 12, 18, 30, 36, 40}) {
        world.Rebuild(WithFarTiles(farSize));
        ExpectContainers(world, farSize);
    }
}

// Pictures as small as, and smaller than, what they are wanted at.
TEST(MakeFartiles, AgreesWithTheSlowWayForSmallPictures) {
    RebuildWorld world;
    world.Level2 = MadeLevel::Empty(128);
    world.LandAt(19, 20, 3, 3, 4);
    world.TakeLevel2();
    world.OldLevels();
    for (const int side : {16, 8, 4}) {
        world.MakePictures(side);
        world.Rebuild(WithFarTiles(32));
        ExpectContainers(world, 32);
    }
}

TEST(MakeFartiles, TheHeaderIsThatOfADdsFileWithoutItsSignature) {
    const auto header = FartileShape(32).Header();
    const auto number = [&](size_t at) {
        return header.at(at) | header.at(at + 1) << 8 | header.at(at + 2) << 16;
    };
    EXPECT_EQ(number(0), 124);
    EXPECT_EQ(number(4), 528391);
    EXPECT_EQ(number(8), 32);
    EXPECT_EQ(number(16), 512);
    EXPECT_EQ(header.at(80), 'D');
    EXPECT_EQ(number(104), 4096);
}

TEST(FartileShape, HasRoundedPixelsOfATile) {
    const auto pixels = [](int farSize) {
        const FartileShape shape(farSize);
        return std::to_string(shape.PixelsOfTile(3)) + " " +
               std::to_string(shape.PixelsOfTile(4)) + " " +
               std::to_string(shape.PixelsOfTile(5));
    };
    EXPECT_EQ(pixels(32), "16 8 4");
    EXPECT_EQ(pixels(5), "2 1 1"); // 2.5, 1.25 and 0.625
    EXPECT_EQ(pixels(12), "6 3 2");
    EXPECT_EQ(pixels(20), "10 5 2");
    EXPECT_EQ(pixels(28), "14 7 4");
}

TEST(FartileShape, RefusesSizesThatLeaveATileWithoutAPixel) {
    const auto make = [](int farSize) {
        return ErrorOf([farSize] { FartileShape shape(farSize); }).NumberValue();
    };
    EXPECT_EQ(make(0), 5);
    EXPECT_EQ(make(4), 5); // half a pixel at level 5
    EXPECT_EQ(make(5), 0);
    EXPECT_EQ(make(-32), 5);
    EXPECT_EQ(make(4096), 0);
    EXPECT_EQ(make(4097), 5);
}

TEST(RebuildTheater, ASizeThatCannotBeMadeChangesNothing) {
    RebuildWorld world;
    world.OldLevels();
    const auto before = world.Files();
    EXPECT_EQ(world.ErrorOf(WithFarTiles(4)), 5);
    EXPECT_EQ(world.Files(), before);
    // Without far tiles nobody asks for their size.
    RebuildOptions fine;
    fine.FarSize = 0;
    EXPECT_EQ(world.ErrorOf(fine), 0);
}

TEST(RebuildTheater, APictureThatIsMissingOrBrokenKeepsTheOldFiles) {
    for (const bool night : {false, true})
        for (const std::string& content : {std::string(), std::string("no picture")}) {
            RebuildWorld world;
            world.OldLevels();
            world.Rebuild(WithFarTiles(8));
            const std::string picture = world.PicturePathOf(5, night);
            fs::remove(picture);
            if (!content.empty())
                Spill(picture, content);
            world.Level2.At(100, 100).Tile = 5;
            world.TakeLevel2();
            const auto before = world.Files();
            EXPECT_EQ(world.ErrorOf(WithFarTiles(8)), 481);
            EXPECT_NE(world.Detail.find(night ? "HTILE5N.dds" : "HTILE5.dds"),
                      std::string::npos)
                << world.Detail;
            EXPECT_EQ(world.Files() == before, true);
        }
}

TEST(RebuildTheater, ATileThatTheCatalogueDoesNotHaveIsNamedByItsPost) {
    RebuildWorld world;
    world.OldLevels();
    world.Level2.At(101, 47).Tile = RebuildWorld::Tiles;
    world.TakeLevel2();
    const auto before = world.Files();
    EXPECT_EQ(world.ErrorOf(WithFarTiles(8)), 9);
    EXPECT_NE(world.Detail.find("X 101, Y 47"), std::string::npos) << world.Detail;
    EXPECT_EQ(world.Files() == before, true);
}

TEST(MakeFartiles, FindsPicturesWhateverTheCaseOfTheirNames) {
    RebuildWorld world;
    world.OldLevels();
    world.Rebuild(WithFarTiles(8));
    const std::string expected = Slurp(world.TexturePathOf("fartiles.dds"));
    fs::rename(world.PicturePathOf(3, false), world.TexturePathOf("texture/hTile3.DDS"));
    world.Rebuild(WithFarTiles(8));
    EXPECT_EQ(Slurp(world.TexturePathOf("fartiles.dds")) == expected, true);
}

// Makes `count` far tiles of one post each, all of the sea.
void MakeMany(RebuildWorld& world, int count, int farSize = 5) {
    FartileList list;
    for (int i = 0; i < count; ++i)
        list.Add(std::vector<int32_t>{1, 2, 3, 4}, 3);
    RebuildFiles files;
    MakeFartiles({world.Terrain, world.Catalogue, world.Folder.File("texture/"), files,
                  world.View, farSize, 2},
                 list);
    files.Transaction.Commit();
}

TEST(MakeFartiles, EachContainerHasExactlyTheFarTilesOfTheList) {
    RebuildWorld world(16);
    for (const int count : {0, 1, 1999, 2000, 2001, 4000}) {
        MakeMany(world, count);
        for (const char* name : {"fartiles.dds", "fartilesN.dds"})
            EXPECT_EQ(Slurp(world.TexturePathOf(name)).size(),
                      124 + static_cast<size_t>(count) * 12)
                << count;
    }
}

TEST(MakeFartiles, TheCounterMovesEveryHundredFarTiles) {
    RebuildWorld world(16);
    MakeMany(world, 250);
    EXPECT_EQ(world.View.Told("max1"), "249");
    EXPECT_EQ(world.View.Told("val1"), "0|0|100|200");
    EXPECT_EQ(world.View.Told("label2"), "FT: 249|FT: 149|FT: 49");
    EXPECT_EQ(world.View.Told("status"), "Compressing DDS images, please be patient...|"
                                         "Making the fartiles, please be patient...");
    EXPECT_EQ(world.View.Told("time"), "");
}

TEST(MakeFartiles, TheLastBatchOfTwoThousandSaysHowLongTheRestTakes) {
    RebuildWorld world(16);
    // Ten minutes a batch.
    int batches = 0;
    world.View.OnEvents = [&] {
        const int done = world.View.Count("status Making the fartiles, please be "
                                          "patient...");
        if (done > batches) {
            batches = done;
            world.View.Now += 600;
        }
    };
    MakeMany(world, 5000);
    // 3000 are left after the first batch, 1000 after the second.
    EXPECT_EQ(world.View.Told("time"), "About 15mins remaining.|About 05mins remaining.");
}

TEST(MakeFartiles, FewTilesAtATimeGiveTheSameBytes) {
    RebuildWorld world;
    world.OldLevels();
    // Pictures so large that a few fill the memory.
    const FartileShape shape(32);
    TileFiles files(world.Catalogue);
    SmallTiles few(files, shape, 1);
    EXPECT_EQ(few.TilesAtOnce(), 64U);
    EXPECT_GT(SmallTiles(files, shape).TilesAtOnce(), 100000U);
    const auto never = [] { return false; };
    EXPECT_TRUE(few.Require({1, 2}, never, 1));
    const auto blocks = few.Of(2).Of(DayOrNight::Night, 3).Blocks;
    EXPECT_EQ(blocks.size(), 128U);
    few.MakeRoomFor({3});
    EXPECT_TRUE(few.Require({2, 3}, never, 2));
    EXPECT_EQ(few.Of(2).Of(DayOrNight::Night, 3).Blocks, blocks);
}

// Of blocks that differ in one pixel each is the compressor's own.
TEST(KnownBlocks, TellsBlocksApartByEveryPixel) {
    KnownBlocks known;
    const auto expected = [](const std::array<uint8_t, 64>& pixels) {
        uint64_t block = 0;
        std::memcpy(&block, CompressDxt1(pixels, 4, 4).data(), sizeof block);
        return block;
    };
    std::array<uint8_t, 64> pixels{};
    for (size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = i % 4 == 3 ? 255 : static_cast<uint8_t>(i);
    EXPECT_EQ(known.BlockOf(pixels), expected(pixels));
    for (size_t pixel = 0; pixel < 16; ++pixel) {
        auto other = pixels;
        other[pixel * 4] = 250;
        EXPECT_EQ(known.BlockOf(other), expected(other)) << pixel;
        EXPECT_EQ(known.BlockOf(pixels), expected(pixels)) << pixel;
    }
}

TEST(ReadFartile, TakesTheOnlyOneOfAContainerAndNoneOfAnEmptyOne) {
    const TestFolder folder;
    const auto header = FartileShape(8).Header();
    const std::string head(header.begin(), header.end());
    const std::string path = folder.Write("fartiles.dds", head + std::string(32, '\0'));
    EXPECT_EQ(ReadFartile(path, 0).Width(), 8);
    for (const int64_t none : {-1, 1, 7})
        EXPECT_EQ(ErrorOf([&] { ReadFartile(path, none); }).NumberValue(), 9) << none;
    folder.Write("fartiles.dds", head);
    EXPECT_EQ(ErrorOf([&] { ReadFartile(path, 0); }).NumberValue(), 9);
}

TEST(TimeRemainingText, HasHoursOnlyWhereThereAreAny) {
    EXPECT_EQ(TimeRemainingText(0), "About 00mins remaining.");
    EXPECT_EQ(TimeRemainingText(59), "About 00mins remaining.");
    EXPECT_EQ(TimeRemainingText(600), "About 10mins remaining.");
    EXPECT_EQ(TimeRemainingText(3600), "About 1hour 00mins remaining.");
    EXPECT_EQ(TimeRemainingText(2 * 3600 + 5 * 60), "About 2hours 05mins remaining.");
}

} // namespace
} // namespace vardenix::tests
