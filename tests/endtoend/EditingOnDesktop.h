#pragma once

#include "endtoend/WorkspaceOnDesktop.h"
#include "support/TheaterMaker.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace vardenix::tests {

inline constexpr const char* Star = "^\\*sorrelund$";
inline constexpr const char* Details = "^Tile Details$";
// Post (0, 0) of the view, from 0 as the map shows it.
inline constexpr int ViewX = 60;
inline constexpr int ViewY = 60;

// A theater of its own that is edited, and read back from the disk by code of the tests'.
class EditingOnDesktop : public WorkspaceOnDesktop {
protected:
    void SetUp() override {
        WorkspaceOnDesktop::SetUp();
        std::filesystem::copy(SAMPLE_FOLDER, theater_,
                              std::filesystem::copy_options::recursive);
        UseEdited();
    }

    // Panel, map and, below its picture's middle, the palette.
    void UseEdited(const std::map<std::string, std::string>& others = {}) {
        std::map<std::string, std::string> settings{
            {"X", std::to_string(ViewX)}, {"Y", std::to_string(ViewY)},
            {"MAIN_WIN_VIS", "-1"},       {"MAIN_WIN_POS_L", "6600"},
            {"PAL_WIN_VIS", "-1"},        {"PAL_WIN_POS_L", "9000"},
            {"PAL_WIN_POS_T", "8400"},    {"PAL_WIN_SIZE_W", "6300"},
            {"PAL_WIN_SIZE_H", "4500"}};
        for (const auto& [key, value] : others)
            settings[key] = value;
        UseTheater(theater_, settings);
    }

    std::string Terrain(const std::string& name) const {
        return theater_ + "/terrdata/sorrelund/terrain/" + name;
    }
    MadeLevel Level2() const {
        return ReadPair(Terrain("theater.L2"), Terrain("theater.O2"));
    }
    MadeLevel Level0() const {
        return ReadPair(Terrain("theater.L0"), Terrain("theater.O0"));
    }

    // Where the program keeps its logs of changes.
    std::string Logs() const {
        return folder_.File("desktop/.local/share/vardenix/recovery");
    }

    // The middle of a post of the view, from its lower left.
    static int Across(int x) { return x * Cell + Cell / 2; }
    static int Down(int y) { return Strip + Side - y * Cell - Cell / 2; }
    void ClickPost(int x, int y, int button) {
        desktop_.ClickIn(Map, Across(x), Down(y), button);
    }
    static Picture CellOf(const Picture& map, int x, int y) {
        return map.Part({x * Cell, Side - (y + 1) * Cell, Cell, Cell});
    }

    // The first button of the palette, once the tiles are there.
    void ChooseFirstTile() {
        ASSERT_TRUE(WaitFor([&] {
            return desktop_.Visible(Palette) && desktop_.Colors(Palette).size() > 50;
        }));
        desktop_.ClickIn(Palette, 45, 90);
    }
    // Through the context menu of a post, or of a height in the L0/ELV mode.
    void OpenDetails(int x, int y, bool byMenu) {
        ClickPost(x, y, 3);
        if (byMenu)
            desktop_.Keys({"Down", "Return"});
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Details); }));
    }
    void TypeElevation(const std::string& feet) {
        desktop_.Type(feet);
        desktop_.Key("Return");
        ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Details); }));
    }
    void Save() {
        desktop_.Key("ctrl+s");
        ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Star); }));
    }

    std::string theater_ = folder_.File("edited theater");
};

// Serials whose posts differ, from 1.
inline std::vector<size_t> Differences(const MadeLevel& a, const MadeLevel& b) {
    std::vector<size_t> serials;
    for (size_t i = 0; i < a.Posts.size(); ++i)
        if (!(a.Posts[i] == b.Posts.at(i)))
            serials.push_back(i + 1);
    return serials;
}

inline size_t SerialOf(size_t x, size_t y, size_t width) { return y * width + x + 1; }

} // namespace vardenix::tests
