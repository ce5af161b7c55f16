#include "builder/RunClock.h"

#include <gtest/gtest.h>

namespace vardenix::tests {
namespace {

TEST(TextOfDuration, HasHoursOnlyWhereThereAreAny) {
    EXPECT_EQ(TextOfDuration(0), "0:00");
    EXPECT_EQ(TextOfDuration(5), "0:05");
    EXPECT_EQ(TextOfDuration(59), "0:59");
    EXPECT_EQ(TextOfDuration(60), "1:00");
    EXPECT_EQ(TextOfDuration(760), "12:40");
    EXPECT_EQ(TextOfDuration(3599), "59:59");
    EXPECT_EQ(TextOfDuration(3600), "1:00:00");
    EXPECT_EQ(TextOfDuration(3723), "1:02:03");
}

TEST(TextOfRun, TellsTheRestOfTheStepByWhatIsDoneOfIt) {
    EXPECT_EQ(TextOfRun({3, 6, 65, 20, {10, 30}}),
              "Step 3 of 6, 1:05 so far, about 0:40 left in this step");
}

TEST(TextOfRun, SaysNothingOfTheRestWhereNothingIsKnown) {
    const std::string nothing = "Step 1 of 2, 0:07 so far";
    EXPECT_EQ(TextOfRun({1, 2, 7, 0, {10, 30}}), nothing); // in its first second
    EXPECT_EQ(TextOfRun({1, 2, 7, 7, {0, 30}}), nothing);  // before its first share
    EXPECT_EQ(TextOfRun({1, 2, 7, 7, {30, 30}}), nothing); // after its last
    EXPECT_EQ(TextOfRun({1, 2, 7, 1, {1, 2}}),
              nothing + ", about 0:01 left in this step");
}

} // namespace
} // namespace vardenix::tests
