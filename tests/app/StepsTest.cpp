// Ctrl+Z and Ctrl+Y through the windows of the program.
#include "app/OpenedWorkspace.h"
#include "bineditor/SetsAndTiles.h"
#include "catalogue/TextureBinFile.h"
#include "files/BinaryReader.h"
#include "support/TheaterMaker.h"
#include "workspace/RestorePoint.h"

#include <QLabel>
#include <QTreeView>

#include <cstring>

namespace vardenix {
namespace {

using tests::Find;

class StepsTest : public tests::OpenedWorkspace {
protected:
    StepsTest() {
        state_.Folders.SystemTempPath = folder_.Path() + "/";
        state_.MAPFile = folder_.Write("theater.map", std::string(1112, '\0'));
        state_.Catalogue.BinPath = folder_.Write(
            "Texture.bin", tests::CatalogueBytes({{1, {{"H0.PCX"}, {"H1.PCX"}}},
                                                  {4, {{"LAND.PCX"}}},
                                                  {9, {{"TOWN.PCX"}}}}));
        state_.Catalogue.Bin = ParseBinFile(
            ReadWholeFile(state_.Catalogue.BinPath, uint64_t{1} << 20).Span(), "");
        NoProgress quiet;
        RebuildTileLookup(state_.Catalogue, {}, quiet);
    }

    void OpenAll() {
        Open();
        static_cast<OpeningWindows&>(subsystems_->Opening).LoadMapEditor();
        workspace_->CommandsChanged();
    }
    // The papers as bytes, taken without a routine of the log.
    std::string Papers() {
        const auto posts = state_.Terrain.LxArr.Values();
        std::string bytes(posts.size_bytes() + sizeof state_.MapFileRecord, '\0');
        std::memcpy(bytes.data(), posts.data(), posts.size_bytes());
        std::memcpy(bytes.data() + posts.size_bytes(), &state_.MapFileRecord,
                    sizeof state_.MapFileRecord);
        for (const TileSet& set : state_.Catalogue.Bin.Sets) {
            bytes += static_cast<char>(set.Terrain);
            for (const TileRecord& tile : set.Tiles)
                bytes += tile.TileName;
        }
        return bytes;
    }
    void PaintLowerLeft(int32_t tile) {
        workspace_->Interaction().SelectedTile = tile;
        auto& picture = Find<QWidget>(Window("FrmVXMap"), "PicShow");
        QTest::mousePress(&picture, Qt::LeftButton, {}, {3, 636});
        QTest::mouseRelease(&picture, Qt::LeftButton, {}, {3, 636});
    }
    static void Press(const char* window, const char* button) {
        Find<QAbstractButton>(Window(window), button).click();
    }
    static QAction& Step(const char* id) {
        return *Window("FrmVXMain").findChild<QAction*>(id);
    }
    static bool Starred(const char* window) {
        return Window(window).windowTitle().startsWith('*');
    }
};

// A stroke, a set that goes with its pass over level 2, a colour, a restore: the whole
// way back and on again, step by step.
TEST_F(StepsTest, EveryKindOfChangeIsTakenBackAndBroughtAgain) {
    OpenAll();
    std::vector<std::string> papers{Papers()};
    Click("Command3"); // a restore point
    PaintLowerLeft(32);
    papers.push_back(Papers());
    Click("cmdOpenBIN");
    auto& list = Find<QTreeView>(Window("FrmBINTileEdit"), "ListView1");
    list.setCurrentIndex(list.model()->index(0, 0));
    state_.Configuration.AutoL2 = true;
    Press("FrmBINTileEdit", "cmdDeleteSet");
    papers.push_back(Papers());
    EXPECT_TRUE(Starred("FrmBINTileEdit"));
    Press("FrmBINTileEdit", "cmdOpenTerrain");
    Click("cmdOpenMap");
    platform_.Dialogs.ExpectColor(0, 0x102030);
    Press("frmMAPMain", "Command1_7");
    papers.push_back(Papers());
    Press("frmMAPMain", "cmdVardenix");
    EXPECT_EQ(state_.Changes.Count(), 3U);
    for (size_t step = 3; step-- > 0;) {
        ASSERT_TRUE(Step("mnuUndo").isEnabled());
        Step("mnuUndo").trigger();
        EXPECT_EQ(Papers(), papers.at(step)) << step;
    }
    EXPECT_FALSE(Step("mnuUndo").isEnabled());
    for (const char* window : {"FrmVXMain", "FrmBINTileEdit", "frmMAPMain"})
        EXPECT_FALSE(Starred(window)) << window;
    for (size_t step = 1; step < papers.size(); ++step) {
        Step("mnuRedo").trigger();
        EXPECT_EQ(Papers(), papers.at(step)) << step;
    }
    for (const char* window : {"FrmVXMain", "FrmBINTileEdit", "frmMAPMain"})
        EXPECT_TRUE(Starred(window)) << window;
    EXPECT_FALSE(Step("mnuRedo").isEnabled());
}

TEST_F(StepsTest, ARestoreHasAWayBack) {
    OpenAll();
    Click("Command3");
    PaintLowerLeft(16);
    const std::string painted = Papers();
    Click("Command4");
    EXPECT_NE(Papers(), painted);
    EXPECT_TRUE(state_.Changes.Unsaved(Paper::Level2));
    Step("mnuUndo").trigger();
    EXPECT_EQ(Papers(), painted);
}

// The steps are those of the editor that has the screen, too.
TEST_F(StepsTest, AnEditorHasTheSteps) {
    OpenAll();
    Click("cmdOpenBIN");
    Find<QTreeView>(Window("FrmBINTileEdit"), "ListView1")
        .setCurrentIndex(
            Find<QTreeView>(Window("FrmBINTileEdit"), "ListView1").model()->index(1, 0));
    state_.Configuration.AutoL2 = true;
    Press("FrmBINTileEdit", "cmdDeleteSet");
    EXPECT_EQ(state_.Catalogue.Bin.NumSets, 2);
    QTest::keyClick(&Window("FrmBINTileEdit"), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(state_.Catalogue.Bin.NumSets, 3);
    EXPECT_EQ(Find<QLabel>(Window("FrmBINTileEdit"), "lblStatus").text(),
              "Taken back: Delete set 1");
    EXPECT_EQ(Find<QTreeView>(Window("FrmBINTileEdit"), "ListView1").model()->rowCount(),
              3);
    QTest::keyClick(&Window("FrmBINTileEdit"), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(state_.Catalogue.Bin.NumSets, 2);
    Press("FrmBINTileEdit", "cmdOpenTerrain");
    // The other one is made before the panel is.
    Click("cmdOpenMap");
    platform_.Dialogs.ExpectColor(0, 0x102030);
    Press("frmMAPMain", "Command1_7");
    EXPECT_EQ(int{state_.MapFileRecord.Palette[7].Green}, 0x20);
    QTest::keyClick(&Window("frmMAPMain"), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(int{state_.MapFileRecord.Palette[7].Green}, 0);
}

} // namespace
} // namespace vardenix
