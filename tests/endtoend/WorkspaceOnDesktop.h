#pragma once

#include "endtoend/Desktop.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>

namespace vardenix::tests {

inline constexpr const char* StartUp = "^Vardenix v3\\.0\\.1 - for";
// The titles of the windows, with the star of unsaved work or without.
inline constexpr const char* Panel = "^\\*?Vardenix v3\\.0\\.1( - L0/ELV MODE)?$";
inline constexpr const char* Map = "^\\*?sorrelund$";
inline constexpr const char* Preview = "^Theater Preview$";
inline constexpr const char* Palette = "^Tile Palette$";
inline constexpr int Cell = 128;      // pixels of a post on a first start
inline constexpr int Side = 5 * Cell; // of the picture
inline constexpr int Strip = 30;      // of tools, above the picture
inline constexpr int Posts = 128;     // of the sample theater, a side
inline constexpr unsigned Background = 0x404040;

// The program in a folder of its own, on a desktop of its own, with the sample theater.
class WorkspaceOnDesktop : public testing::Test {
protected:
    explicit WorkspaceOnDesktop(int width = 1280, int height = 900)
        : desktop_((std::filesystem::create_directory(folder_.File("desktop")),
                    folder_.File("desktop")),
                   width, height) {}

    void SetUp() override {
        std::filesystem::create_directory(folder_.File("program"));
        for (const auto& entry : std::filesystem::directory_iterator(PROGRAM_FOLDER))
            if (const std::string name = entry.path().filename();
                name == "vardenix" || name == "NoTile.jpg" || name.ends_with(".so"))
                std::filesystem::copy(entry.path(), folder_.File("program/" + name));
        UseTheater(SAMPLE_FOLDER);
        folder_.Write("program/Desk.ini", "[WINDOWS]\r\nONE_WINDOW=0\r\n");
    }

    // Settings of a first start but for the paths and what is given here.
    void UseTheater(const std::string& install,
                    std::map<std::string, std::string> settings = {}) {
        const std::string base = install + "/terrdata/sorrelund/";
        settings["L2_FILE"] = base + "terrain/theater.L2";
        settings["BIN_FILE"] = base + "texture/Texture.bin";
        settings["MAP_FILE"] = base + "terrain/theater.map";
        settings["DDS_PATH"] = base + "texture/texture/";
        settings["AUTO_CHECK_FOR_UPDATES"] = "0";
        std::string ini = Slurp(FIRST_SETTINGS);
        for (const auto& [key, value] : settings) {
            const size_t at = ini.find("\n" + key + "=");
            if (at == std::string::npos)
                throw std::runtime_error("no " + key);
            const size_t from = at + key.size() + 2;
            ini.replace(from, ini.find('\r', from) - from, value);
        }
        folder_.Write("program/VX.ini", ini);
    }

    // As far as a painted map.
    void Start() {
        program_ = desktop_.StartEditor(folder_.File("program/vardenix"));
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(StartUp); }));
        desktop_.Key("Return");
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Map); }));
        ASSERT_TRUE(Await([](const Picture& map) { return map.At(1, 1) != 0; }));
    }

    // A click into the middle of the preview.
    void GoToLand() {
        const Place place = desktop_.WhereIs(Preview);
        const Picture before = MapPicture();
        // The picture of Posts / 4 pixels stands in the middle above the button.
        desktop_.ClickIn(Preview, place.Width / 2, Posts / 8);
        ASSERT_TRUE(Await([&](const Picture& map) { return map != before; }));
        desktop_.Activate(Map);
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Map); }));
    }

    Picture MapPicture() const {
        const Picture window = desktop_.Look(Map);
        if (window.Width < Side || window.Height < Strip + Side)
            return {};
        return window.Part({0, Strip, Side, Side});
    }

    // Without what a click would leave under the pointer: that goes with it.
    Picture MapAtRest() {
        desktop_.HoverIn(Palette, 200, 20);
        Picture last = MapPicture();
        EXPECT_TRUE(WaitFor([&] {
            Picture map = MapPicture();
            std::swap(map, last);
            return map.Width != 0 && map == last;
        }));
        return last;
    }

    // Until the map looks as wanted.
    template <typename Condition>
    bool Await(Condition condition) {
        return WaitFor([&] {
            const Picture map = MapPicture();
            return map.Width != 0 && condition(map);
        });
    }

    void Leave() {
        desktop_.Activate(Panel);
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Panel); }));
        desktop_.Key("alt+F4");
        ASSERT_TRUE(WaitFor([this] { return !program_.Running(); }));
        EXPECT_EQ(program_.ExitCode(), 0);
    }

    // A number of VX.ini.
    int Setting(const std::string& key) const {
        const std::string ini = Slurp(folder_.File("program/VX.ini"));
        const size_t at = ini.find("\n" + key + "=");
        if (at == std::string::npos)
            throw std::runtime_error("no " + key);
        return std::atoi(ini.c_str() + at + key.size() + 2);
    }

    TestFolder folder_;
    Desktop desktop_;
    Child program_;
};

// What both pictures show of the terrain, the second one having moved by whole posts:
// east and north are counted as the view goes.
inline void ExpectMoved(const Picture& before, const Picture& after, int east,
                        int north) {
    const int width = Side - std::abs(east) * Cell;
    const int height = Side - std::abs(north) * Cell;
    const Place was{std::max(east, 0) * Cell, std::max(-north, 0) * Cell, width, height};
    const Place is{std::max(-east, 0) * Cell, std::max(north, 0) * Cell, width, height};
    EXPECT_TRUE(before.Part(was) == after.Part(is))
        << east << " east, " << north << " north";
}

} // namespace vardenix::tests
