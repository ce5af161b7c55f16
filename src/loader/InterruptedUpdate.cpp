#include "loader/InterruptedUpdate.h"

#include "files/KeptFiles.h"
#include "loader/UpdateLog.h"
#include "platform/Clock.h"
#include "texts/RuntimeError.h"

#include <cstdlib>
#include <optional>

namespace vardenix {

namespace {

constexpr const char* NoticeName = "VARDENIX_UPDATE_PUT_BACK";

} // namespace

PutBack PutBackInterrupted(const std::string& programFolder) {
    std::optional<KeptFiles> kept;
    try {
        kept.emplace(programFolder);
    } catch (const RuntimeError& error) {
        if (error.Number() == ErrorNumber::PermissionDenied)
            return {}; // somebody is still at it
        throw;
    }
    const SystemClock clock;
    if (!kept->SetAside().empty()) {
        UpdateLog(programFolder, clock).Write(kept->SetAside());
        return {false, kept->SetAside()};
    }
    if (!kept->Any()) {
        kept->Clear();
        return {};
    }
    UpdateLog log(programFolder, clock);
    log.Write("An update was interrupted, and is put back");
    kept->PutBack();
    log.Write("The files are the old ones");
    return {true, {}};
}

void LeaveNotice() { ::setenv(NoticeName, "1", 1); }

std::string TakeNotice() {
    if (std::getenv(NoticeName) == nullptr)
        return {};
    ::unsetenv(NoticeName);
    return "An update could not be finished, and the old program has been put back.\n"
           "Update.log in the program's folder says more.";
}

} // namespace vardenix
