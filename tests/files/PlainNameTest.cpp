#include "files/PlainName.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace vardenix {
namespace {

using namespace std::string_view_literals;

TEST(PlainName, IsThatOfAFileOfTheFolder) {
    for (const char* name :
         {"a", "vardenix-cli", "a b.(1)$", ".hidden", "\xC3\xA4", "a."})
        EXPECT_EQ(WhyNotPlain(name), "") << name;
    EXPECT_EQ(WhyNotPlain(std::string(255, 'a')), "");
}

TEST(PlainName, TellsWhyItIsNone) {
    for (const auto& [name, why] : {std::pair{"/etc/passwd"sv, "holds a slash"},
                                    {"a/"sv, "holds a slash"},
                                    {"a\\b"sv, "holds a slash"},
                                    {"C:a"sv, "holds a colon"},
                                    {".."sv, "holds \"..\""},
                                    {"a..b"sv, "holds \"..\""},
                                    {""sv, "is empty"},
                                    {"."sv, "is a folder's"},
                                    {"a\tb"sv, "holds a control character"},
                                    {"a\0b"sv, "holds a control character"}})
        EXPECT_EQ(WhyNotPlain(name), why) << name;
    EXPECT_NE(WhyNotPlain(std::string(256, 'a')), "");
}

TEST(PlainName, IsShownWithoutWhatATerminalShouldNotSee) {
    EXPECT_EQ(ShownName("a b"), "a b");
    EXPECT_EQ(ShownName("a\x1B[2Jb"), "a?[2Jb");
    EXPECT_LE(ShownName(std::string(500, 'a')).size(), 103U);
}

} // namespace
} // namespace vardenix
