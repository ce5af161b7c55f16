#include "cli/FaultyCommands.h"
#include "support/PictureMaker.h"

namespace vardenix::tests {
namespace {

class FaultyRebuild : public FaultyCommands {
protected:
    // The other levels, small pictures, and containers of before.
    void SetUp() override {
        FaultyCommands::SetUp();
        for (const int level : {0, 1, 3}) {
            const int width = level < 2 ? 32 << (2 - level) : 32 >> (level - 2);
            const PairBytes pair = ScatteredPair(MadeLevel::Random(width, 8));
            folder_.Write("my theater/terrain/theater.L" + std::to_string(level), pair.L);
            folder_.Write("my theater/terrain/theater.O" + std::to_string(level), pair.O);
        }
        for (const char* tile : {"sea", "seaN", "shore", "shoreN", "land", "landN"})
            folder_.Write("my theater/texture/texture/" + std::string(tile) + ".dds",
                          DdsHeader(8, 8, {"DXT1"}) + std::string(32, '\7'));
        for (const char* container : {"fartiles.dds", "fartilesN.dds"})
            folder_.Write("my theater/texture/" + std::string(container), "old");
        old_ = OnDiskNow();
    }
};

TEST_F(FaultyRebuild, OfTilesLosesNothing) {
    TryEveryCall({"rebuild", "--far", "--far-size", "8"}, {"get", "0", "0"}, 17);
}

TEST_F(FaultyRebuild, OfElevationsLosesNothing) {
    readsBack_ = true;
    TryEveryCall({"rebuild-elevation", Terrain("theater.elv"), "--method", "mean"},
                 {"get", "0", "0"}, 17);
}

} // namespace
} // namespace vardenix::tests
