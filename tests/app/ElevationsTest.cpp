// Maps of the real world into the editor and out of it, by the program that reads them.
#include "app/OpenedWorkspace.h"
#include "support/Environment.h"
#include "workspace/windows/FrmVXMap.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>

#include <filesystem>

namespace vardenix {
namespace {

using tests::Find;
using tests::Posts;

class ElevationsTest : public tests::OpenedWorkspace {
protected:
    ElevationsTest() : data_("XDG_DATA_HOME", folder_.File("data").c_str()) {
        state_.Folders.TempFolder = folder_.Path() + "\\"; // as a run has it
        state_.Terrain.LFilename = folder_.Write("theater.L2", "");
        state_.MapFileRecord.Longitude = 9;
        state_.MapFileRecord.Latitude = 47;
        state_.MapFileRecord.FeetBetweenL0Tiles = 820.2F; // posts of about 1000 metres
    }

    static void Trigger(const char* command) {
        Window("FrmVXMain").findChild<QAction*>(command)->trigger();
    }
    static QWidget& Import() { return Window("FrmImportElevations"); }
    static QWidget& Place() { return Window("FrmTheaterPlace"); }
    static void ClickIn(QWidget& window, const char* control) {
        Find<QAbstractButton>(window, control).click();
    }
    static QString Text(QWidget& window, const char* label) {
        return Find<QLabel>(window, label).text();
    }
    int FeetAt(int x, int y) { return state_.Terrain.LxArr(y * Posts + x + 1).Elevation; }
    // Two by two values, from the north west, over the whole of a place.
    std::string FourValues(const std::string& values) {
        return folder_.Write("dem.asc", "ncols 2\nnrows 2\nxllcorner 500000\n"
                                        "yllcorner 5200000\ncellsize 16000\n"
                                        "NODATA_value -9999\n" +
                                            values + "\n");
    }
    void OpenImportOf(const std::string& map) {
        Trigger("mnuImportElevations");
        Find<QLineEdit>(Import(), "txtMap").setText(QString::fromStdString(map));
        Find<QComboBox>(Import(), "cmbUnit").setCurrentIndex(1); // feet
        Find<QComboBox>(Import(), "cmbHow").setCurrentIndex(3);  // nearest
    }
    // Of the corner of the map above, and posts of a thousand metres.
    void TellPlace() {
        Trigger("mnuTheaterPlace");
        Find<QLineEdit>(Place(), "txtSystem").setText("EPSG:32632");
        Find<QLineEdit>(Place(), "txtLeft").setText("500000");
        Find<QLineEdit>(Place(), "txtBottom").setText("5200000");
        Find<QLineEdit>(Place(), "txtPostWidth").setText("1000");
        Find<QLineEdit>(Place(), "txtPostHeight").setText("1000");
        ClickIn(Place(), "cmdSavePlace");
    }

    tests::Environment data_;
};

TEST_F(ElevationsTest, AMapIsStretchedOverTheTheaterAsOneStep) {
    Open();
    OpenImportOf(FourValues("300 400\n100 200"));
    ClickIn(Import(), "optStretch");
    ClickIn(Import(), "cmdImport");
    EXPECT_EQ(FeetAt(0, 0), 100);
    EXPECT_EQ(FeetAt(31, 0), 200);
    EXPECT_EQ(FeetAt(0, 31), 300);
    EXPECT_EQ(FeetAt(16, 16), 400);
    EXPECT_EQ(FeetAt(15, 15), 100);
    EXPECT_EQ(state_.Terrain.LxArr(2).TileOffset, 1);
    EXPECT_EQ(Text(Import(), "lblTold"), "Done: 1024 heights, 100 to 400 ft");
    EXPECT_EQ(Text(Window("FrmVXMap"), "lblWord"), "1024 heights, 100 to 400 ft");
    ASSERT_EQ(state_.Changes.Count(), 1U);
    EXPECT_EQ(state_.Changes.At(0).Name, "Import elevations from dem.asc");
    EXPECT_TRUE(state_.Flags.L2);
    Trigger("mnuUndo");
    EXPECT_EQ(FeetAt(0, 0), 0);
    EXPECT_EQ(FeetAt(16, 16), 0);
}

TEST_F(ElevationsTest, AMapComesThroughThePlaceWithinTheSelection) {
    Open();
    TellPlace();
    OpenImportOf(FourValues("-9999 400\n100 200"));
    EXPECT_TRUE(Text(Import(), "lblPlace").startsWith("As you told it:\nNW 47.24"));
    EXPECT_TRUE(
        Text(Import(), "lblPlace").contains("\nSW 46.9535 N, 9.0000 E   SE 46.95"));
    Find<QLineEdit>(Import(), "txtMapSystem").setText("EPSG:32632");
    workspace_->Interaction().Hand.Selected = SelectedBox({14, 14, 17, 17}, Posts);
    workspace_->SelectionChanged();
    ClickIn(Import(), "cmdImport");
    EXPECT_EQ(FeetAt(13, 14), 0);
    EXPECT_EQ(FeetAt(14, 14), 100);
    EXPECT_EQ(FeetAt(17, 15), 200);
    EXPECT_EQ(FeetAt(16, 17), 400);
    EXPECT_EQ(FeetAt(15, 16), 0);
    EXPECT_EQ(Text(Import(), "lblTold"),
              "Done: 12 heights, 100 to 400 ft; 4 places have none and stay");
}

TEST_F(ElevationsTest, APreviewIsSeenOverTheMapAndChangesNothing) {
    Open();
    const QImage before = Painted();
    OpenImportOf(FourValues("300 4000\n100 2000"));
    ClickIn(Import(), "optStretch");
    ClickIn(Import(), "cmdPreview");
    EXPECT_EQ(Text(Import(), "lblTold"), "1024 heights, 100 to 4000 ft");
    EXPECT_NE(Painted(), before);
    EXPECT_EQ(FeetAt(0, 0), 0);
    EXPECT_EQ(state_.Changes.Count(), 0U);
    // Another wish, and it goes.
    Find<QComboBox>(Import(), "cmbUnit").setCurrentIndex(0);
    EXPECT_EQ(Painted(), before);
    ClickIn(Import(), "cmdPreview");
    EXPECT_NE(Painted(), before);
    ClickIn(Import(), "cmdClose");
    EXPECT_EQ(Painted(), before);
}

TEST_F(ElevationsTest, TheLoadedHeightsTakeAMapToo) {
    ElevationLayer& layer = state_.Terrain.Elevations;
    layer.Kind = ElevationKind::Elv;
    layer.EMapWidth = 4 * Posts;
    layer.L0ElvArr = HeightArray(int64_t{4 * Posts} * 4 * Posts);
    Open();
    OpenImportOf(FourValues("300 400\n100 200"));
    ClickIn(Import(), "optStretch");
    ClickIn(Import(), "optHeights");
    Find<QSpinBox>(Import(), "spnX1").setValue(30);
    Find<QSpinBox>(Import(), "spnY1").setValue(30);
    ClickIn(Import(), "cmdImport");
    EXPECT_EQ(layer.At(120, 121), 0);
    EXPECT_EQ(layer.At(121, 121), 100);
    EXPECT_EQ(layer.At(125, 124), 200);
    EXPECT_EQ(layer.At(128, 128), 400);
    EXPECT_EQ(FeetAt(31, 31), 0);
    EXPECT_TRUE(state_.Flags.L0ELV);
    EXPECT_FALSE(state_.Flags.L2);
    Trigger("mnuUndo");
    EXPECT_EQ(layer.At(121, 121), 0);
}

TEST_F(ElevationsTest, ARectangleBesideTheSelectionChangesNothing) {
    Open();
    OpenImportOf(FourValues("300 400\n100 200"));
    ClickIn(Import(), "optStretch");
    Find<QSpinBox>(Import(), "spnX1").setValue(30);
    Find<QSpinBox>(Import(), "spnY1").setValue(30);
    workspace_->Interaction().Hand.Selected = SelectedBox({0, 0, 3, 3}, Posts);
    workspace_->SelectionChanged();
    std::string said;
    platform_.Dialogs.ExpectAnyBox("Error...", BoxAnswer::Ok, &said);
    ClickIn(Import(), "cmdImport");
    EXPECT_NE(said.find("none of the selected posts"), std::string::npos) << said;
    EXPECT_EQ(FeetAt(31, 31), 0);
    EXPECT_EQ(state_.Changes.Count(), 0U);
}

TEST_F(ElevationsTest, WhatIsNoMapEndsInASentence) {
    Open();
    OpenImportOf(folder_.Write("text.tif", "no map at all"));
    ClickIn(Import(), "optStretch");
    std::string said;
    platform_.Dialogs.ExpectAnyBox("Error...", BoxAnswer::Ok, &said);
    ClickIn(Import(), "cmdImport");
    EXPECT_NE(said.find("text.tif: GeoTIFF, HGT, ASC, IMG"), std::string::npos) << said;
    EXPECT_EQ(state_.Changes.Count(), 0U);
    EXPECT_TRUE(Find<QAbstractButton>(Import(), "cmdImport").isEnabled());
    EXPECT_TRUE(workspace_->Panel().isEnabled());
    // A map of another part of the earth has nothing to say here.
    ClickIn(Import(), "optPlace");
    Find<QLineEdit>(Import(), "txtMapSystem").setText("EPSG:32650");
    Find<QLineEdit>(Import(), "txtMap")
        .setText(QString::fromStdString(FourValues("300 400\n100 200")));
    ClickIn(Import(), "cmdImport");
    EXPECT_NE(Text(Import(), "lblTold").indexOf("no height there"), -1)
        << Text(Import(), "lblTold").toStdString();
    EXPECT_EQ(state_.Changes.Count(), 0U);
}

TEST_F(ElevationsTest, StopEndsTheWorkAndNothingIsChanged) {
    std::string map = "ncols 1500\nnrows 1500\nxllcorner 0\nyllcorner 0\ncellsize 1\n";
    for (int row = 0; row < 1500; ++row) {
        for (int column = 0; column < 1500; ++column)
            map += "107.25 ";
        map += '\n';
    }
    Open();
    OpenImportOf(folder_.Write("large.asc", map));
    ClickIn(Import(), "optStretch");
    bool locked = false;
    QTimer::singleShot(0, &Import(), [&] {
        locked = !workspace_->Panel().isEnabled();
        ClickIn(Import(), "cmdClose");
    });
    ClickIn(Import(), "cmdImport");
    EXPECT_TRUE(locked);
    EXPECT_EQ(state_.Changes.Count(), 0U);
    EXPECT_EQ(FeetAt(0, 0), 0);
    EXPECT_TRUE(Import().isVisible());
    EXPECT_TRUE(workspace_->Panel().isEnabled());
}

TEST_F(ElevationsTest, WhatIsExportedComesBackAsItWas) {
    for (int32_t serial = 1; serial <= Posts * Posts; ++serial)
        state_.Terrain.LxArr(serial).Elevation =
            static_cast<int16_t>(serial * 37 % 9000 - 400);
    Open();
    for (const char* name : {"out.tif", "out.asc", "out.png"}) {
        const std::string file = folder_.File(name);
        platform_.Dialogs.ExpectSave("Export elevations", file);
        Trigger("mnuExportElevations");
        EXPECT_EQ(Text(Window("FrmVXMap"), "lblWord").toStdString(),
                  std::string(name) + " written");
        const TerrainPost before = state_.Terrain.LxArr(77);
        state_.Terrain.LxArr(77).Elevation = 9;
        OpenImportOf(file);
        ClickIn(Import(), "optStretch");
        ClickIn(Import(), "cmdImport");
        EXPECT_EQ(state_.Terrain.LxArr(77), before) << name;
        EXPECT_EQ(
            state_.Changes.Whole(state_.Changes.Count() - 1).Posts.Values.New.size(),
            1U)
            << name; // all others are as they were
    }
}

TEST_F(ElevationsTest, APlaceThatWasToldIsReadOnTheMapAndGoneTo) {
    Open();
    auto& labelX = Find<QLineEdit>(workspace_->Panel(), "LabelX");
    const auto pointAtPost = [] {
        QWidget& map = Find<QWidget>(Window("FrmVXMap"), "PicShow");
        QTest::mouseMove(&map, {3, 3});
        QTest::mouseMove(&map, {5, map.height() - 5});
        return Text(Window("FrmVXMap"), "lblPost");
    };
    EXPECT_FALSE(pointAtPost().contains(" N, ")); // guessed
    TellPlace();
    EXPECT_EQ(Text(Place(), "lblTold"), "Saved.");
    EXPECT_EQ(Text(Place(), "lblSouthWest").toStdString(),
              "South west:\n46.9535 N, 9.0000 E");
    workspace_->ScrollTo(0, 0);
    // Half a post to the north east of the corner, whose post is a thousand metres.
    EXPECT_TRUE(pointAtPost().endsWith("   46.9580 N, 9.0066 E"))
        << pointAtPost().toStdString();
    // The middle of post 20, 24.
    labelX.setText("47.1737, 9.2705");
    QTest::keyClick(&labelX, Qt::Key_Return);
    EXPECT_EQ(Text(Window("FrmVXMap"), "lblWord"), "47.1737 N, 9.2705 E is post 20, 24");
    const MapView& view = workspace_->View();
    EXPECT_EQ(view.MapLeftX, 20 - view.ViewColumns() / 2);
    EXPECT_EQ(view.MapBottomY, 24 - view.ViewRows() / 2);
    labelX.setText("59.31, 18.02");
    ClickIn(workspace_->Panel(), "cmdGoXY");
    EXPECT_EQ(Text(Window("FrmVXMap"), "lblWord"),
              "59.3100 N, 18.0200 E does not lie in this theater");
    labelX.setText("3");
    ClickIn(workspace_->Panel(), "cmdGoXY");
    EXPECT_EQ(view.MapLeftX, 3);
}

TEST_F(ElevationsTest, APlaceGoesToAFileAndComesBack) {
    Open();
    Trigger("mnuTheaterPlace");
    EXPECT_EQ(Text(Place(), "lblSource"),
              "Guessed from theater.map; tell it better, and save it.");
    EXPECT_EQ(Text(Place(), "lblSouthWest").toStdString(),
              "South west:\n47.0000 N, 9.0000 E");
    TellPlace();
    const std::string file = folder_.File("place.ini");
    platform_.Dialogs.ExpectSave("Export the place", file);
    ClickIn(Place(), "cmdExportPlace");
    std::filesystem::remove_all(folder_.File("data"));
    Trigger("mnuTheaterPlace");
    EXPECT_EQ(Text(Place(), "lblSouthWest").toStdString(),
              "South west:\n47.0000 N, 9.0000 E");
    platform_.Dialogs.ExpectOpen("Import a place", file);
    ClickIn(Place(), "cmdImportPlace");
    EXPECT_EQ(Text(Place(), "lblSource"), "From place.ini, not yet saved.");
    EXPECT_EQ(Text(Place(), "lblSouthWest").toStdString(),
              "South west:\n46.9535 N, 9.0000 E");
    ClickIn(Place(), "cmdSavePlace");
    EXPECT_EQ(Text(Place(), "lblSource"), "As you told it; it is kept in your own data.");
}

TEST_F(ElevationsTest, ASystemThatNobodyKnowsIsNotKept) {
    Open();
    Trigger("mnuTheaterPlace");
    Find<QLineEdit>(Place(), "txtSystem").setText("nonsense");
    std::string said;
    platform_.Dialogs.ExpectAnyBox("Error...", BoxAnswer::Ok, &said);
    ClickIn(Place(), "cmdSavePlace");
    EXPECT_NE(said.find("nonsense"), std::string::npos) << said;
    EXPECT_FALSE(std::filesystem::exists(folder_.File("data/vardenix/places")));
}

} // namespace
} // namespace vardenix
