#include "platform/DebugLog.h"

#include "files/FileNames.h"
#include "texts/RuntimeError.h"

namespace vardenix {

namespace {

std::string Stamp(const Clock& clock) {
    const LocalTime now = clock.Now();
    return LongDate(now) + " - " + HoursMinutesSeconds(now);
}

} // namespace

void DebugLog::StartDebugLog(const std::string& appPath) {
    if (!DebugFlag)
        return;
    const std::string path = appPath + "Debug.txt";
    file_.close();
    file_.clear();
    if (FileExists(path))
        DeleteFile(path);
    file_.open(RealPath(path), std::ios::binary | std::ios::trunc);
    if (!file_)
        throw RuntimeError(ErrorNumber::PathFileAccess, "making " + ShownPath(path));
    WriteLog("Debug Started at " + Stamp(clock_));
}

void DebugLog::StopDebugLog() {
    if (!DebugFlag)
        return;
    WriteLog("Debug Terminated at " + Stamp(clock_));
    file_.close();
}

void DebugLog::WriteLog(const std::string& text) {
    // Flushed at every line: the log is read after a run that ended badly. A log that
    // cannot be written costs nobody their command.
    if (DebugFlag && file_.is_open())
        file_ << text << "\r\n" << std::flush;
}

} // namespace vardenix
