#pragma once

#include "bineditor/SetsAndTiles.h"
#include "catalogue/TileNumbers.h"
#include "files/FileSwap.h"
#include "files/Transaction.h"
#include "platform/Dialogs.h"
#include "platform/Progress.h"
#include "program/ProgramState.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vardenix {

// What the commands tell the editor's window, or the command line.
class BinWindow {
public:
    BinWindow() = default;
    BinWindow(const BinWindow&) = delete;
    BinWindow& operator=(const BinWindow&) = delete;
    virtual ~BinWindow() = default;

    // Nothing can be used while a long command runs.
    virtual void PrepareForm(bool enable) = 0;
    // The catalogue has changes that are not on the disk.
    virtual void NeedSave() = 0;
    // The pass over level 2 has run, and posts have changed with it or not.
    virtual void LevelTwoRenumbered(const TileRenumbering& numbers, bool changed) = 0;
    // Asked between two pictures.
    virtual bool StopWanted() = 0;
};

// What the commands work on; everything is borrowed.
struct BinParts {
    vardenix::Terrain& Terrain;
    vardenix::Catalogue& Catalogue;
    Configuration& Settings; // a question may switch AutoL2 on
    const ProgramFolders& Folders;
    vardenix::Dialogs& Dialogs;
    Progress& PB5;
    BinWindow& Window;
    // Where the pictures of an intake wait for the catalogue, so that all take their
    // places together; without one they do so at once.
    Transaction* Together = nullptr;
    // Where pictures that are replaced at once are kept; null to keep none.
    std::shared_ptr<FileSwap>* Replaced = nullptr;
};

// Where the user stands after a command; nothing when it was called off or refused, with
// the catalogue as it was. `dropped` are full paths that take the place of the file
// dialog.
using DroppedFiles = std::optional<std::vector<std::string>>;
std::optional<TilePlace> cmdAppendSet(const BinParts& parts, const TilePlace& selected,
                                      uint8_t terrain, const DroppedFiles& dropped = {});
std::optional<TilePlace> cmdAppendTile(const BinParts& parts, const TilePlace& selected,
                                       const DroppedFiles& dropped = {});
std::optional<TilePlace> cmdDeleteSet(const BinParts& parts, int32_t set);
std::optional<TilePlace> cmdDeleteTile(const BinParts& parts, const TilePlace& selected);
std::optional<TilePlace> MoveSetNow(const BinParts& parts, int32_t source, int32_t target,
                                    bool before);

// The uses of all tiles, counted anew: what was painted since the last count, and edits
// that count none, have left others. An empty slot that no post uses keeps its -1.
void CountUses(const Terrain& terrain, TileLookup& lookup);

// Whether cmdDeleteTile can be used: not for an empty slot, and not for the last tile
// that a set has.
bool CanDeleteTile(const TextureBin& bin, const TilePlace& selected);

// A set appended or a tile taken in without a question; level 2 follows when `correct` is
// set. Errors go through and leave all as it was; so does a stop, which gives nothing.
std::optional<TilePlace> AppendSet(const BinParts& parts, int32_t place, uint8_t terrain,
                                   const std::vector<std::string>& files, bool correct);
std::optional<TilePlace> TakeInTile(const BinParts& parts, const TilePlace& place,
                                    const std::string& file);

} // namespace vardenix
