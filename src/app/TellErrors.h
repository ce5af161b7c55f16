#pragma once

#include "app/Workspace.h"
#include "platform/Dialogs.h"
#include "texts/RuntimeError.h"

namespace vardenix {

// Runs what a window wants. Its errors are told in a box; what the user has cancelled is
// no error.
template <typename Work>
void TellErrors(Workspace& workspace, Work work) {
    try {
        work();
    } catch (const RuntimeError& error) {
        if (error.Number() != ErrorNumber::Cancelled)
            workspace.Platform().Dialogs.Notice(TrapText(error), "Error...",
                                                BoxIcon::Critical);
    }
}

} // namespace vardenix
