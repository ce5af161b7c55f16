#pragma once

#include "app/Workspace.h"
#include "bineditor/EditorVerbs.h"
#include "platform/Platform.h"
#include "program/ProgramState.h"

#include <memory>

namespace vardenix {

class FrmBINTileEdit;

// The BIN editor and the workspace, which have the screen in turn.
class BinEditor : public WorkspacePart, private EditorVerbs, private ChangeFollower {
public:
    // Borrowed.
    explicit BinEditor(Workspace& workspace);
    ~BinEditor() override;

    void Open();
    // With the tile of a post selected.
    void Locate(int32_t tileNumber);

private:
    FrmBINTileEdit& Editor();
    void ShowApart();

    void Walked(const Change& change, Walk walk) override;
    void AddUnsaved(DirtyFlags& flags) const override;
    void TheaterSaved() override;

    void OpenWorkspace(uint8_t classCode) override;
    void L2NeedSave() override;
    bool L2Unsaved() const override;
    void TilesRenumbered(const TileRenumbering& numbers) override;
    bool SaveBinAndL2() override;
    bool LeaveProgram() override;

    Workspace& workspace_;
    ProgramState& state_;
    const Platform& platform_;
    std::unique_ptr<FrmBINTileEdit> editor_; // from its first use to the end of the run
};

} // namespace vardenix
