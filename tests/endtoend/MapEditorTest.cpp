// The colour of a post is looked for and changed with mouse and keys; files are read by
// code of the test's own.
#include "endtoend/WorkspaceOnDesktop.h"
#include "support/TheaterMaker.h"

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

constexpr const char* Editor = "^\\*?MapEditor v3\\.0\\.1-";
constexpr const char* Unsaved = "^\\*MapEditor v3\\.0\\.1-";
constexpr const char* Saved = "^MapEditor v3\\.0\\.1-";

class MapEditorEndToEnd : public WorkspaceOnDesktop {
protected:
    void SetUp() override {
        WorkspaceOnDesktop::SetUp();
        fs::copy(SAMPLE_FOLDER, theater_, fs::copy_options::recursive);
        UseTheater(theater_, {{"X", "60"},
                              {"Y", "62"},
                              {"MAIN_WIN_VIS", "-1"},
                              {"MAIN_WIN_POS_L", "6600"}});
    }

    bool IsUp(const char* title) {
        return WaitFor([&] { return desktop_.Active(title); });
    }
    std::string OnDisk() const {
        return Slurp(theater_ + "/terrdata/sorrelund/terrain/theater.map");
    }
    // The colours of entry N in a theater.map.
    static std::string EntryOf(const std::string& map, int index) {
        return map.substr(28 + static_cast<size_t>(index) * 4, 4);
    }
    // The palette entry of the post in the middle of the view.
    int EntryOfPost() const {
        const std::string terrain = theater_ + "/terrdata/sorrelund/terrain/theater.";
        return ReadPair(terrain + "L2", terrain + "O2")
            .At(60 + 2 + 1, 62 + 2 + 1)
            .Palette;
    }
    void TypePath(const char* title, const std::string& path) {
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(title); }));
        desktop_.Type(path);
        desktop_.Key("Return");
    }

    std::string theater_ = folder_.File("my game");
};

TEST_F(MapEditorEndToEnd, AColourIsFoundChangedExportedAndImported) {
    Start();
    const std::string before = OnDisk();
    ASSERT_EQ(before.size(), 1112U);
    const Picture map = MapPicture();
    desktop_.ClickIn(Map, Side / 2, Strip + Side / 2, 3);
    ASSERT_TRUE(Await([&map](const Picture& now) {
        return now != map; // the menu lies over it
    }));
    desktop_.Key("m");
    ASSERT_TRUE(IsUp(Saved));
    EXPECT_FALSE(desktop_.Visible(Map));
    EXPECT_FALSE(desktop_.Visible(Panel));
    // It flashes, and comes to rest.
    const Picture one = desktop_.Look(Editor);
    EXPECT_TRUE(WaitFor([&] { return desktop_.Look(Editor) != one; }));

    const int index = EntryOfPost();
    desktop_.Key("shift+F10");
    ASSERT_TRUE(IsUp(("^Palete Details - #:" + std::to_string(index) + "$").c_str()));
    desktop_.Keys(
        {"1", "0", "Tab", "2", "0", "Tab", "3", "0", "Tab", "4", "0", "Return"});
    ASSERT_TRUE(IsUp(Unsaved));
    EXPECT_EQ(OnDisk(), before);
    desktop_.Key("ctrl+s");
    ASSERT_TRUE(IsUp(Saved));
    std::string expected = before;
    expected.replace(28 + static_cast<size_t>(index) * 4, 4, "\x0A\x14\x1E\x28");
    EXPECT_EQ(OnDisk(), expected);

    // Out as ACT.
    const std::string act = folder_.File("palette.act");
    desktop_.Key("alt+e");
    TypePath("^Save", act);
    ASSERT_TRUE(IsUp(Saved));
    std::string colors;
    for (int i = 0; i < 256; ++i)
        colors += EntryOf(expected, i).substr(0, 3);
    ASSERT_TRUE(WaitFor([&] { return fs::exists(act) && Slurp(act).size() == 768; }));
    EXPECT_EQ(Slurp(act), colors);

    // Another one in: alpha stays.
    std::string other;
    for (int i = 0; i < 768; ++i)
        other += static_cast<char>(i * 7);
    desktop_.Key("alt+i");
    TypePath("^Open$", folder_.Write("other.act", other));
    ASSERT_TRUE(IsUp(Unsaved));
    desktop_.Key("ctrl+s");
    ASSERT_TRUE(IsUp(Saved));
    for (size_t i = 0; i < 256; ++i)
        expected.replace(28 + i * 4, 3, other.substr(i * 3, 3));
    EXPECT_EQ(OnDisk(), expected);

    desktop_.Key("alt+p");
    ASSERT_TRUE(IsUp(Map));
    EXPECT_FALSE(desktop_.Visible(Editor));
    Leave();
}

} // namespace
} // namespace vardenix::tests
