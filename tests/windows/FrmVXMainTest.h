#pragma once

#include "mapview/MapLayout.h"
#include "support/FakePlatform.h"
#include "windows/WindowTest.h"
#include "workspace/windows/FrmVXMain.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace vardenix::tests {

// Writes down what the panel asks for: "layout paint ".
class ToldWorkspace : public WorkspaceCommands {
public:
    std::string Story;
    bool MayLeave = false;

    void RefreshPicArray() override { Story += "paint "; }
    void LoadImageControls() override { Story += "layout "; }
    void ScrollTo(int x, int y) override {
        Story += "scroll " + std::to_string(x) + "," + std::to_string(y) + " ";
    }
    void PositionChanged() override {}
    PostPlace Placed; // no part of the story
    void PlaceView(int x, int y) override { Placed = {x, y}; }
    void Tell(const std::string&) override {}
    void SelectionChanged() override {}
    void L2AsSaved() override {}
    void L0AsSaved() override {}
    void L2NeedSave() override {}
    void L0NeedSave() override {}
    void ShowWorkspace() override {}
    void HideWorkspace() override {}
    void CommandsChanged() override {}
    void WindowHidden(const char*) override {}
    bool LeaveProgram() override {
        Story += "leave ";
        return MayLeave;
    }
};

// The panel on the screen, over a theater of 256 posts a side.
class FrmVXMainTest : public testing::Test {
protected:
    FrmVXMainTest() {
        state_.Starting = false;
        state_.Terrain.MapWidth = 256;
    }

    void Show() {
        window_.Form_Load("Norrland");
        window_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
        workspace_.Story.clear();
    }
    void Click(const char* name) { Find<QAbstractButton>(window_, name).click(); }
    // What one click asks for.
    std::string StoryOf(const char* name) {
        workspace_.Story.clear();
        Click(name);
        return workspace_.Story;
    }
    template <typename Control>
    Control& Find(const char* name) {
        return tests::Find<Control>(window_, name);
    }
    template <typename Control>
    Control& Find(QWidget& window, const char* name) {
        return tests::Find<Control>(window, name);
    }
    QAbstractSlider& Slider(const char* name) { return Find<QAbstractSlider>(name); }
    std::string Text(const char* name) {
        return Find<QAbstractButton>(name).text().toStdString();
    }
    std::string Shown(const char* label) {
        return Find<QLabel>(label).text().toStdString();
    }
    std::string Title() const { return window_.windowTitle().toStdString(); }

    ProgramState state_;
    MapView view_ = ViewOfSettings(state_.Configuration);
    FakePlatform platform_;
    ToldWorkspace workspace_;
    FrmVXMain window_{state_, view_, workspace_};
};

} // namespace vardenix::tests
