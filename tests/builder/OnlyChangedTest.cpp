// Far tiles that are copied from the containers of an earlier run: whatever happened in
// between, the files are those of a full run.
#include "builder/FartileIndex.h"
#include "builder/RebuildWorld.h"
#include "files/StagedFile.h"
#include "levels/RebuiltFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

constexpr int FarSize = 8;

RebuildOptions OnlyChanged(int farSize = FarSize) {
    RebuildOptions options = WithFarTiles(farSize);
    options.OnlyChanged = true;
    return options;
}

// Two theaters with the same files, both rebuilt. What a test does to both, one then
// rebuilds whole and the other what has changed.
struct TwoWorlds {
    TwoWorlds() {
        Both([](RebuildWorld& world) {
            world.OldLevels();
            world.Rebuild(WithFarTiles(FarSize));
        });
    }

    template <typename Edit>
    void Both(Edit edit) {
        edit(Full);
        edit(Changed);
        whole_.clear();
    }

    // What was copied and made, once the files were seen to be the same.
    FartileCounts Compare(int farSize = FarSize) {
        if (whole_.empty() || farSize != farSize_) {
            Full.Rebuild(WithFarTiles(farSize));
            whole_ = Full.PlayedFiles();
            farSize_ = farSize;
        }
        const FartileCounts counts = Changed.Rebuild(OnlyChanged(farSize)).Fartiles;
        EXPECT_TRUE(whole_ == Changed.PlayedFiles());
        EXPECT_EQ(counts.Made + counts.Copied, Changed.Made.FartileCount);
        const auto index = ReadFartileIndex(Changed.TexturePathOf("fartiles.index"));
        const auto expected = ReadFartileIndex(Full.TexturePathOf("fartiles.index"));
        EXPECT_TRUE(index && expected && index->Keys == expected->Keys);
        return counts;
    }

    RebuildWorld Full;
    RebuildWorld Changed;

private:
    std::map<std::string, std::string> whole_; // of Full, as it is now
    int farSize_ = 0;
};

// Changes a byte without changing size or time, as a careless tool may.
void FlipByte(const std::string& path, size_t at, bool keepTime) {
    const auto time = fs::last_write_time(path);
    std::string bytes = Slurp(path);
    bytes.at(at) = static_cast<char>(bytes.at(at) ^ 0x55);
    std::ofstream(path, std::ios::binary | std::ios::in)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    fs::last_write_time(path, keepTime ? time : time + std::chrono::seconds(1));
}

TEST(OnlyChangedFartiles, AreAllCopiedWhenNothingHasChanged) {
    TwoWorlds worlds;
    const FartileCounts counts = worlds.Compare();
    EXPECT_EQ(counts.Made, 0);
    EXPECT_GT(counts.Copied, 50);
}

TEST(OnlyChangedFartiles, MakeOneOfEachLevelForARepaintedPost) {
    TwoWorlds worlds;
    worlds.Both([](RebuildWorld& world) {
        auto& tile = world.Level2.At(20, 5).Tile;
        tile = tile == 7 ? 8 : 7;
        world.TakeLevel2();
    });
    EXPECT_EQ(worlds.Compare().Made, 3);
}

// Land in the sea gives numbers to new far tiles in the middle of the old ones.
TEST(OnlyChangedFartiles, AreCopiedToOtherNumbers) {
    TwoWorlds worlds;
    worlds.Both([](RebuildWorld& world) {
        world.Level2.At(2, 1).Tile = 7;
        world.TakeLevel2();
    });
    EXPECT_EQ(worlds.Compare().Made, 3);
    worlds.Both([](RebuildWorld& world) {
        world.Level2.At(2, 1).Tile = 0;
        world.TakeLevel2();
    });
    EXPECT_EQ(worlds.Compare().Made, 0);
}

// A tile by another number is the same tile as long as its pictures are the same.
TEST(OnlyChangedFartiles, AreKnownByPicturesNotByNumbers) {
    TwoWorlds worlds;
    worlds.Both([](RebuildWorld& world) {
        std::swap(world.Catalogue.Lookup[3], world.Catalogue.Lookup[9]);
        for (MadePost& post : world.Level2.Posts)
            if (post.Tile == 3 || post.Tile == 9)
                post.Tile = 12 - post.Tile;
        world.TakeLevel2();
    });
    EXPECT_EQ(worlds.Compare().Made, 0);
}

TEST(OnlyChangedFartiles, SeeAPictureOfTheSameSizeAndTime) {
    for (const bool night : {false, true}) {
        TwoWorlds worlds;
        worlds.Both([&](RebuildWorld& world) {
            FlipByte(world.PicturePathOf(7, night), 200, true);
        });
        const FartileCounts counts = worlds.Compare();
        EXPECT_GT(counts.Made, 3);
        EXPECT_GT(counts.Copied, 3);
    }
}

TEST(OnlyChangedFartiles, OfAnotherSizeAreAllMade) {
    TwoWorlds worlds;
    EXPECT_EQ(worlds.Compare(12).Copied, 0);
    EXPECT_EQ(worlds.Compare(12).Made, 0);
}

TEST(OnlyChangedFartiles, AreMadeWhenAContainerWasTouched) {
    TwoWorlds worlds;
    const auto touched = [&](auto edit) {
        edit(worlds.Changed.TexturePathOf("fartiles.dds"));
        EXPECT_EQ(worlds.Compare().Copied, 0);
        edit(worlds.Changed.TexturePathOf("fartilesN.dds"));
        EXPECT_EQ(worlds.Compare().Copied, 0);
        EXPECT_EQ(worlds.Compare().Made, 0);
    };
    touched([](const std::string& path) { FlipByte(path, 300, false); });
    touched([](const std::string& path) { FlipByte(path, 300, true); });
    touched([](const std::string& path) { FlipByte(path, 60, true); });
    touched([](const std::string& path) {
        fs::last_write_time(path,
                            fs::last_write_time(path) + std::chrono::nanoseconds(1));
    });
    touched([](const std::string& path) { fs::remove(path); });
    touched([](const std::string& path) { Spill(path, Slurp(path) + "12345678"); });
    touched([](const std::string& path) { fs::resize_file(path, 100); });
}

TEST(FartileIndex, IsNeverTrustedUnlessItIsWhole) {
    TwoWorlds worlds;
    const std::string path = worlds.Changed.TexturePathOf("fartiles.index");
    const auto copied = [&](auto edit) {
        std::string bytes = Slurp(path);
        edit(bytes);
        Spill(path, bytes);
        return worlds.Compare().Copied;
    };
    EXPECT_GT(copied([](std::string&) {}), 0);
    EXPECT_EQ(copied([](std::string& bytes) { bytes.clear(); }), 0);
    EXPECT_EQ(copied([](std::string& bytes) { bytes = "VXFTIDX1"; }), 0);
    EXPECT_EQ(copied([](std::string& bytes) { bytes.pop_back(); }), 0);
    EXPECT_EQ(copied([](std::string& bytes) { bytes.resize(bytes.size() - 16); }), 0);
    EXPECT_EQ(copied([](std::string& bytes) { bytes.append(16, '\0'); }), 0);
    EXPECT_EQ(copied([](std::string& bytes) { bytes[100] ^= 1; }), 0);
    EXPECT_EQ(copied([](std::string& bytes) { bytes[7] = '2'; }), 0);
}

TEST(FartileIndex, OfHugeLengthOrOfAnotherTheaterIsNotTrusted) {
    TwoWorlds worlds;
    const std::string path = worlds.Changed.TexturePathOf("fartiles.index");
    fs::resize_file(path, BytesOfIndex(uint64_t{1} << 32));
    EXPECT_EQ(worlds.Compare().Copied, 0);
    RebuildWorld other;
    other.LandAt(60, 60, 9, 9, 5);
    other.TakeLevel2();
    other.OldLevels();
    other.Rebuild(WithFarTiles(FarSize));
    Spill(path, Slurp(other.TexturePathOf("fartiles.index")));
    EXPECT_EQ(worlds.Compare().Copied, 0);
}

// The far tiles are made and nobody is told: they do not need it.
TEST(FartileIndex, CannotBeReplacedAndNothingIsLost) {
    RebuildWorld world;
    world.OldLevels();
    fs::create_directory(world.TexturePathOf("fartiles.index"));
    EXPECT_EQ(world.ErrorOf(OnlyChanged()), 0);
    const auto whole = world.PlayedFiles();
    EXPECT_EQ(world.ErrorOf(OnlyChanged()), 0);
    EXPECT_TRUE(world.PlayedFiles() == whole);
    EXPECT_TRUE(fs::is_directory(world.TexturePathOf("fartiles.index")));
}

TEST(FartileIndex, KeepsTheCaseOfItsName) {
    TwoWorlds worlds;
    fs::rename(worlds.Changed.TexturePathOf("fartiles.index"),
               worlds.Changed.TexturePathOf("FARTILES.INDEX"));
    worlds.Changed.Rebuild(OnlyChanged());
    EXPECT_FALSE(fs::exists(worlds.Changed.TexturePathOf("fartiles.index")));
    EXPECT_EQ(worlds.Changed.Rebuild(OnlyChanged()).Fartiles.Made, 0);
}

// A run that ends without an error changes it together with the containers, any other
// leaves all three as they were.
TEST(FartileIndex, IsOfTheSameTransactionAsTheContainers) {
    RebuildWorld world;
    world.OldLevels();
    world.Rebuild(WithFarTiles(FarSize));
    const auto before = world.Files();
    world.Level2.At(20, 5).Tile = 11;
    world.TakeLevel2();
    world.View.OnEvents = [&] {
        world.View.Stop =
            fs::exists(world.TexturePathOf("fartilesN.ddsx")); // all but made
    };
    const auto level2 = world.Files();
    EXPECT_EQ(world.ErrorOf(OnlyChanged()), 32755);
    EXPECT_TRUE(world.Files() == level2);
    EXPECT_EQ(world.Files().at("fartiles.index"), before.at("fartiles.index"));
    world.View.OnEvents = nullptr;
    world.View.Stop = false;
    EXPECT_EQ(world.Rebuild(OnlyChanged()).Fartiles.Made, 3);
    EXPECT_NE(world.Files().at("fartiles.index"), before.at("fartiles.index"));
}

// Signature, then size, seconds, nanoseconds and checksum of each container, the keys,
// the checksum of all that.
TEST(FartileIndex, HasTheBytesThatAreToldOfIt) {
    FartileIndex index;
    index.Containers[0] = {1, 2, 3, 4};
    index.Containers[1] = {5, -6, 7, 8};
    index.Keys.resize(2);
    index.Keys[1][15] = 9;
    const auto bytes = FartileIndexBytes(index);
    const auto at = [&](size_t place) { return std::to_integer<int>(bytes.at(place)); };
    ASSERT_EQ(bytes.size(), 8U + 2 * 28 + 2 * 16 + 4);
    EXPECT_EQ(at(0), 'V');
    EXPECT_EQ(at(7), '1');
    EXPECT_EQ(at(8), 1);
    EXPECT_EQ(at(16), 2);
    EXPECT_EQ(at(24), 3);
    EXPECT_EQ(at(32), 4);
    EXPECT_EQ(at(36), 5);
    EXPECT_EQ(at(44), 250);
    EXPECT_EQ(at(60), 8);
    EXPECT_EQ(at(95), 9);
    const uint32_t checksum = ChecksumOf(std::span(bytes).first(96));
    EXPECT_EQ(at(96), static_cast<int>(checksum & 255));
    EXPECT_EQ(ParseFartileIndex(bytes), index);
}

} // namespace
} // namespace vardenix::tests
