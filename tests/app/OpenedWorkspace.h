#pragma once

#include "app/Subsystems.h"
#include "support/FakePlatform.h"
#include "support/PictureMaker.h"
#include "support/TestFolder.h"
#include "windows/WindowTest.h"
#include "workspace/windows/FrmVXMain.h"

#include <QAbstractButton>
#include <QAction>
#include <QImage>
#include <QTest>

#include <memory>

namespace vardenix::tests {

constexpr int Posts = 32; // of the theater, a side

// The windows of the workspace over a small theater with real pictures.
class OpenedWorkspace : public testing::Test {
protected:
    // Every post has tile 0, a picture of 16 by 16 blocks, but for a column of tile 1.
    OpenedWorkspace() {
        folder_.Write("H0.dds", BlockTile(64, 64, "DXT1"));
        folder_.Write("H1.dds", BlockTile(32, 32, "DXT1"));
        folder_.Write("Desk.ini", "[WINDOWS]\r\nONE_WINDOW=0\r\n");
        folder_.Write("NoTile.jpg", JpegOf(8, 8, 0x804020));
        state_.Folders.AppPath = folder_.Path() + "/";
        state_.Folders.ShippedPath = state_.Folders.AppPath;
        state_.Terrain.MapWidth = Posts;
        state_.Terrain.LxArr = PostArray(int64_t{Posts} * Posts);
        state_.Catalogue.DDSFolder = folder_.Path() + "/";
        state_.Catalogue.Lookup.resize(16);
        for (const int tile : {0, 1}) {
            TileInfo& entry = state_.Catalogue.Lookup[static_cast<size_t>(tile)];
            entry.DayFile = "H" + std::to_string(tile) + ".dds";
            entry.HasImage = 1;
        }
        for (int y = 1; y <= Posts; ++y)
            state_.Terrain.LxArr((y - 1) * Posts + 2).TileOffset = 1;
        state_.Preview.Side = Posts;
        state_.Preview.Pixels.assign(size_t{Posts} * Posts, 0x720000);
        state_.Configuration.MainWinVis = true;
        state_.Configuration.ThPrevWinVis = true;
    }

    // As the start-up window does it.
    void Open() {
        subsystems_.reset();
        state_.Starting = true;
        subsystems_ = std::make_unique<Subsystems>(
            state_, platform_.All, log_, [this] { ++ends_; }, table_);
        workspace_ = &subsystems_->Workspace;
        OpeningWindows& windows = subsystems_->Opening;
        windows.PreviewChanged();
        windows.LoadMap();
        windows.ShowMainPanel();
        windows.RestoreChildWindows();
        windows.RefreshPalette();
        windows.InitForm();
        workspace_->ApplySavedLayout();
        state_.Starting = false;
        ASSERT_TRUE(QTest::qWaitForWindowExposed(workspace_->Panel().window()));
    }

    static QWidget& Window(const char* name) {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == name)
                return *window;
        throw std::runtime_error(std::string("no window ") + name);
    }
    static void Click(const char* control) {
        Find<QAbstractButton>(Window("FrmVXMain"), control).click();
    }
    static QImage Painted() {
        return Find<QWidget>(Window("FrmVXMap"), "PicShow").grab().toImage();
    }
    static void TakeScreenshot() {
        Window("FrmVXMain").findChild<QAction*>("mnuSaveScreeshot")->trigger();
    }

    TestFolder folder_;
    ProgramState state_;
    FakePlatform platform_;
    DebugLog log_{platform_.Clock};
    int ends_ = 0;
    std::vector<Command> table_ = AllCommands();
    std::unique_ptr<Subsystems> subsystems_;
    Workspace* workspace_ = nullptr; // among them
};

} // namespace vardenix::tests
