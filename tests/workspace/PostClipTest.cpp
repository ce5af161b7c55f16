#include "workspace/PostClip.h"

#include "support/ErrorOf.h"

#include <gtest/gtest.h>

#include <cstring>

namespace vardenix {
namespace {

// Each post has its serial in all fields, the bytes' remainders included.
Terrain Numbered(int32_t width) {
    Terrain terrain;
    terrain.MapWidth = width;
    terrain.LxArr = PostArray(int64_t{width} * width);
    for (int32_t serial = 1; serial <= width * width; ++serial)
        terrain.LxArr(serial) = {
            serial, static_cast<int16_t>(-serial), static_cast<uint8_t>(serial),
            static_cast<uint8_t>(serial + 1), static_cast<uint8_t>(serial + 2)};
    return terrain;
}

// Two posts of the row 1, one of the row 2: an L.
const Selection& Corner() {
    static const Selection corner(std::vector<RowSpan>{{1, 1, 2}, {2, 1, 1}});
    return corner;
}

std::vector<int32_t> TilesOf(const PostClip& clip) {
    std::vector<int32_t> tiles;
    for (size_t i = 0; i < clip.Posts.size(); ++i)
        tiles.push_back(clip.Selected[i] != 0 ? clip.Posts[i].TileOffset : -1);
    return tiles;
}

TEST(PostClip, HoldsWhatIsSelected) {
    const PostClip clip = ClipOf(Numbered(4), Corner());
    EXPECT_EQ(clip.Width, 2);
    EXPECT_EQ(clip.Height, 2);
    EXPECT_EQ(TilesOf(clip), (std::vector<int32_t>{6, 7, 10, -1}));
    EXPECT_EQ(ClipOf(Numbered(4), Selection()), PostClip());
}

TEST(PostClip, IsMirroredAndTurned) {
    const PostClip clip =
        ClipOf(Numbered(4), Selection(std::vector<RowSpan>{{0, 0, 2}, {1, 0, 1}}));
    // 5 6 .      rows from the lowest: 1 2 3, 5 6 -1
    // 1 2 3
    EXPECT_EQ(TilesOf(Mirrored(clip)), (std::vector<int32_t>{3, 2, 1, -1, 6, 5}));
    const PostClip turned = Turned(clip);
    // . 3
    // 6 2
    // 5 1
    EXPECT_EQ(turned.Width, 2);
    EXPECT_EQ(turned.Height, 3);
    EXPECT_EQ(TilesOf(turned), (std::vector<int32_t>{5, 1, 6, 2, -1, 3}));
    EXPECT_EQ(Turned(Turned(Turned(turned))), clip);
    EXPECT_TRUE((ClipFields{.Tile = false, .Palette = false, .X1 = false, .X2 = false})
                    .MayTurn());
    EXPECT_FALSE(ClipFields().MayTurn());
}

TEST(PostClip, IsStampedWithTheFieldsThatComeAlong) {
    Terrain terrain = Numbered(4);
    const PostClip clip = ClipOf(terrain, Corner());
    const Terrain before = Numbered(4);
    WriteNew(terrain.LxArr, StampedPosts(terrain, clip, {2, 2},
                                         {.Tile = true,
                                          .Elevation = false,
                                          .Palette = false,
                                          .X1 = true,
                                          .X2 = false}));
    for (int32_t serial = 1; serial <= 16; ++serial) {
        TerrainPost expected = before.LxArr(serial);
        const int32_t from = serial == 11 ? 6 : serial == 12 ? 7 : serial == 15 ? 10 : 0;
        if (from != 0) {
            expected.TileOffset = from;
            expected.X1 = static_cast<uint8_t>(from + 1);
        }
        EXPECT_EQ(terrain.LxArr(serial), expected) << serial;
    }
}

TEST(PostClip, IsStampedAsFarAsTheTerrainAndTheBoundsGo) {
    const Terrain terrain = Numbered(4);
    const PostClip clip = ClipOf(terrain, Corner());
    const auto serials = [&](PostPlace place, const Selection* bounds) {
        std::vector<int32_t> found;
        const PostDelta delta = StampedPosts(terrain, clip, place, {}, bounds);
        for (const auto& stretch : delta.Values.Stretches)
            for (int32_t i = 0; i < stretch.Count; ++i)
                found.push_back(stretch.Serial + i);
        return found;
    };
    EXPECT_EQ(serials({3, 3}, nullptr), (std::vector<int32_t>{16}));
    EXPECT_EQ(serials({-1, -1}, nullptr), (std::vector<int32_t>{}));
    EXPECT_EQ(serials({-1, 0}, nullptr), (std::vector<int32_t>{1}));
    EXPECT_EQ(serials({2147483647, 0}, nullptr), (std::vector<int32_t>{}));
    const Selection column = SelectedBox({2, 0, 2, 3}, 4);
    EXPECT_EQ(serials({2, 2}, &column), (std::vector<int32_t>{11, 15}));
    // Where it lies already nothing changes.
    EXPECT_TRUE(StampedPosts(terrain, clip, {1, 1}, {}).Empty());
}

TEST(PostClip, WhatIsCutBecomesNothing) {
    Terrain terrain = Numbered(4);
    const PostDelta delta = CutPosts(terrain, Corner(), {.Palette = false});
    WriteNew(terrain.LxArr, delta);
    EXPECT_EQ(terrain.LxArr(6), (TerrainPost{0, 0, 6, 0, 0}));
    EXPECT_EQ(terrain.LxArr(8), Numbered(4).LxArr(8));
    WriteOld(terrain.LxArr, delta);
    EXPECT_EQ(terrain.LxArr(6), Numbered(4).LxArr(6));
}

TEST(PostClip, ComesBackFromItsBytes) {
    const PostClip clip = ClipOf(Numbered(4), Corner());
    const std::vector<std::byte> bytes = BytesOf(clip);
    EXPECT_EQ(bytes.size(), 16 + 4 * 10U);
    EXPECT_EQ(ParseClip(bytes), clip);
}

TEST(PostClip, BytesThatAreNoneAreRefused) {
    const std::vector<std::byte> good = BytesOf(ClipOf(Numbered(4), Corner()));
    const auto numberOf = [](const std::vector<std::byte>& bytes) {
        return tests::ErrorOf([&] { ParseClip(bytes); }).Number();
    };
    for (size_t length = 0; length < good.size(); ++length)
        EXPECT_EQ(numberOf({good.begin(), good.begin() + static_cast<ptrdiff_t>(length)}),
                  ErrorNumber::InputPastEnd)
            << length;
    const auto with = [&](size_t at, int32_t number) {
        std::vector<std::byte> bytes = good;
        std::memcpy(&bytes[at], &number, sizeof number);
        return numberOf(bytes);
    };
    EXPECT_EQ(with(0, 0), ErrorNumber::InputPastEnd);
    EXPECT_EQ(with(8, -2), ErrorNumber::InputPastEnd);
    EXPECT_EQ(with(12, 1 << 30), ErrorNumber::InputPastEnd);
    EXPECT_EQ(with(16, -1), ErrorNumber::SubscriptOutOfRange);
    EXPECT_EQ(with(16 + 4 * 9, 0x02010101), ErrorNumber::InputPastEnd);
}

} // namespace
} // namespace vardenix
