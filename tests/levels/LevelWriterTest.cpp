#include "levels/LevelWriter.h"

#include "levels/Terrain.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>

namespace vardenix {
namespace {

// Keeps what is written, behind `begin` bytes that nobody has to hold.
class KeptBytes : public ByteSink {
public:
    explicit KeptBytes(uint64_t begin = 0) : begin_(begin) {}

    void Write(std::span<const std::byte> bytes) override {
        Bytes.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }
    uint64_t Position() const override { return begin_ + Bytes.size(); }

    std::string Bytes;

private:
    uint64_t begin_;
};

using Block = std::array<TerrainPost, PostsPerSegment>;

Block BlockOf(int32_t tile) {
    Block block{};
    block.fill({tile, 1, 2, 3, 4});
    return block;
}

std::string BytesOf(const Block& block) {
    return {reinterpret_cast<const char*>(block.data()), sizeof block};
}

TEST(LevelWriter, BlankBlocksShareTheFirstOfThem) {
    KeptBytes fileL;
    KeptBytes fileO;
    LevelWriter writer(fileL, "l");
    writer.Store(BlockOf(1), false);
    writer.Store(BlockOf(2), true);
    writer.Store(BlockOf(1), false); // not blank, so it is its own though it is alike
    writer.Store(BlockOf(3), true);
    writer.WriteOffsets(fileO);
    EXPECT_TRUE(fileL.Bytes ==
                BytesOf(BlockOf(1)) + BytesOf(BlockOf(2)) + BytesOf(BlockOf(1)));
    const std::array<int32_t, 4> offsets{0, 2304, 4608, 2304};
    ASSERT_EQ(fileO.Bytes.size(), sizeof offsets);
    EXPECT_EQ(std::memcmp(fileO.Bytes.data(), offsets.data(), sizeof offsets), 0);
}

TEST(LevelWriter, ABlockBeginsWithinThirtyOneBits) {
    KeptBytes last(0x7FFFFFFF);
    LevelWriter(last, "l").Store(BlockOf(1), false);
    EXPECT_EQ(last.Bytes.size(), size_t{2304});

    KeptBytes beyond(0x80000000);
    LevelWriter writer(beyond, "theater.l0");
    const RuntimeError error = tests::ErrorOf([&] { writer.Store(BlockOf(1), false); });
    EXPECT_EQ(error.NumberValue(), 6);
    EXPECT_NE(error.Detail().find("theater.l0"), std::string::npos);
    EXPECT_EQ(beyond.Bytes, "");
}

} // namespace
} // namespace vardenix
