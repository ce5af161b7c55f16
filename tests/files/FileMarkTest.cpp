#include "files/FileMark.h"

#include "files/ReadableFile.h"
#include "files/StagedFile.h"
#include "files/Transaction.h"
#include "support/ErrorOf.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <span>
#include <string>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

TEST(FileMark, TellsAChangeThatKeepsIdentitySizeAndTime) {
    const TestFolder folder;
    const std::string path = folder.Write("a", "bytes");
    const FileMark before = MarkOfPath(path);
    EXPECT_EQ(MarkOfPath(path), before);
    const auto time = fs::last_write_time(path);
    LetTickPass();
    std::ofstream(path, std::ios::in) << "BYTES";
    fs::last_write_time(path, time);
    const FileMark after = MarkOfPath(path);
    EXPECT_EQ(after.Identity, before.Identity);
    EXPECT_NE(after, before);
    EXPECT_TRUE(before.ChangedNoLaterThan(after));
    EXPECT_TRUE(after.ChangedNoLaterThan(after));
    EXPECT_FALSE(after.ChangedNoLaterThan(before));
    EXPECT_EQ(ReadableFile(path).Mark(), after);
    EXPECT_FALSE(MarkOfPath(folder.File("none")).Identity.Present);
}

TEST(FileMark, IsSettledOnceItsTickIsOver) {
    const TestFolder folder;
    const std::string path = folder.Write("a", "bytes");
    FileMark mark = MarkOfPath(path);
    EXPECT_FALSE(mark.IsSettled());
    mark.ChangedSeconds -= 1;
    mark.ChangedNanoseconds = 1;
    EXPECT_TRUE(mark.IsSettled());
    mark.ChangedNanoseconds = 0; // a file system without fractions
    EXPECT_FALSE(mark.IsSettled());
    mark.ChangedSeconds -= 9;
    EXPECT_TRUE(mark.IsSettled());
}

std::string Noise(size_t bytes) {
    std::mt19937 random(3);
    std::string text(bytes, ' ');
    for (char& letter : text)
        letter = static_cast<char>(random());
    return text;
}

uint32_t SumOf(std::string_view text) {
    return ChecksumOf(std::as_bytes(std::span(text)));
}

TEST(ChecksumJoiner, GivesTheChecksumOfBothTogether) {
    const std::string text = Noise(10000);
    for (const size_t length : {size_t{0}, size_t{1}, size_t{512}, size_t{9999}}) {
        const auto cut = text.size() - length;
        EXPECT_EQ(ChecksumJoiner(length).Join(SumOf(text.substr(0, cut)),
                                              SumOf(text.substr(cut))),
                  SumOf(text));
    }
}

// Alike and shifted, short and long, across the buffer; between bytes of its own.
TEST(StagedFile, CopiesFromAnotherFileAndKnowsItsChecksum) {
    const TestFolder folder;
    const std::string text = Noise(3'000'000);
    const ReadableFile source(folder.Write("source", text));
    struct Piece {
        size_t From;
        size_t Count;
    };
    const std::vector<Piece> pieces{{0, 0},          {0, 100},        {100, 70'000},
                                    {5, 2'500'000},  {70'100, 9'000}, {0, 3'000'000},
                                    {8192, 262'144}, {2'999'999, 1}};
    std::string expected;
    {
        Transaction transaction;
        StagedFile& file = transaction.Stage(folder.File("made"));
        for (const auto& [from, count] : pieces) {
            const std::string piece = text.substr(from, count);
            file.WriteText("own");
            file.CopyFrom(source, from, count, SumOf(piece));
            file.Write(std::as_bytes(std::span(piece)), SumOf(piece));
            expected.append("own").append(piece).append(piece);
            EXPECT_EQ(file.Position(), expected.size());
        }
        EXPECT_EQ(file.Settle().Size, expected.size());
        EXPECT_EQ(file.Checksum(), SumOf(expected));
        transaction.Commit();
    }
    EXPECT_TRUE(Slurp(folder.File("made")) == expected);
    StagedFile cut(folder.File("cut"));
    EXPECT_EQ(ErrorOf([&] { cut.CopyFrom(source, 2'999'999, 2, 0); }).NumberValue(), 57);
    EXPECT_EQ(ErrorOf([&] { cut.CopyFrom(source, 100, 3'000'000, 0); }).NumberValue(),
              57);
}

} // namespace
} // namespace vardenix::tests
