// The tile catalogue is worked on with mouse and keys. What is on the disk is read by
// code of the tests' own: by number, name and file, down to the bytes of every post's
// picture.
#include "endtoend/ControlsOnDesktop.h"
#include "endtoend/WorkspaceOnDesktop.h"
#include "support/CatalogueReader.h"
#include "support/TheaterMaker.h"

#include <algorithm>
#include <optional>
#include <set>
#include <sstream>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

constexpr const char* Editor = "^\\*?BIN Editor v3\\.0\\.1$";
constexpr const char* Unsaved = "^\\*BIN Editor v3\\.0\\.1$";
constexpr const char* Saved = "^BIN Editor v3\\.0\\.1$";
constexpr const char* Tile = "^\\*?Tile #: ";
constexpr double FeetWide = 3280.84;

class BinEditorEndToEnd : public WorkspaceOnDesktop {
protected:
    void SetUp() override {
        WorkspaceOnDesktop::SetUp();
        fs::copy(SAMPLE_FOLDER, theater_, fs::copy_options::recursive);
        UseTheater(theater_, {{"X", "60"},
                              {"Y", "62"},
                              {"MAIN_WIN_VIS", "-1"},
                              {"MAIN_WIN_POS_L", "6600"}});
        fs::create_directory(new_);
    }

    // A picture of the theater under another name, "9001".
    void Offer(const std::string& name, const std::string& like) {
        fs::copy_file(Folder(theater_) + "texture/texture/" + like + ".dds",
                      new_ + "/" + name + ".dds");
    }
    static std::string Folder(const std::string& theater) {
        return theater + "/terrdata/sorrelund/";
    }
    std::string Pictures() const { return Folder(theater_) + "texture/texture/"; }
    MadeLevel Level2() const {
        return ReadPair(Folder(theater_) + "terrain/theater.L2",
                        Folder(theater_) + "terrain/theater.O2");
    }
    FoundCatalogue Catalogue() const {
        return ReadCatalogue(Folder(theater_) + "texture/Texture.bin");
    }

    // By the context menu of a post.
    void OpenEditor() {
        Start();
        OpenEditorFromMap();
    }
    void OpenEditorFromMap() {
        start_ = MapPicture();
        desktop_.ClickIn(Map, Side / 2, Strip + Side / 2, 3);
        ASSERT_TRUE(Await([this](const Picture& now) { return now != start_; }));
        desktop_.Key("b");
        ASSERT_TRUE(IsUp(Saved));
        EXPECT_FALSE(desktop_.Visible(Map));
        editor_.emplace(desktop_, folder_.File("desktop"), "FrmBINTileEdit", Editor);
        ASSERT_TRUE(WaitFor([this] { // until it is painted
            ready_ = Button();
            return std::set(ready_.Pixels.begin(), ready_.Pixels.end()).size() > 10;
        }));
    }
    // After a command: the form can be used again, which its greyed buttons show.
    bool IsDone() {
        return WaitFor([&] { return desktop_.Active(Unsaved) && Button() == ready_; });
    }
    Picture Button() const {
        const Picture window = desktop_.Look(Editor);
        const Place& place = editor_->At("cmdDeleteSet");
        return place.Left + place.Width <= window.Width &&
                       place.Top + place.Height <= window.Height
                   ? window.Part(place)
                   : Picture();
    }
    bool IsUp(const std::string& title) {
        return WaitFor([&] { return desktop_.Active(title); });
    }
    // Beside the window of the same title.
    bool BoxIsUp(const std::string& title) const { return desktop_.Windows(title) == 2; }
    // In the list of sets, counted from 0.
    void ChooseSet(int set) {
        editor_->PressIn("ListView1", 20, 40);
        std::vector<std::string> keys{"Home"};
        keys.insert(keys.end(), static_cast<size_t>(set), "Down");
        desktop_.Keys(keys);
    }
    // From a file manager.
    void DropOn(const std::string& control, const std::string& file) {
        files_ = Child({DRAG_SOURCE, file},
                       {{"DISPLAY", desktop_.Display()}, {"QT_QPA_PLATFORM", "xcb"}},
                       folder_.File("desktop/files.log"));
        ASSERT_TRUE(WaitFor([&] { return desktop_.Visible("^Files$"); }));
        desktop_.Move("^Files$", 0, 0);
        ASSERT_TRUE(WaitFor([&] { return desktop_.WhereIs("^Files$").Left < 20; }));
        const Place& place = editor_->At(control);
        desktop_.DragInto("^Files$", {30, 30}, Editor, {place.Left + 20, place.Top + 20});
    }
    void Answer(const std::string& title, const std::string& text) {
        ASSERT_TRUE(IsUp(title));
        desktop_.Type(text);
        desktop_.Key("Return");
    }
    void SayYes(const std::string& title) {
        ASSERT_TRUE(IsUp(title));
        desktop_.Key("alt+y");
    }

    std::string theater_ = folder_.File("edited theater");
    std::string new_ = folder_.File("new pictures");
    Picture start_; // of the map
    Picture ready_; // of a button of the editor
    std::optional<ControlsOnDesktop> editor_;
    Child files_; // gives what was dropped as long as it runs
};

// The bytes of the picture of every post, by serial; each distinct one is kept once.
std::vector<const std::string*> Landscape(const std::string& theater,
                                          std::set<std::string>& pictures) {
    const std::string folder = theater + "/terrdata/sorrelund/";
    const FoundCatalogue catalogue = ReadCatalogue(folder + "texture/Texture.bin");
    std::map<int, const std::string*> byNumber;
    std::vector<const std::string*> posts;
    for (const MadePost& post :
         ReadPair(folder + "terrain/theater.L2", folder + "terrain/theater.O2").Posts) {
        const auto [found, isNew] = byNumber.try_emplace(post.Tile, nullptr);
        if (isNew) {
            const std::string pictureFolder = folder + "texture/texture/";
            std::string name = catalogue.NameOf(post.Tile);
            name.resize(name.size() - 4);
            found->second =
                &*pictures.insert(Slurp(pictureFolder + name.append(".dds"))).first;
        }
        posts.push_back(found->second);
    }
    return posts;
}

// Names in upper case.
std::set<std::string> FilesOf(const std::string& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        std::string name = entry.path().filename();
        std::ranges::transform(name, name.begin(), ::toupper);
        names.insert(name);
    }
    return names;
}

std::set<std::string> FamiliesOf(const FoundCatalogue& catalogue) {
    std::set<std::string> names;
    for (const FoundSet& set : catalogue.Sets)
        for (const FoundTile& tile : set.Tiles)
            for (const char* size : {"H", "M", "L"})
                for (const char* night : {"", "N"})
                    names.insert(size + tile.Name.substr(1, tile.Name.size() - 5) +
                                 night + ".DDS");
    return names;
}

TEST_F(BinEditorEndToEnd, AnAppendedAndMovedSetLeavesTheLandscapeAsItWas) {
    std::set<std::string> contents;
    const auto before = Landscape(theater_, contents);
    const FoundCatalogue old = Catalogue();
    std::string chosen;
    for (int i = 1; i <= 16; ++i) {
        const std::string name = std::to_string(9000 + i);
        Offer(name,
              i < 10 ? "HFARM00" + std::to_string(i) : "HFARM0" + std::to_string(i));
        chosen += "\"" + name + ".dds\" ";
    }
    Offer("9003N", "HFARM003N");
    Offer("9100", "HSNOW001");
    Offer("9101", "HSNOW002");
    OpenEditor();

    // Before the third set, with the type of the list: water.
    ChooseSet(2);
    desktop_.Key("alt+a");
    ASSERT_NO_FATAL_FAILURE(Answer("^Select ONLY normal tiles", new_));
    ASSERT_NO_FATAL_FAILURE(Answer("^Select ONLY normal tiles", chosen));
    ASSERT_TRUE(IsDone());
    EXPECT_EQ(Slurp(Pictures() + "H9003N.dds"), Slurp(new_ + "/9003N.dds"));

    // Behind the one that now stands seventh.
    desktop_.Key("alt+m");
    ASSERT_TRUE(WaitFor([this] { return Button() != ready_; })); // it is hidden
    desktop_.Keys({"Down", "Down", "Down", "Down", "alt+a", "alt+o"});
    ASSERT_TRUE(IsDone());

    // Urban, the last of the types.
    editor_->Press("ComboSetType");
    desktop_.Keys({"End", "Return", "alt+c"});
    EXPECT_EQ(Catalogue().Story(), old.Story()); // nothing is saved yet
    desktop_.Key("ctrl+shift+s");
    ASSERT_TRUE(IsUp(Saved));

    FoundSet appended{9, {}};
    for (int i = 1; i <= 16; ++i)
        appended.Tiles.push_back({"H" + std::to_string(9000 + i) + ".PCX", {}, {}});
    FoundCatalogue expected = old;
    expected.Sets.insert(expected.Sets.begin() + 6, appended);
    EXPECT_EQ(Catalogue().Story(), expected.Story());
    EXPECT_EQ(Catalogue().NumTiles, old.NumTiles + 16);
    EXPECT_TRUE(Landscape(theater_, contents) == before);

    // Two of its tiles give way to other pictures, one goes.
    editor_->Press("PicTile_2");
    desktop_.Key("alt+r");
    ASSERT_NO_FATAL_FAILURE(Answer("^Open$", new_ + "/9100.dds"));
    ASSERT_TRUE(IsDone());
    // Another one is dropped on its slot.
    DropOn("PicTile_3", new_ + "/9101.dds");
    ASSERT_TRUE(WaitFor([&] { return fs::exists(Pictures() + "H9101.dds"); }));
    desktop_.Activate(Editor); // the drag has left the keyboard where it began
    ASSERT_TRUE(IsDone());
    editor_->Press("PicTile_15");
    desktop_.Key("alt+l");
    ASSERT_TRUE(IsDone());
    // The pictures of all three are used no more.
    desktop_.Key("alt+u");
    ASSERT_NO_FATAL_FAILURE(SayYes("^Confirm$"));
    ASSERT_NO_FATAL_FAILURE(SayYes("^Confirm Again\\.\\.\\.$"));
    ASSERT_TRUE(IsUp(Unsaved));
    desktop_.Key("ctrl+s");
    ASSERT_TRUE(IsUp(Saved));
    expected.Sets[6].Tiles[2].Name = "H9100.PCX";
    expected.Sets[6].Tiles[3].Name = "H9101.PCX";
    expected.Sets[6].Tiles.pop_back();
    EXPECT_EQ(Catalogue().Story(), expected.Story());
    EXPECT_EQ(FilesOf(Pictures()), FamiliesOf(expected));
    EXPECT_TRUE(Landscape(theater_, contents) == before);

    desktop_.Key("alt+v");
    ASSERT_TRUE(IsUp(Map));
    EXPECT_TRUE(Await([this](const Picture& now) { return now == start_; }));
    Leave(); // without a question
}

// Sets own 16 numbers each.
int32_t WithoutFifthSet(int32_t tile) {
    if (tile < 64)
        return tile;
    return tile < 80 ? 0 : tile - 16;
}

// Level 2 has its old numbers again then.
TEST_F(BinEditorEndToEnd, ARebuildThatReadsLevelTwoAnewIsNoReasonToCallItRight) {
    constexpr const char* rebuild = "^Rebuild Theater$";
    const MadeLevel before = Level2();
    ASSERT_NO_FATAL_FAILURE(OpenEditor());
    ChooseSet(4);
    editor_->Press("cmdDeleteSet");
    ASSERT_TRUE(IsUp(Unsaved));
    desktop_.Key("alt+v");
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible("^\\*sorrelund$"); }));
    desktop_.Activate(Panel);
    ASSERT_TRUE(IsUp(Panel));
    desktop_.Keys({"alt+o", "b"});
    ASSERT_TRUE(IsUp(rebuild));
    const ControlsOnDesktop window(desktop_, folder_.File("desktop"),
                                   "FrmVXRebiuldTheater", rebuild);
    window.Press("cmdBrowse");
    ASSERT_NO_FATAL_FAILURE(Answer("^Open$", Folder(theater_) + "terrain/theater.L0"));
    ASSERT_TRUE(IsUp(rebuild));
    ASSERT_TRUE(WaitFor([&] { // a click beside the dialog that goes is not heard
        window.Press("cmdStartElv");
        return BoxIsUp(rebuild);
    }));
    desktop_.Key("alt+n"); // not to be saved first
    ASSERT_TRUE(WaitFor([&] { return !BoxIsUp(rebuild); }));
    ASSERT_TRUE(WaitFor([&] { return BoxIsUp(rebuild); })); // what it has done
    desktop_.Key("Return");
    ASSERT_TRUE(WaitFor([&] { return !BoxIsUp(rebuild); }));
    window.Press("cmdExit");
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible("^sorrelund$"); }));
    // Together they are no theater, and nothing writes them without a question.
    const std::string bin = Slurp(Folder(theater_) + "texture/Texture.bin");
    desktop_.Activate(Map);
    ASSERT_TRUE(IsUp(Map));
    desktop_.Key("ctrl+alt+s");
    ASSERT_TRUE(IsUp("^Confirm$"));
    desktop_.Key("alt+n");
    ASSERT_TRUE(IsUp(Map));
    EXPECT_TRUE(Slurp(Folder(theater_) + "texture/Texture.bin") == bin);
    // The editor gives level 2 the numbers that it lacks; then the two are saved as one.
    desktop_.ClickIn(Map, Side / 2, Strip + Side / 2, 3);
    ASSERT_TRUE(Await([this](const Picture& now) { return now != start_; }));
    desktop_.Key("b");
    ASSERT_TRUE(IsUp(Unsaved));
    const Place place = desktop_.WhereIs(Editor);
    const Point correct{place.Width - 52, place.Height - 66}; // the only button there
    desktop_.ClickIn(Editor, correct.X, correct.Y);
    ASSERT_TRUE(IsDone());
    desktop_.Key("ctrl+shift+s");
    ASSERT_TRUE(IsUp(Saved));
    const MadeLevel after = Level2();
    for (size_t i = 0; i < after.Posts.size(); ++i)
        ASSERT_EQ(after.Posts[i].Tile, WithoutFifthSet(before.Posts[i].Tile)) << i;
    desktop_.Key("alt+v");
    ASSERT_TRUE(IsUp(Map));
    Leave(); // without a question
}

// What is missing would be sea for good.
TEST_F(BinEditorEndToEnd, SaveBothAsksBeforeItWritesAGapOfACutFile) {
    const std::string file = Folder(theater_) + "terrain/theater.L2";
    fs::resize_file(file, fs::file_size(file) / 2);
    const std::string cut = Slurp(file);
    program_ = desktop_.StartEditor(folder_.File("program/vardenix"));
    ASSERT_TRUE(IsUp(StartUp));
    desktop_.Key("Return");
    ASSERT_TRUE(IsUp("^Warning\\.\\.\\.$"));
    desktop_.Key("Return");
    ASSERT_TRUE(IsUp(Map));
    ASSERT_TRUE(Await([](const Picture& map) { return map.At(1, 1) != 0; }));
    ASSERT_NO_FATAL_FAILURE(OpenEditorFromMap());
    ChooseSet(4);
    editor_->Press("cmdDeleteSet");
    ASSERT_TRUE(IsUp(Unsaved));
    desktop_.Key("ctrl+shift+s");
    ASSERT_TRUE(IsUp("^Confirm$"));
    desktop_.Key("alt+n");
    ASSERT_TRUE(IsUp(Unsaved));
    EXPECT_TRUE(Slurp(file) == cut);
    desktop_.Key("ctrl+shift+s");
    ASSERT_NO_FATAL_FAILURE(SayYes("^Confirm$"));
    ASSERT_TRUE(IsUp(Saved));
    EXPECT_FALSE(Slurp(file) == cut);
    program_.KillAfter(0);
}

// Fields of a record as ReadCatalogue tells them.
std::string Told(int type, std::initializer_list<double> fields) {
    std::ostringstream text;
    text << type;
    char sign = ':';
    for (const double field : fields) {
        text << sign << static_cast<float>(field);
        sign = ',';
    }
    return text.str();
}

TEST_F(BinEditorEndToEnd, AreasAndPathsAreDrawnAtThreeZoomsEditedAndDeleted) {
    const std::string level2 = Slurp(Folder(theater_) + "terrain/theater.L2");
    const FoundCatalogue old = Catalogue();
    OpenEditor();
    ChooseSet(5); // plains, without areas and paths
    desktop_.Key("alt+e");
    ASSERT_TRUE(IsUp(Tile));
    const ControlsOnDesktop tile(desktop_, folder_.File("desktop"), "FrmBINTileDet",
                                 Tile);
    const Place& picture = tile.At("TilePic");
    const auto draw = [&](Point from, Point to, const char* key) {
        desktop_.DragIn(Tile, {picture.Left + from.X, picture.Top + from.Y},
                        {picture.Left + to.X, picture.Top + to.Y}, key);
    };
    // 128 pixels a side, then 256, then 64.
    draw({64, 64}, {64, 84}, "ctrl");
    desktop_.Key("plus");
    draw({32, 200}, {224, 40}, "shift");
    desktop_.Keys({"minus", "minus"});
    draw({10, 10}, {30, 10}, "ctrl");
    tile.Press("cmdAddPath");
    draw({5, 60}, {60, 60}, "");

    // The numbers of the first area and of the first path.
    desktop_.DoubleClickIn(Tile, tile.At("ListAreas").Left + 20,
                           tile.At("ListAreas").Top + 24);
    ASSERT_TRUE(IsUp("^Edit Area$"));
    desktop_.Keys({"Tab"});
    desktop_.Type("1000\t2000.5\t300");
    desktop_.Key("Return");
    ASSERT_TRUE(IsUp(Tile));
    desktop_.DoubleClickIn(Tile, tile.At("ListPaths").Left + 20,
                           tile.At("ListPaths").Top + 24);
    ASSERT_TRUE(IsUp("^Edit Path$"));
    desktop_.Keys({"Tab", "Tab", "Tab", "Tab", "Tab"});
    desktop_.Type("75.25");
    desktop_.Key("Return");
    ASSERT_TRUE(IsUp(Tile));

    // The second area and the second path go.
    for (const char* kind : {"Area", "Path"}) {
        tile.PressIn(std::string("List") + kind + "s", 20, 24);
        desktop_.Key("Down");
        tile.Press(std::string("cmd") + kind + "Delete");
        ASSERT_NO_FATAL_FAILURE(SayYes("^Please Confirm$"));
        ASSERT_TRUE(IsUp(Tile));
    }
    tile.Press("cmdOK");
    ASSERT_TRUE(IsUp(Unsaved));
    desktop_.Key("ctrl+s");
    ASSERT_TRUE(IsUp(Saved));

    FoundCatalogue expected = old;
    const double foot = FeetWide / 256;
    expected.Sets[5].Tiles[0].Areas = {Told(1, {300, 1000, 2000.5})};
    expected.Sets[5].Tiles[0].Paths = {
        Told(2, {75.25, 56 * foot, 32 * foot, 216 * foot, 224 * foot})};
    const FoundCatalogue now = Catalogue();
    EXPECT_EQ(now.Story(), expected.Story());
    for (size_t set = 0; set < old.Sets.size(); ++set)
        for (size_t slot = 0; slot < old.Sets[set].Tiles.size(); ++slot) {
            EXPECT_EQ(now.Sets[set].Tiles[slot].Areas,
                      expected.Sets[set].Tiles[slot].Areas)
                << set << "/" << slot;
            EXPECT_EQ(now.Sets[set].Tiles[slot].Paths,
                      expected.Sets[set].Tiles[slot].Paths)
                << set << "/" << slot;
        }
    EXPECT_TRUE(Slurp(Folder(theater_) + "terrain/theater.L2") == level2);
}

} // namespace
} // namespace vardenix::tests
