#include "updater/MD5Hash.h"

#include "support/TestFolder.h"
#include "texts/RuntimeError.h"
#include "updater/UpdateSignature.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

using tests::TestFolder;

std::string HashOf(std::string_view text) {
    return MD5Hash::HashBytes(std::as_bytes(std::span(text)));
}

// The values that the algorithm was published with.
TEST(MD5Hash, GivesThePublishedValues) {
    EXPECT_EQ(HashOf(""), "D41D8CD98F00B204E9800998ECF8427E");
    EXPECT_EQ(HashOf("abc"), "900150983CD24FB0D6963F7D28E17F72");
    EXPECT_EQ(
        HashOf("12345678901234567890123456789012345678901234567890123456789012345678"
               "901234567890"),
        "57EDF4A22BE3C955AC49DA2E2107B67A");
}

// Values of another program, md5sum, for sizes round the blocks that are read.
TEST(MD5Hash, AFileIsReadInBlocks) {
    const TestFolder folder;
    for (const auto& [size, hash] : {std::pair{16383, "5ADFEF9F07CCC2744571C300A4F9218C"},
                                     {16384, "09B47CF07C9D0EA589E0E2AA7D0D3550"},
                                     {16385, "8D075F723556E776F6F5DCF28E6889A7"},
                                     {40000, "15725C9AAAC02FDA4D458AD5416F6992"}})
        EXPECT_EQ(MD5Hash::HashFile(
                      folder.Write("f", std::string(static_cast<size_t>(size), 'a'))),
                  hash)
            << size;
}

TEST(MD5Hash, AMissingFileIsAnError) {
    const TestFolder folder;
    try {
        MD5Hash::HashFile(folder.File("none"));
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.NumberValue(), 53);
        EXPECT_EQ(error.Description(), "File doesn't exist");
        EXPECT_TRUE(error.Detail().starts_with("MD5Hash.HashFile"));
    }
}

// Made by "openssl pkeyutl -sign -rawin" over "the list\n".
constexpr std::string_view Key =
    "MCowBQYDK2VwAyEAWeNSZL9U4HuaNnjvM+G0VxaVaiJo/RucnGSWxL+bL0I=";
constexpr std::string_view OtherKey =
    "MCowBQYDK2VwAyEAYzwjhpIaOf1Q2fwQHG1Ebe53iLXFKMPhYZfPWw9Ymn0=";
constexpr std::string_view List = "the list\n";

std::string Signature() {
    constexpr std::string_view digits =
        "8f58eea741ab96caaffe7f62c5ac63daf9e0e6c158089a194a67d43a3d460d17"
        "b68c3c1b29feee5392d56fdfc302b6948e788b21dff9e7a3b96586bfbcd49f07";
    std::string bytes;
    for (size_t i = 0; i < digits.size(); i += 2)
        bytes +=
            static_cast<char>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16));
    return bytes;
}

bool Signed(std::string_view key, std::string_view text, std::string_view signature) {
    return IsSignedBy(key, std::as_bytes(std::span(text)),
                      std::as_bytes(std::span(signature)));
}

TEST(UpdateSignature, HoldsForTheVeryBytesAndKeyAlone) {
    const std::string signature = Signature();
    ASSERT_EQ(signature.size(), 64U);
    EXPECT_TRUE(Signed(Key, List, signature));
    EXPECT_FALSE(Signed(OtherKey, List, signature));
    EXPECT_FALSE(Signed(Key, "the list", signature));
    EXPECT_FALSE(Signed(Key, List, signature.substr(1)));
    EXPECT_FALSE(Signed(Key, List, signature + "x"));
    EXPECT_FALSE(Signed(Key, List, ""));
    std::string changed = signature;
    changed[40] = static_cast<char>(changed[40] ^ 1);
    EXPECT_FALSE(Signed(Key, List, changed));
}

TEST(UpdateSignature, WhatIsNoKeySignsNothing) {
    for (const std::string& key :
         {std::string(), std::string("x"), std::string(60, 'A'), std::string(60, '!'),
          std::string(Key.substr(0, 59)) + "!"})
        EXPECT_FALSE(Signed(key, List, Signature())) << key;
}

} // namespace
} // namespace vardenix
