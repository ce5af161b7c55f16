#include "windows/FrmVXMainTest.h"

#include <QComboBox>
#include <QGroupBox>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QWheelEvent>

namespace vardenix {
namespace {

using tests::FrmVXMainTest;

TEST_F(FrmVXMainTest, ItsTipsAreShownWhileTheMapHasTheKeyboard) {
    EXPECT_TRUE(window_.testAttribute(Qt::WA_AlwaysShowToolTips));
}

TEST_F(FrmVXMainTest, WearsItsCaptionsLetterForLetter) {
    Show();
    const std::map<const char*, std::string> captions{
        {"chkShowAreas", "Show Areas/Paths"},
        {"chkShowGrid", "ShowGrid"},
        {"chkShowExport", "Show Export Area"},
        {"chkShowHeights", "Show Heights"},
        {"chkShowSegments", "Show Segments"},
        {"chkApplyNight", "Apply Night Colors"},
        {"chkApplyMAP", "Apply MAP Color"},
        {"chkL0ELV", "L0/ELV Edit mode"},
        {"cmdLoadL0Elv", "Load"},
        {"chkShowMain", "Show Main Window"},
        {"chkShowResults", "Show Results window"},
        {"chkShowTheater", "Show Theater Preview"},
        {"chkShowTile", "Show Tile Palette"},
        {"chkShowFeatures", "Show Features Window"},
        {"cmdOpenBIN", "Open BIN Editor"},
        {"cmdOpenMap", "Open MAP Editor"},
        {"CmdSaveTheater", "Save L2"},
        {"CmdImport", "Import"},
        {"CmdExport", "Export"},
        {"Command3", "Create Restore Point"},
        {"Command4", "RESTORE"}};
    for (const auto& [name, caption] : captions)
        EXPECT_EQ(Text(name), caption) << name;
    const std::map<const char*, std::string> frames{{"FraMapOptions", "Map Options"},
                                                    {"FraWindows", "Windows"},
                                                    {"Frame3", "Zoom"},
                                                    {"Frame1", "Grid Size"},
                                                    {"Frame2", "Low-Left Tile Position"}};
    for (const auto& [name, caption] : frames)
        EXPECT_EQ(Find<QGroupBox>(name).title().toStdString(), caption);
    EXPECT_EQ(Shown("Label3"), "Zoom:");
    EXPECT_EQ(Shown("labelTileSize"), "Tile Size");
    EXPECT_EQ(Shown("lblExport"), "Click on the map to define the two corners of the "
                                  "rectangular that you want to export.");
    EXPECT_EQ(Shown("lblImport"), "Click on the map to define the bottom left corner of "
                                  "the rectangular that you want to import.");
    EXPECT_EQ(Title(), "Vardenix v3.0.1");
}

TEST_F(FrmVXMainTest, WearsTheMenusLetterForLetter) {
    const std::map<const char*, std::string> menus{
        {"mnuFile", "Fi&le"}, {"mnuTools", "T&ools"}, {"mnuHelp", "Hel&p"}};
    for (const auto& [name, caption] : menus)
        EXPECT_EQ(Find<QMenu>(name).title().toStdString(), caption);
}

TEST_F(FrmVXMainTest, NothingIsPaintedWhileTheProgramStarts) {
    state_.Starting = true;
    Show();
    EXPECT_EQ(StoryOf("cmdBPlus"), "");
    EXPECT_EQ(view_.Brightness, 20);
    window_.StepZoom(-1);
    EXPECT_EQ(workspace_.Story, "layout ");
    Find<QComboBox>("ComTileWidth").setCurrentIndex(0);
    EXPECT_EQ(workspace_.Story, "layout layout ");
}

TEST_F(FrmVXMainTest, BrightnessStepsByTwentyAndStopsAtItsEnds) {
    Show();
    EXPECT_EQ(Slider("sldrBrightness").minimum(), -100);
    EXPECT_EQ(Slider("sldrBrightness").maximum(), 100);
    EXPECT_EQ(Slider("sldrBrightness").pageStep(), 20);
    const auto after = [this](int from, const char* button) {
        Slider("sldrBrightness").setValue(from);
        Click(button);
        EXPECT_EQ(view_.Brightness, Slider("sldrBrightness").value());
        EXPECT_EQ(state_.Configuration.OptionBrightness, view_.Brightness);
        return Slider("sldrBrightness").value();
    };
    EXPECT_EQ(after(0, "cmdBMinus"), -20);
    EXPECT_EQ(after(-80, "cmdBMinus"), -100);
    EXPECT_EQ(after(-85, "cmdBMinus"), -100);
    EXPECT_EQ(after(0, "cmdBPlus"), 20);
    EXPECT_EQ(after(85, "cmdBPlus"), 100);
    EXPECT_EQ(after(37, "cmdBrightReset"), 0);
    EXPECT_EQ(StoryOf("cmdBMinus"), "paint ");
    EXPECT_EQ(Shown("lblBrightness"), "-20");
    Slider("sldrBrightness").setValue(-100);
    EXPECT_EQ(StoryOf("cmdBMinus"), "");
}

TEST_F(FrmVXMainTest, MapColorStrengthRepaintsOnlyWhenItIsApplied) {
    Show();
    EXPECT_EQ(Slider("sldrTrans").value(), 127);
    EXPECT_EQ(Slider("sldrTrans").pageStep(), 32);
    EXPECT_EQ(StoryOf("cmdTransMinus"), "");
    EXPECT_EQ(view_.MapAlpha, 95);
    EXPECT_EQ(Shown("lblTrans"), "95");
    view_.ApplyMAP = true;
    EXPECT_EQ(StoryOf("cmdTransPlus"), "paint ");
    EXPECT_EQ(view_.MapAlpha, 127);
    Slider("sldrTrans").setValue(230);
    Click("cmdTransPlus");
    EXPECT_EQ(view_.MapAlpha, 255);
    Slider("sldrTrans").setValue(31);
    Click("cmdTransMinus");
    EXPECT_EQ(view_.MapAlpha, 0);
}

TEST_F(FrmVXMainTest, ZoomStepsByOnePostBetweenOneAndTwenty) {
    Show();
    const auto zoomed = [this](int steps) {
        workspace_.Story.clear();
        window_.StepZoom(steps);
        return workspace_.Story;
    };
    EXPECT_EQ(Slider("ZoomScroll").minimum(), 1);
    EXPECT_EQ(Slider("ZoomScroll").maximum(), 20);
    EXPECT_EQ(Slider("ZoomScroll").pageStep(), 5);
    EXPECT_EQ(zoomed(1), "");
    EXPECT_EQ(zoomed(-1), "layout paint ");
    EXPECT_EQ(view_.ZoomPosts, 2);
    EXPECT_EQ(state_.Configuration.Zoom, 2);
    EXPECT_EQ(Shown("Label1"), "2");
    EXPECT_EQ(Shown("lblZoomUnit"), "posts a cell");
    view_.MapLeftX = 50; // to 59; five posts have the same middle from 52 on
    view_.MapBottomY = 70;
    EXPECT_EQ(zoomed(1), "layout paint ");
    EXPECT_EQ(workspace_.Placed, (PostPlace{52, 72}));
    EXPECT_EQ(Shown("lblZoomUnit"), "post a cell");
    EXPECT_EQ(view_.ZoomPosts, 1);
    Slider("ZoomScroll").setValue(20);
    EXPECT_EQ(zoomed(-1), "");
    EXPECT_EQ(view_.ZoomPosts, 20);
}

TEST_F(FrmVXMainTest, TheSizeOfTheGridIsShownAndRemembered) {
    Show();
    EXPECT_EQ(Shown("Label2"), "5 X 5");
    view_.GridCells = 4;
    window_.GridChosen();
    EXPECT_EQ(workspace_.Story, "layout paint ");
    EXPECT_EQ(Shown("Label2"), "4 X 4");
    EXPECT_EQ(state_.Configuration.GridSize, 4);
}

TEST_F(FrmVXMainTest, TileSizeIsChosenFromSix) {
    Show();
    auto& list = Find<QComboBox>("ComTileWidth");
    QStringList sizes;
    for (int i = 0; i < list.count(); ++i)
        sizes.append(list.itemText(i));
    EXPECT_EQ(sizes.join(' ').toStdString(), "16 32 64 128 256 512");
    EXPECT_EQ(list.currentText().toStdString(), "128");
    list.setCurrentIndex(4);
    EXPECT_EQ(view_.TilePixels, 256);
    EXPECT_EQ(state_.Configuration.TileSize, 4);
    EXPECT_EQ(workspace_.Story, "layout paint ");
}

TEST_F(FrmVXMainTest, PositionBoxesTakeDigitsAndBackspaceOnly) {
    Show();
    for (const char* name : {"LabelX", "LabelY"}) {
        auto& box = Find<QLineEdit>(name);
        box.clear();
        QTest::keyClicks(&box, "1a-.2 ");
        EXPECT_EQ(box.text().toStdString(), "12");
        QTest::keyClick(&box, Qt::Key_Backspace);
        EXPECT_EQ(box.text().toStdString(), "1");
    }
}

TEST_F(FrmVXMainTest, PositionBoxesSelectAllOnFocus) {
    Show();
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    auto& box = Find<QLineEdit>("LabelX");
    box.setText("123");
    QTest::mouseClick(&box, Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(box.selectedText().toStdString(), "123");
}

TEST_F(FrmVXMainTest, GoClampsThePositionBeforeItScrolls) {
    Show();
    Find<QLineEdit>("LabelX").setText("17");
    Find<QLineEdit>("LabelY").setText("99999");
    // The last of 256 posts.
    window_.GoToTypedPosition();
    EXPECT_EQ(workspace_.Story, "scroll 17,255 ");
    EXPECT_EQ(state_.Configuration.X, 17);
    EXPECT_EQ(state_.Configuration.Y, 255);
    Find<QLineEdit>("LabelX").setText("18");
    workspace_.Story.clear();
    QTest::keyClick(&Find<QLineEdit>("LabelX"), Qt::Key_Return);
    EXPECT_EQ(workspace_.Story.substr(0, 10), "scroll 18,");
    view_.MapLeftX = 3;
    view_.MapBottomY = 44;
    window_.PositionChanged();
    EXPECT_EQ(Find<QLineEdit>("LabelX").text().toStdString(), "3");
    EXPECT_EQ(Find<QLineEdit>("LabelY").text().toStdString(), "44");
}

TEST_F(FrmVXMainTest, SettingsAreShownWithoutAnyEffect) {
    state_.Configuration.OptionBrightness = 500; // an old file
    state_.Configuration.Zoom = 7;
    state_.Configuration.TileSize = 0;
    window_.Form_Load("Norrland");
    EXPECT_EQ(workspace_.Story, "");
    EXPECT_EQ(Slider("sldrBrightness").value(), 100);
    EXPECT_EQ(Slider("ZoomScroll").value(), 7);
    EXPECT_EQ(Shown("Label1"), "7");
    EXPECT_EQ(Find<QComboBox>("ComTileWidth").currentText().toStdString(), "16");
    EXPECT_EQ(view_.MapAlpha, 127);
}

TEST_F(FrmVXMainTest, TheWheelTurnsASliderOnlyAfterAClickOnIt) {
    Show();
    auto& slider = Slider("sldrBrightness");
    const QPointF middle = slider.rect().center();
    const auto turn = [&] {
        QWheelEvent wheel(middle, slider.mapToGlobal(middle), {}, {0, 120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&slider, &wheel);
        return slider.value();
    };
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    EXPECT_EQ(turn(), 0);
    slider.setFocus();
    EXPECT_GT(turn(), 0);
}

TEST_F(FrmVXMainTest, ASmallPanelScrollsDownwardOnly) {
    Show();
    auto& scroll = Find<QScrollArea>("scroll");
    window_.resize(window_.width(), window_.height() + 400);
    QCoreApplication::processEvents();
    EXPECT_EQ(scroll.verticalScrollBar()->maximum(), 0);
    window_.resize(300, 400); // narrower than it can be
    QCoreApplication::processEvents();
    EXPECT_GT(scroll.verticalScrollBar()->maximum(), 100);
    EXPECT_EQ(scroll.horizontalScrollBar()->maximum(), 0);
    scroll.ensureWidgetVisible(&Find<QWidget>("cmdGoXY"));
    EXPECT_FALSE(Find<QWidget>("cmdGoXY").visibleRegion().isEmpty());
}

} // namespace
} // namespace vardenix
