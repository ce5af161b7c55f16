#include "mapeditor/MapFields.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <limits>
#include <random>

namespace vardenix {
namespace {

std::string BytesOf(const MapFileRecord& record) {
    std::string bytes(sizeof record, '\0');
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

// A record whose bytes nothing in the program has a say in.
MapFileRecord RecordOf(const std::string& bytes) {
    MapFileRecord record;
    std::memcpy(static_cast<void*>(&record), bytes.data(), sizeof record);
    return record;
}

// Puts four bytes at an offset of the file.
MapFileRecord With(size_t offset, uint32_t bits) {
    std::string bytes(1112, '\0');
    std::memcpy(bytes.data() + offset, &bits, sizeof bits);
    return RecordOf(bytes);
}

// The error of a text: its number and its field.
std::pair<int32_t, int> Refusal(int index, const std::string& text) {
    MapFileRecord record;
    const std::string before = BytesOf(record);
    try {
        TakeMapField(record, index, text);
    } catch (const MapFieldError& error) {
        EXPECT_EQ(BytesOf(record), before);
        EXPECT_NE(error.Detail().find(MapFieldLabel(index)), std::string::npos);
        return {error.NumberValue(), error.Index()};
    }
    return {0, -1};
}

// Where each box's field stands in the file.
constexpr std::array<size_t, 22> Offsets{4,    8,    1052, 1056, 1060, 1064, 1068, 1072,
                                         1076, 1080, 1084, 1088, 1092, 1096, 1104, 1108,
                                         12,   0,    20,   24,   1100, 16};

TEST(MapFields, EachBoxShowsAndSetsItsFieldOfTheFile) {
    for (int index = 0; index < 22; ++index) {
        const size_t offset = Offsets[static_cast<size_t>(index)];
        const bool isFloat = index >= 14 && index <= 17;
        const MapFileRecord shown =
            With(offset,
                 isFloat ? std::bit_cast<uint32_t>(-12.25F) : static_cast<uint32_t>(-12));
        EXPECT_EQ(MapFieldText(shown, index), isFloat ? "-12.25" : "-12") << index;
        for (int other = 0; other < 22; ++other) {
            const bool own = other == index;
            EXPECT_EQ(MapFieldText(shown, other) == "0", !own) << index << ", " << other;
        }
        MapFileRecord set;
        TakeMapField(set, index, isFloat ? "-12.25" : "-12");
        EXPECT_EQ(BytesOf(set), BytesOf(shown)) << index;
    }
}

TEST(MapFields, ShowingAndTakingBackKeepsEveryBitOfEveryFloat) {
    std::mt19937 random(20260101);
    std::vector<uint32_t> bits{0x00000000, 0x80000000, 0x00000001, 0x807FFFFF,
                               0x00800000, 0x7F7FFFFF, 0xFF7FFFFF, 0x7F800000,
                               0xFF800000, 0x7FC00000, 0x7F800001, 0xFFFFFFFF,
                               0x7FA12345, 0x444D0D71, 0x3DCCCCCD};
    for (int i = 0; i < 4000; ++i)
        bits.push_back(static_cast<uint32_t>(random()));
    for (const uint32_t value : bits)
        for (const int index : {14, 15, 16, 17}) {
            const size_t offset = Offsets[static_cast<size_t>(index)];
            MapFileRecord record = With(offset, value);
            TakeMapFields(record, MapFieldTextsOf(record));
            std::string expected(1112, '\0');
            std::memcpy(expected.data() + offset, &value, sizeof value);
            ASSERT_EQ(BytesOf(record), expected) << std::hex << value;
            // Also when it is typed anew into another record.
            const float number = std::bit_cast<float>(value);
            if (number - number != 0)
                continue;
            MapFileRecord typed;
            typed.Longitude = typed.Latitude = 1;
            typed.FeetBetweenMEAPoints = typed.FeetBetweenL0Tiles = 1;
            TakeMapField(typed, index, MapFieldText(record, index));
            ASSERT_EQ(BytesOf(typed).substr(offset, 4), expected.substr(offset, 4))
                << std::hex << value;
        }
}

TEST(MapFields, AnyRecordGoesThroughTheBoxesUnchanged) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::string bytes;
        for (int i = 0; i < 1112; ++i)
            bytes += static_cast<char>(random());
        MapFileRecord record = RecordOf(bytes);
        TakeMapFields(record, MapFieldTextsOf(record));
        ASSERT_EQ(BytesOf(record), bytes);
    }
}

TEST(MapFields, FloatsAreShownInTheirShortestText) {
    MapFileRecord record;
    record.Longitude = 124.5F;
    record.Latitude = 0.1F;
    record.FeetBetweenMEAPoints = 3280.84F;
    record.FeetBetweenL0Tiles = 820.21F;
    EXPECT_EQ(MapFieldText(record, 14), "124.5");
    EXPECT_EQ(MapFieldText(record, 15), "0.1");
    EXPECT_EQ(MapFieldText(record, 16), "3280.84");
    EXPECT_EQ(MapFieldText(record, 17), "820.21");
}

TEST(MapFields, WholeNumbersAreRoundedHalfToEven) {
    MapFileRecord record;
    for (const auto& [text, value] : {std::pair{"2.5", 2},
                                      {"3.5", 4},
                                      {"-2.5", -2},
                                      {"2147483647.4", 2147483647},
                                      {"-2147483648", std::numeric_limits<int>::min()},
                                      {" 7 ", 7},
                                      {"007", 7},
                                      {".6", 1},
                                      {"", 0},
                                      {"-0", 0}}) {
        TakeMapField(record, 20, text);
        EXPECT_EQ(record.Flags, value) << text;
    }
}

TEST(MapFields, ATextThatIsNoNumberIsRefusedWithItsField) {
    using Error = std::pair<int32_t, int>;
    for (const char* text : {"-", ".", "1-2", "1.2.3", "--1", "1 2", "abc", "1e", "0x10",
                             "inf", "nan", "-nan", "1\t"}) {
        EXPECT_EQ(Refusal(3, text), (Error{13, 3})) << text;
        EXPECT_EQ(Refusal(15, text), (Error{13, 15})) << text;
    }
    for (const char* text : {"2147483648", "2147483647.5", "-2147483649", "1e400"})
        EXPECT_EQ(Refusal(21, text), (Error{6, 21})) << text;
    for (const char* text : {"3.5e38", "-1e39", "1e400"})
        EXPECT_EQ(Refusal(17, text), (Error{6, 17})) << text;
}

TEST(MapFields, WhatIsTooSmallForAFloatIsNothing) {
    MapFileRecord record;
    record.Latitude = 5;
    TakeMapField(record, 15, "1e-60");
    EXPECT_EQ(record.Latitude, 0);
}

TEST(MapFields, OneBadTextLeavesTheWholeRecord) {
    MapFileRecord record;
    record.MEAWidth = 3;
    MapFieldTexts texts = MapFieldTextsOf(record);
    texts[0] = "99";
    texts[21] = "1-1";
    const std::string before = BytesOf(record);
    EXPECT_THROW(TakeMapFields(record, texts), MapFieldError);
    EXPECT_EQ(BytesOf(record), before);
    texts[21] = "6";
    TakeMapFields(record, texts);
    EXPECT_EQ(record.MEAWidth, 99);
    EXPECT_EQ(record.NumberOfLODs, 6);
}

TEST(MapFields, NamesOfScriptsLeadToTheirFields) {
    for (int index = 0; index < MapFieldCount; ++index)
        EXPECT_EQ(MapFieldOfName(MapFieldName(index)), index);
    EXPECT_EQ(MapFieldOfName("l3-height"), 9);
    EXPECT_EQ(MapFieldOfName("latitude"), 15);
    EXPECT_EQ(MapFieldOfName("Latitude"), std::nullopt);
    EXPECT_EQ(MapFieldOfName(""), std::nullopt);
}

} // namespace
} // namespace vardenix
