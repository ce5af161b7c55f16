#include "platform/windows/AskColor.h"

#include "texts/RuntimeError.h"

namespace vardenix {

bool AskColor(ColorButton& button, Dialogs& dialogs) {
    try {
        button.SetColor(dialogs.Color(button.Color()));
        return true;
    } catch (const RuntimeError& error) {
        if (error.Number() == ErrorNumber::Cancelled)
            return false;
        throw;
    }
}

} // namespace vardenix
