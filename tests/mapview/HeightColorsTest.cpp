#include "mapview/HeightColors.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

Configuration TwoColours() {
    Configuration settings;
    settings.HeightDefaultColor = 9;
    settings.HeightColorList = {{1, 0, 100}, {2, 100, 200}};
    return settings;
}

std::vector<uint32_t> ColorsOf(const HeightColorRows& rows) {
    std::vector<uint32_t> colors;
    for (const HeightColorEntry& row : rows)
        colors.push_back(row.Color);
    return colors;
}
using Colors = std::vector<uint32_t>;

TEST(HeightColors, BothBoundsBelongToAnEntryAndTheFirstOneWins) {
    const Configuration settings = TwoColours();
    EXPECT_EQ(GetHeightColor(settings, 0), 1U);
    EXPECT_EQ(GetHeightColor(settings, 100), 1U);
    EXPECT_EQ(GetHeightColor(settings, 101), 2U);
    EXPECT_EQ(GetHeightColor(settings, 200), 2U);
}

TEST(HeightColors, WhatNoEntryHoldsHasTheDefaultColour) {
    const Configuration settings = TwoColours();
    EXPECT_EQ(GetHeightColor(settings, 201), 9U);
    EXPECT_EQ(GetHeightColor(settings, -1), 9U);
    EXPECT_EQ(GetHeightColor(settings, -32768), 9U);
}

TEST(HeightColors, OneColourForAllPassesOverTheListAndKeepsIt) {
    Configuration settings = TwoColours();
    settings.UseSingleHeightColor = true;
    EXPECT_EQ(GetHeightColor(settings, 50), 9U);
    EXPECT_EQ(settings.HeightColorList.size(), 2U);
}

TEST(HeightColors, AnEmptyListGivesTheDefaultColour) {
    Configuration settings = TwoColours();
    settings.HeightColorList.clear();
    EXPECT_EQ(GetHeightColor(settings, 50), 9U);
}

TEST(HeightColors, AddPutsTheRowBehindTheSelectedOne) {
    HeightColorRows rows{{1, 0, 1}, {2, 2, 3}, {3, 4, 5}};
    EXPECT_TRUE(AddHeightColor(rows, 0, {7, 0, 0}));
    EXPECT_EQ(ColorsOf(rows), (Colors{1, 7, 2, 3}));
    EXPECT_TRUE(AddHeightColor(rows, 3, {8, 0, 0}));
    EXPECT_EQ(ColorsOf(rows), (Colors{1, 7, 2, 3, 8}));
}

TEST(HeightColors, AddWithoutASelectionNeedsAnEmptyList) {
    HeightColorRows rows{{1, 0, 1}};
    EXPECT_FALSE(AddHeightColor(rows, -1, {7, 0, 0}));
    EXPECT_FALSE(AddHeightColor(rows, 1, {7, 0, 0}));
    EXPECT_EQ(ColorsOf(rows), (Colors{1}));
    rows.clear();
    EXPECT_TRUE(AddHeightColor(rows, -1, {7, 0, 0}));
    EXPECT_EQ(ColorsOf(rows), (Colors{7}));
}

TEST(HeightColors, ChangeOverwritesTheSelectedRow) {
    HeightColorRows rows{{1, 0, 1}, {2, 2, 3}};
    EXPECT_TRUE(ChangeHeightColor(rows, 1, {7, 20, 30}));
    EXPECT_EQ(ColorsOf(rows), (Colors{1, 7}));
    EXPECT_EQ(rows[1].Min, 20);
    EXPECT_EQ(rows[1].Max, 30);
    EXPECT_FALSE(ChangeHeightColor(rows, 2, {8, 0, 0}));
    EXPECT_FALSE(ChangeHeightColor(rows, -1, {8, 0, 0}));
    EXPECT_EQ(ColorsOf(rows), (Colors{1, 7}));
}

TEST(HeightColors, DeleteClosesTheGap) {
    HeightColorRows rows{{1, 0, 1}, {2, 2, 3}, {3, 4, 5}};
    EXPECT_TRUE(DeleteHeightColor(rows, 1));
    EXPECT_EQ(ColorsOf(rows), (Colors{1, 3}));
    EXPECT_FALSE(DeleteHeightColor(rows, 2));
    EXPECT_FALSE(DeleteHeightColor(rows, -1));
    EXPECT_TRUE(DeleteHeightColor(rows, 0));
    EXPECT_TRUE(DeleteHeightColor(rows, 0));
    EXPECT_FALSE(DeleteHeightColor(rows, 0));
    EXPECT_TRUE(rows.empty());
}

} // namespace
} // namespace vardenix
