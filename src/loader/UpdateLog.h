#pragma once

#include "platform/Clock.h"

#include <fstream>
#include <string>

namespace vardenix {

// Update.log in the program's folder, added to by every update. That it cannot be written
// costs nobody their update.
class UpdateLog {
public:
    UpdateLog(const std::string& programFolder, const Clock& clock);

    // A line with the time in front.
    void Write(const std::string& text);
    // A line as it stands.
    void WritePlain(const std::string& text);
    // "dd/mm/yyyy Hh:Nn"
    std::string Now() const;
    void Close() { file_.close(); }

private:
    const Clock& clock_;
    std::ofstream file_;
};

} // namespace vardenix
