#include "windows/FrmBINTileEditTest.h"

#include "bineditor/windows/TileSlots.h"
#include "pictures/Dxt1Writer.h"
#include "support/PlainUser.h"

#include <QClipboard>
#include <QComboBox>
#include <QGroupBox>
#include <QMimeData>
#include <QProgressBar>
#include <QScrollBar>

namespace vardenix {
namespace {

using tests::Find;
using tests::FrmBINTileEditTest;

TEST_F(FrmBINTileEditTest, OpensAtTheFirstTileWithItsDetailsAndCounters) {
    EXPECT_EQ(window_->windowTitle(), "BIN Editor v3.0.1");
    EXPECT_EQ(Find<QGroupBox>(*window_, "FraTileSets").title(),
              "3 Sets || 4 Tiles || 2 Tiles not used in L2");
    EXPECT_EQ(Name(), "SEA.PCX");
    EXPECT_EQ(Label("lblAreasPaths"), "1 Areas and 2 Paths");
    EXPECT_EQ(Label("lblTileNum"), "Tile Number: 0");
    EXPECT_FALSE(Enabled("cmdSaveBIN"));
    EXPECT_FALSE(Shown("PB5"));
    EXPECT_EQ(Find<QComboBox>(*window_, "ComboSetType").itemText(3), "Brush");
}

TEST_F(FrmBINTileEditTest, HasItsCaptions) {
    const auto title = [&](const char* frame) {
        return Find<QGroupBox>(*window_, frame).title().toStdString();
    };
    EXPECT_EQ(title("FraTiles") + title("FraTileDetails") + title("FraActions") +
                  title("FraMoveSet") + title("FraTilePalette"),
              "TilesTile DetailsActionsMove SetTile Palette");
    for (const auto& [name, caption] :
         {std::pair{"cmdAppendTile", "Append/Replace Tile*"},
          {"cmdDeleteTile", "Delete Tile"},
          {"cmdEditTile", "Edit Tile"},
          {"cmdAppendSet", "Append Set*"},
          {"cmdDeleteSet", "Delete Set"},
          {"cmdChangeSet", "Change Set Type"},
          {"cmdMoveSet", "Move Set"},
          {"cmdSaveBIN", "Save BIN File"},
          {"cmdOptions", "Options"},
          {"cmdOpenTerrain", "Open Vardenix"},
          {"cmdDeleteUnusedDDS", "Delete Unused DDSs"},
          {"cmdDeleteUnusedPCX", "Delete Unused PCXs"},
          {"cmdDocs", "Docs"},
          {"Option1_0", "Before"},
          {"Option1_1", "After"},
          {"cmdMoveCancel", "Cancel"},
          {"cmdTryTo", "Try to get Palette form PCX"},
          {"chkTryAutomatically", "Try automatically"},
          {"cmdSavePalette", "Save Palette"}})
        EXPECT_EQ(Find<QAbstractButton>(*window_, name).text().remove('&'), caption);
    EXPECT_EQ(Label("lblPalErroMsg"), "No Image, no palette availiable!");
    EXPECT_EQ(Find<QTabBar>(*window_, "TabStrip1").tabText(0), "Sets");
    EXPECT_EQ(Find<QTabBar>(*window_, "TabStrip1").tabText(1), "Tiles");
    EXPECT_EQ(Headings("ListView1"), "Set #|Set Type|# of Tiles|");
    EXPECT_EQ(Headings("ListView2"), "#|Set #|Name|Areas|Paths|");
    for (const char* name : {"cmdAppendSet", "cmdAppendTile"})
        EXPECT_EQ(
            Find<QWidget>(*window_, name).toolTip(),
            "*PCX files will be added in Texture.zip (including M, L and T tiles), BUT "
            "NO DDS FILES WILL BE PRODUCED (if you provide one, it will be copied to DDS "
            "Folder, otherwise a BMP file will created.. You'll have to convert it)!!!");
}

TEST_F(FrmBINTileEditTest, WhatDoesNothingSaysSo) {
    for (const char* name :
         {"cmdDeleteUnusedPCX", "cmdTryTo", "chkTryAutomatically", "cmdSavePalette"}) {
        EXPECT_TRUE(Find<QWidget>(*window_, name).toolTip().startsWith("Does nothing"));
        Click(name);
    }
    EXPECT_EQ(verbs_.Story, "");
    EXPECT_FALSE(window_->NeedSaveFlag());
}

TEST_F(FrmBINTileEditTest, TheFrameRoundThePictureIsGreenForATileInUseElseRed) {
    const auto& frame = Find<QFrame>(*window_, "Highlightrect");
    const auto& pictures = Find<TileSlots>(*window_, "PicTiles");
    const auto seen = [&](int slot) {
        QTest::mouseClick(&pictures.At(slot), Qt::LeftButton);
        EXPECT_EQ(frame.geometry(),
                  pictures.At(slot).geometry().marginsRemoved({1, 1, 1, 1}));
        return window_->grab().toImage().pixelColor(
            frame.mapTo(window_.get(), QPoint(frame.width() / 2, 1)));
    };
    EXPECT_EQ(seen(0), QColor(0, 200, 0));
    EXPECT_EQ(seen(1), QColor(Qt::red));
    EXPECT_EQ(seen(9), QColor(Qt::red)); // empty
    for (int i = 0; i < 3; ++i)
        Click("cmdDeleteSet");
    EXPECT_EQ(frame.x(), -1000);
}

TEST_F(FrmBINTileEditTest, ThePictureIsTheFilesAndItsTipTellsTheUse) {
    const auto picture = Dxt1File(std::vector<uint8_t>(8 * 8 * 4, 200), 8, 8, {});
    folder_.Write("dds/SEA.dds", std::string(picture.begin(), picture.end()));
    NoProgress quiet;
    RebuildTileLookup(state_.Catalogue, {}, quiet);
    CountTileUse(state_.Terrain, state_.Catalogue.Lookup);
    window_->Open();
    const auto& pictures = Find<TileSlots>(*window_, "PicTiles");
    const QColor seen = pictures.At(0).Picture().pixelColor(50, 50);
    EXPECT_NEAR(seen.red(), 200, 8);
    EXPECT_NEAR(seen.blue(), 200, 8);
    EXPECT_EQ(pictures.At(0).toolTip(), "Loaded from DDS\r\nSEA.PCX\r\nTile Number: "
                                        "0\r\nUsed 255 times in L2");
    EXPECT_EQ(pictures.At(1).toolTip(), "Empty Tile"); // its file is missing
    EXPECT_EQ(pictures.At(2).toolTip(), "Empty Tile");
}

TEST_F(FrmBINTileEditTest, TheBarHasItsFullWidthAtAHundred) {
    window_->ShowBar();
    EXPECT_TRUE(Shown("PB5"));
    auto& bar = Find<QProgressBar>(*window_, "PB5");
    EXPECT_EQ(bar.maximum(), 3495);
    EXPECT_EQ(bar.value(), 0);
    window_->SetPB5(20);
    EXPECT_EQ(bar.value(), 699);
    window_->SetPB5(100);
    EXPECT_EQ(bar.value(), 3495);
    window_->HideBar();
    EXPECT_FALSE(Shown("PB5"));
}

TEST_F(FrmBINTileEditTest, ArrowKeysMoveTheSelectionAndThePicturesFollow) {
    QTest::keyClick(&Find<BinList>(*window_, "ListView1"), Qt::Key_Down);
    EXPECT_EQ(Name(), "LAND.PCX");
    EXPECT_EQ(Row("ListView2"), 16);
    Find<QTabBar>(*window_, "TabStrip1").setCurrentIndex(1);
    QTest::keyClick(&Find<BinList>(*window_, "ListView2"), Qt::Key_Up);
    EXPECT_EQ(Row("ListView2"), 15);
    EXPECT_EQ(Row("ListView1"), 0);
    EXPECT_EQ(Find<TileSlots>(*window_, "PicTiles").Highlighted(), 15);
}

TEST_F(FrmBINTileEditTest, TheListsFollowOneAnother) {
    ClickRow("ListView1", 2);
    EXPECT_EQ(Row("ListView2"), 32);
    EXPECT_EQ(Name(), "TOWN.PCX");
    Find<QTabBar>(*window_, "TabStrip1").setCurrentIndex(1);
    ClickRow("ListView2", 1);
    EXPECT_EQ(Row("ListView1"), 0);
    EXPECT_EQ(Name(), "SHORE.PCX");
    ClickRow("ListView2", 18); // an empty slot of the second set
    EXPECT_EQ(Row("ListView1"), 1);
    EXPECT_EQ(Name(), "");
    EXPECT_TRUE(Enabled("cmdAppendTile"));
    EXPECT_FALSE(Enabled("cmdEditTile"));
    EXPECT_FALSE(Enabled("cmdDeleteTile"));
}

TEST_F(FrmBINTileEditTest, ASlotIsSelectedByClickAndArrowKeys) {
    auto& pictures = Find<TileSlots>(*window_, "PicTiles");
    QTest::mouseClick(&pictures.At(1), Qt::LeftButton);
    EXPECT_EQ(Name(), "SHORE.PCX");
    EXPECT_EQ(pictures.Highlighted(), 1);
    EXPECT_TRUE(Enabled("cmdDeleteTile"));
    QTest::keyClick(&pictures, Qt::Key_Left);
    EXPECT_EQ(Name(), "SEA.PCX");
    QTest::keyClick(&pictures, Qt::Key_Down);
    EXPECT_EQ(pictures.Highlighted(), 4);
    EXPECT_EQ(Row("ListView2"), 4);
}

TEST_F(FrmBINTileEditTest, FitsASmallScreen) {
    EXPECT_LE(window_->minimumSizeHint().width(), 1024 - 8); // the desktop's frame
    EXPECT_LE(window_->minimumSizeHint().height(), 768 - 60);
}

TEST_F(FrmBINTileEditTest, EveryColumnIsSeen) {
    window_->resize(1016, 640); // of the smallest screen
    QCoreApplication::processEvents();
    for (const char* name : {"ListView1", "ListView2"}) {
        Find<QTabBar>(*window_, "TabStrip1").setCurrentIndex(name[8] - '1');
        const auto& list = Find<BinList>(*window_, name);
        EXPECT_EQ(list.horizontalScrollBar()->maximum(), 0) << name;
    }
}

TEST_F(FrmBINTileEditTest, WhatIsTypedFindsATileByItsName) {
    Find<QTabBar>(*window_, "TabStrip1").setCurrentIndex(1);
    QTest::keyClicks(&Find<BinList>(*window_, "ListView2"), "tow");
    EXPECT_EQ(Name(), "TOWN.PCX");
}

TEST_F(FrmBINTileEditTest, RowsAreBlackRedOrGreyByTheirUse) {
    const auto color = [&](int row) {
        return Find<BinList>(*window_, "ListView2")
            .model()
            ->index(row, 4)
            .data(Qt::ForegroundRole)
            .value<QColor>()
            .name()
            .toStdString();
    };
    EXPECT_EQ(color(0) + color(1) + color(2), "#000000#ff0000#c1c1c1");
}

TEST_F(FrmBINTileEditTest, AMoveTakesItsTargetFromTheList) {
    Click("cmdMoveSet");
    EXPECT_TRUE(Shown("FraMoveSet"));
    EXPECT_FALSE(Shown("FraActions"));
    EXPECT_FALSE(Enabled("cmdMoveOK"));
    EXPECT_FALSE(Enabled("TabStrip1"));
    EXPECT_FALSE(Enabled("FraTiles"));
    EXPECT_EQ(Label("Label1"), "Selected Set to be Moved: 0");
    const std::string click =
        "Click on a set in the list above to define the move position.\n";
    EXPECT_EQ(Label("Label2"), click + "Current move position: NONE SELECTED");
    ClickRow("ListView1", 2);
    EXPECT_EQ(Label("Label2"), click + "Current move position: Before Set# 2");
    Click("Option1_1");
    EXPECT_EQ(Label("Label2"), click + "Current move position: After Set# 2");
    EXPECT_TRUE(Enabled("cmdMoveOK"));
    ClickRow("ListView1", 0);
    EXPECT_FALSE(Enabled("cmdMoveOK"));
    ClickRow("ListView1", 2);
    Click("cmdMoveOK");
    EXPECT_EQ(Sets(), "491");
    EXPECT_EQ(state_.Terrain.LxArr(9).TileOffset + 0, 0);
    EXPECT_EQ(state_.Terrain.LxArr(1).TileOffset + 0, 32);
    EXPECT_TRUE(Shown("FraActions"));
    EXPECT_TRUE(Enabled("TabStrip1"));
    EXPECT_EQ(verbs_.Story, " 0to32 L2");
    EXPECT_EQ(window_->windowTitle(), "*BIN Editor v3.0.1");
    EXPECT_EQ(Row("ListView1"), 2);
    // Not counted anew yet.
    EXPECT_EQ(Find<QGroupBox>(*window_, "FraTileSets").title(),
              "3 Sets || 4 Tiles || 4 Tiles not used in L2");
}

TEST_F(FrmBINTileEditTest, ACancelledMoveChangesNothing) {
    Click("cmdMoveSet");
    ClickRow("ListView1", 1);
    Click("cmdMoveCancel");
    EXPECT_TRUE(Shown("FraActions"));
    EXPECT_EQ(Sets(), "149");
    EXPECT_FALSE(window_->NeedSaveFlag());
}

// The folder of pictures cannot be looked at, so the table of numbers cannot be made
// anew.
TEST_F(FrmBINTileEditTest, AMoveThatFailsEndsInTheUsualForm) {
    tests::LetOthers(folder_.File(""), 0);
    Click("cmdMoveSet");
    ClickRow("ListView1", 2);
    {
        const tests::PlainUser user;
        tests::BarrierAnswers answers;
        std::string text;
        answers.ExpectAnyBox("Vardenix", BoxAnswer::Continue, &text);
        Click("cmdMoveOK");
        EXPECT_NE(text.find(folder_.File("")), std::string::npos) << text;
    }
    tests::LetOthers(folder_.File(""), 7);
    EXPECT_TRUE(Shown("FraActions"));
    for (const char* name : {"FraActions", "FraTiles", "FraTileDetails", "TabStrip1"})
        EXPECT_TRUE(Enabled(name)) << name;
    EXPECT_FALSE(Shown("PB5"));
    EXPECT_EQ(Sets(), "149");
    EXPECT_FALSE(window_->NeedSaveFlag());
}

TEST_F(FrmBINTileEditTest, TheTypeOfASetIsChanged) {
    Find<QComboBox>(*window_, "ComboSetType").setCurrentIndex(5);
    Click("cmdChangeSet");
    EXPECT_EQ(Sets(), "749");
    EXPECT_TRUE(Enabled("cmdSaveBIN"));
    EXPECT_EQ(verbs_.Story, "");
}

TEST_F(FrmBINTileEditTest, UsesAreCountedWhenItComesUp) {
    state_.Terrain.LxArr(10).TileOffset = 32;
    window_->Open();
    EXPECT_EQ(Find<QGroupBox>(*window_, "FraTileSets").title(),
              "3 Sets || 4 Tiles || 1 Tiles not used in L2");
}

TEST_F(FrmBINTileEditTest, DeleteSetStandsApartFromAppendSet) {
    const QWidget& append = Find<QWidget>(*window_, "cmdAppendSet");
    const QWidget& gone = Find<QWidget>(*window_, "cmdDeleteSet");
    const QWidget& type = Find<QWidget>(*window_, "cmdChangeSet");
    EXPECT_GT(gone.y(), append.geometry().bottom() + type.height());
}

TEST_F(FrmBINTileEditTest, TheOnlySetCanGo) {
    for (int i = 0; i < 3; ++i)
        Click("cmdDeleteSet");
    EXPECT_EQ(Find<QGroupBox>(*window_, "FraTileSets").title(),
              "0 Sets || 0 Tiles || 0 Tiles not used in L2");
    EXPECT_EQ(window_->windowTitle(), "*BIN Editor v3.0.1"); // one star for all
    for (const char* name : {"cmdDeleteSet", "cmdChangeSet", "cmdMoveSet",
                             "cmdAppendTile", "cmdEditTile", "cmdDeleteTile"})
        EXPECT_FALSE(Enabled(name)) << name;
    EXPECT_TRUE(Enabled("cmdAppendSet"));
    EXPECT_EQ(Find<TileSlots>(*window_, "PicTiles").Highlighted(), -1);
}

TEST_F(FrmBINTileEditTest, ACancelledAppendLeavesTheFormUsable) {
    platform_.Dialogs.ExpectCancel();
    Click("cmdAppendSet");
    EXPECT_TRUE(Enabled("FraTileSets"));
    EXPECT_TRUE(Enabled("FraActions"));
    EXPECT_FALSE(Shown("PB5"));
    EXPECT_EQ(Sets(), "149");
}

TEST_F(FrmBINTileEditTest, TheMapComesBackWithTheSetsClass) {
    ClickRow("ListView1", 2);
    Click("cmdOpenTerrain");
    EXPECT_EQ(verbs_.Story, " map9");
}

TEST_F(FrmBINTileEditTest, ClosingItAsksForTheWayOut) {
    window_->close();
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(verbs_.Story, " leave");
}

TEST_F(FrmBINTileEditTest, DocsOpenTheHelp) {
    Click("cmdDocs");
    EXPECT_EQ(platform_.Processes.Story, "open " + state_.Configuration.OnlineHelp);
}

TEST_F(FrmBINTileEditTest, ThePaletteIsEmptyAndItsTipIsCopied) {
    auto& palette = Find<QWidget>(*window_, "picTilePalette");
    QTest::mouseMove(&palette, {5, 5});
    EXPECT_EQ(palette.toolTip(), "No Palette loaded...");
    QTest::mouseClick(&palette, Qt::LeftButton);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "No Palette loaded...");
    EXPECT_EQ(palette.toolTip(), "Copied to clipboard");
}

// The press that makes it would hide it, and so would the next stir of the hand.
TEST_F(FrmBINTileEditTest, ThatThePaletteWasCopiedIsSeenUntilThePointerMovesOn) {
    auto& palette = Find<QWidget>(*window_, "picTilePalette");
    const auto shown = [] {
        QStringList texts;
        for (const QWidget* widget : QApplication::topLevelWidgets())
            if (widget->objectName() == "ToolTip" && widget->isVisible())
                texts += static_cast<const QLabel*>(widget)->text();
        return texts.join("|");
    };
    QTest::mouseMove(&palette, {5, 5});
    QTest::mouseClick(&palette, Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(shown(), "Copied to clipboard");
    QTest::mouseMove(&palette, {7, 6});
    EXPECT_EQ(shown(), "Copied to clipboard");
    QTest::mouseClick(&palette, Qt::LeftButton, {}, {7, 6});
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "No Palette loaded...");
    QTest::mouseMove(&palette, {60, 60});
    EXPECT_EQ(shown(), "No Palette loaded...");
}

TEST_F(FrmBINTileEditTest, ThePaletteTellsTheColorUnderThePointer) {
    auto& palette = Find<QWidget>(*window_, "picTilePalette");
    window_->TilePalette.resize(256);
    window_->TilePalette[255] = {3, 200, 100, 0};
    QTest::mouseMove(&palette, {1, 1});
    EXPECT_EQ(palette.toolTip(), "Palette Index: 255\nRed: 100\nGreen: 200\nBlue: 3\n"
                                 "hex$#: .64.C8..3");
    QTest::mouseMove(&palette, {palette.width() - 1, palette.height() - 1});
    EXPECT_EQ(palette.toolTip(), "Palette Index: 0\nRed: 0\nGreen: 0\nBlue: 0\n"
                                 "hex$#: ..0..0..0");
    QTest::mouseClick(&palette, Qt::LeftButton);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith("Palette Index: 0\n"));
}

TEST_F(FrmBINTileEditTest, EscBetweenTwoPicturesLeavesEverythingAsItWas) {
    std::filesystem::create_directory(folder_.File("Temp"));
    state_.Folders.TempFolder = folder_.File("Temp/");
    const auto picture = Dxt1File(std::vector<uint8_t>(8 * 8 * 4, 200), 8, 8, {});
    QMimeData data;
    QList<QUrl> urls;
    for (const char* name : {"1.dds", "2.dds", "3.dds"})
        urls.append(QUrl::fromLocalFile(QString::fromStdString(
            folder_.Write(name, std::string(picture.begin(), picture.end())))));
    data.setUrls(urls);
    EXPECT_TRUE(Drop(data, *window_));
    // Seen when the intake lets events through.
    QCoreApplication::postEvent(
        window_.get(), new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
    QCoreApplication::processEvents();
    EXPECT_EQ(Sets(), "149");
    EXPECT_EQ(verbs_.Story, "");
    EXPECT_EQ(window_->windowTitle(), "BIN Editor v3.0.1");
    EXPECT_TRUE(std::filesystem::is_empty(folder_.File("dds")));
    EXPECT_TRUE(std::filesystem::is_empty(folder_.File("Temp")));
    EXPECT_TRUE(Enabled("cmdAppendSet"));
    EXPECT_FALSE(Shown("PB5"));

    Drop(data, *window_); // the next one goes its way
    EXPECT_EQ(Sets(), "149");
    QCoreApplication::processEvents();
    EXPECT_EQ(Sets(), "1149");
    EXPECT_EQ(Name(), "H1.PCX");
    EXPECT_EQ(window_->windowTitle(), "*BIN Editor v3.0.1");
}

TEST_F(FrmBINTileEditTest, AFileDroppedOnTheWindowBecomesASetAndIsChecked) {
    QMimeData data;
    data.setUrls(
        {QUrl::fromLocalFile(QString::fromStdString(folder_.Write("a.tga", "x")))});
    auto& slot = Find<TileSlots>(*window_, "PicTiles").At(3);
    const auto refusedAsSet = [&](QWidget& onto) {
        platform_.Dialogs.ExpectBox(
            "Error", "The image a.tga you tried to load doesn't seem to be a valid image",
            BoxAnswer::Ok);
        EXPECT_TRUE(Drop(data, onto));
        EXPECT_FALSE(platform_.Dialogs.AllAnswered());
        QCoreApplication::processEvents();
        EXPECT_TRUE(platform_.Dialogs.AllAnswered());
    };
    refusedAsSet(*window_);
    platform_.Dialogs.ExpectBox("", "Invalid extension for pcx or dds image",
                                BoxAnswer::Ok);
    EXPECT_TRUE(Drop(data, slot));
    QCoreApplication::processEvents();
    EXPECT_EQ(Find<TileSlots>(*window_, "PicTiles").Highlighted(), 3);
    // Without a set the slots are nobody's.
    for (int i = 0; i < 3; ++i)
        Click("cmdDeleteSet");
    refusedAsSet(slot);
}

} // namespace
} // namespace vardenix
