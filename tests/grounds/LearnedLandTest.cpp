#include "grounds/LearnedLand.h"

#include "grounds/BrushFigures.h"
#include "grounds/DrawnLand.h"

#include <gtest/gtest.h>

#include <random>

namespace vardenix::tests {
namespace {

TEST(LearnedLand, FindsTheTwoGroundsOfADrawnLand) {
    const LearnedLand land(RedAndBlueTiles(), RedAndBlueMap(40, 1));
    ASSERT_EQ(land.Refusal(), "");
    ASSERT_EQ(land.GroundCount(), 2);
    // Grounds are numbered by the first tile that has them: 0 is red.
    for (int32_t tile = 0; tile < 16; ++tile)
        for (size_t corner = 0; corner < CornerCount; ++corner)
            EXPECT_EQ(land.GroundsOf(tile)[corner], tile >> corner & 1)
                << tile << " " << corner;
    EXPECT_EQ(land.TilesWith({0, 1, 0, 1}), (std::vector<int32_t>{10}));
    EXPECT_EQ(land.Steps().Distance(0, 1), 1);
    EXPECT_EQ(land.Steps().Next(1, 0), 0);
    EXPECT_EQ(land.ExplainedCorners(), 1);
    EXPECT_EQ(land.FittingSeams(), 1);
}

TEST(LearnedLand, SeamsFitWhereTheColorsMeet) {
    const LearnedLand land(RedAndBlueTiles(), RedAndBlueMap(40, 1));
    for (size_t a = 0; a < 16; ++a)
        for (size_t b = 0; b < 16; ++b) {
            const bool eastward = (a >> 1 & 1) == (b & 1) && (a >> 3) == (b >> 2 & 1);
            const bool northward = (a >> 2 & 1) == (b & 1) && (a >> 3) == (b >> 1 & 1);
            EXPECT_EQ(land.Fits(Meeting::Eastward).Fit(a, b), eastward) << a << " " << b;
            EXPECT_EQ(land.Fits(Meeting::Northward).Fit(a, b), northward)
                << a << " " << b;
        }
}

TEST(LearnedLand, CountsMeetingsUpToFifty) {
    LandGrid map{60, 2, std::vector<int32_t>(120, 0)};
    map(3, 1) = 1;
    map(0, 0) = -1;
    const MeetingCounts eastward(map, 2, Meeting::Eastward);
    EXPECT_EQ(eastward(0, 0), 50);
    EXPECT_EQ(eastward(0, 1), 1);
    EXPECT_EQ(eastward(1, 1), 0);
    const MeetingCounts northward(map, 2, Meeting::Northward);
    EXPECT_EQ(northward(0, 1), 1);
    EXPECT_EQ(northward(1, 0), 0);
}

TEST(LearnedLand, SaysWhereThereIsNothingToLearn) {
    LearnedTiles tiles = RedAndBlueTiles();
    std::mt19937 random(3);
    for (TileSides& sides : tiles.Sides)
        for (SideColors& side : sides.Colors)
            for (auto& color : side)
                for (uint8_t& part : color)
                    part = static_cast<uint8_t>(random());
    LandGrid map{64, 64, {}};
    for (int i = 0; i < 64 * 64; ++i)
        map.Tiles.push_back(static_cast<int32_t>(random() % 16));
    EXPECT_NE(LearnedLand(tiles, map).Refusal(), "");
    EXPECT_NE(LearnedLand(RedAndBlueTiles(), map).Refusal(), "");
    map.Tiles.assign(64 * 64, 0);
    EXPECT_NE(LearnedLand(RedAndBlueTiles(), map).Refusal(), "");
    EXPECT_NE(LearnedLand(LearnedTiles(), LandGrid()).Refusal(), "");
}

TEST(LearnedLand, VotesOfPostsThatDisagreeGoToTheMost) {
    const LearnedLand land(RedAndBlueTiles(), RedAndBlueMap(40, 1));
    // All red but for one post; round the corner in the middle three are red.
    LandGrid posts{2, 2, {0, 0, 0, 15}};
    const std::vector<int16_t> voted = VotedGrounds(land, posts);
    EXPECT_EQ(voted, (std::vector<int16_t>{0, 0, 0, 0, 0, 0, 0, 0, 1}));
    posts.Tiles = {-1, -1, -1, 15};
    EXPECT_EQ(VotedGrounds(land, posts),
              (std::vector<int16_t>{-1, -1, -1, -1, 1, 1, -1, 1, 1}));
}

TEST(LearnedLand, FindsTheGroundsThatTheSampleWasMadeFrom) {
    const SampleLand land(256, 1, 64);
    const LearnedLand learned(land.Tiles, land.Map);
    EXPECT_EQ(learned.Refusal(), "");
    EXPECT_EQ(learned.GroundCount(), 12);
    EXPECT_GE(RightCorners(land, learned), 0.995);
    EXPECT_GE(learned.FittingSeams(), 0.999);
}

TEST(LearnedLand, ForgivesSpoiltPicturesAndSwappedPosts) {
    SampleLand land(256, 1, 128, {.Gain = 0.08, .Shift = 3, .Noise = 10});
    land.SwapPosts(0.03);
    const LearnedLand learned(land.Tiles, land.Map);
    EXPECT_EQ(learned.Refusal(), "");
    EXPECT_GE(RightCorners(land, learned), 0.94);
}

} // namespace
} // namespace vardenix::tests
