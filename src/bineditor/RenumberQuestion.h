#pragma once

#include "catalogue/TextureBin.h"
#include "platform/Dialogs.h"

#include <cstdint>

namespace vardenix {

// The edits that change tile numbers, and whether they matter to whoever does not have
// level 2 corrected with them.
enum class NumberEdit { AppendSet, DeleteSet, DeleteTile, MoveSet };

// A new set matters unless it goes behind the last one. `selectedSet` is 0 without sets.
bool AppendMatters(const TextureBin& bin, int32_t selectedSet, bool insertAfter);
// Not the last set, or a use count of its 16 numbers that is not 0. The -1 of an empty
// slot counts as used, so a set of less than 16 tiles always matters.
bool DeleteSetMatters(const Catalogue& catalogue, int32_t set);
// Not the last tile of its set, or its use count is not 0.
bool DeleteTileMatters(const Catalogue& catalogue, int32_t set, int32_t slot);

// Asks whether level 2 shall be corrected from now on, when `matters` and `autoL2` is
// off; Yes sets it. False when the user calls the edit off.
bool MayRenumber(NumberEdit edit, bool matters, bool& autoL2, Dialogs& dialogs);

} // namespace vardenix
