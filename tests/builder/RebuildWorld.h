#pragma once

#include "builder/RecordingView.h"
#include "builder/TheaterRebuild.h"
#include "catalogue/TextureBin.h"
#include "levels/Terrain.h"
#include "platform/DebugLog.h"
#include "support/FixedClock.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"

#include <array>
#include <map>
#include <string>

namespace vardenix::tests {

// A theater on the disk that can be rebuilt: level 2 in memory and in its files, the
// other levels as a test wants them, a catalogue of a few tiles with pictures of noise.
struct RebuildWorld {
    static constexpr int Tiles = 12;

    // Sea, but for land from (17, 3) on; see LandAt.
    explicit RebuildWorld(int width = 128);

    // Posts of land with tiles and elevations from the seed, some with tile 0.
    void LandAt(int left, int bottom, int wide, int high, unsigned seed);
    // Level 2 as the test has made it, in memory and on the disk.
    void TakeLevel2();
    // Random posts for a level, in files whose blocks lie scattered.
    const MadeLevel& OldLevel(int level);
    void OldLevels() {
        for (const int level : {0, 1, 3, 4, 5})
            OldLevel(level);
    }
    void MakePictures(int side);

    int WidthOf(int level) const;
    std::string PathOf(const std::string& name) const {
        return Folder.File("terrain/" + name);
    }
    std::string TexturePathOf(const std::string& name) const {
        return Folder.File("texture/" + name);
    }
    std::string PicturePathOf(int tile, bool night) const;
    // Every file of the theater with its bytes, by name.
    std::map<std::string, std::string> Files() const;
    // Those that the simulator reads: without the index of the far tiles, which tells
    // the time of the containers.
    std::map<std::string, std::string> PlayedFiles() const;

    RebuildReport Rebuild(const RebuildOptions& options) {
        return RebuildTheater({Terrain, Catalogue, View, Log}, options, Made);
    }
    // The number of the error that a rebuild ends in, 0 for none; Detail is its detail.
    int ErrorOf(const RebuildOptions& options);

    TestFolder Folder;
    MadeLevel Level2;
    std::array<MadeLevel, 6> Old;
    vardenix::Terrain Terrain;
    vardenix::Catalogue Catalogue;
    RecordingView View;
    FixedClock Clock;
    DebugLog Log{Clock};
    Fartiles Made;
    std::string Detail;
};

RebuildOptions WithFarTiles(int farSize = 32, unsigned threads = 2);

} // namespace vardenix::tests
