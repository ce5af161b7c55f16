#pragma once

#include "catalogue/TileRenumbering.h"

#include <cstdint>

namespace vardenix {

// What the BIN editor has the rest of the program do. app/ fills it in.
class EditorVerbs : public RenumberingFollower {
public:
    // The workspace comes back with the palette on a class of terrain and the map painted
    // anew, and the editor goes.
    virtual void OpenWorkspace(uint8_t classCode) = 0;
    // Level 2 has changes that are not on the disk.
    virtual void L2NeedSave() = 0;
    // Level 2 has been given numbers that it lacked: what holds posts of it follows, what
    // holds tiles of the catalogue has followed already.
    virtual void PostsRenumbered(const TileRenumbering& numbers) = 0;
    // Catalogue and level 2 as one; the flags of both fall. False when the user keeps
    // what another program wrote. Errors of writing go through, and leave the old files.
    virtual bool SaveBinAndL2() = 0;
    // Every way out; false when the user stays.
    virtual bool LeaveProgram() = 0;
};

} // namespace vardenix
