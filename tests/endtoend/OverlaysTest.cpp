// Features, regions, derived files and the search, with mouse and keys; what came out is
// compared with code of the tests' own, post by post and byte by byte.
#include "endtoend/ControlsOnDesktop.h"
#include "endtoend/WorkspaceOnDesktop.h"
#include "support/CatalogueReader.h"
#include "support/TheaterMaker.h"

#include <cstdio>
#include <optional>
#include <sstream>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

constexpr const char* Star = "^\\*sorrelund$";
constexpr const char* Features = "^Features$";
constexpr const char* Results = "^Search Results$";
// Post (0, 0) of the view, from 0 as the map shows it.
constexpr int ViewX = 60;
constexpr int ViewY = 62;
// Beside the map, in pixels and in twips.
constexpr int Beside = 1120;
constexpr const char* BesideTwips = "16800";

class OverlaysEndToEnd : public WorkspaceOnDesktop {
protected:
    OverlaysEndToEnd() : WorkspaceOnDesktop(2000, 900) {}

    void SetUp() override {
        WorkspaceOnDesktop::SetUp();
        fs::copy(SAMPLE_FOLDER, theater_, fs::copy_options::recursive);
        UseTheater(theater_, {{"X", std::to_string(ViewX)},
                              {"Y", std::to_string(ViewY)},
                              {"MAIN_WIN_VIS", "-1"},
                              {"MAIN_WIN_POS_L", "6600"},
                              {"FEAT_WIN_POS_L", BesideTwips},
                              {"SEARCHRES_WIN_POS_L", BesideTwips}});
    }

    MadeLevel Level2() const {
        const std::string terrain = theater_ + "/terrdata/sorrelund/terrain/theater.";
        return ReadPair(terrain + "L2", terrain + "O2");
    }
    bool IsUp(const std::string& title) {
        return WaitFor([&] { return desktop_.Active(title); });
    }
    void Answer(const std::string& title, const std::string& text) {
        ASSERT_TRUE(IsUp(title)) << title;
        desktop_.Type(text);
        desktop_.Key("Return");
        ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(title); })) << title;
    }
    // Post x, y of the view, from its lower left.
    void ClickPost(int x, int y) {
        desktop_.ClickIn(Map, x * Cell + Cell / 2, Strip + Side - y * Cell - Cell / 2);
    }
    void Save() {
        ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
        desktop_.Key("ctrl+s");
        ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Star); }));
    }
    ControlsOnDesktop ControlsOf(const char* form, const char* title) {
        return {desktop_, folder_.File("desktop"), form, title};
    }
    // Once it is there, whole.
    std::string Made(const std::string& file, size_t size) {
        const std::string path = folder_.File(file);
        EXPECT_TRUE(WaitFor([&] {
            return fs::exists(path) && fs::file_size(path) == size;
        })) << file;
        return Slurp(path);
    }

    std::string theater_ = folder_.File("my game");
};

std::string Number(int value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(static_cast<unsigned>(value) >> 8 * i & 0xFF);
    return text;
}

// KEY of [SECTION] of VX.ini.
std::string Stored(const std::string& ini, const std::string& section,
                   const std::string& key) {
    const size_t from = ini.find("[" + section + "]");
    const size_t at = ini.find("\n" + key + "=", from) + key.size() + 2;
    return ini.substr(at, ini.find('\r', at) - at);
}

TEST_F(OverlaysEndToEnd, DroppedFeaturesShowInOtherColoursAndFontsAndAreExported) {
    const std::string file =
        folder_.Write("mine.tdf", "# not a feature\r\n"
                                  "airport 1 61,63 7 Home   Field\r\n"
                                  "RIVER 2 60,66 63.5,62 3\r\n"
                                  "LABEL 1 100,100 1 Far Away\r\n");
    Start();
    const Picture plain = MapPicture();
    const Child files({DRAG_SOURCE, file},
                      {{"DISPLAY", desktop_.Display()}, {"QT_QPA_PLATFORM", "xcb"}},
                      folder_.File("desktop/files.log"));
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible("^Files$"); }));
    desktop_.Move("^Files$", Beside, 700);
    ASSERT_TRUE(WaitFor([&] { return desktop_.WhereIs("^Files$").Top > 600; }));
    desktop_.DragInto("^Files$", {30, 30}, Map, {300, 300});
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Features); }));

    desktop_.Activate(Features);
    ASSERT_TRUE(IsUp(Features));
    const ControlsOnDesktop window = ControlsOf("FrmVXFeatures", Features);
    for (const char* box : {"Check", "CheckAirports", "CheckRiver"})
        window.Press(box);
    window.Press("CmdAirportCol");
    ASSERT_TRUE(IsUp("^Select Color$"));
    desktop_.Keys({"alt+h", "ctrl+a"});
    ASSERT_NO_FATAL_FAILURE(Answer("^Select Color$", "#12AB34"));
    window.Press("SliderAirport");
    desktop_.Key("End"); // 20 pixels
    window.Press("CmdAirportFont");
    ASSERT_TRUE(IsUp("^Select Font$"));
    desktop_.Key("alt+f");
    desktop_.Type("Liberation Mono");
    desktop_.Keys({"alt+s", "ctrl+a"});
    ASSERT_NO_FATAL_FAILURE(Answer("^Select Font$", "24"));

    // The mark of 20 pixels round post 61, 63 and the middle of the river.
    const Point mark{Cell + Cell / 2, Side - Cell - Cell / 2};
    ASSERT_TRUE(Await([&](const Picture& map) {
        return map.At(mark.X, mark.Y) == 0x12AB34 &&
               map.At(mark.X, mark.Y + 19) == 0x12AB34 &&
               map.At(mark.X, mark.Y + 22) == plain.At(mark.X, mark.Y + 22);
    }));
    const Picture map = MapPicture();
    const Point river{Cell / 2 + 7 * Cell / 4, Cell / 2 + 2 * Cell};
    EXPECT_NE(map.At(river.X, river.Y), plain.At(river.X, river.Y));
    // Ten letters of 24 points are some 200 pixels wide; black is no colour of the land.
    const Place name{mark.X + 20, mark.Y - 20 - 40, 260, 40};
    EXPECT_EQ(plain.Part(name).Count(0), 0);
    EXPECT_GT(map.Part(name).Count(0), 600);
    EXPECT_EQ(map.Part({mark.X + 40, mark.Y, 300, 100}).Count(0), 0);

    // With Shift, and out again with whole numbers.
    desktop_.Activate(Panel);
    ASSERT_TRUE(IsUp(Panel));
    const Place button = ControlsOf("FrmVXMain", Panel).At("CmdExport");
    desktop_.DragIn(Panel, {button.Left + 20, button.Top + 10},
                    {button.Left + 20, button.Top + 10}, "shift");
    ClickPost(4, 4);
    ClickPost(0, 0);
    ASSERT_TRUE(IsUp("^TDF Export$"));
    desktop_.Key("alt+y");
    ASSERT_NO_FATAL_FAILURE(
        Answer("^Save Feature File as...$", folder_.File("mine again.tdf")));
    const std::string expected =
        "AIRPORT 1 61,63 7 Home Field\r\nRIVER 2 60,66 64,62 3\r\n";
    EXPECT_EQ(Made("mine again.tdf", expected.size()), expected);

    Leave();
    const std::string ini = Slurp(folder_.File("program/VX.ini"));
    EXPECT_EQ(Stored(ini, "COLORS", "AIRPORTS"), "34AB12");
    EXPECT_EQ(Stored(ini, "FONT_NAME", "AIRPORTS"), "Liberation Mono");
    EXPECT_EQ(Stored(ini, "FONT_SIZE", "AIRPORTS"), "24");
}

TEST_F(OverlaysEndToEnd, ARegionIsExportedStampedElsewhereAndPastTheEdge) {
    MadeLevel level = Level2();
    Start();
    // Posts 1 to 3 across, 1 to 2 up, by the corners in any order.
    const Picture plain = MapPicture();
    desktop_.Key("ctrl+e");
    ClickPost(3, 1);
    ClickPost(1, 2);
    const std::string file = folder_.File("land.exp");
    ASSERT_NO_FATAL_FAILURE(Answer("^Save Export file as...$", file));
    std::string expected = Number(3, 4) + Number(2, 4);
    for (int y = 1; y <= 2; ++y)
        for (int x = 1; x <= 3; ++x)
            expected += Number(level.At(ViewX + x + 1, ViewY + y + 1).Tile, 4);
    EXPECT_EQ(Made("land.exp", expected.size()), expected);

    const MadeLevel old = level;
    const auto stamp = [&](int left, int bottom) { // posts from 1
        for (int y = 0; y < 2 && bottom + y <= Posts; ++y)
            for (int x = 0; x < 3 && left + x <= Posts; ++x)
                level.At(left + x, bottom + y).Tile =
                    MadeLevel(old).At(ViewX + 2 + x, ViewY + 2 + y).Tile;
    };
    desktop_.Key("ctrl+i");
    ASSERT_NO_FATAL_FAILURE(Answer("^Open file to import...$", file));
    ClickPost(0, 3);
    ASSERT_NO_FATAL_FAILURE(Save());
    stamp(ViewX + 1, ViewY + 4);
    EXPECT_TRUE(Level2().Posts == level.Posts);
    EXPECT_TRUE(Await([&](const Picture& map) { return map != plain; }));

    // The last post of the terrain takes one of the six.
    const ControlsOnDesktop panel = ControlsOf("FrmVXMain", Panel);
    desktop_.Activate(Panel);
    ASSERT_TRUE(IsUp(Panel));
    panel.TypeInto("LabelX", "123");
    panel.TypeInto("LabelY", "123");
    const Picture before = MapPicture();
    desktop_.Key("Return");
    ASSERT_TRUE(Await([&](const Picture& map) { return map != before; }));
    desktop_.Activate(Map);
    ASSERT_TRUE(IsUp(Map));
    desktop_.Key("ctrl+i");
    ASSERT_NO_FATAL_FAILURE(Answer("^Open file to import...$", file));
    ClickPost(4, 4);
    ASSERT_TRUE(WaitFor([&] { return !desktop_.Active(Map); }));
    desktop_.Key("alt+y");
    ASSERT_NO_FATAL_FAILURE(Save());
    stamp(Posts, Posts);
    EXPECT_TRUE(Level2().Posts == level.Posts);
    Leave();
}

TEST_F(OverlaysEndToEnd, TheThreeDerivedFilesAreMade) {
    MadeLevel level = Level2();
    const FoundCatalogue catalogue =
        ReadCatalogue(theater_ + "/terrdata/sorrelund/texture/Texture.bin");
    std::string mea;
    for (int y = 0; y < Posts; y += 8)
        for (int x = 0; x < Posts; x += 8) {
            int highest = 0;
            for (int post = 0; post < 64; ++post)
                highest = std::max<int>(
                    highest, level.At(x + post % 8 + 1, y + post / 8 + 1).Elevation);
            mea += Number(highest, 2);
        }
    std::map<int, int> uses;
    for (const MadePost& post : level.Posts)
        ++uses[post.Tile];
    std::string report;
    for (const auto& [number, count] : uses) {
        char hex[16];
        std::snprintf(hex, sizeof hex, "%X", static_cast<unsigned>(number));
        report += std::string(hex) + "\t " + catalogue.NameOf(number) + "\t | Used " +
                  std::to_string(count) + " times\r\n";
    }
    report += "FFFF     END MARK    | Used 0 times\r\n";
    std::string tiles;
    for (int y = Posts; y >= 1; --y)
        for (int x = 1; x <= Posts; ++x)
            tiles += Number(level.At(x, y).Tile, 2);

    Start();
    desktop_.Activate(Panel);
    ASSERT_TRUE(IsUp(Panel));
    const auto make = [&](const char* mnemonic, const char* file,
                          const std::string& expected) {
        desktop_.Keys({"alt+o", mnemonic});
        ASSERT_NO_FATAL_FAILURE(Answer("^Save As$", folder_.File(file)));
        EXPECT_TRUE(Made(file, expected.size()) == expected) << file;
    };
    make("i", "theater.mea", mea);
    make("c", "theater.tc", report);
    make("m", "theater.tm", tiles);
    Leave();
}

TEST_F(OverlaysEndToEnd, APatternIsFoundAHitVisitedAndAllHitsOverwritten) {
    // A post in the middle of the view, the tile at its right, and a neighbour above that
    // is higher than half of the land.
    const MadeLevel before = Level2();
    MadeLevel level = before;
    const MadePost middle = level.At(ViewX + 3, ViewY + 3);
    const MadePost right = level.At(ViewX + 4, ViewY + 3);
    const int low = level.At(ViewX + 3, ViewY + 4).Elevation - 1;
    std::vector<std::pair<int, int>> hits;
    for (int y = 1; y < Posts; ++y)
        for (int x = 1; x < Posts; ++x)
            if (level.At(x, y).Tile == middle.Tile &&
                level.At(x + 1, y).Tile == right.Tile &&
                level.At(x, y + 1).Elevation > low)
                hits.emplace_back(x, y);
    ASSERT_GE(hits.size(), 1U);

    Start();
    const Picture plain = MapPicture();
    desktop_.Key("ctrl+f");
    constexpr const char* Options = "^Search For a Tile...$";
    ASSERT_TRUE(IsUp(Options));
    const ControlsOnDesktop pattern = ControlsOf("frmVXSearchOptions", Options);
    pattern.TypeInto("Text1", std::to_string(middle.Tile));
    pattern.Press("Frame1_3"); // at the right
    pattern.TypeInto("Text1", std::to_string(right.Tile));
    pattern.Press("Frame1_1"); // above
    pattern.TypeInto("Text2", ">" + std::to_string(low));
    desktop_.Key("alt+s");
    ASSERT_TRUE(IsUp(Results));

    const ControlsOnDesktop results = ControlsOf("frmVXSearchResults", Results);
    // The last hit, which comes to the lower left corner of the map.
    results.PressIn("ListRes", 60, 30);
    desktop_.Keys({"End", "Return"});
    ASSERT_TRUE(Await([&](const Picture& map) { return map != plain; }));

    results.Press("chkSelectAll");
    results.Press("Check1_2"); // the palette
    results.TypeInto("Text1_2", "77");
    results.Press("Command1");
    ASSERT_NO_FATAL_FAILURE(Save());
    for (const auto& [x, y] : hits)
        level.At(x, y).Palette = 77;
    EXPECT_TRUE(Level2().Posts == level.Posts);
    // All of it is one step.
    desktop_.Activate(Map);
    ASSERT_TRUE(IsUp(Map));
    desktop_.Key("ctrl+z");
    ASSERT_NO_FATAL_FAILURE(Save());
    EXPECT_TRUE(Level2().Posts == before.Posts);
    Leave();
    EXPECT_EQ(Setting("X"), std::min(hits.back().first - 1, Posts - 5));
    EXPECT_EQ(Setting("Y"), std::min(hits.back().second - 1, Posts - 5));
}

} // namespace
} // namespace vardenix::tests
