#include "texts/KeyFilters.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

TEST(KeyFilters, BoxesForWholeNumbersTakeDigitsAndBackspace) {
    for (const char32_t key : {U'0', U'1', U'5', U'9', char32_t{8}})
        EXPECT_TRUE(KeepsDigitKey(key));
    for (const char32_t key : {U'-', U'.', U' ', U'a', U'/', U':', U'\r', U'\u0663'})
        EXPECT_FALSE(KeepsDigitKey(key));
}

TEST(KeyFilters, BoxesForFloatsTakePointAndMinusToo) {
    for (const char32_t key : {U'0', U'9', U'.', U'-', char32_t{8}})
        EXPECT_TRUE(KeepsFloatKey(key));
    for (const char32_t key : {U',', U'+', U'e', U' ', U'/', U':'})
        EXPECT_FALSE(KeepsFloatKey(key));
}

} // namespace
} // namespace vardenix
