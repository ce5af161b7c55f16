#pragma once

#include "platform/Dialogs.h"
#include "platform/Transaction.h"

#include <string>

namespace vardenix {

// Runs `save`; when another program has changed what it would write over, the user is
// asked whether it is to be written all the same. False when it is not.
template <typename Save>
bool SavedOrKept(Dialogs& dialogs, Save save) {
    try {
        save(IfChanged::Refuse);
        return true;
    } catch (const ChangedFileError& error) {
        const std::string question =
            error.Path() +
            " was changed by another program since it was opened. Overwrite it?";
        if (dialogs.MessageBox(question, "Confirm", BoxIcon::Warning,
                               BoxButtons::YesNo) != BoxAnswer::Yes)
            return false;
    }
    save(IfChanged::Overwrite);
    return true;
}

} // namespace vardenix
