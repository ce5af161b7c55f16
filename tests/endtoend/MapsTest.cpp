// A map of the real world comes into the editor by real clicks, through a place that is
// told by real clicks; what is saved is compared with what the field's own program reads.
#include "endtoend/ControlsOnDesktop.h"
#include "endtoend/EditingOnDesktop.h"
#include "support/RunProgram.h"

#include <cstring>
#include <fstream>

namespace vardenix::tests {
namespace {

constexpr const char* Importing = "^Import Elevations$";
constexpr const char* Placing = "^Place of the Theater$";

class MapsOnDesktop : public EditingOnDesktop {
protected:
    void SetUp() override {
        EditingOnDesktop::SetUp();
        std::filesystem::copy(PROGRAM_FOLDER "/vardenix-world",
                              folder_.File("program/vardenix-world"));
    }
    // The menu "File" of the panel, and one of its entries.
    void ChooseFile(const std::string& letter, const char* title) {
        desktop_.Activate(Panel);
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Panel); }));
        desktop_.Key("alt+f");
        desktop_.Key(letter);
        ASSERT_TRUE(WaitFor([&] { return desktop_.Active(title); }));
    }
    ControlsOnDesktop ControlsOf(const char* form, const char* title) {
        return {desktop_, folder_.File("desktop"), form, title};
    }
    // Feet that rise and fall, of a post of a thousand metres each.
    std::string MadeMap() {
        const std::string grid = folder_.File("land.asc");
        std::ofstream out(grid);
        out << "ncols 128\nnrows 128\nxllcorner 500000\nyllcorner 5200000\ncellsize "
               "1000\n";
        for (int row = 0; row < Posts; ++row)
            for (int column = 0; column < Posts; ++column)
                out << (row * 331 + column * 17) % 9000 - 200
                    << (column == Posts - 1 ? "\n" : " ");
        out.close();
        std::string map = folder_.File("land.tif");
        EXPECT_EQ(RunProgram({"/usr/bin/gdal_translate", "-q", "-a_srs", "EPSG:32632",
                              grid, map})
                      .ExitCode,
                  0);
        return map;
    }
    // As the field's own program reads them, from the north west.
    std::vector<int16_t> FeetOf(const std::string& map) {
        const std::string raw = folder_.File("raw.bin");
        EXPECT_EQ(RunProgram({"/usr/bin/gdal_translate", "-q", "-of", "ENVI", "-ot",
                              "Int16", map, raw})
                      .ExitCode,
                  0);
        const std::string bytes = Slurp(raw);
        std::vector<int16_t> feet(bytes.size() / 2);
        std::memcpy(feet.data(), bytes.data(), feet.size() * 2);
        return feet;
    }
};

TEST_F(MapsOnDesktop, HeightsComeThroughThePlaceThatWasTold) {
    const std::string map = MadeMap();
    const MadeLevel before = Level2();
    Start();
    const Picture untouched = MapPicture();
    ASSERT_NO_FATAL_FAILURE(ChooseFile("p", Placing));
    const ControlsOnDesktop place = ControlsOf("FrmTheaterPlace", Placing);
    place.TypeInto("txtSystem", "EPSG:32632");
    place.TypeInto("txtLeft", "500000");
    place.TypeInto("txtBottom", "5200000");
    place.TypeInto("txtPostWidth", "1000");
    place.TypeInto("txtPostHeight", "1000");
    desktop_.Key("Return");
    ASSERT_TRUE(WaitFor([&] {
        return std::filesystem::exists(
            folder_.File("desktop/.local/share/vardenix/places"));
    }));
    desktop_.Key("Escape");
    ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Placing); }));

    ASSERT_NO_FATAL_FAILURE(ChooseFile("i", Importing));
    const ControlsOnDesktop window = ControlsOf("FrmImportElevations", Importing);
    window.TypeInto("txtMap", map);
    window.Press("cmbUnit");
    desktop_.Keys({"Down", "Return"});
    window.Press("cmbHow");
    desktop_.Keys({"End", "Return"});
    window.Press("cmdPreview");
    ASSERT_TRUE(Await([&](const Picture& shown) { return shown != untouched; }));
    EXPECT_FALSE(desktop_.Visible(Star));
    desktop_.Activate(Importing);
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Importing); }));
    window.Press("cmdImport");
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
    desktop_.Activate(Importing);
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Importing); }));
    desktop_.Key("Escape");
    ASSERT_TRUE(WaitFor([&] { return !desktop_.Visible(Importing); }));
    desktop_.Activate(Map);
    ASSERT_TRUE(WaitFor([&] { return desktop_.Active(Map); }));
    ASSERT_NO_FATAL_FAILURE(Save());

    const std::vector<int16_t> feet = FeetOf(map);
    ASSERT_EQ(feet.size(), size_t{Posts} * Posts);
    MadeLevel expected = before;
    for (int y = 0; y < Posts; ++y)
        for (int x = 0; x < Posts; ++x) {
            const int index = (Posts - 1 - y) * Posts + x;
            expected.At(x + 1, y + 1).Elevation = feet.at(static_cast<size_t>(index));
        }
    EXPECT_TRUE(Level2().Posts == expected.Posts);

    // One step of the log.
    desktop_.Key("ctrl+z");
    ASSERT_TRUE(WaitFor([&] { return desktop_.Visible(Star); }));
    ASSERT_NO_FATAL_FAILURE(Save());
    EXPECT_TRUE(Level2().Posts == before.Posts);
    Leave();
}

} // namespace
} // namespace vardenix::tests
