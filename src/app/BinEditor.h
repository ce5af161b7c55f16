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
    void ShowNumbers();
    void ShowOnPanel();

    void Walked(const Change& change, Walk walk) override;
    void TheaterSaved() override { ShowNumbers(); }
    void AllSaved() override;
    void LevelTwoReadAnew() override { ShowNumbers(); }

    void OpenWorkspace(uint8_t classCode) override;
    void L2NeedSave() override;
    void PostsRenumbered(const TileRenumbering& numbers) override;
    void TilesRenumbered(const TileRenumbering& numbers) override;
    bool SaveBinAndL2() override;
    bool LeaveProgram() override;

    Workspace& workspace_;
    ProgramState& state_;
    const Platform& platform_;
    std::unique_ptr<FrmBINTileEdit> editor_; // from its first use to the end of the run
};

} // namespace vardenix
