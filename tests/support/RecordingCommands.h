#pragma once

#include "program/WorkspaceCommands.h"

#include <functional>
#include <string>

namespace vardenix::tests {

// Writes down what a window asks of the others: "refresh scroll(3,4)
// hidden(chkShowMain)".
class RecordingCommands : public WorkspaceCommands {
public:
    std::string Story;
    std::function<void()> OnRefresh;

    void RefreshPicArray() override {
        Say("refresh");
        if (OnRefresh)
            OnRefresh();
    }
    void LoadImageControls() override { Say("layout"); }
    void ScrollTo(int x, int y) override {
        Say("scroll(" + std::to_string(x) + "," + std::to_string(y) + ")");
    }
    void PlaceView(int x, int y) override {
        Say("place(" + std::to_string(x) + "," + std::to_string(y) + ")");
    }
    // What was told last; no part of the story.
    std::string Told;
    void Tell(const std::string& words) override { Told = words; }
    void SelectionChanged() override {}
    void L2AsSaved() override { Say("L2saved"); }
    void L0AsSaved() override { Say("L0saved"); }
    void PositionChanged() override { Say("position"); }
    void L2NeedSave() override { Say("L2"); }
    void L0NeedSave() override { Say("L0"); }
    void ShowWorkspace() override { Say("show"); }
    void HideWorkspace() override { Say("hide"); }
    void CommandsChanged() override { Say("commands"); }
    void WindowHidden(const char* checkBoxName) override {
        Say("hidden(" + std::string(checkBoxName) + ")");
    }
    bool LeaveProgram() override {
        Say("leave");
        return false;
    }

private:
    void Say(const std::string& what) { Story += (Story.empty() ? "" : " ") + what; }
};

} // namespace vardenix::tests
