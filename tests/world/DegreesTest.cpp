#include "world/Degrees.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

std::string Read(const char* text) {
    const auto point = DegreesOf(text);
    return point ? DegreesWords(*point) : "none";
}

TEST(Degrees, AreWrittenWithLatitudeFirst) {
    EXPECT_EQ(DegreesWords({18.02034, 59.31016}), "59.3102 N, 18.0203 E");
    EXPECT_EQ(DegreesWords({-70.5, -33.25}), "33.2500 S, 70.5000 W");
}

TEST(Degrees, AreReadAsTheyAreWritten) {
    EXPECT_EQ(Read("59.3102 N, 18.0203 E"), "59.3102 N, 18.0203 E");
    EXPECT_EQ(Read("33.25 S 70.5 W"), "33.2500 S, 70.5000 W");
}

TEST(Degrees, AreReadInOtherForms) {
    EXPECT_EQ(Read("59.31,18.02"), "59.3100 N, 18.0200 E");
    EXPECT_EQ(Read(" -33.25 , -70.5 "), "33.2500 S, 70.5000 W");
    EXPECT_EQ(Read("47n8.5w"), "47.0000 N, 8.5000 W");
    EXPECT_EQ(Read("5 7"), "5.0000 N, 7.0000 E");
}

TEST(Degrees, AreNothingElse) {
    for (const char* text :
         {"", "17", "59.31,", "59.31, 18.02, 3", "91, 0", "0, 181", "E 5, N 7",
          "5 E, 7 N", "1.2.3, 4", "1-2, 3", "+, -", "x, y", "5 NN 7"})
        EXPECT_EQ(Read(text), "none") << text;
}

} // namespace
} // namespace vardenix
