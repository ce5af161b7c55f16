#pragma once

#include "platform/DebugLog.h"
#include "program/DeskFile.h"

#include <functional>
#include <string>

namespace vardenix {

// Desk.ini, for as long as the program runs: read anew whenever it is asked for, since
// other copies of the program write it too. What cannot be read or written costs nobody
// their work; the log tells of it.
class DeskMemory {
public:
    // Both are borrowed. `appPath` may still be empty.
    DeskMemory(const std::string& appPath, DebugLog& log)
        : appPath_(appPath), log_(log) {}

    // Nothing remembered where the file cannot be read.
    Desk Read() const;
    // Writes what `change` makes of it.
    void Change(const std::function<void(Desk&)>& change) const;

private:
    const std::string& appPath_;
    DebugLog& log_;
};

} // namespace vardenix
