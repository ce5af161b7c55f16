#include "workspace/TileDetails.h"

#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

using Field = DetailField;

TEST(TileDetails, BoxesTakeDigitsAndBackspace) {
    for (const Field field :
         {Field::TileOffset, Field::Elevation, Field::Palette, Field::X1, Field::X2}) {
        for (const char32_t key : std::u32string_view(U"0123456789\b"))
            EXPECT_TRUE(KeepsDetailKey(field, key));
        for (const char32_t key : {U' ', U'.', U'+', U'a', U',', U'\x0661'})
            EXPECT_FALSE(KeepsDetailKey(field, key));
    }
}

TEST(TileDetails, OnlyTheElevationTakesAMinus) {
    EXPECT_TRUE(KeepsDetailKey(Field::Elevation, U'-'));
    for (const Field field : {Field::TileOffset, Field::Palette, Field::X1, Field::X2})
        EXPECT_FALSE(KeepsDetailKey(field, U'-'));
}

TEST(TileDetails, AnElevationAbove32768IsReset) {
    EXPECT_EQ(AfterDetailChange(Field::Elevation, "32768"), "32768");
    EXPECT_EQ(AfterDetailChange(Field::Elevation, "32769"), "0");
    EXPECT_EQ(AfterDetailChange(Field::Elevation, "99999999999"), "0");
    EXPECT_EQ(AfterDetailChange(Field::Elevation, "-99999"), "-99999");
    EXPECT_EQ(AfterDetailChange(Field::Elevation, ""), "");
}

TEST(TileDetails, BytesAbove255AreReset) {
    for (const Field field : {Field::Palette, Field::X1, Field::X2}) {
        EXPECT_EQ(AfterDetailChange(field, "255"), "255");
        EXPECT_EQ(AfterDetailChange(field, "256"), "0");
        EXPECT_EQ(AfterDetailChange(field, ""), "");
    }
}

TEST(TileDetails, ATileNumberIsNeverReset) {
    EXPECT_EQ(AfterDetailChange(Field::TileOffset, "99999999999"), "99999999999");
}

TEST(TileDetails, ShowsEveryFieldOfThePost) {
    TerrainPost post{};
    post.TileOffset = 1234;
    post.Elevation = -56;
    post.Palette = 7;
    post.X1 = 8;
    post.X2 = 255;
    const DetailTexts texts = TextsOf(post);
    EXPECT_EQ(texts.TileOffset, "1234");
    EXPECT_EQ(texts.Elevation, "-56");
    EXPECT_EQ(texts.Palette, "7");
    EXPECT_EQ(texts.X1, "8");
    EXPECT_EQ(texts.X2, "255");
}

TEST(TileDetails, AnElevationAloneLeavesTheOthersZero) {
    const DetailTexts texts = TextsOf(int16_t{-300});
    EXPECT_EQ(texts.Elevation, "-300");
    EXPECT_EQ(texts.TileOffset + texts.Palette + texts.X1 + texts.X2, "0000");
}

TEST(TileDetails, UpdateReadsAllFiveBoxes) {
    TileDetails details;
    ReadDetails({"70000", "-32768", "255", "0", "12"}, details);
    EXPECT_TRUE(details.DetailsUpdated);
    TerrainPost expected{};
    expected.TileOffset = 70000;
    expected.Elevation = -32768;
    expected.Palette = 255;
    expected.X2 = 12;
    EXPECT_TRUE(details.Entered == expected);
}

TEST(TileDetails, EmptyBoxesAndStrayMinusesAreTheNumberTheyBeginWith) {
    TileDetails details;
    ReadDetails({"", "12-5", "", "", ""}, details);
    const int32_t tile = details.Entered.TileOffset;
    const int16_t elevation = details.Entered.Elevation;
    EXPECT_EQ(tile, 0);
    EXPECT_EQ(elevation, 12);
    ReadDetails({"", "--5", "", "", ""}, details);
    const int16_t none = details.Entered.Elevation;
    EXPECT_EQ(none, 0);
}

// What was read before it stays read, and the rest keeps the post's own values.
TEST(TileDetails, AnOverflowLeavesTheFieldsReadSoFar) {
    TileDetails details;
    details.Entered.Palette = 9;
    details.Entered.Elevation = 3;
    try {
        ReadDetails({"77", "32768", "1", "2", "3"}, details);
        FAIL() << "32768 fits no 16-bit field";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::Overflow);
        EXPECT_EQ(error.Detail(), "Elevation 32768: the field takes -32768 to 32767.");
    }
    EXPECT_TRUE(details.DetailsUpdated);
    EXPECT_EQ(details.Reading, DetailField::Elevation);
    TerrainPost expected{};
    expected.TileOffset = 77;
    expected.Elevation = 3;
    expected.Palette = 9;
    EXPECT_TRUE(details.Entered == expected);
}

TEST(TileDetails, TheFieldThatDoesNotFitIsKnown) {
    const auto misfit = [](const DetailTexts& texts) {
        TileDetails details;
        EXPECT_THROW(ReadDetails(texts, details), RuntimeError);
        return details.Reading;
    };
    EXPECT_EQ(misfit({"1", "2", "256", "3", "4"}), DetailField::Palette);
    EXPECT_EQ(misfit({"1", "2", "3", "256", "4"}), DetailField::X1);
    EXPECT_EQ(misfit({"1", "2", "3", "4", "256"}), DetailField::X2);
}

TEST(TileDetails, ATooLargeTileNumberOverflows) {
    TileDetails details;
    details.Reading = DetailField::X2; // of an earlier try
    EXPECT_THROW(ReadDetails({"2147483648", "0", "0", "0", "0"}, details), RuntimeError);
    EXPECT_EQ(details.Reading, DetailField::TileOffset);
    ReadDetails({"2147483647", "0", "0", "0", "0"}, details);
    const int32_t tile = details.Entered.TileOffset;
    EXPECT_EQ(tile, 2147483647);
}

} // namespace
} // namespace vardenix
