#pragma once

#include "bineditor/EditorVerbs.h"
#include "platform/DebugLog.h"
#include "platform/Platform.h"
#include "program/ProgramState.h"

#include <memory>

namespace vardenix {

class FrmBINTileEdit;
class Workspace;

// The BIN editor and the workspace, which have the screen in turn.
class BinEditorWindows : public EditorVerbs {
public:
    // All are borrowed. Offers the workspace what opens the editor.
    BinEditorWindows(ProgramState& state, const Platform& platform, DebugLog& log,
                     Workspace& workspace);
    ~BinEditorWindows() override;

    // None until the editor was opened.
    FrmBINTileEdit* Editor() { return editor_.get(); }

private:
    void OpenEditor();
    void LocateInBIN(int32_t tileNumber);
    FrmBINTileEdit& MadeEditor();
    void ShowApart();

    void OpenWorkspace(uint8_t classCode) override;
    void L2NeedSave() override;
    bool L2Unsaved() const override;
    void TilesRenumbered(const TileRenumbering& numbers) override;
    bool SaveBinAndL2() override;
    bool LeaveProgram() override;

    ProgramState& state_;
    const Platform& platform_;
    DebugLog& log_;
    Workspace& workspace_;
    std::unique_ptr<FrmBINTileEdit> editor_; // from its first use to the end of the run
};

} // namespace vardenix
