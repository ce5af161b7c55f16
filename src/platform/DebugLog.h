#pragma once

#include "platform/Clock.h"

#include <fstream>
#include <string>

namespace vardenix {

// Debug.txt in AppPath: plain lines, no time stamps between the first and the last. It
// exists only for a run in which DebugFlag was on when StartDebugLog was called.
class DebugLog {
public:
    explicit DebugLog(const Clock& clock) : clock_(clock) {}

    // The user's wish; asked at every line.
    bool DebugFlag = false;

    // Begins the file anew. Error 75 and the like when it cannot be made.
    void StartDebugLog(const std::string& appPath);
    void StopDebugLog();
    void WriteLog(const std::string& text);

private:
    const Clock& clock_;
    std::ofstream file_;
};

} // namespace vardenix
