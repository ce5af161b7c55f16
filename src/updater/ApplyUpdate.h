#pragma once

#include "files/KeptFiles.h"
#include "platform/Platform.h"
#include "program/ProgramState.h"
#include "updater/UpdateOffer.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vardenix {

// What applying an update does to the windows and the program.
class UpdateEnd {
public:
    UpdateEnd() = default;
    UpdateEnd(const UpdateEnd&) = delete;
    UpdateEnd& operator=(const UpdateEnd&) = delete;
    virtual ~UpdateEnd() = default;

    virtual void HideDownload() = 0;
    // A text file in a window; comes back when it is closed. Error 53 and the like when
    // it cannot be read.
    virtual void ShowText(const std::string& path) = 0;
    // Ends the program, which starts the command line last.
    virtual void ExitProgram(const std::string& commandLine) = 0;
};

struct UpdateSetting {
    const ProgramFolders& Folders;
    const Platform& System;
    const UpdateOffer& Offer;
    UpdateEnd& End;
    // What update.lst must be signed with (UpdateSignature.h), and then also say of
    // itself (SignedRelease.h); empty for no signature.
    std::string_view Key;
    // Those that the program was started with; it is started again with the same.
    std::vector<std::string> Arguments;
};

// Applies the archive of UpdateTempFolder as Offer.UpdateType says: single files and a
// restart through the loader, or an installer. Everything is checked before anything is
// changed, and each step is a line of Update.log. All that goes wrong is told; nothing is
// thrown. As long as what is given back is held, no other program takes an update that
// waits for the loader for one that was interrupted: hold it until the program ends.
[[nodiscard]] std::optional<KeptFiles> ApplyUpdate(const std::string& archiveName,
                                                   const UpdateSetting& setting);

} // namespace vardenix
