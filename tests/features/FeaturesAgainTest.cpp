#include "features/FeaturesAgain.h"

#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

TEST(FeaturesAgain, KindsAreRememberedWhileAnythingIsShown) {
    FeatureSwitches switches;
    switches.Of(FeatureKind::River) = switches.Of(FeatureKind::Airport) = true;
    EXPECT_EQ(ShownKinds(switches), "");
    switches.ShowFeatures = true;
    EXPECT_EQ(ShownKinds(switches), "AIRPORT RIVER");
}

TEST(FeaturesAgain, FilesAreLoadedAndKindsShown) {
    const tests::TestFolder folder;
    const std::string one = folder.Write("a.tdf", "CITY 1 2,2 7\n");
    const std::string two = folder.Write("b c.tdf", "RIVER 2 0,0 9,0 0\n");
    FeatureSet set;
    FeatureSwitches switches;
    const auto missing = LoadFeaturesAgain(
        {.Theater = "/t", .Files = {one, "/nowhere.tdf", two}, .Shown = "RIVER ROAD x"},
        set, switches);
    EXPECT_EQ(missing, std::vector<std::string>{"/nowhere.tdf"});
    EXPECT_EQ(set.Count(), 2U);
    EXPECT_EQ(ShownKinds(switches), "RIVER ROAD");
}

TEST(FeaturesAgain, WithoutKindsNothingIsShown) {
    FeatureSet set;
    FeatureSwitches switches;
    LoadFeaturesAgain({.Theater = "/t", .Files = {}, .Shown = ""}, set, switches);
    EXPECT_FALSE(switches.ShowFeatures);
}

} // namespace
} // namespace vardenix
