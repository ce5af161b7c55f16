#include "app/DeskMemory.h"

#include "texts/RuntimeError.h"

namespace vardenix {

Desk DeskMemory::Read() const {
    try {
        return ReadDesk(appPath_);
    } catch (const RuntimeError& error) {
        log_.WriteLog("Desk.ini: " + ReportText(error));
        return {};
    }
}

void DeskMemory::Change(const std::function<void(Desk&)>& change) const {
    try {
        Desk desk = ReadDesk(appPath_);
        change(desk);
        WriteDesk(appPath_, desk);
    } catch (const RuntimeError& error) {
        log_.WriteLog("Desk.ini: " + ReportText(error));
    }
}

} // namespace vardenix
