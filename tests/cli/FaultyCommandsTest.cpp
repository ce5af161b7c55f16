#include "cli/FaultyCommands.h"

namespace vardenix::tests {
namespace {

TEST_F(FaultyCommands, SetLosesNothing) {
    TryEveryCall({"set", "3", "5", "--elevation", "77"}, {"get", "0", "0"});
}

TEST_F(FaultyCommands, FillLosesNothing) {
    TryEveryCall({"fill", "1", "2", "20", "30", "--tile", "1"}, {"get", "0", "0"});
}

TEST_F(FaultyCommands, SaveAsLosesNothing) {
    // A pair is there already, so that there is something to lose.
    const PairBytes pair = ScatteredPair(MadeLevel::Random(16, 4));
    folder_.Write("copy/theater.L2", pair.L);
    folder_.Write("copy/theater.O2", pair.O);
    old_ = OnDiskNow();
    const std::string copy = folder_.File("copy/theater.L2");
    const std::string theater = folder_.File("my theater/");
    TryEveryCall({"save-as", copy, "--theater", theater},
                 {"get", "0", "0", "--l2", copy, "--bin", theater + "texture/Texture.bin",
                  "--map", theater + "terrain/theater.map", "--dds",
                  theater + "texture/texture"});
}

TEST_F(FaultyCommands, ElevationSetLosesNothingOfAL0File) {
    const std::string file = Terrain("theater.L0");
    TryEveryCall({"elevation", "set", file, "40", "50", "77"},
                 {"elevation", "get", file, "0", "0"});
}

TEST_F(FaultyCommands, ElevationSetLosesNothingOfAnElvFile) {
    const std::string file = Terrain("theater.elv");
    TryEveryCall({"elevation", "set", file, "40", "50", "77"},
                 {"elevation", "get", file, "0", "0"});
}

TEST_F(FaultyCommands, CheckLosesNothingOfAReport) {
    done_ = 1; // two posts have a tile that is not in the catalogue
    level_.At(3, 3).Tile = 700;
    WriteLevel();
    old_ = OnDiskNow();
    TryEveryCall({"check", "--report", folder_.File("report.txt")}, {"get", "0", "0"});
}

TEST_F(FaultyCommands, PreviewLosesNothingOfAnOlderPicture) {
    folder_.Write("heights.bmp", "an older picture");
    old_ = OnDiskNow();
    TryEveryCall({"preview", folder_.File("heights.bmp")}, {"get", "0", "0"});
}

} // namespace
} // namespace vardenix::tests
