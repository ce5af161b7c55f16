#include "texts/Numbers.h"

#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vardenix {
namespace {

TEST(Numbers, AHalfGoesToTheEvenNeighbour) {
    EXPECT_EQ(RoundHalfEven(0.5), 0);
    EXPECT_EQ(RoundHalfEven(1.5), 2);
    EXPECT_EQ(RoundHalfEven(2.5), 2);
    EXPECT_EQ(RoundHalfEven(-0.5), 0);
    EXPECT_EQ(RoundHalfEven(-1.5), -2);
    EXPECT_EQ(RoundHalfEven(-2.5), -2);
    EXPECT_EQ(RoundHalfEven(2.4999), 2);
    EXPECT_EQ(RoundHalfEven(2.5001), 3);
    EXPECT_EQ(RoundHalfEven(4503599627370497.0), 4503599627370497.0);
}

TEST(Numbers, NarrowingRoundsAndRefusesWhatDoesNotFit) {
    EXPECT_EQ(ToByte(254.5), 254);
    EXPECT_EQ(ToByte(255.4), 255);
    EXPECT_EQ(ToInt16(-32768.5), -32768);
    EXPECT_EQ(ToInt32(2147483647.0), 2147483647);
    EXPECT_THROW(ToByte(255.5), RuntimeError);
    EXPECT_THROW(ToByte(-1), RuntimeError);
    EXPECT_THROW(ToInt16(32768), RuntimeError);
    EXPECT_THROW(ToInt32(2147483648.0), RuntimeError);
    EXPECT_THROW(ToInt32(std::nan("")), RuntimeError);
    EXPECT_THROW(ToInt32(std::numeric_limits<double>::infinity()), RuntimeError);
    try {
        ToInt16(40000);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.NumberValue(), 6);
        EXPECT_EQ(error.Description(), "Overflow");
    }
}

TEST(Numbers, ClampingTakesTheNearestThatFits) {
    EXPECT_EQ(ClampToInt16(40000), 32767);
    EXPECT_EQ(ClampToInt16(-40000), -32768);
    EXPECT_EQ(ClampToInt16(2.5), 2);
    EXPECT_EQ(ClampToInt32(-std::numeric_limits<double>::infinity()), -2147483648);
    EXPECT_EQ(ClampToInt32(std::nan("")), 0);
}

TEST(Numbers, PercentIsRoundedHalfToEven) {
    EXPECT_EQ(Percent(1, 8), 12); // 12.5
    EXPECT_EQ(Percent(3, 8), 38); // 37.5
    EXPECT_EQ(Percent(64, 64), 100);
    EXPECT_EQ(Percent(5, 0), 0);
    EXPECT_EQ(Percent(46340LL * 46340, 46340LL * 46340), 100);
}

TEST(Numbers, ValTakesTheNumberAtTheBeginning) {
    EXPECT_EQ(Val("12 posts"), 12);
    EXPECT_EQ(Val("  -3.5.7"), -3.5);
    EXPECT_EQ(Val("+4"), 4);
    EXPECT_EQ(Val(".5"), 0.5);
    EXPECT_EQ(Val("5."), 5);
    EXPECT_EQ(Val("1e3x"), 1000);
    EXPECT_EQ(Val("1D-2"), 0.01);
    EXPECT_EQ(Val("1e"), 1);
    EXPECT_EQ(Val("2e+"), 2);
    EXPECT_EQ(Val("1,5"), 1);
}

TEST(Numbers, ValOfWhatSpellsNoNumberIsZero) {
    EXPECT_EQ(Val(""), 0);
    EXPECT_EQ(Val("-"), 0);
    EXPECT_EQ(Val("."), 0);
    EXPECT_EQ(Val("posts 12"), 0);
    EXPECT_EQ(Val("\t5"), 0);
    EXPECT_EQ(Val("- 5"), 0);
    EXPECT_EQ(Val("inf"), 0);
    EXPECT_EQ(Val("nan"), 0);
}

TEST(Numbers, ValOfAbsurdExponentsStaysDefined) {
    EXPECT_EQ(Val("1e999"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Val("-1e999"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(Val("1e-999"), 0);
    EXPECT_EQ(Val("9e99999999999999999999"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Val("9e-99999999999999999999"), 0);
    // By their digits alone, or against their exponents.
    const std::string zeros(400, '0');
    EXPECT_EQ(Val("0." + zeros + "1"), 0);
    EXPECT_EQ(Val("0." + zeros + "1e+20"), 0);
    EXPECT_EQ(Val("-1" + zeros + "E-5"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(Val("00." + zeros + "1e800"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Val("1" + zeros + "e-400"), 1);
}

TEST(Numbers, FormatsRoundHalfToEvenAndNeverShowMinusZero) {
    EXPECT_EQ(Format0(2.5), "2");
    EXPECT_EQ(Format0(-1.5), "-2");
    EXPECT_EQ(Format0(-0.4), "0");
    EXPECT_EQ(Format0(1048576), "1048576");
    EXPECT_EQ(FormatFixed(3.14159, 2), "3.14");
    EXPECT_EQ(FormatFixed(-0.001, 2), "0.00");
}

TEST(Numbers, ShortestTextReadsBack) {
    EXPECT_EQ(ShortestText(10.0F), "10");
    EXPECT_EQ(ShortestText(8.25F), "8.25");
    EXPECT_EQ(ShortestText(0.1F), "0.1");
    EXPECT_EQ(ShortestText(0.1), "0.1");
    EXPECT_EQ(ShortestText(1.0 / 3), "0.3333333333333333");
}

} // namespace
} // namespace vardenix
