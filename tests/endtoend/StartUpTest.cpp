#include "endtoend/Desktop.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

constexpr const char* StartUp = "^Vardenix v3\\.0\\.1 - for";
constexpr const char* Panel = "^\\*?Vardenix v3\\.0\\.1$";
constexpr const char* Preview = "^Theater Preview$";
constexpr unsigned Sea = 0x000072;    // red, green, blue
constexpr unsigned Level2 = 0xFFF2AB; // 50 to 100 feet

// The program in a folder of its own, on a desktop of its own, with a theater whose left
// half is sea.
class StartUpEndToEnd : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directory(folder_.File("desktop"));
        fs::create_directory(folder_.File("program"));
        for (const auto& entry : fs::directory_iterator(PROGRAM_FOLDER))
            if (const std::string name = entry.path().filename();
                name == "vardenix" || name == "NoTile.jpg" || name.ends_with(".so"))
                fs::copy(entry.path(), folder_.File("program/" + name));
        // Stands in for the user's browser.
        const std::string opener =
            folder_.Write("desktop/xdg-open", "#!/bin/sh\necho \"$1\" > '" +
                                                  folder_.File("desktop/opened") + "'\n");
        ::chmod(opener.c_str(), 0755);

        MadeLevel level = MadeLevel::Empty(512);
        for (int y = 1; y <= 512; ++y)
            for (int x = 257; x <= 512; ++x)
                level.At(x, y).Elevation = 60;
        const PairBytes pair = ScatteredPair(level);
        // Each window by its own title.
        folder_.Write("program/Desk.ini", "[WINDOWS]\r\nONE_WINDOW=0\r\n");
        folder_.Write("my theater/terrain/Theater.L2", pair.L);
        folder_.Write("my theater/terrain/Theater.O2", pair.O);
        folder_.Write("my theater/terrain/Theater.map", std::string(1112, '\0'));
        folder_.Write("my theater/texture/Texture.bin", catalogue_);
        folder_.Write("my theater/texture/texture/A.dds", "x");
    }

    void Start() {
        program_ =
            desktop_.StartEditor(folder_.File("program/vardenix"),
                                 {{"PATH", folder_.File("desktop") + ":/usr/bin:/bin"}});
    }

    // Beyond the question of the very first start.
    void StartAnswered(const char* answer = "n") {
        Start();
        ASSERT_TRUE(Await("^Confirm$"));
        desktop_.Key(answer);
        ASSERT_TRUE(Await(StartUp));
    }

    bool Await(const std::string& title) {
        return WaitFor([&] { return desktop_.Active(title); });
    }

    void TypePaths() {
        const std::string base = folder_.File("my theater");
        for (const auto& [key, path] : {std::pair{"alt+l", "/terrain/theater.l2"},
                                        {"alt+i", "/texture/texture.bin"},
                                        {"alt+m", "/terrain/theater.map"},
                                        {"alt+d", "/texture/texture/"}}) {
            desktop_.Key(key);
            desktop_.Key("ctrl+a");
            desktop_.Type(base + path);
        }
    }

    void ExpectPreview() {
        ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Preview); }));
        std::map<unsigned, int> colors;
        EXPECT_TRUE(WaitFor([&] {
            colors = desktop_.Colors(Preview);
            // But for the red box round the five posts of the view, wherever that is.
            return colors[Sea] >= 64 * 128 - 12 && colors[Level2] >= 64 * 128 - 12;
        })) << colors[Sea]
            << " and " << colors[Level2];
    }

    void ClosePanel() {
        desktop_.Activate(Panel);
        desktop_.Key("alt+F4");
    }

    void ExpectEnd() {
        EXPECT_TRUE(WaitFor([this] { return !program_.Running(); }));
        EXPECT_EQ(program_.ExitCode(), 0);
        EXPECT_FALSE(fs::exists(folder_.File("program/Temp")));
    }

    std::string Ini() { return Slurp(folder_.File("program/VX.ini")); }

    TestFolder folder_;
    Desktop desktop_{
        (fs::create_directory(folder_.File("desktop")), folder_.File("desktop"))};
    Child program_;
    const std::string catalogue_ = CatalogueBytes({{1, {{"A.PCX"}}}});
};

TEST_F(StartUpEndToEnd, TypedPathsOpenTheTheaterAndClosingThePanelEnds) {
    StartAnswered();
    EXPECT_TRUE(fs::is_directory(folder_.File("program/Temp")));
    TypePaths();
    desktop_.Key("Return");
    ExpectPreview();
    EXPECT_FALSE(desktop_.Visible(StartUp));
    ClosePanel();
    ExpectEnd();
    EXPECT_NE(Ini().find("[SYSTEM]"), std::string::npos);
}

TEST_F(StartUpEndToEnd, AFolderThatIsNamedOpensAtOnce) {
    StartAnswered();
    desktop_.Key("Escape");
    ExpectEnd();
    program_ = desktop_.StartEditor(folder_.File("program/vardenix"), {},
                                    {folder_.File("my theater")});
    ExpectPreview();
    EXPECT_FALSE(desktop_.Visible(StartUp));
    ClosePanel();
    ExpectEnd();
    program_ = desktop_.StartEditor(folder_.File("program/vardenix"), {}, {"one", "two"});
    EXPECT_TRUE(WaitFor([this] { return !program_.Running(); }));
    EXPECT_EQ(program_.ExitCode(), 2);
}

TEST_F(StartUpEndToEnd, TheUpdateAnswerIsKeptAndNotAskedAgain) {
    // Nobody answers there, and nobody else is asked.
    std::string ini = Slurp(FIRST_SETTINGS);
    const size_t at = ini.find("VERSION CHECK=") + 14;
    ini.replace(at, ini.find('\r', at) - at, "http://127.0.0.1:9/v");
    folder_.Write("program/VX.ini", ini);
    StartAnswered("y");
    desktop_.Key("Escape");
    ExpectEnd();
    Start();
    ASSERT_TRUE(Await(StartUp));
    desktop_.Key("alt+F4");
    ExpectEnd();
}

TEST_F(StartUpEndToEnd, BrowsingGivesThePathsOfTheNextStart) {
    StartAnswered();
    const std::string base = folder_.File("my theater");
    desktop_.Key("alt+w");
    for (const auto& [title, path] :
         {std::pair{"^Open theater's L2 file\\.\\.\\.$", "/terrain/Theater.L2"},
          {"^Open theater's Texture\\.bin file\\.\\.\\.$", "/texture/Texture.bin"},
          {"^Open theater's MAP file\\.\\.\\.$", "/terrain/Theater.map"},
          {"^Select the DDS folder\\.$", "/texture/texture"}}) {
        ASSERT_TRUE(Await(title)) << title;
        desktop_.Key("ctrl+a"); // in the field of the name
        desktop_.Type(base + path);
        desktop_.Key("Return");
    }
    ASSERT_TRUE(Await(StartUp));
    desktop_.Key("alt+u");
    desktop_.Key("alt+t");
    ExpectPreview();
    ClosePanel();
    ExpectEnd();
    EXPECT_NE(Ini().find("L2_FILE=" + base + "/terrain/Theater.L2\r\n"),
              std::string::npos);
    EXPECT_NE(Ini().find("DDS_PATH=" + base + "/texture/texture\\\r\n"),
              std::string::npos);
    EXPECT_NE(Slurp(folder_.File("program/Debug.txt")).find("Debug Terminated at "),
              std::string::npos);

    Start();
    ASSERT_TRUE(Await(StartUp));
    desktop_.Key("Return");
    ExpectPreview();
}

TEST_F(StartUpEndToEnd, AMissingFileIsToldAndAnotherTryWorks) {
    StartAnswered();
    desktop_.Key("alt+l");
    desktop_.Type("/no such theater.l2");
    desktop_.Key("Return");
    ASSERT_TRUE(Await("^Error\\.\\.\\.$"));
    desktop_.Key("Return");
    ASSERT_TRUE(Await(StartUp));
    TypePaths();
    desktop_.Key("alt+t");
    ExpectPreview();
}

TEST_F(StartUpEndToEnd, AnErrorInReadingIsToldAndAnotherTryWorks) {
    folder_.Write("my theater/texture/Texture.bin", catalogue_.substr(0, 20));
    StartAnswered();
    TypePaths();
    desktop_.Key("Return");
    ASSERT_TRUE(Await("^Vardenix$"));
    desktop_.Key("Return"); // Continue
    ASSERT_TRUE(Await(StartUp));
    folder_.Write("my theater/texture/Texture.bin", catalogue_);
    desktop_.Key("Return");
    ExpectPreview();
}

TEST_F(StartUpEndToEnd, EndInTheReportOfAnErrorEndsTheProgram) {
    folder_.Write("my theater/texture/Texture.bin", catalogue_.substr(0, 20));
    StartAnswered();
    TypePaths();
    desktop_.Key("Return");
    ASSERT_TRUE(Await("^Vardenix$"));
    desktop_.Key("alt+e");
    ExpectEnd();
}

TEST_F(StartUpEndToEnd, AClickOnTheBannerOpensThePage) {
    StartAnswered();
    desktop_.Click(400, 60);
    EXPECT_TRUE(WaitFor([this] { return fs::exists(folder_.File("desktop/opened")); }));
    EXPECT_TRUE(WaitFor([this] {
        return Slurp(folder_.File("desktop/opened")) ==
               "http://www.vardenix.example/vardenix\n";
    }));
}

} // namespace
} // namespace vardenix::tests
