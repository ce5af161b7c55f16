#include "files/BinaryReader.h"

#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <sys/stat.h>

namespace vardenix {
namespace {

using tests::TestFolder;

std::span<const std::byte> BytesOf(std::string_view text) {
    return std::as_bytes(std::span(text));
}

ErrorNumber NumberOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return ErrorNumber{0};
}

TEST(BinaryReader, TakesLittleEndianFields) {
    BinaryReader reader(BytesOf(std::string_view("\x01\x02\x03\xFF\x7F\0\0\x80\x3F", 9)),
                        "f");
    EXPECT_EQ(reader.Int32(), -16580095); // FF030201
    EXPECT_EQ(reader.Byte(), 0x7F);
    EXPECT_EQ(reader.Float(), 1.0F); // 3F800000
    EXPECT_EQ(reader.Remaining(), 0U);
}

TEST(BinaryReader, ALackNamesPathOffsetExpectedAndFound) {
    BinaryReader reader(BytesOf("abcdef"), "my file.bin");
    reader.Int32();
    try {
        reader.Int32();
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::InputPastEnd);
        EXPECT_EQ(error.Detail(),
                  "my file.bin, offset 4: expected 4 bytes, found 2 bytes left");
    }
}

TEST(BinaryReader, CountsAreHeldAgainstWhatIsLeft) {
    const BinaryReader reader(BytesOf("0123456789"), "f");
    EXPECT_NO_THROW(reader.RequireRecords(2, 5, "sets"));
    EXPECT_NO_THROW(reader.RequireRecords(0, 5, "sets"));
    EXPECT_THROW(reader.RequireRecords(3, 5, "sets"), RuntimeError);
    EXPECT_THROW(reader.RequireRecords(-1, 5, "sets"), RuntimeError);
    EXPECT_THROW(reader.RequireRecords(INT64_MAX, 5, "sets"), RuntimeError);
}

TEST(ReadWholeFile, GivesTheBytes) {
    const TestFolder folder;
    const std::string path = folder.Write("a b.bin", std::string("a\0b", 3));
    const FileBytes bytes = ReadWholeFile(path, 3);
    ASSERT_EQ(bytes.size(), 3U);
    EXPECT_EQ(bytes.data()[2], std::byte{'b'});
    EXPECT_EQ(ReadWholeFile(folder.Write("empty", ""), 0).size(), 0U);
}

TEST(ReadWholeFile, RefusesALongerFileBeforeItReadsIt) {
    const TestFolder folder;
    const std::string path = folder.Write("huge", "");
    // Of no size on the disk; its bytes would not fit into memory.
    std::filesystem::resize_file(path, uint64_t{1} << 42);
    EXPECT_EQ(NumberOf([&] { ReadWholeFile(path, (uint64_t{1} << 42) - 1); }),
              ErrorNumber::OutOfMemory);
    EXPECT_EQ(NumberOf([&] { ReadWholeFile(folder.Write("four", "abcd"), 3); }),
              ErrorNumber::OutOfMemory);
}

TEST(ReadWholeFile, RefusesWhatIsNoFile) {
    const TestFolder folder;
    EXPECT_EQ(NumberOf([&] { ReadWholeFile(folder.File("none"), 9); }),
              ErrorNumber::FileNotFound);
    EXPECT_EQ(NumberOf([&] { ReadWholeFile(folder.Path(), 9); }),
              ErrorNumber::PathFileAccess);
    EXPECT_EQ(NumberOf([] { ReadWholeFile("/dev/zero", 9); }),
              ErrorNumber::PathFileAccess);
    ASSERT_EQ(mkfifo(folder.File("pipe").c_str(), 0600), 0);
    EXPECT_EQ(NumberOf([&] { ReadWholeFile(folder.File("pipe"), 9); }),
              ErrorNumber::PathFileAccess);
}

} // namespace
} // namespace vardenix
