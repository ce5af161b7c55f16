// Far tiles that are copied from the containers of an earlier run: whatever happened in
// between, the files are those of a full run.
#include "builder/FartileIndex.h"
#include "builder/OldFartiles.h"
#include "builder/RebuildWorld.h"
#include "files/ReadableFile.h"
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

std::optional<FartileIndex> IndexOf(const RebuildWorld& world) {
    const std::string bytes = Slurp(world.TexturePathOf("fartiles.index"));
    return ParseFartileIndex(std::as_bytes(std::span(bytes)));
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
        const auto index = IndexOf(Changed);
        const auto expected = IndexOf(Full);
        EXPECT_TRUE(index && expected && index->Keys == expected->Keys &&
                    index->Sums == expected->Sums);
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

// Bytes that this process has read of files, by the system's count.
int64_t BytesRead() {
    std::ifstream counts("/proc/self/io");
    std::string word;
    int64_t bytes = -1;
    counts >> word >> bytes;
    return bytes;
}

// A picture's time is told from that of a change to come once a tick has passed.
void LetPicturesSettle(const RebuildWorld& world) {
    for (int tile = 0; tile < RebuildWorld::Tiles; ++tile)
        for (const bool night : {false, true})
            while (!MarkOfPath(world.PicturePathOf(tile, night)).IsSettled())
                LetTickPass();
}

TEST(OnlyChangedFartiles, ReadNoPictureThatNobodyHasChanged) {
    TwoWorlds worlds;
    LetPicturesSettle(worlds.Changed);
    EXPECT_GT(worlds.Changed.Rebuild(WithFarTiles(FarSize)).Fartiles.PicturesRead, 3);
    const FartileCounts counts = worlds.Compare();
    EXPECT_EQ(counts.Made, 0);
    EXPECT_EQ(counts.PicturesRead, 0);
}

TEST(OnlyChangedFartiles, AreNotTakenFromAContainerThatIsChangedMeanwhile) {
    TwoWorlds worlds;
    RebuildWorld& world = worlds.Changed;
    world.Level2.At(20, 5).Tile = 11;
    world.TakeLevel2();
    world.View.OnStatus = [&](const std::string& status) {
        if (status == "Compressing DDS images, please be patient...")
            FlipByte(world.TexturePathOf("fartilesN.dds"), 300, true);
    };
    EXPECT_EQ(world.ErrorOf(OnlyChanged()), 75);
    EXPECT_NE(world.Detail.find("fartilesN.dds"), std::string::npos) << world.Detail;
    world.View.OnStatus = nullptr;
    EXPECT_EQ(world.Rebuild(OnlyChanged()).Fartiles.Copied, 0);
}

TEST(OldFartiles, AreTrustedWithoutBeingRead) {
    const TestFolder folder;
    const FartileShape shape(80);
    constexpr size_t Count = 1000;
    FartileIndex index;
    index.Keys.resize(Count);
    index.Sums.resize(Count);
    const auto header = shape.Header();
    const std::string bytes = std::string(header.begin(), header.end()) +
                              std::string(Count * shape.LinearSize(), 'x');
    size_t i = 0;
    for (const char* name : {"fartiles.dds", "fartilesN.dds"})
        index.Containers[i++] = MarkOfPath(folder.Write(name, bytes)).Identity;
    const auto told = FartileIndexBytes(index);
    folder.Write("fartiles.index",
                 {reinterpret_cast<const char*>(told.data()), told.size()});
    const int64_t before = BytesRead();
    const auto old = OldFartiles::Trusted(folder.File(""), shape);
    ASSERT_NE(old, nullptr);
    EXPECT_LT(BytesRead() - before, static_cast<int64_t>(told.size() + 10000));
    EXPECT_EQ(old->Count(), static_cast<int32_t>(Count));
    EXPECT_EQ(OldFartiles::Trusted(folder.File(""), FartileShape(84)), nullptr);
}

// Its bytes are the same; only they could tell.
TEST(OnlyChangedFartiles, ReadOnePictureThatWasTouched) {
    TwoWorlds worlds;
    LetPicturesSettle(worlds.Changed);
    worlds.Changed.Rebuild(WithFarTiles(FarSize));
    const std::string path = worlds.Changed.PicturePathOf(7, false);
    fs::last_write_time(path, fs::last_write_time(path));
    const FartileCounts counts = worlds.Compare();
    EXPECT_EQ(counts.Made, 0);
    EXPECT_EQ(counts.PicturesRead, 2); // by day and by night
}

TEST(OnlyChangedFartiles, AreMadeWhenAnotherFileIsInAContainersPlace) {
    TwoWorlds worlds;
    const std::string path = worlds.Changed.TexturePathOf("fartiles.dds");
    const auto time = fs::last_write_time(path);
    fs::copy_file(path, path + ".copy");
    fs::last_write_time(path + ".copy", time);
    fs::rename(path + ".copy", path);
    EXPECT_EQ(worlds.Compare().Copied, 0);
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
    EXPECT_EQ(copied([](std::string& bytes) { bytes = "VXFTIDX2"; }), 0);
    EXPECT_EQ(copied([](std::string& bytes) { bytes.pop_back(); }), 0);
    EXPECT_EQ(copied([](std::string& bytes) { bytes.resize(bytes.size() - 16); }), 0);
    EXPECT_EQ(copied([](std::string& bytes) { bytes.append(16, '\0'); }), 0);
    EXPECT_EQ(copied([](std::string& bytes) { bytes[100] ^= 1; }), 0);
    EXPECT_EQ(copied([](std::string& bytes) { bytes[7] = '1'; }), 0);
}

TEST(FartileIndex, OfHugeLengthOrOfAnotherTheaterIsNotTrusted) {
    TwoWorlds worlds;
    const std::string path = worlds.Changed.TexturePathOf("fartiles.index");
    fs::resize_file(path, BytesOfIndex(uint64_t{1} << 32, 0));
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

// Signature, both counts, device, inode, size, seconds and nanoseconds of each container,
// keys, checksums by day and by night, pictures, the checksum of all that.
TEST(FartileIndex, HasTheBytesThatAreToldOfIt) {
    FartileIndex index;
    index.Containers[0] = {true, 1, 2, 3, 4, 5};
    index.Containers[1] = {true, 6, 7, 8, -9, 10};
    index.Keys.resize(2);
    index.Keys[1][15] = 11;
    index.Sums = {{12, 13}, {14, 15}};
    index.Pictures = {{{{true, 16, 17, 18, 19, 20}, 21, 22}, 23, {24}}};
    const auto bytes = FartileIndexBytes(index);
    const auto at = [&](size_t place) { return std::to_integer<int>(bytes.at(place)); };
    ASSERT_EQ(bytes.size(), 8U + 8 + 2 * 40 + 2 * 16 + 2 * 8 + 76 + 4);
    EXPECT_EQ(at(0), 'V');
    EXPECT_EQ(at(7), '2');
    EXPECT_EQ(at(8), 2);
    EXPECT_EQ(at(12), 1);
    for (const size_t i : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 7U, 9U})
        EXPECT_EQ(at(16 + 8 * i), i == 9 ? 10 : static_cast<int>(i) + 1) << i;
    EXPECT_EQ(at(16 + 8 * 8), 247);
    EXPECT_EQ(at(127), 11);
    for (size_t i = 0; i < 4; ++i)
        EXPECT_EQ(at(128 + 4 * i), static_cast<int>(i) + 12) << i;
    for (size_t i = 0; i < 7; ++i)
        EXPECT_EQ(at(144 + 8 * i), static_cast<int>(i) + 16) << i;
    EXPECT_EQ(at(200), 23);
    EXPECT_EQ(at(204), 24);
    const uint32_t checksum = ChecksumOf(std::span(bytes).first(220));
    EXPECT_EQ(at(220), static_cast<int>(checksum & 255));
    EXPECT_EQ(ParseFartileIndex(bytes), index);
}

} // namespace
} // namespace vardenix::tests
