#include "files/GrowingFile.h"

#include "support/ErrorOf.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace vardenix {
namespace {

using tests::ErrorOf;
using tests::Slurp;
using tests::Spill;

std::vector<std::byte> Bytes(const std::string& text) {
    std::vector<std::byte> bytes;
    for (const char letter : text)
        bytes.push_back(static_cast<std::byte>(letter));
    return bytes;
}

class GrowingFileTest : public testing::Test {
protected:
    tests::TestFolder folder_;
    std::string path_ = folder_.File("1.log");
    GrowingFile file_{std::move(*HeldFile::Make(path_))};
};

TEST_F(GrowingFileTest, ReadsARecordAgainOnceItIsWritten) {
    EXPECT_EQ(file_.Append(Bytes("first")), 0U);
    const uint64_t second = file_.Append(Bytes("the second"));
    EXPECT_EQ(second, GrowingFile::HeadBytes + 5);
    EXPECT_FALSE(file_.IsWritten(file_.Size()));
    file_.Drain();
    EXPECT_TRUE(file_.IsWritten(0));
    EXPECT_TRUE(file_.IsWritten(second));
    EXPECT_EQ(file_.Read(second), Bytes("the second"));
    EXPECT_EQ(file_.Read(0), Bytes("first"));
    EXPECT_EQ(file_.Size(), std::filesystem::file_size(path_));
}

TEST_F(GrowingFileTest, WhatIsNotAsItWasWrittenIsAnError) {
    file_.Append(Bytes("first"));
    file_.Append(Bytes("second"));
    file_.Drain();
    const std::string whole = Slurp(path_);
    for (size_t at = 0; at < GrowingFile::HeadBytes + 5; ++at) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
        Spill(path_, damaged);
        EXPECT_NE(ErrorOf([this] { file_.Read(0); }).Number(),
                  static_cast<ErrorNumber>(0))
            << at;
    }
    std::filesystem::resize_file(path_, 10);
    EXPECT_EQ(ErrorOf([this] { file_.Read(0); }).Number(), ErrorNumber::InputPastEnd);
}

} // namespace
} // namespace vardenix
