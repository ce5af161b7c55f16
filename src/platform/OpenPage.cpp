#include "platform/OpenPage.h"

#include "platform/Dialogs.h"
#include "platform/Processes.h"
#include "texts/RuntimeError.h"

namespace vardenix {

void OpenPage(Processes& processes, Dialogs& dialogs, const std::string& address) {
    try {
        processes.Open(address);
    } catch (const RuntimeError& error) {
        dialogs.Notice(TrapText(error), "Error...", BoxIcon::Critical);
    }
}

} // namespace vardenix
