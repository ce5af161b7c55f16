// Two hundred saves of a theater of 1024 posts a side, each killed at some moment. What
// the files hold is spelled out here, block by block, without the program's help.
#include "support/RunProgram.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <map>
#include <optional>
#include <random>

namespace vardenix::tests {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;

constexpr size_t Segments = 64; // a side
constexpr size_t Block = 2304;
#if defined(__SANITIZE_ADDRESS__)
constexpr int Kills = 40; // everything is several times slower there
#else
constexpr int Kills = 200;
#endif

// The blocks of all segments, row by row.
using Blocks = std::vector<std::string>;

class KilledSave : public testing::Test {
protected:
    void SetUp() override {
        folder_.Write("my theater/terrain/theater.map", std::string(1112, '\0'));
        folder_.Write("my theater/texture/Texture.bin",
                      CatalogueBytes({{1, {{"SEA.PCX"}}}}));
        folder_.Write("my theater/texture/texture/sea.dds", "x");
        old_ = OldBlocks();
        new_ = old_;
        for (size_t y = 200; y <= 800; ++y)
            for (size_t x = 100; x <= 900; ++x) {
                std::string& block = new_[y / 16 * Segments + x / 16];
                const size_t post = (y % 16 * 16 + x % 16) * 9;
                block.replace(post + 4, 2, Int16Bytes(1234));
                block[post + 7] = 77;
            }
    }
    // Every third segment is sea, so that the new file's blocks lie elsewhere than the
    // old one's, and one file of each makes no sense.
    static Blocks OldBlocks() {
        std::mt19937 random(5);
        Blocks blocks(Segments * Segments, std::string(Block, '\0'));
        for (size_t segment = 0; segment < blocks.size(); ++segment)
            if (segment % 3 != 0)
                for (size_t post = 0; post < 256; ++post)
                    blocks[segment].replace(
                        post * 9, 9,
                        PostBytes({static_cast<int32_t>(random() % 4000),
                                   static_cast<int16_t>(random() % 9000),
                                   static_cast<uint8_t>(random()),
                                   static_cast<uint8_t>(random()), 0}));
        return blocks;
    }
    void WriteOld() {
        std::string fileL = std::string(Block, '\0');
        std::string fileO;
        fileL.reserve(old_.size() * Block);
        for (size_t segment = 0; segment < old_.size(); ++segment) {
            const bool sea = segment % 3 == 0;
            fileO += Int32Bytes(sea ? 0 : static_cast<int>(fileL.size()));
            if (!sea)
                fileL += old_[segment];
        }
        folder_.Write("my theater/terrain/theater.L2", fileL);
        folder_.Write("my theater/terrain/theater.O2", fileO);
    }
    bool DiskHolds(const Blocks& blocks) {
        const std::string fileL = Slurp(Terrain("theater.L2"));
        const std::string fileO = Slurp(Terrain("theater.O2"));
        if (fileO.size() != blocks.size() * 4)
            return false;
        for (size_t segment = 0; segment < blocks.size(); ++segment) {
            size_t offset = 0;
            for (size_t i = 4; i-- > 0;)
                offset = offset << 8 | static_cast<uint8_t>(fileO[segment * 4 + i]);
            if (offset > fileL.size() ||
                fileL.compare(offset, Block, blocks[segment]) != 0)
                return false;
        }
        return true;
    }
    std::string Terrain(const std::string& name) const {
        return folder_.File("my theater/terrain/" + name);
    }
    std::vector<std::string> Command(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), VARDENIX_CLI);
        arguments.insert(arguments.end(), {"--theater", folder_.File("my theater")});
        return arguments;
    }
    // How long the save took when nobody killed it in time.
    std::optional<microseconds> SaveWithin(microseconds time) {
        const auto begin = Clock::now();
        const bool killed = RunAndKill(Command({"fill", "100", "200", "900", "800",
                                                "--elevation", "1234", "--x1", "77"}),
                                       time);
        if (killed)
            return std::nullopt;
        return std::chrono::duration_cast<microseconds>(Clock::now() - begin);
    }

    TestFolder folder_;
    Blocks old_;
    Blocks new_;
};

TEST_F(KilledSave, LeavesTheOldPostsOrTheNewOnesAtWhateverMoment) {
    WriteOld();
    ASSERT_TRUE(DiskHolds(old_));
    ASSERT_FALSE(DiskHolds(new_));
    const auto whole = SaveWithin(std::chrono::seconds(60));
    ASSERT_TRUE(whole.has_value());
    ASSERT_TRUE(DiskHolds(new_));

    std::mt19937 random(20);
    std::uniform_real_distribution<double> moment(0, 1.2);
    microseconds runTime = *whole;
    std::map<std::string, int> killedWhile;
    std::map<char, int> outcomes;
    for (int i = 0; i < Kills; ++i) {
        WriteOld();
        const double share = moment(random);
        const auto after =
            microseconds(std::llround(share * static_cast<double>(runTime.count())));
        const auto ended = SaveWithin(after);
        // The machine may be busier or idler than it was.
        if (ended)
            runTime = *ended;
        else if (share > 1)
            runTime += runTime / 10;
        const bool stagedL = fs::exists(Terrain("theater.L2x"));
        const bool stagedO = fs::exists(Terrain("theater.O2x"));
        ++killedWhile[ended             ? "ended"
                      : stagedL         ? "writing"
                      : stagedO         ? "replacing"
                      : DiskHolds(old_) ? "opening"
                                        : "ending"];

        ASSERT_EQ(RunProgram(Command({"get", "0", "0"})).ExitCode, 0);
        const char outcome = DiskHolds(old_) ? 'o' : DiskHolds(new_) ? 'n' : '?';
        ++outcomes[outcome];
        ASSERT_NE(outcome, '?') << "killed after " << after.count() << " of "
                                << runTime.count() << " microseconds";
        ASSERT_EQ(std::distance(fs::directory_iterator(Terrain("")), {}), 3);
    }
    for (const auto& [state, count] : killedWhile)
        RecordProperty("killed_" + state, count);
    EXPECT_GT(outcomes['o'], 0);
    EXPECT_GT(outcomes['n'], 0);
    EXPECT_GT(killedWhile["opening"], 0);
    EXPECT_GT(killedWhile["writing"], 0);
}

} // namespace
} // namespace vardenix::tests
