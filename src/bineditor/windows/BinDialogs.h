#pragma once

#include "bineditor/BinCommands.h"
#include "platform/Platform.h"
#include "program/ProgramState.h"

class QWidget;

namespace vardenix {

// The modal windows behind the BIN editor's buttons; each has ended when its call
// returns.

// FrmBINTileDet over a tile that is there.
struct EditedTile {
    bool Written = false; // OK: the catalogue has what was edited
    bool Changed = false; // and something was
};
EditedTile ShowTileDetails(ProgramState& state, const Platform& platform,
                           const TilePlace& place, QWidget* parent);

void ShowBinOptions(Configuration& settings, Dialogs& dialogs, QWidget* parent);

} // namespace vardenix
