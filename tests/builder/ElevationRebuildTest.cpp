#include "builder/ElevationRebuild.h"

#include "builder/RebuildWorld.h"
#include "builder/SlowRebuild.h"
#include "support/PictureMaker.h"
#include "support/ScriptedDialogs.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

// A theater and a master of random heights, mostly sea.
struct ElevationWorld : RebuildWorld {
    explicit ElevationWorld(int width = 128) : RebuildWorld(width) {
        std::mt19937 random(21);
        const auto side = 4 * static_cast<size_t>(width);
        Heights.resize(side * side);
        for (size_t y = 40; y < 90 && y < side; ++y)
            for (size_t x = 30; x < 120 && x < side; ++x)
                Heights[y * side + x] =
                    static_cast<int16_t>(static_cast<int>(random() % 9000) - 500);
    }

    std::string ElvBytes() const {
        std::string bytes;
        for (const int16_t height : Heights)
            bytes += Int16Bytes(height);
        return bytes;
    }
    ElevationMaster ElvMaster() {
        return {ElevationKind::Elv, Folder.Write("master.ELV", ElvBytes())};
    }
    ElevationMaster L0Master() {
        MadeLevel level = MadeLevel::Random(WidthOf(0), 5);
        for (size_t i = 0; i < Heights.size(); ++i)
            level.Posts[i].Elevation = Heights[i];
        const PairBytes pair = ScatteredPair(level);
        Folder.Write("Master.o0", pair.O);
        return {ElevationKind::L0, Folder.Write("Master.l0", pair.L)};
    }
    RebuildReport Run(const ElevationMaster& master, Downsampling method,
                      const RebuildOptions& options = {}) {
        return RebuildElevations({Terrain, View, Dialogs, Log}, master, method, options);
    }
    int RunError(const ElevationMaster& master) {
        try {
            Run(master, Downsampling::Rms);
        } catch (const RuntimeError& error) {
            Detail = error.Detail();
            return error.NumberValue();
        }
        return 0;
    }
    // The grids of all levels, by the slow way.
    std::vector<std::vector<int16_t>> SlowGrids(int method) const {
        std::vector<std::vector<int16_t>> grids{Heights};
        for (int level = 1; level <= 5; ++level)
            grids.push_back(SlowHalved(grids.back(), WidthOf(level - 1), method));
        return grids;
    }

    std::vector<int16_t> Heights; // of level 0
    ScriptedDialogs Dialogs;
};

void ExpectPair(const RebuildWorld& world, int level, const PairBytes& expected) {
    const std::string number = std::to_string(level);
    EXPECT_TRUE(Slurp(world.PathOf("theater.L" + number)) == expected.L) << level;
    EXPECT_TRUE(Slurp(world.PathOf("theater.O" + number)) == expected.O) << level;
}

void ExpectAllLevels(const ElevationWorld& world, int method) {
    const auto grids = world.SlowGrids(method);
    const auto at = [](int level) { return static_cast<size_t>(level); };
    for (const int level : {0, 1})
        ExpectPair(world, level,
                   SlowLevelElevations(world.Level2, level, &world.Old[at(level)],
                                       grids[at(level)]));
    ExpectPair(world, 2, SlowLevelElevations(world.Level2, 2, &world.Level2, grids[2]));
    for (const int level : {3, 4, 5})
        ExpectPair(world, level,
                   SlowFarLevelElevations(world.Level2, level, world.Old[at(level)],
                                          grids[at(level)]));
}

TEST(RebuildElevations, AgreesWithTheSlowWayForEveryMethod) {
    for (const int method : {1, 2, 3}) {
        ElevationWorld world;
        world.OldLevels();
        world.Run(method == 2 ? world.L0Master() : world.ElvMaster(),
                  static_cast<Downsampling>(method));
        ExpectAllLevels(world, method);
    }
}

TEST(RebuildElevations, AMissingFineLevelIsMadeOfLevel2) {
    ElevationWorld world;
    for (const int level : {3, 4, 5})
        world.OldLevel(level);
    world.Run(world.ElvMaster(), Downsampling::Max);
    const auto grids = world.SlowGrids(3);
    for (const int level : {0, 1}) {
        const std::string number = std::to_string(level);
        fs::rename(world.PathOf("theater.l" + number),
                   world.PathOf("theater.L" + number));
        fs::rename(world.PathOf("theater.o" + number),
                   world.PathOf("theater.O" + number));
        ExpectPair(world, level,
                   SlowLevelElevations(world.Level2, level, nullptr,
                                       grids[static_cast<size_t>(level)]));
    }
}

TEST(RebuildElevations, Level2SharesNoBlockAndIsReadBack) {
    ElevationWorld world;
    world.OldLevels();
    world.Run(world.ElvMaster(), Downsampling::SimpleMean);
    EXPECT_EQ(Slurp(world.PathOf("theater.L2")).size(), 8U * 8 * 2304);
    const auto grids = world.SlowGrids(2);
    for (size_t i = 0; i < grids[2].size(); ++i)
        ASSERT_EQ(world.Terrain.LxArr.Values()[i].Elevation, grids[2][i]) << i;
    EXPECT_EQ(world.Terrain.LxArr(int64_t{2} * 128 + 17).TileOffset,
              world.Level2.At(17, 3).Tile);
}

// Sharing goes by the level 2 posts as they were, so the heights of the master reach the
// first of the shared blocks alone.
TEST(RebuildElevations, ASharedFarBlockHasTheHeightsOfTheFirst) {
    ElevationWorld world;
    world.Level2 = MadeLevel::Empty(128);
    world.TakeLevel2();
    world.OldLevels();
    world.Heights.assign(world.Heights.size(), 100);
    world.Heights[0] = 400; // under the first post of every level
    world.Run(world.ElvMaster(), Downsampling::Max);
    EXPECT_EQ(Slurp(world.PathOf("theater.L3")).size(), 2304U);
    const MadeLevel made =
        ReadPair(world.PathOf("theater.L3"), world.PathOf("theater.O3"));
    EXPECT_EQ(made.Posts.at(0).Elevation, 400);
    EXPECT_EQ(made.Posts.at(16).Elevation, 400); // of the second block
    EXPECT_EQ(made.Posts.at(17).Elevation, 100);
    EXPECT_EQ(made.Posts.at(5).Tile, world.Old[3].Posts.at(5).Tile);
}

TEST(RebuildElevations, AMissingFarLevelFailsWithAllOldFilesThere) {
    for (const int missing : {3, 4, 5}) {
        ElevationWorld world;
        world.OldLevels();
        fs::remove(world.PathOf("theater.L" + std::to_string(missing)));
        const ElevationMaster master = world.ElvMaster();
        const auto before = world.Files();
        for (int run = 0; run < 2; ++run)
            EXPECT_EQ(world.RunError(master), 9);
        EXPECT_EQ(world.Files() == before, true);
        EXPECT_EQ(world.Terrain.LxArr(int64_t{2} * 128 + 17).Elevation,
                  world.Level2.At(17, 3).Elevation);
    }
}

TEST(RebuildElevations, TellsItsStepsInOrder) {
    ElevationWorld world;
    world.OldLevels();
    world.Run(world.L0Master(), Downsampling::Rms);
    EXPECT_EQ(world.View.Told("status"),
              "Starting...|Reading Elevation data...|Saving L0 File...|Saving L1 "
              "File...|Saving L2 File...|Saving L3 File...|Saving L4 File...|Saving L5 "
              "File...|Reloading Map...|All done...");
    // 32 + 32 + 16 + 8 + 4 + 2 + 1 + 8
    EXPECT_EQ(world.View.Told("max2"), "103");
    EXPECT_EQ(world.View.Count("both"), 103);
    EXPECT_EQ(world.View.Told("max1"), "32|32|16|8|4|2|1|8");
    EXPECT_EQ(world.View.Told("step"), "1/8|2/8|3/8|4/8|5/8|6/8|7/8|8/8");
}

TEST(RebuildElevations, LetsEventsThroughOnEveryTenthRowOfTheMaster) {
    ElevationWorld world;
    world.OldLevels();
    bool reading = false;
    std::vector<int> rows; // read at each
    world.View.OnStatus = [&](const std::string& text) {
        reading = text == "Reading Elevation data...";
    };
    world.View.OnEvents = [&] {
        if (reading)
            rows.push_back(world.View.Count("both"));
    };
    world.Run(world.L0Master(), Downsampling::Rms);
    EXPECT_EQ(rows, (std::vector{10, 20, 30})); // of 32
}

TEST(RebuildElevations, AnElvFileCountsAsOneStep) {
    ElevationWorld world;
    world.OldLevels();
    world.Run(world.ElvMaster(), Downsampling::Rms);
    EXPECT_EQ(world.View.Told("max2"), "72");
    EXPECT_EQ(world.View.Count("both"), 72);
    EXPECT_EQ(StepsOfElevationRebuild(48, true), 28); // 27.625
    EXPECT_EQ(StepsOfElevationRebuild(1024, false), 824);
}

TEST(RebuildElevations, AMasterThatEndsEarlyIsToldAndAskedAbout) {
    ElevationWorld world;
    world.OldLevels();
    ElevationMaster master = world.ElvMaster();
    std::string bytes = world.ElvBytes();
    bytes.resize(bytes.size() - 4);
    Spill(master.Path, bytes);
    const std::string error = "ERROR number 62\nInput past end of file\n" + master.Path +
                              ", offset 524284: expected 4 bytes more, found the end";
    const std::string question =
        "The elevation file could not be read to its end. Every height that was not read "
        "would become 0 in all Lx files. Do you want to go on all the same?";
    const auto before = world.Files();
    world.Dialogs.ExpectBox("Error...", error, BoxAnswer::Ok);
    world.Dialogs.ExpectBox("Error...", question, BoxAnswer::No);
    EXPECT_EQ(world.RunError(master), 32755);
    EXPECT_EQ(world.Files() == before, true);
    world.Dialogs.ExpectBox("Error...", error, BoxAnswer::Ok);
    world.Dialogs.ExpectBox("Error...", question, BoxAnswer::Yes);
    EXPECT_EQ(world.RunError(master), 0);
    ExpectAllLevels(world, 1);
}

TEST(RebuildElevations, TheMasterMayBeTheLevelItself) {
    ElevationWorld world;
    world.OldLevels();
    MadeLevel own = world.Old[0];
    for (size_t i = 0; i < own.Posts.size(); ++i)
        world.Heights[i] = own.Posts[i].Elevation;
    world.Run({ElevationKind::L0, world.PathOf("theater.L0")}, Downsampling::Max);
    ExpectAllLevels(world, 3);
}

TEST(RebuildElevations, TheUserCanStopItAtAnyRow) {
    for (const int row : {3, 40, 60, 75, 90, 94}) {
        ElevationWorld world;
        world.OldLevels();
        const ElevationMaster master = world.L0Master();
        const auto before = world.Files();
        world.View.OnEvents = [&] { world.View.Stop = world.View.Count("both") >= row; };
        EXPECT_EQ(world.RunError(master), 32755) << row;
        EXPECT_EQ(world.Files() == before, true) << row;
    }
}

// cmdBrowse.
struct BrowseWorld : ElevationWorld {
    BrowseWorld() : ElevationWorld(16) {}
    ElevationMaster Browse(const std::string& path, int filterIndex) {
        Dialogs.ExpectOpen("", path, filterIndex);
        return BrowseElevationFile(16, Folder.Path(), Dialogs);
    }
    bool FitsElv(const std::string& bytes) const {
        return FitsTheater({ElevationKind::Elv, Folder.Write("any.elv", bytes)}, 16);
    }
};

// It is all done by then, and that is said.
TEST(RebuildElevations, Level2ThatCannotBeReadBackIsTold) {
    ElevationWorld world;
    world.OldLevels();
    world.View.OnStatus = [&](const std::string& status) {
        if (status == "Reloading Map...")
            fs::resize_file(world.PathOf("theater.O2"), 3);
    };
    const ElevationMaster master = world.ElvMaster();
    ScriptedDialogs dialogs;
    const RuntimeError error = ErrorOf([&] {
        RebuildElevations({world.Terrain, world.View, dialogs, world.Log}, master,
                          Downsampling::Max, {});
    });
    EXPECT_NE(error.Detail().find("all files were rebuilt, but level 2 could not"),
              std::string::npos)
        << error.Detail();
}

TEST(BrowseElevationFile, TakesAFileOfTheTheatersSize) {
    BrowseWorld world;
    const ElevationMaster elv = world.Browse(world.ElvMaster().Path, 2);
    EXPECT_EQ(elv.ElevationFileType, ElevationKind::Elv);
    EXPECT_TRUE(elv.ElevationFile().ends_with("/MASTER.ELV"));
    EXPECT_EQ(world.Dialogs.LastFilter(), "L0 Files (*.l0)|*.l0|ELV files (*.elv)|*.elv");
    const ElevationMaster l0 = world.Browse(world.L0Master().Path, 1);
    EXPECT_EQ(l0.ElevationFileType, ElevationKind::L0);
}

TEST(BrowseElevationFile, JudgesAnElvFileByItsRoundedWidthAlone) {
    BrowseWorld world;
    // 64 heights a side; 4032 have a root of 63.498, 4033 one of 63.506.
    EXPECT_FALSE(world.FitsElv(std::string(4032 * 2, '\0')) ||
                 world.FitsElv(std::string()));
    EXPECT_TRUE(world.FitsElv(std::string(4033 * 2, '\0')));
}

TEST(BrowseElevationFile, JudgesAnL0FileByItsO0FileAlone) {
    BrowseWorld world;
    const ElevationMaster master = world.L0Master();
    Spill(master.Path, "");
    EXPECT_TRUE(FitsTheater(master, 16));
    Spill(world.Folder.File("Master.o0"), std::string(15 * 4, '\0'));
    EXPECT_FALSE(FitsTheater(master, 16));
}

TEST(BrowseElevationFile, TellsWhatIsWrong) {
    const std::string size =
        "The size of L0 file doesn't appear to be valid for this theater";
    BrowseWorld world;
    world.Dialogs.ExpectOpen("", world.Folder.Write("small.elv", "1234"), 2);
    world.Dialogs.ExpectBox("Error!", size, BoxAnswer::Ok);
    EXPECT_FALSE(BrowseElevationFile(16, {}, world.Dialogs).Chosen());
    EXPECT_EQ(world.Dialogs.LastIcon(), BoxIcon::Critical);

    world.Dialogs.ExpectOpen("", world.Folder.Write("alone.l0", "1234"), 1);
    world.Dialogs.ExpectBox("Error...", ".O0 File not found", BoxAnswer::Ok);
    EXPECT_FALSE(BrowseElevationFile(16, {}, world.Dialogs).Chosen());

    world.Dialogs.ExpectOpen("", world.Folder.Write("other.txt", "1234"), 3);
    world.Dialogs.ExpectBox("Error!", "Not a valid extension.", BoxAnswer::Ok);
    EXPECT_FALSE(BrowseElevationFile(16, {}, world.Dialogs).Chosen());

    const std::string gone = world.Folder.File("gone.elv");
    world.Dialogs.ExpectOpen("", gone, 2);
    world.Dialogs.ExpectBox("Error...",
                            "ERROR number 53\nFile not found\nmeasuring " + gone +
                                ": No such file or directory",
                            BoxAnswer::Ok);
    EXPECT_FALSE(BrowseElevationFile(16, {}, world.Dialogs).Chosen());

    world.Dialogs.ExpectCancel();
    EXPECT_FALSE(BrowseElevationFile(16, {}, world.Dialogs).Chosen());
}

} // namespace
} // namespace vardenix::tests
