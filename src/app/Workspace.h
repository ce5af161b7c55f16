#pragma once

#include "app/DeskMemory.h"
#include "app/DeskPlaces.h"
#include "app/DeskWindow.h"
#include "app/WorkspacePart.h"
#include "app/WorkspaceWindows.h"
#include "mapview/MapRenderer.h"
#include "mapview/MapView.h"
#include "pictures/TilePictures.h"
#include "platform/Platform.h"
#include "program/ProgramState.h"
#include "program/WorkspaceCommands.h"
#include "workspace/MapInteraction.h"
#include "workspace/TheaterSaving.h"
#include "workspace/UndoPoints.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vardenix {

class MapWishes;

// The windows that a theater is worked on in, and what they ask of one another.
class Workspace : public WorkspaceCommands {
public:
    // All are borrowed; `exitProgram` ends the program without another question.
    Workspace(ProgramState& state, const vardenix::Platform& platform, DebugLog& log,
              std::function<void()> exitProgram);
    ~Workspace() override;

    // Borrowed for good: it hears of the workspace's turns from now on.
    void Join(WorkspacePart& part) { parts_.push_back(&part); }
    // Before they go.
    void ForgetParts() { parts_.clear(); }
    // Panel and map, unless they are there already; `wishes` is borrowed.
    void MakeMap(MapWishes& wishes);
    void MakePreview();
    void MakePalette();
    // The window of an editor has been made.
    void EditorMade(QWidget& editor);
    void MapFileOpened();
    // The windows come up at their stored places, or side by side when there are none;
    // the map is painted for the first time.
    void ApplySavedLayout();
    // Small windows go with the map when it is made an icon.
    void RestoreChildWindows();

    // Where the windows stand, and what the panel shows, into the settings.
    void StorePlaces();
    // Comes or goes with a flag of the settings.
    void ShowWindow(bool Configuration::*shown, bool on);
    // All parts in one window, or each in its own; remembered.
    bool IsOneWindow() const { return deskWindow_ != nullptr; }
    void SetOneWindow(bool on);
    // The panel leaves its room to the map, in one window only.
    bool ShowsPanel() const;
    void ShowPanel(bool shown);
    // An icon among the windows is one no more; the window in use stays that.
    void BringAllToFront();
    // The panel and the other windows, with the palette on a class of terrain.
    void ShowWorkspaceWith(uint8_t classCode);

    // The finest elevations are edited, or level 2 again.
    void EditL0Elv(bool on);
    // Under a name that the user is asked for, or over the files that were opened.
    void SaveTheater(bool as);
    // The paper as it is now was saved under another name.
    bool LiesElsewhere(Paper paper) const;
    SavingParts Saving();
    // Before and after level 2, catalogue and theater.map are saved as one; the flags
    // fall.
    void TakeTyped();
    void AllSaved();
    // Another file of the finest elevations has been loaded; what was before.
    void HeightsLoaded(ElevationLayer before);
    // A pass has given level 2 other tile numbers: whatever else holds some follows.
    void TilesRenumbered(const TileRenumbering& numbers);
    // One that comes late has: what holds tiles of the catalogue has followed already.
    void PostsRenumbered(const TileRenumbering& numbers);
    // Level 2 is what its file has; a change in the log tells of it already.
    void LevelTwoReadAnew();

    // A walk through the log of changes has led past a change of the catalogue.
    void CatalogueWalked();
    // The preview's picture follows posts that were changed in bulk.
    void RemakePreview();
    // Map and preview are painted once for all that `work` does.
    void PaintOnce(const std::function<void()>& work);

    // Leaves the program as LeaveProgram does, and has it started anew: with the theater
    // of a folder, or with the start-up window where that is empty.
    void StartAnew(const std::string& folder);
    // What is to be started when the program has ended; may be empty.
    const std::string& NextProgram() const { return nextProgram_; }

    ProgramState& State() { return state_; }
    const ProgramState& State() const { return state_; }
    const vardenix::Platform& Platform() const { return platform_; }
    DebugLog& Log() { return log_; }
    MapView& View() { return view_; }
    const MapView& View() const { return view_; }
    MapInteraction& Interaction() { return interaction_; }
    const MapInteraction& Interaction() const { return interaction_; }
    UndoPoints& Undo() { return undo_; }
    const UndoPoints& Undo() const { return undo_; }
    TilePictures& Pictures() { return tilePictures_; }
    WorkspaceWindows& Windows() { return windows_; }
    const WorkspaceWindows& Windows() const { return windows_; }
    FrmVXMain& Panel() const { return *windows_.Panel; }
    FrmVXMap& Map() const { return *windows_.Map; }
    const DeskMemory& Memory() const { return desk_; }
    // As FolderOfTheater has it.
    std::string TheaterFolder() const;

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
    void HideWorkspace() override;
    void CommandsChanged() override;
    void WindowHidden(const char* checkBoxName) override;
    bool LeaveProgram() override;

private:
    void PaintWanted();
    void ShowParts(bool workspaceShown);
    void ForgetLostTile();
    void TakeRelief();
    void RememberRelief();
    // Windows of their own again lie over the map, and the panel over all.
    void KeepOrder();
    void FoldPanel(bool oneWindow);
    void RememberFolded();
    void DockAll();
    void FreeAll();

    ProgramState& state_;
    const vardenix::Platform& platform_;
    DebugLog& log_;
    std::function<void()> exitProgram_;
    std::vector<WorkspacePart*> parts_;
    MapView view_;
    MapInteraction interaction_;
    UndoPoints undo_;
    TilePictures tilePictures_;
    std::unique_ptr<MapRenderer> renderer_;
    WorkspaceWindows windows_;
    DeskPlaces places_;
    DeskMemory desk_;
    std::string nextProgram_;
    std::array<std::optional<uint64_t>, AllPapers.size()> copied_; // revisions
    std::unique_ptr<DeskWindow> deskWindow_; // while the user wants it
    bool held_ = false;                      // the painting
    bool repaintWanted_ = false;             // since then
    bool previewWanted_ = false;
};

} // namespace vardenix
