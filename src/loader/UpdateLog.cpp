#include "loader/UpdateLog.h"

#include "files/FileNames.h"

namespace vardenix {

UpdateLog::UpdateLog(const std::string& programFolder, const Clock& clock)
    : clock_(clock),
      file_(PathAsItStands(WithTrailingSlash(programFolder) + "Update.log"),
            std::ios::binary | std::ios::app) {}

std::string UpdateLog::Now() const {
    const LocalTime now = clock_.Now();
    const auto twoDigits = [](int value) {
        return (value < 10 ? "0" : "") + std::to_string(value);
    };
    return twoDigits(now.Day) + "/" + twoDigits(now.Month) + "/" +
           std::to_string(now.Year) + " " + HoursMinutes(now);
}

void UpdateLog::Write(const std::string& text) { WritePlain("<" + Now() + "> " + text); }

void UpdateLog::WritePlain(const std::string& text) {
    // At once on the disk's way: what comes next may be the end of the program.
    file_ << text << "\r\n" << std::flush;
}

} // namespace vardenix
