#include "platform/SavedOrKept.h"

#include "files/Transaction.h"
#include "platform/Dialogs.h"

namespace vardenix {

bool SavedOrKept(Dialogs& dialogs, const std::function<void(IfChanged)>& save) {
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
