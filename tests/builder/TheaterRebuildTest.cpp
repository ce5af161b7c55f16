#include "builder/TheaterRebuild.h"

#include "builder/RebuildWorld.h"
#include "levels/LevelGeometry.h"
#include "support/JournalMaker.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

TEST(RebuildTheater, TellsItsStepsInOrder) {
    RebuildWorld world;
    world.OldLevels();
    world.Rebuild({});
    EXPECT_EQ(world.View.Told("status"),
              "Starting...|Saving L0 File...|Saving L1 File...|All done...");
    EXPECT_EQ(world.View.Told("max2"), "48");
    EXPECT_EQ(world.View.Told("max1"), "32|16");
    EXPECT_EQ(world.View.Count("both"), 48);
    EXPECT_EQ(world.View.Told("step"), "1/2|2/2");
    world.View.Lines.clear();
    world.Rebuild(WithFarTiles());
    EXPECT_EQ(world.View.Told("status"),
              "Starting...|Saving L0 File...|Saving L1 File...|"
              "Saving L3 File and computing fartiles...|"
              "Saving L4 File and computing fartiles...|"
              "Saving L5 File and computing fartiles...|"
              "Making the fartiles, please be patient...|"
              "Compressing DDS images, please be patient...|"
              "Making the fartiles, please be patient...|All done...");
    EXPECT_EQ(world.View.Told("max2"), "55"); // 32 + 16 + 4 + 2 + 1
    EXPECT_EQ(world.View.Count("both"), 55);
    EXPECT_EQ(world.View.Told("step"), "1/6|2/6|3/6|4/6|5/6|6/6");
}

// Far tiles would show a mixture of old and new pictures.
TEST(RebuildTheater, FinishesAnIntakeThatWasKilledBeforeItMakesFarTiles) {
    RebuildWorld world;
    world.OldLevels();
    const std::string picture = world.PicturePathOf(3, false);
    const std::string taken = Slurp(world.PicturePathOf(4, false));
    ASSERT_NE(Slurp(picture), taken);
    std::ofstream(picture + "x") << taken;
    JournalMaker journal;
    journal.Add(fs::path(picture).filename().string(), taken, picture);
    const fs::path told = fs::path(picture).parent_path() / "vardenix.journal";
    std::ofstream(told) << journal.Text();
    world.Rebuild({}); // looks at no picture
    EXPECT_TRUE(fs::exists(told));
    world.Rebuild(WithFarTiles());
    EXPECT_EQ(Slurp(picture), taken);
    EXPECT_FALSE(fs::exists(told));
}

TEST(StepsOfRebuild, AreRoundedHalfToEven) {
    EXPECT_EQ(StepsOfRebuild(1024, false), 384);
    EXPECT_EQ(StepsOfRebuild(1024, true), 440);
    EXPECT_EQ(StepsOfRebuild(4, false), 2);  // 1.5
    EXPECT_EQ(StepsOfRebuild(12, false), 4); // 4.5
    EXPECT_EQ(StepsOfRebuild(16, true), 7);  // 6.875
}

TEST(RowsOfLevel, AreRoundedHalfToEven) {
    EXPECT_EQ(RowsOfLevel(0, 1024), 256);
    EXPECT_EQ(RowsOfLevel(5, 1024), 8);
    EXPECT_EQ(RowsOfLevel(3, 48), 2); // 1.5
    EXPECT_EQ(RowsOfLevel(3, 16), 0); // 0.5
}

TEST(GeometryOf, KnowsEveryLevelOf1024Posts) {
    for (const auto& [level, width, base] :
         {std::tuple{0, 4096, 8192}, {1, 2048, 4096}, {3, 512, 0}, {5, 128, 0}}) {
        const LevelGeometry geometry = GeometryOf(level, 1024);
        EXPECT_EQ(geometry.Width, width);
        EXPECT_EQ(geometry.Blocks, width / 16);
        EXPECT_EQ(geometry.Base, base);
    }
}

// 15.5 is rounded to 16 posts, one block, whose last posts would lie beyond the 31.
TEST(GeometryOf, ABlockThatReachesPastLevel2IsError9) {
    try {
        GeometryOf(3, 31);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.NumberValue(), 9);
    }
    EXPECT_EQ(GeometryOf(3, 33).Blocks, 1);
}

TEST(RebuildBar, IsAsWideAsItsShare) {
    EXPECT_EQ((RebuildBar{50, 100}.Width()), 3187.5);
    EXPECT_EQ((RebuildBar{7, 7}.Width()), 6375);
    EXPECT_EQ((RebuildBar{0, 0}.Width()), 0);
}

TEST(RebuildTheater, TheUserCanStopItAnywhereAndNothingHasChanged) {
    RebuildWorld world;
    world.OldLevels();
    const auto before = world.Files();
    // Counted once, so that stops can be spread over the whole run.
    int events = 0;
    world.View.OnEvents = [&] { ++events; };
    const RebuildOptions options = WithFarTiles(8, 1);
    ASSERT_EQ(world.ErrorOf(options), 0);
    RebuildWorld stopped;
    stopped.OldLevels();
    ASSERT_GT(events, 5000);
    for (int at = 1; at < events; at += events / 23) {
        int seen = 0;
        stopped.View.Stop = false;
        stopped.View.OnEvents = [&] { stopped.View.Stop = ++seen >= at; };
        ASSERT_EQ(stopped.ErrorOf(options), 32755) << at;
        ASSERT_EQ(stopped.Files() == before, true) << at;
    }
}

TEST(RebuildTheater, AsksForTheRoomBeforeTheFirstByte) {
    RebuildWorld world;
    world.OldLevels();
    const auto before = world.Files();
    std::vector<std::string> asked;
    RebuildOptions options = WithFarTiles(32);
    uint64_t room = 0;
    options.FreeRoom = [&](const std::string& folder) {
        asked.push_back(fs::path(folder).parent_path().filename());
        return FreeRoom{1, room};
    };
    EXPECT_EQ(world.ErrorOf(options), 61);
    EXPECT_EQ(asked, (std::vector<std::string>{"texture", "terrain"}));
    EXPECT_EQ(world.Files() == before, true);
    // The number in the message is what it takes, and no byte less.
    const size_t at = world.Detail.find("need ");
    ASSERT_NE(at, std::string::npos) << world.Detail;
    const uint64_t needed = std::stoull(world.Detail.substr(at + 5));
    room = needed - 1;
    EXPECT_EQ(world.ErrorOf(options), 61);
    room = needed;
    ASSERT_EQ(world.ErrorOf(options), 0);
}

TEST(RequireRoom, CountsWhatLiesOnOneDiskTogether) {
    const auto error = [](uint64_t first, uint64_t second, uint64_t otherDevice) {
        try {
            RequireRoom({{"a", 10}, {"b", 20}}, [&](const std::string& folder) {
                return folder == "a" ? FreeRoom{1, first} : FreeRoom{otherDevice, second};
            });
        } catch (const RuntimeError& refused) {
            return refused.Detail();
        }
        return std::string();
    };
    EXPECT_EQ(error(30, 30, 1), "");
    EXPECT_EQ(error(29, 29, 1), "the new files need 30 bytes beside the old ones, and 29 "
                                "are free on the disk of a; nothing has changed");
    EXPECT_EQ(error(10, 20, 2), "");
    EXPECT_EQ(error(10, 19, 2), "the new files need 20 bytes beside the old ones, and 19 "
                                "are free on the disk of b; nothing has changed");
}

TEST(RebuildTheater, ReportsFilesSizesAndSeconds) {
    RebuildWorld world(16);
    world.View.OnEvents = [&] { ++world.View.Now; };
    const RebuildReport report = world.Rebuild({});
    // Four rows of level 0 and two of level 1.
    EXPECT_EQ(TextOfReport(report),
              world.PathOf("theater.l0") + ": 2304 bytes\n" + world.PathOf("theater.o0") +
                  ": 64 bytes\n" + world.PathOf("theater.l1") + ": 2304 bytes\n" +
                  world.PathOf("theater.o1") + ": 16 bytes\n6 seconds");
    EXPECT_EQ(TextByFolder(report),
              world.PathOf("") +
                  "\n    theater.l0: 2304 bytes\n    theater.o0: 64 bytes\n"
                  "    theater.l1: 2304 bytes\n    theater.o1: 16 "
                  "bytes\n6 seconds");
}

// What a run of OnlyChanged leaves alone.
int Unchanged(const RebuildReport& report) {
    int count = 0;
    for (const RebuiltFile& file : report.Files)
        count += file.Unchanged ? 1 : 0;
    return count;
}

TEST(OnlyChanged, LeavesFilesAloneThatWouldComeOutTheSame) {
    RebuildWorld world;
    world.OldLevels();
    RebuildOptions options = WithFarTiles(8);
    world.Rebuild(options);
    std::map<std::string, fs::file_time_type> times;
    for (const auto& [name, bytes] : world.Files())
        if (name.starts_with("theater"))
            times[name] = fs::last_write_time(world.PathOf(name));
    const auto before = world.Files();
    options.OnlyChanged = true;
    const RebuildReport report = world.Rebuild(options);
    EXPECT_EQ(report.Files.size(), 13U);
    EXPECT_EQ(Unchanged(report), 13);
    EXPECT_EQ(world.Files() == before, true);
    for (const auto& [name, time] : times)
        EXPECT_EQ(fs::last_write_time(world.PathOf(name)), time) << name;
}

TEST(OnlyChanged, GivesTheBytesOfAFullRun) {
    RebuildWorld full;
    RebuildWorld changed;
    for (RebuildWorld* world : {&full, &changed}) {
        world->OldLevels();
        world->Rebuild(WithFarTiles(8));
    }
    RebuildOptions options = WithFarTiles(8);
    // A tile of land, one of sea, an elevation; then back again; and other posts of the
    // files themselves.
    for (int edit = 0; edit < 4; ++edit) {
        for (RebuildWorld* world : {&full, &changed}) {
            if (edit == 0)
                world->Level2.At(20, 5).Tile = 7;
            if (edit == 1)
                world->Level2.At(100, 100).Tile = 3;
            if (edit == 2)
                world->Level2.At(70, 70).Elevation = 90;
            if (edit == 3) {
                world->Level2.At(100, 100).Tile = 0;
                Spill(world->PathOf("theater.L1"),
                      Slurp(world->PathOf("theater.L1")) + "more");
            }
            world->TakeLevel2();
        }
        options.OnlyChanged = false;
        full.Rebuild(options);
        options.OnlyChanged = true;
        const RebuildReport report = changed.Rebuild(options);
        EXPECT_EQ(full.PlayedFiles() == changed.PlayedFiles(), true) << edit;
        EXPECT_LT(Unchanged(report), 13) << edit;
    }
}

} // namespace
} // namespace vardenix::tests
