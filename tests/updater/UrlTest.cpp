#include "updater/Url.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

std::string Parts(const char* text) {
    const Url url = SplitUrl(text);
    return url.Scheme + "|" + url.Host + "|" + std::to_string(url.Port) + "|" + url.Path +
           "|" + url.Query;
}

TEST(Url, IsPartedIntoSchemeHostPortPathAndQuery) {
    EXPECT_EQ(Parts("http://host.example:8080/a/b.php?x=1&y=2"),
              "http|host.example|8080|/a/b.php|x=1&y=2");
    EXPECT_EQ(Parts("http://host/a"), "http|host|0|/a|");
    EXPECT_EQ(Parts("host/a?b?c"), "|host|0|/a|b?c");
    EXPECT_EQ(Parts("host"), "|host|0|/|");
    EXPECT_EQ(Parts("host:81"), "|host|81|/|");
    EXPECT_EQ(Parts(" http://host/a "), "http|host|0|/a|");
    EXPECT_EQ(Parts("ftp://host"), "ftp|host|0|/|");
    EXPECT_EQ(Parts(""), "||0|/|");
    EXPECT_EQ(Parts("http://"), "http||0|/|");
}

TEST(Url, AQueryMayFollowTheHostAndHoldWhatPartsTheOthers) {
    EXPECT_EQ(Parts("http://host?a:b/c"), "http|host|0|/|a:b/c");
    EXPECT_EQ(Parts("http://host:90?a"), "http|host|90|/|a");
}

TEST(Url, APortIsTheDigitsAtItsBeginning) {
    EXPECT_EQ(SplitUrl("host:80x/").Port, 80);
    EXPECT_EQ(SplitUrl("host:/").Port, 0);
    EXPECT_EQ(SplitUrl("host:-5/").Port, 0);
    EXPECT_EQ(SplitUrl("host:99999999999999999999/").Port, 2147483647);
}

TEST(Url, OnlyHttpCounts) {
    EXPECT_TRUE(IsHttp(SplitUrl("http://a")));
    EXPECT_TRUE(IsHttp(SplitUrl("HTTP://a")));
    EXPECT_TRUE(IsHttp(SplitUrl("a")));
    EXPECT_FALSE(IsHttp(SplitUrl("https://a")));
}

TEST(Url, WhatWouldBreakTheRequestCannotBeRequested) {
    EXPECT_TRUE(CanBeRequested(SplitUrl("http://a/b?c")));
    EXPECT_FALSE(CanBeRequested(SplitUrl("http:///b")));
    EXPECT_FALSE(CanBeRequested(SplitUrl("http://a b/")));
    EXPECT_FALSE(CanBeRequested(SplitUrl("http://a/b\r\nX: y")));
    EXPECT_FALSE(CanBeRequested(SplitUrl("http://a/?b\tc")));
    EXPECT_FALSE(CanBeRequested(SplitUrl(std::string("http://a/\0b", 11))));
}

} // namespace
} // namespace vardenix
