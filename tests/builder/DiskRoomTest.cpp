#include "builder/ElevationRebuild.h"
#include "builder/RebuildWorld.h"
#include "support/ScriptedDialogs.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

// What `run` asks for where there is no room, and what it makes where there is just so
// much. A byte less is refused.
void ExpectExactRoom(RebuildOptions options,
                     const std::function<RebuildReport(const RebuildOptions&)>& run) {
    uint64_t room = 0;
    options.FreeRoom = [&](const std::string&) { return FreeRoom{1, room}; };
    const auto needed = [&]() -> uint64_t {
        try {
            run(options);
        } catch (const RuntimeError& error) {
            return std::stoull(error.Detail().substr(error.Detail().find("need ") + 5));
        }
        return 0;
    };
    const uint64_t all = needed();
    room = all - 1;
    EXPECT_EQ(needed(), all);
    room = all;
    uint64_t made = 0;
    for (const RebuiltFile& file : run(options).Files)
        made += file.Bytes;
    EXPECT_EQ(made, all);
}

// Every block of a level is the same one, which has elevations, or has none.
void ShareABlock(RebuildWorld& world, int level, bool elevations) {
    std::string block;
    for (int i = 0; i < 256; ++i)
        block += PostBytes({9000, static_cast<int16_t>(elevations ? i : 0), 1, 2, 3});
    const std::string number = std::to_string(level);
    Spill(world.PathOf("theater.L" + number), block);
    Spill(world.PathOf("theater.O" + number),
          std::string(fs::file_size(world.PathOf("theater.O" + number)), '\0'));
}

void ExpectExactRoom(RebuildWorld& world) {
    ExpectExactRoom(WithFarTiles(8), [&](const RebuildOptions& options) {
        return world.Rebuild(options);
    });
}

TEST(DiskRoom, OfARebuildIsWhatItsFilesTake) {
    RebuildWorld world;
    world.OldLevels();
    ExpectExactRoom(world);
    ExpectExactRoom(world); // over what the first has made
    ShareABlock(world, 0, true);
    ShareABlock(world, 1, false);
    ExpectExactRoom(world);
    for (const char* name : {"theater.L0", "theater.O0", "theater.L1", "theater.O1"})
        fs::remove(world.PathOf(name));
    ExpectExactRoom(world);
    for (const char* name : {"theater.o0", "theater.o1", "theater.O4"})
        Spill(world.PathOf(name), Slurp(world.PathOf(name)) + "and more");
    ExpectExactRoom(world);
}

TEST(DiskRoom, OfALevelOfOneKindIsWhatItsFilesTake) {
    RebuildWorld sea(32);
    sea.OldLevels();
    ExpectExactRoom(sea);
    RebuildWorld land(32);
    for (MadePost& post : land.Level2.Posts)
        post.Tile = 1;
    land.TakeLevel2();
    land.OldLevels();
    ExpectExactRoom(land);
}

TEST(DiskRoom, OfAnElevationRebuildIsWhatItsFilesTake) {
    RebuildWorld world(64);
    world.OldLevels();
    // Heights in one corner, and at the last of the sixteen rows of a block.
    std::string heights(size_t{256} * 256 * 2, '\0');
    for (int y = 0; y < 30; ++y)
        heights[static_cast<size_t>(y * 256 + 7) * 2] = '\7';
    heights[(size_t{95} * 256 + 200) * 2] = '\7';
    const ElevationMaster master{ElevationKind::Elv,
                                 world.Folder.Write("master.elv", heights)};
    ScriptedDialogs dialogs;
    const auto run = [&](const RebuildOptions& options) {
        return RebuildElevations({world.Terrain, world.View, dialogs, world.Log}, master,
                                 Downsampling::Max, options);
    };
    ExpectExactRoom({}, run);
    world.Rebuild({}); // the tiles of blank blocks are the base now
    ExpectExactRoom({}, run);
    for (const char* name : {"theater.l0", "theater.o0", "theater.L0", "theater.O0"})
        fs::remove(world.PathOf(name));
    ExpectExactRoom({}, run);
}

} // namespace
} // namespace vardenix::tests
