#include "platform/Clock.h"
#include "texts/RuntimeError.h"
#include "texts/Windows1252.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <iconv.h>

namespace vardenix {
namespace {

TEST(Clock, DatesOfLogsAreEnglish) {
    const LocalTime time{2026, 3, 7, 6, 9, 5, 2};
    EXPECT_EQ(LongDate(time), "Saturday, March 07, 2026");
    EXPECT_EQ(ShortMonthDate(time), "07 Mar 2026");
    EXPECT_EQ(HoursMinutes(time), "09:05");
    EXPECT_EQ(HoursMinutesSeconds(time), "09:05:02");
}

TEST(Windows1252, EveryByteSurvivesBothWays) {
    std::string bytes;
    for (int i = 0; i < 256; ++i)
        bytes += static_cast<char>(i);
    EXPECT_EQ(BytesFromUtf8(Utf8FromBytes(bytes)), bytes);
}

TEST(Windows1252, LettersBecomeUtf8) {
    EXPECT_EQ(Utf8FromBytes("a\xE9\x80\x9F"), "a\xC3\xA9\xE2\x82\xAC\xC5\xB8");
}

// The system's own table of it, which has no letter for five bytes.
TEST(Windows1252, EveryLetterIsTheOneThatTheSystemKnows) {
    const iconv_t table = iconv_open("UTF-8", "WINDOWS-1252");
    ASSERT_NE(reinterpret_cast<intptr_t>(table), -1);
    int unknown = 0;
    for (int i = 1; i < 256; ++i) {
        char letter = static_cast<char>(i);
        char utf8[8] = {};
        char* in = &letter;
        char* out = utf8;
        size_t inLeft = 1;
        size_t outLeft = sizeof utf8 - 1;
        if (iconv(table, &in, &inLeft, &out, &outLeft) == 0)
            EXPECT_EQ(Utf8FromBytes(std::string(1, static_cast<char>(i))), utf8) << i;
        else
            ++unknown;
    }
    iconv_close(table);
    EXPECT_EQ(unknown, 5);
}

TEST(Windows1252, LettersBesideTheTableHaveNoByte) {
    // The byte 80 is another letter, 81 stands for itself.
    EXPECT_EQ(BytesFromUtf8("\xC2\x80|\xC2\x81|\xC2\x9F|\xC2\xA0"), "?|\x81|?|\xA0");
    EXPECT_EQ(BytesFromUtf8("\x7F|\xC3\xBF|\xC4\x80"), "\x7F|\xFF|?");
}

TEST(Windows1252, WhatHasNoByteBecomesAQuestionMark) {
    EXPECT_EQ(BytesFromUtf8("\xE4\xB8\xAD|\xF0\x9F\x98\x80|\xFF|\xC3"), "?|?|?|?");
}

TEST(RuntimeError, TheReportHasNumberDescriptionAndDetail) {
    EXPECT_EQ(ReportText(RuntimeError(ErrorNumber::DiskFull)),
              "Run-time error '61':\n\nDisk full");
    EXPECT_EQ(ReportText(RuntimeError(ErrorNumber::FileNotFound, "opening a.b")),
              "Run-time error '53':\n\nFile not found\nopening a.b");
}

TEST(RuntimeError, TheSystemsRefusalsGetTheirNumbers) {
    const auto numberOf = [](int systemError) {
        try {
            ThrowSystemError(systemError, "writing", "a b");
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Detail().substr(0, 13), "writing a b: ");
            return error.NumberValue();
        }
    };
    EXPECT_EQ(numberOf(ENOENT), 53);
    EXPECT_EQ(numberOf(ENOSPC), 61);
    EXPECT_EQ(numberOf(EFBIG), 61);
    EXPECT_EQ(numberOf(EACCES), 70);
    EXPECT_EQ(numberOf(EROFS), 75);
    EXPECT_EQ(numberOf(ENOTDIR), 76);
    EXPECT_EQ(numberOf(EIO), 57);
}

} // namespace
} // namespace vardenix
