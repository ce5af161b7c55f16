// What a maker does to many posts at once, by real mouse and keys, compared on the disk
// by code of the tests' own: replacing, finding by name, statistics, relief, features
// that come back.
#include "endtoend/ControlsOnDesktop.h"
#include "endtoend/EditingOnDesktop.h"
#include "support/CatalogueReader.h"

namespace vardenix::tests {
namespace {

constexpr const char* Replacing = "^Replace Tiles$";
constexpr const char* Results = "^Search Results$";

class MakersOnDesktop : public EditingOnDesktop {
protected:
    bool IsUp(const std::string& title) {
        return WaitFor([&] { return desktop_.Active(title); });
    }
    ControlsOnDesktop ControlsOf(const char* form, const char* title) {
        return {desktop_, folder_.File("desktop"), form, title};
    }
    FoundCatalogue Catalogue() const {
        return ReadCatalogue(theater_ + "/terrdata/sorrelund/texture/Texture.bin");
    }
    // The menu "Tools" of the panel, and one of its entries.
    void ChooseTool(const std::string& letter) {
        desktop_.Activate(Panel);
        ASSERT_TRUE(IsUp(Panel));
        desktop_.Key("alt+t");
        desktop_.Key(letter);
    }
};

TEST_F(MakersOnDesktop, ATileIsReplacedEverywhereInFourGestures) {
    const MadeLevel before = Level2();
    MadeLevel expected = before;
    const int old = expected.At(ViewX + 2, ViewY + 3).Tile;
    Start();
    const Picture untouched = MapPicture();
    ClickPost(1, 2, 3); // the post above, counted from 0
    desktop_.Key("r");
    ASSERT_TRUE(IsUp(Replacing));
    ASSERT_NO_FATAL_FAILURE(ChooseFirstTile());
    ControlsOf("FrmVXReplace", Replacing).Press("cmdReplace");
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
    desktop_.Activate(Replacing);
    ASSERT_TRUE(IsUp(Replacing));
    desktop_.Key("Escape");
    ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Replacing); }));
    desktop_.Activate(Map);
    ASSERT_TRUE(IsUp(Map));
    ASSERT_NO_FATAL_FAILURE(Save());

    const MadeLevel saved = Level2();
    const auto changed = Differences(before, saved);
    ASSERT_FALSE(changed.empty());
    const int by = saved.Posts[changed.front() - 1].Tile;
    EXPECT_NE(by, old);
    for (MadePost& post : expected.Posts)
        if (post.Tile == old)
            post.Tile = by;
    EXPECT_TRUE(saved.Posts == expected.Posts);

    // One step of the log.
    desktop_.Key("ctrl+z");
    ASSERT_TRUE(Await([&](const Picture& map) { return map == untouched; }));
    ASSERT_NO_FATAL_FAILURE(Save());
    EXPECT_TRUE(Level2().Posts == before.Posts);
    Leave();
}

TEST_F(MakersOnDesktop, PostsAreFoundByANameAndSet) {
    MadeLevel level = Level2();
    const FoundCatalogue catalogue = Catalogue();
    const std::string whole = catalogue.NameOf(level.At(ViewX + 1, ViewY + 1).Tile);
    ASSERT_GT(whole.size(), 4U);
    const std::string part = whole.substr(0, whole.size() - 3);
    Start();
    desktop_.Key("ctrl+f");
    constexpr const char* Options = "^Search For a Tile...$";
    ASSERT_TRUE(IsUp(Options));
    ControlsOf("frmVXSearchOptions", Options).TypeInto("txtNamed", part);
    desktop_.Key("Return");
    ASSERT_TRUE(IsUp(Results));
    const ControlsOnDesktop results = ControlsOf("frmVXSearchResults", Results);
    results.Press("chkSelectAll");
    results.Press("Check1_2"); // the palette
    results.TypeInto("Text1_2", "78");
    results.Press("Command1");
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
    ASSERT_NO_FATAL_FAILURE(Save());
    int found = 0;
    for (MadePost& post : level.Posts)
        if (catalogue.NameOf(post.Tile).find(part) != std::string::npos) {
            post.Palette = 78;
            ++found;
        }
    EXPECT_GT(found, 0);
    EXPECT_TRUE(Level2().Posts == level.Posts);
    Leave();
}

TEST_F(MakersOnDesktop, ARowOfTheStatisticsIsFound) {
    Start();
    ASSERT_NO_FATAL_FAILURE(ChooseTool("t"));
    constexpr const char* Statistics = "^Theater Statistics$";
    ASSERT_TRUE(IsUp(Statistics));
    desktop_.Keys({"Down", "Return"}); // the sea
    ASSERT_TRUE(IsUp(Results));
    Leave();
}

TEST_F(MakersOnDesktop, ReliefAndContourLinesAreRemembered) {
    Start();
    const Picture plain = MapPicture();
    desktop_.Key("ctrl+8");
    ASSERT_TRUE(Await([&](const Picture& map) { return map != plain; }));
    const Picture relief = MapPicture();
    desktop_.Key("ctrl+9");
    ASSERT_TRUE(Await([&](const Picture& map) { return map.Count(0x78461E) > 50; }));
    desktop_.Key("ctrl+9");
    ASSERT_TRUE(Await([&](const Picture& map) { return map == relief; }));
    Leave();
    Start();
    EXPECT_TRUE(Await([&](const Picture& map) { return map == relief; }));
    desktop_.Key("ctrl+8");
    EXPECT_TRUE(Await([&](const Picture& map) { return map == plain; }));
    Leave();
}

TEST_F(MakersOnDesktop, FeaturesOfSeveralFilesAreThereAgainWithoutAGesture) {
    const std::string folder = folder_.File("my features");
    folder_.Write("my features/a.tdf", "RIVER 2 58,62 70,62 3\r\n");
    folder_.Write("my features/b.tdf", "RIVER 2 62,58 62,70 3\r\n");
    Start();
    const Picture plain = MapPicture();
    desktop_.Key("F9");
    constexpr const char* Features = "^Features$";
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Features); }));
    desktop_.Move(Features, 20, 20);
    desktop_.Activate(Features);
    ASSERT_TRUE(IsUp(Features));
    const ControlsOnDesktop window = ControlsOf("FrmVXFeatures", Features);
    window.Press("chkAgain");
    window.Press("CheckRiver"); // and no other box
    window.Press("CmdLoadFeatures");
    constexpr const char* Dialog = "^Open terrain features file...$";
    ASSERT_TRUE(IsUp(Dialog));
    desktop_.Type("\"" + folder + "/a.tdf\" \"" + folder + "/b.tdf\"");
    desktop_.Key("Return");
    ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Dialog); }));
    const std::string desk = folder_.File("program/Desk.ini");
    ASSERT_TRUE(
        WaitFor([&] { return Slurp(desk).find("SHOWN=RIVER") != std::string::npos; }));
    desktop_.Key("F9");
    ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Features); }));
    desktop_.Activate(Map);
    ASSERT_TRUE(Await([&](const Picture& map) { return map != plain; }));
    const Picture shown = MapPicture();
    // Both rivers, across and down.
    EXPECT_NE(shown.At(Across(3), Down(2) - Strip), plain.At(Across(3), Down(2) - Strip));
    EXPECT_NE(shown.At(Across(2), Down(4) - Strip), plain.At(Across(2), Down(4) - Strip));
    Leave();
    Start();
    EXPECT_TRUE(Await([&](const Picture& map) { return map == shown; }));
    Leave();
}

} // namespace
} // namespace vardenix::tests
