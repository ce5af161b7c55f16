#pragma once

#include "mapview/MapRenderer.h"
#include "mapview/MapView.h"
#include "platform/Platform.h"
#include "services/TilePictures.h"
#include "theater/ProgramState.h"
#include "theater/TheaterOpening.h"
#include "theater/WorkspaceCommands.h"
#include "workspace/MapInteraction.h"
#include "workspace/UndoPoints.h"

#include <functional>
#include <memory>

namespace vardenix {

class FrmVXMain;
class FrmVXMap;
class FrmVXTheaterPreview;
class FrmVXTilePal;

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
    void ShowWorkspace() override;
    void HideWorkspace() override;
    void CommandsChanged() override;
    void WindowHidden(const char* checkBoxName) override;

    void MakeMap();
    void PlaceFirst();
    void PlaceAsStored();
    void StorePositions();
    void ShowByBoxes();
    void RestorePreview();
    bool SmallWindowsShown() const;

    ProgramState& state_;
    const Platform& platform_;
    DebugLog& log_;
    std::function<void()> exitProgram_;
    MapView view_;
    MapInteraction interaction_;
    UndoPoints undo_;
    TilePictures tilePictures_;
    bool laidOut_ = false; // the windows have their places
    std::unique_ptr<PanelVerbs> panelVerbs_;
    std::unique_ptr<MapVerbs> mapVerbs_;
    std::unique_ptr<MapRenderer> renderer_;
    std::unique_ptr<FrmVXMain> frmVXMain_;
    std::unique_ptr<FrmVXMap> frmVXMap_;
    std::unique_ptr<FrmVXTheaterPreview> frmVXTheaterPreview_;
    std::unique_ptr<FrmVXTilePal> frmVXTilePal_;
};

} // namespace vardenix
