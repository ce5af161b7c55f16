#include "mapeditor/MapPalette.h"

#include "mapeditor/ColorHelpers.h"
#include "mapeditor/PaletteFlash.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

bool Same(const MapPaletteEntry& a, const MapPaletteEntry& b) {
    return a.Red == b.Red && a.Green == b.Green && a.Blue == b.Blue && a.Alpha == b.Alpha;
}

TEST(MapPalette, AColourCodeIsTakenApartByDivision) {
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    bool done = false;
    ColorCodeToRGB(0xAB030201, red, green, blue, done);
    EXPECT_EQ(red, 1);
    EXPECT_EQ(green, 2);
    EXPECT_EQ(blue, 3);
    EXPECT_TRUE(done);
}

TEST(MapPalette, AColourLeavesAlpha) {
    MapPaletteEntry entry{1, 2, 3, 77};
    EXPECT_EQ(EntryColor(entry), 0x030201U);
    SetEntryColor(entry, 0x0C0B0A);
    EXPECT_TRUE(Same(entry, {10, 11, 12, 77}));
    MapFileRecord record;
    for (int i = 0; i < 256; ++i)
        record.Palette[i] = {9, 9, 9, static_cast<uint8_t>(i)};
    SetAllSameColor(record.Palette, 0xFF8001);
    for (int i = 0; i < 256; ++i)
        EXPECT_TRUE(Same(record.Palette[i], {1, 128, 255, static_cast<uint8_t>(i)}));
    SetAllAlpha(record.Palette, 200);
    for (const MapPaletteEntry& entryAfter : record.Palette)
        EXPECT_TRUE(Same(entryAfter, {1, 128, 255, 200}));
}

TEST(MapPalette, NewAlphaIsClamped) {
    EXPECT_EQ(NewAlphaOf("0"), 0);
    EXPECT_EQ(NewAlphaOf("255"), 255);
    EXPECT_EQ(NewAlphaOf("256"), 255);
    EXPECT_EQ(NewAlphaOf("99999999999"), 255);
    EXPECT_EQ(NewAlphaOf("-1"), 0);
    EXPECT_EQ(NewAlphaOf(""), 0);
}

TEST(MapPalette, TipsTellTheNumbers) {
    EXPECT_EQ(EntryTip(0, {0, 0, 0, 0}), "#:0 {R:0, G:0, B:0, A:0}");
    EXPECT_EQ(EntryTip(255, {1, 20, 255, 7}), "#:255 {R:1, G:20, B:255, A:7}");
}

TEST(MapPalette, ANumberAbove255Overflows) {
    EXPECT_EQ(EntryTextsOf({1, 2, 3, 255}), (EntryTexts{"1", "2", "3", "255"}));
    EXPECT_TRUE(Same(EntryOf({"255", "0", "", "007"}), {255, 0, 0, 7}));
    const char* const names[] = {"RED:", "GREEN:", "BLUE:", "ALPHA:"};
    for (size_t i = 0; i < 4; ++i)
        for (const char* text : {"256", "99999999999999999999"}) {
            EntryTexts texts{"1", "1", "1", "1"};
            texts.at(i) = text;
            try {
                EntryOf(texts);
                ADD_FAILURE() << i;
            } catch (const RuntimeError& error) {
                EXPECT_EQ(error.NumberValue(), 6);
                EXPECT_EQ(error.Detail().find(names[i]), 0U) << error.Detail();
            }
        }
}

TEST(MapPalette, ColoursTravelAsTexts) {
    EXPECT_EQ(ColorText(0xFF140A), "#0A14FF");
    for (const char* text :
         {"#0A14FF", "#0a14ff\n", " 10, 20, 255 ", "10 20 255", "rgb(10,20,255)",
          "10;20;255;9", "#:5 {R:10, G:20, B:255, A:1}",
          "#:200 {R:10, G:20, B:255, A:1}\r\n"})
        EXPECT_EQ(ColorOfText(text), 0xFF140AU) << text;
    EXPECT_EQ(ColorOfText("9 0 99"), 0x630009U);
    EXPECT_EQ(ColorOfText("#0F8"), 0x88FF00U);
    EXPECT_EQ(ColorOfText("#000000"), 0U);
    for (const char* text :
         {"", "#", "#12", "#1234567", "#12345G", "blue", "1 2", "1 2 3 4 5", "1 2 256",
          "99999999999999999999 1 1", "1.5 2.5 3.5", "10 apples 20 pears 30", "#:5",
          "#-1", "#+12345"})
        EXPECT_EQ(ColorOfText(text), std::nullopt) << text;
}

TEST(MapPalette, KeysMoveThroughTheGrid) {
    using Step = PaletteStep;
    struct Row {
        int From;
        Step How;
        int To;
    };
    for (const Row& row : std::initializer_list<Row>{{0, Step::Left, 0},
                                                     {16, Step::Left, 15},
                                                     {15, Step::Right, 16},
                                                     {255, Step::Right, 255},
                                                     {15, Step::Up, 15},
                                                     {16, Step::Up, 0},
                                                     {239, Step::Down, 255},
                                                     {240, Step::Down, 240},
                                                     {37, Step::RowBegin, 32},
                                                     {37, Step::RowEnd, 47},
                                                     {37, Step::Top, 5},
                                                     {37, Step::Bottom, 245},
                                                     {32, Step::RowBegin, 32},
                                                     {255, Step::Bottom, 255}})
        EXPECT_EQ(StepInPalette(row.From, row.How), row.To) << row.From;
}

TEST(MapPalette, TheTitleTellsVersionFileAndStar) {
    EXPECT_EQ(MapEditorTitle("", false), "MapEditor v3.0.1");
    EXPECT_EQ(MapEditorTitle("/a b/theater.map", false),
              "MapEditor v3.0.1-/a b/theater.map");
    EXPECT_EQ(MapEditorTitle("/a b/theater.map", true),
              "*MapEditor v3.0.1-/a b/theater.map");
}

// What an entry shows, tick by tick, until it has ended: i inverse, c its colour.
std::string Story(PaletteFlash flash) {
    std::string story;
    while (flash.Running && story.size() < 1000)
        story += FlashTicked(flash) == flash.FlashColor ? 'c' : 'i';
    return story;
}

TEST(PaletteFlash, ChangesUntilItsTicksAreOver) {
    // 2 a second for 3 seconds, one more to pass FlashMax, and the end.
    const PaletteFlash flash = StartFlashing(9, 0x123456);
    EXPECT_EQ(flash.FlashMax, 6);
    EXPECT_EQ(flash.FlashIndex, 9);
    EXPECT_EQ(flash.FlashInverse, 0xEDCBA9U);
    EXPECT_EQ(Story(flash), "icicicic");
    EXPECT_EQ(Story(StartFlashing(9, 0xFFFFFF, 1, 1000)), "icc");
    EXPECT_EQ(StartFlashing(0, 0, 5, 100).FlashMax, 50);
    EXPECT_EQ(StartFlashing(0, 0, 5, 1).FlashMax, 5000);
    EXPECT_EQ(Story(StartFlashing(0, 0, 5, 100)).size(), 52U);
    // The division is rounded: 1000 / 300 is 3, 1000 / 400 is 2, 1000 / 667 is 1.
    EXPECT_EQ(StartFlashing(0, 0, 5, 300).FlashMax, 15);
    EXPECT_EQ(StartFlashing(0, 0, 5, 400).FlashMax, 10);
    EXPECT_EQ(StartFlashing(0, 0, 5, 667).FlashMax, 5);
    EXPECT_THROW(StartFlashing(0, 0, 5, 0), RuntimeError);
}

TEST(PaletteFlash, GivesTheColourBackWhenItIsStopped) {
    PaletteFlash flash = StartFlashing(0, 0x112233);
    FlashTicked(flash);
    EXPECT_EQ(StopFlashing(flash), 0x112233U);
    EXPECT_EQ(StopFlashing(flash), std::nullopt);
    EXPECT_FALSE(flash.Running);
}

} // namespace
} // namespace vardenix
