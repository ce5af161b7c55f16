#pragma once

#include "app/DeskMemory.h"
#include "app/OfferedVerbs.h"
#include "app/OneWindow.h"
#include "app/WindowPlaces.h"
#include "app/WorkspaceWindows.h"
#include "mapview/MapRenderer.h"
#include "mapview/MapView.h"
#include "pictures/TilePictures.h"
#include "platform/Platform.h"
#include "program/ProgramState.h"
#include "program/TheaterOpening.h"
#include "program/WorkspaceCommands.h"
#include "workspace/MapInteraction.h"
#include "workspace/UndoPoints.h"

#include <functional>
#include <memory>
#include <string>

namespace vardenix {

// The windows that a theater is worked on in, and what they ask of one another.
class Workspace : public OpeningWindows, public WorkspaceCommands {
public:
    // All are borrowed; `exitProgram` ends the program without another question.
    Workspace(ProgramState& state, const Platform& platform, DebugLog& log,
              std::function<void()> exitProgram);
    ~Workspace() override;

    // The windows come up at their stored places, or side by side when there are none;
    // the map is painted for the first time.
    void ApplySavedLayout();

    bool LeaveProgram() override;
    void HideWorkspace() override;
    // Where the windows stand, and what the panel shows, into the settings.
    void StorePlaces();

    // Leaves the program as LeaveProgram does, and has it started anew: with the theater
    // of a folder, or with the start-up window where that is empty.
    void StartAnew(const std::string& folder);
    // What is to be started when the program has ended; may be empty.
    const std::string& NextProgram() const { return nextProgram_; }

    // All parts in one window, or each in its own; remembered.
    bool IsOneWindow() const { return oneWindow_ != nullptr; }
    void SetOneWindow(bool on);

    // For the subsystems whose windows open from the workspace to fill in, before the
    // first theater is opened, and for what they ask of the workspace in turn.
    OfferedVerbs& Offers() { return offers_; }
    MapView& View() { return view_; }
    MapInteraction& Interaction() { return interaction_; }
    UndoPoints& Undo() { return undo_; }
    TilePictures& Pictures() { return tilePictures_; }
    WorkspaceWindows& Windows() { return windows_; }
    // As the panel's button makes it.
    void CreateRestorePoint();
    // A pass has given level 2 other tile numbers: whatever else holds some follows.
    void TilesRenumbered(const TileRenumbering& numbers);
    // The panel and the other windows, with the palette on a class of terrain.
    void ShowWorkspaceWith(uint8_t classCode);

private:
    class PanelVerbs;
    class MapVerbs;

    void PreviewChanged() override;
    void LoadMapEditor() override;
    void LoadMap() override;
    void ShowMainPanel() override;
    void RestoreChildWindows() override;
    void RefreshPalette() override;
    void InitForm() override;

    void RefreshPicArray() override;
    void LoadImageControls() override;
    void ScrollTo(int x, int y) override;
    void PositionChanged() override;
    void L2NeedSave() override;
    void L0NeedSave() override;
    void L2AsSaved() override;
    void L0AsSaved() override;
    void PlaceView(int x, int y) override;
    void Tell(const std::string& words) override;
    void SelectionChanged() override;
    void ShowWorkspace() override;
    void CommandsChanged() override;
    void WindowHidden(const char* checkBoxName) override;

    void MakeMap();
    void ShowOfferedWindows(bool workspaceShown);
    void RememberTheater();
    // Windows of their own again lie over the map, and the panel over all.
    void KeepOrder();
    void Join();
    void Part();
    void BringAllToFront();

    ProgramState& state_;
    const Platform& platform_;
    DebugLog& log_;
    std::function<void()> exitProgram_;
    OfferedVerbs offers_;
    MapView view_;
    MapInteraction interaction_;
    UndoPoints undo_;
    TilePictures tilePictures_;
    std::unique_ptr<PanelVerbs> panelVerbs_;
    std::unique_ptr<MapVerbs> mapVerbs_;
    std::unique_ptr<MapRenderer> renderer_;
    WorkspaceWindows windows_;
    WindowPlaces places_;
    DeskMemory desk_;
    std::string nextProgram_;
    bool renumberedSincePoint_ = false;    // and a restore point may be older
    bool restoredUnsaved_ = false;         // level 2 has posts of one that no file has
    std::unique_ptr<OneWindow> oneWindow_; // while the user wants it
};

} // namespace vardenix
