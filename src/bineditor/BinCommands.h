#pragma once

#include "bineditor/SetsAndTiles.h"
#include "files/Transaction.h"
#include "platform/Dialogs.h"
#include "platform/Progress.h"
#include "program/ProgramState.h"

#include <cstdint>
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
};

// A set from 1, 0 while there is none, and a slot of it from 0, -1 for none.
struct BinPlace {
    int32_t Set = 1;
    int32_t Slot = 0;
};

// Where the user stands after a command; nothing when it was called off or refused, with
// the catalogue as it was. `dropped` are full paths that take the place of the file
// dialog.
using DroppedFiles = std::optional<std::vector<std::string>>;
std::optional<BinPlace> cmdAppendSet(const BinParts& parts, const BinPlace& selected,
                                     uint8_t terrain, const DroppedFiles& dropped = {});
std::optional<BinPlace> cmdAppendTile(const BinParts& parts, const BinPlace& selected,
                                      const DroppedFiles& dropped = {});
std::optional<BinPlace> cmdDeleteSet(const BinParts& parts, int32_t set);
std::optional<BinPlace> cmdDeleteTile(const BinParts& parts, const BinPlace& selected);
std::optional<BinPlace> MoveSetNow(const BinParts& parts, int32_t source, int32_t target,
                                   bool before);

// Whether cmdDeleteTile can be used: not for an empty slot, and not for the last tile
// that a set has.
bool CanDeleteTile(const TextureBin& bin, const BinPlace& selected);

// The same without a question; level 2 follows when `correct` is set. Errors go through,
// and leave everything as it was; so does a stop, which gives nothing.
std::optional<BinPlace> AppendSet(const BinParts& parts, int32_t place, uint8_t terrain,
                                  const std::vector<std::string>& files, bool correct);
std::optional<BinPlace> TakeInTile(const BinParts& parts, const BinPlace& place,
                                   const std::string& file);

} // namespace vardenix
