#include "features/windows/FrmVXFeatures.h"

#include "platform/windows/ColorButton.h"
#include "support/RecordingCommands.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"
#include "windows/WindowTest.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>

namespace vardenix {
namespace {

struct KindControls {
    FeatureKind Kind;
    const char* Check;
    const char* Color;
    const char* Slider;
    FeatureStyle Configuration::*Style;
};
const std::vector<KindControls> Kinds{{FeatureKind::Airport, "CheckAirports",
                                       "CmdAirportCol", "SliderAirport",
                                       &Configuration::Airports},
                                      {FeatureKind::City, "CheckCity", "CmdCityColor",
                                       "SliderCities", &Configuration::City},
                                      {FeatureKind::Coast, "CheckCoast", "CmdCoastsColor",
                                       "SliderCoasts", &Configuration::Coast},
                                      {FeatureKind::Label, "CheckLabel", "CmdLabelsColor",
                                       "SliderLabels", &Configuration::Labels},
                                      {FeatureKind::River, "CheckRiver", "CmdRiversColor",
                                       "SliderRivers", &Configuration::Rivers},
                                      {FeatureKind::Road, "CheckRoads", "CmdRoadsColor",
                                       "SliderRoads", &Configuration::Roads}};

class FrmVXFeaturesTest : public testing::Test {
protected:
    FrmVXFeaturesTest() { state_.Starting = false; }

    template <typename Control>
    Control& The(const char* name) {
        return tests::Find<Control>(window_, name);
    }
    QString Loaded() { return The<QLabel>("lblLoaded").text(); }
    // What a control asked for; then forgotten.
    std::string Story() { return std::exchange(commands_.Story, {}); }

    const tests::TestFolder folder_;
    ProgramState state_;
    tests::ScriptedDialogs dialogs_;
    tests::RecordingCommands commands_;
    FrmVXFeatures window_{state_, dialogs_, commands_};
};

TEST_F(FrmVXFeaturesTest, HasItsCaptions) {
    EXPECT_EQ(window_.windowTitle(), "Features");
    const auto caption = [this](const char* name) {
        return The<QAbstractButton>(name).text().remove('&');
    };
    EXPECT_EQ(caption("CmdLoadFeatures"), "Load Features");
    EXPECT_EQ(caption("CmdClearFeatures"), "Clear Features");
    const std::vector<std::pair<const char*, const char*>> frames{
        {"Frame1", "Show Features"}, {"Frame2", "Roads"},      {"FrameRivers", "Rivers"},
        {"FrameLabels", "Labels"},   {"FrameCoast", "Coasts"}, {"FrameCities", "Cities"},
        {"FrameAirport", "Airports"}};
    for (const auto& [name, title] : frames)
        EXPECT_EQ(The<QWidget>(name).property("title").toString(), title);
    for (const char* name : {"LabelRoadsSize", "LabelRiversSize", "LabelLabelsSize",
                             "LabelCoastsSize", "LabelCitiesSize", "LabelAirportSize"})
        EXPECT_EQ(The<QLabel>(name).text(), "Size");
}

TEST_F(FrmVXFeaturesTest, EveryBoxStoresItsValueAndRepaints) {
    The<QCheckBox>("Check").click();
    EXPECT_TRUE(state_.ShownFeatures.ShowFeatures);
    EXPECT_EQ(Story(), "refresh");
    for (const KindControls& kind : Kinds) {
        EXPECT_FALSE(state_.ShownFeatures.Of(kind.Kind));
        The<QCheckBox>(kind.Check).click();
        EXPECT_TRUE(state_.ShownFeatures.Of(kind.Kind)) << kind.Check;
        EXPECT_EQ(Story(), "refresh");
    }
    The<QCheckBox>("CheckCity").click();
    EXPECT_FALSE(state_.ShownFeatures.Of(FeatureKind::City));
}

TEST_F(FrmVXFeaturesTest, AKindThatIsTickedIsSeenWithoutAnotherBox) {
    The<QCheckBox>("CheckCity").click();
    EXPECT_TRUE(The<QCheckBox>("Check").isChecked());
    EXPECT_TRUE(state_.ShownFeatures.ShowFeatures);
    EXPECT_TRUE(state_.ShownFeatures.Of(FeatureKind::City));
    EXPECT_EQ(Story(), "refresh"); // once
    The<QCheckBox>("Check").click();
    The<QCheckBox>("CheckCity").click(); // away again
    EXPECT_FALSE(state_.ShownFeatures.ShowFeatures);
}

TEST_F(FrmVXFeaturesTest, FilesAreRememberedWhenTheUserSaysSo) {
    const std::string a = folder_.Write("a.tdf", "CITY 1 2,2 7\n");
    const std::string b = folder_.Write("b.tdf", "CITY 1 3,3 7\n");
    dialogs_.ExpectOpen("Open terrain features file...", a + "\n" + b);
    The<QAbstractButton>("CmdLoadFeatures").click();
    EXPECT_EQ(state_.Features.Cities.size(), 3U);
    EXPECT_TRUE(window_.Remembered().empty());
    The<QCheckBox>("chkAgain").click();
    EXPECT_EQ(window_.Remembered(), (std::vector<std::string>{a, b}));
    window_.LoadFiles({a});
    EXPECT_EQ(window_.Remembered(), (std::vector<std::string>{b, a}));
    The<QAbstractButton>("CmdClearFeatures").click();
    EXPECT_TRUE(window_.Remembered().empty());
}

TEST_F(FrmVXFeaturesTest, EverySliderStoresItsValueAndRepaints) {
    for (const KindControls& kind : Kinds) {
        The<QSlider>(kind.Slider).setValue(7);
        EXPECT_EQ((state_.Configuration.*kind.Style).Size, 7) << kind.Slider;
        EXPECT_EQ(Story(), "refresh");
        EXPECT_EQ(The<QLabel>((std::string(kind.Slider) + "_value").c_str()).text(), "7");
    }
}

TEST_F(FrmVXFeaturesTest, EveryColorButtonAsksAndRepaints) {
    for (const KindControls& kind : Kinds) {
        const uint32_t stored = (state_.Configuration.*kind.Style).Color;
        dialogs_.ExpectColor(stored, 0x123456);
        The<QAbstractButton>(kind.Color).click();
        EXPECT_EQ((state_.Configuration.*kind.Style).Color, 0x123456U) << kind.Color;
        EXPECT_EQ(The<ColorButton>(kind.Color).Color(), 0x123456U);
        EXPECT_EQ(Story(), "refresh");
    }
    dialogs_.ExpectCancel();
    The<QAbstractButton>("CmdCityColor").click();
    EXPECT_EQ(state_.Configuration.City.Color, 0x123456U);
    EXPECT_EQ(Story(), "");
}

TEST_F(FrmVXFeaturesTest, TheFontButtonsStoreWhatIsChosen) {
    const FontChoice chosen{.Name = "Times",
                            .Size = 14.5,
                            .Bold = true,
                            .Italic = true,
                            .Strikethrough = true,
                            .Underline = true,
                            .Color = 0x445566};
    for (const auto& [button, font] :
         {std::pair{"CmdAirportFont", &Configuration::AirportsFont},
          std::pair{"CmdLabelsFont", &Configuration::LabelsFont}}) {
        dialogs_.ExpectFont(chosen);
        The<QAbstractButton>(button).click();
        const FontChoice& stored = state_.Configuration.*font;
        EXPECT_EQ(stored.Name, "Times");
        EXPECT_EQ(stored.Size, 14.5F);
        EXPECT_TRUE(stored.Bold && stored.Italic && stored.Strikethrough &&
                    stored.Underline);
        EXPECT_EQ(stored.Color, 0x445566U);
        EXPECT_EQ(Story(), "refresh");
    }
    dialogs_.ExpectCancel();
    The<QAbstractButton>("CmdLabelsFont").click();
    EXPECT_EQ(Story(), "");
}

TEST_F(FrmVXFeaturesTest, FillingTheWindowHasNoEffect) {
    state_.Configuration.Roads = {0x111111, 9};
    state_.Configuration.City.Size = 5000;
    state_.ShownFeatures.ShowFeatures = true;
    state_.ShownFeatures.Of(FeatureKind::Road) = true;
    window_.ShowSettings();
    EXPECT_EQ(Story(), "");
    EXPECT_TRUE(The<QCheckBox>("Check").isChecked());
    EXPECT_TRUE(The<QCheckBox>("CheckRoads").isChecked());
    EXPECT_FALSE(The<QCheckBox>("CheckCity").isChecked());
    EXPECT_EQ(The<QSlider>("SliderRoads").value(), 9);
    EXPECT_EQ(The<ColorButton>("CmdRoadsColor").Color(), 0x111111U);
    // Shown as the nearest, and left alone in the settings.
    EXPECT_EQ(The<QSlider>("SliderCities").value(), 20);
    EXPECT_EQ(state_.Configuration.City.Size, 5000);
}

TEST_F(FrmVXFeaturesTest, NothingIsRepaintedWhileTheProgramStarts) {
    state_.Starting = true;
    The<QCheckBox>("Check").click();
    EXPECT_TRUE(state_.ShownFeatures.ShowFeatures);
    EXPECT_EQ(Story(), "");
}

TEST_F(FrmVXFeaturesTest, LoadsAFileAndClearsAll) {
    dialogs_.ExpectOpen("Open terrain features file...",
                        folder_.Write("a.tdf", "ROAD 1 1,1 0\nCITY 1 1,1 0\n"));
    The<QAbstractButton>("CmdLoadFeatures").click();
    EXPECT_EQ(dialogs_.LastFilter(), "Terrain Features Files | *.tdf");
    EXPECT_EQ(state_.Features.Count(), 2U);
    EXPECT_EQ(Story(), "refresh");
    EXPECT_TRUE(Loaded().contains("cities 1, coasts 0"));
    EXPECT_TRUE(Loaded().contains("They are not shown"));
    The<QCheckBox>("Check").click();
    EXPECT_FALSE(Loaded().contains("They are not shown"));
    Story();
    The<QAbstractButton>("CmdClearFeatures").click();
    EXPECT_EQ(state_.Features.Count(), 0U);
    EXPECT_EQ(Story(), "refresh");
    EXPECT_EQ(Loaded(), "No features are loaded.");
}

TEST_F(FrmVXFeaturesTest, ACancelledDialogChangesNothing) {
    dialogs_.ExpectCancel();
    The<QAbstractButton>("CmdLoadFeatures").click();
    EXPECT_EQ(Story(), "");
}

TEST_F(FrmVXFeaturesTest, AFileThatCannotBeReadIsReported) {
    tests::BarrierAnswers answers;
    const std::string path = folder_.File("none.tdf");
    answers.ExpectBox("Vardenix",
                      "Run-time error '53':\n\nFile not found\nopening " + path +
                          ": No such file or directory",
                      BoxAnswer::Continue);
    dialogs_.ExpectOpen("Open terrain features file...", path);
    The<QAbstractButton>("CmdLoadFeatures").click();
    EXPECT_EQ(state_.Features.Count(), 0U);
}

TEST_F(FrmVXFeaturesTest, AFileThatCannotBeReadLeavesThoseBeforeItOnTheMap) {
    const std::string good = folder_.Write("a.tdf", "CITY 1 2,3 0\r\n");
    EXPECT_THROW(window_.LoadFiles({good, folder_.File("none.tdf")}), RuntimeError);
    EXPECT_EQ(Story(), "refresh");
    EXPECT_EQ(state_.Features.Cities.size(), 2U);
}

TEST_F(FrmVXFeaturesTest, TheCloseBoxOnlyHides) {
    window_.show();
    EXPECT_FALSE(window_.close());
    EXPECT_FALSE(window_.isVisible());
    EXPECT_EQ(Story(), "hidden(chkShowFeatures)");
    state_.Exiting = true;
    EXPECT_TRUE(window_.close());
}

} // namespace
} // namespace vardenix
