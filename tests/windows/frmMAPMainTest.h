#pragma once

#include "mapeditor/windows/PaletteGrid.h"
#include "mapeditor/windows/frmMAPMain.h"
#include "support/FakePlatform.h"
#include "support/RecordingCommands.h"
#include "support/TestFolder.h"
#include "windows/WindowTest.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QTimer>

#include <cstring>
#include <string>

namespace vardenix {

// Bytes 0, 1, 2 ... 250, 0 ...
inline std::string Pattern(size_t size) {
    std::string bytes;
    for (size_t i = 0; i < size; ++i)
        bytes += static_cast<char>(i % 251);
    return bytes;
}

class frmMAPMainTest : public testing::Test {
protected:
    frmMAPMainTest() {
        state_.MAPFile = folder_.Write("theater.map", Pattern(1112));
        state_.Configuration.OnlineHelp = "http://help.example/";
        window_.OpenMapFile(state_.MAPFile);
        window_.show();
    }

    void Activate() {
        window_.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    }
    void Click(const char* name) { tests::Find<QAbstractButton>(window_, name).click(); }
    QLineEdit& Box(int index) {
        return tests::Find<QLineEdit>(window_,
                                      ("Text1_" + std::to_string(index)).c_str());
    }
    QAbstractButton& Entry(int index) {
        return tests::Find<QAbstractButton>(
            window_, ("Command1_" + std::to_string(index)).c_str());
    }
    void RightClick(int index) {
        const QPoint at(2, 2);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at,
                                Entry(index).mapToGlobal(at));
        QApplication::sendEvent(&Entry(index), &event);
    }
    uint32_t Shown(int index) {
        return tests::Find<PaletteGrid>(window_, "Command1").Color(index);
    }
    std::string Tip(int index) { return Entry(index).toolTip().toStdString(); }
    std::string Numbers(int index) {
        const MapPaletteEntry& entry = state_.MapFileRecord.Palette[index];
        return std::to_string(entry.Red) + " " + std::to_string(entry.Green) + " " +
               std::to_string(entry.Blue) + " " + std::to_string(entry.Alpha);
    }
    std::string OnDisk() { return tests::Slurp(state_.MAPFile); }
    std::string Record() {
        std::string bytes(sizeof state_.MapFileRecord, '\0');
        std::memcpy(bytes.data(), &state_.MapFileRecord, bytes.size());
        return bytes;
    }
    std::string Title() { return window_.windowTitle().toStdString(); }
    std::string CleanTitle() { return "MapEditor v3.0.1-" + state_.MAPFile; }
    bool CanSave() { return tests::Find<QPushButton>(window_, "cmdSaveMAP").isEnabled(); }
    std::string Status() { return window_.statusBar()->currentMessage().toStdString(); }
    // One interval of the flashing has passed.
    void Tick() {
        auto& timer = tests::Find<QTimer>(window_, "Timer1");
        QTimerEvent event(timer.timerId());
        QApplication::sendEvent(&timer, &event);
    }

    tests::TestFolder folder_;
    ProgramState state_;
    tests::FakePlatform platform_;
    tests::RecordingCommands workspace_;
    frmMAPMain window_{state_, platform_.All, workspace_};
};

// Where the pattern puts an entry's parts.
inline int PatternAt(int index, int part) { return (28 + index * 4 + part) % 251; }

} // namespace vardenix
