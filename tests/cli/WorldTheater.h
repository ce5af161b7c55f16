#pragma once

#include "support/RunProgram.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

namespace vardenix::tests {

// A theater of 64 posts with a place to guess, whose user has a home of their own.
class WorldTheater : public testing::Test {
protected:
    static constexpr int Posts = 64;

    WorldTheater() {
        // As many numbers as posts draw from.
        const std::vector<MadeSet> sets(250,
                                        {4, std::vector<MadeTile>(16, {"TILE.PCX"})});
        folder_.Write("theater/texture/Texture.bin", CatalogueBytes(sets));
        std::string map(1112, '\0');
        const std::array place{8.5F, 47.F}; // longitude, latitude
        std::memcpy(map.data() + 1104, place.data(), sizeof place);
        const float feet = 820.2F; // posts of about 1000 metres
        std::memcpy(map.data(), &feet, sizeof feet);
        folder_.Write("theater/terrain/theater.map", map);
        const PairBytes pair = ScatteredPair(MadeLevel::Random(Posts, 7));
        folder_.Write("theater/terrain/theater.L2", pair.L);
        folder_.Write("theater/terrain/theater.O2", pair.O);
        before_ = Level();
    }
    ProgramResult Run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), VARDENIX_CLI);
        arguments.insert(arguments.end(), {"--theater", folder_.File("theater")});
        return RunProgram(arguments, {"XDG_DATA_HOME=" + folder_.File("data"),
                                      "HOME=" + folder_.File("data")});
    }
    MadeLevel OnDisk() {
        return ReadPair(folder_.File("theater/terrain/theater.L2"),
                        folder_.File("theater/terrain/theater.O2"));
    }
    std::vector<MadePost> Level() { return OnDisk().Posts; }
    // Metres in degrees, with a hole, hills of different size and fractions.
    std::string Map() {
        std::string path = folder_.File("map.asc");
        std::ofstream out(path);
        out << "ncols 300\nnrows 300\nxllcorner 8.2\nyllcorner 46.8\ncellsize 0.005\n"
               "NODATA_value -9999\n";
        for (int row = 0; row < 300; ++row)
            for (int column = 0; column < 300; ++column)
                out << (row > 180 && row < 200 && column > 100 && column < 140
                            ? -9999
                            : 500.25 + 300 * std::sin(row / 9.) + 2.5 * column)
                    << (column == 299 ? "\n" : " ");
        return path;
    }
    TestFolder folder_;
    std::vector<MadePost> before_;
};

} // namespace vardenix::tests
