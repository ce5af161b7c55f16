#pragma once

#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "program/ProgramState.h"
#include "recovery/LeftLogs.h"

#include <chrono>
#include <functional>
#include <string>

namespace vardenix {

// "14:05", with the date behind it where that is not today's.
std::string WhenOf(std::chrono::system_clock::time_point time,
                   std::chrono::system_clock::time_point now);
// A text of a log as a box or a terminal may show it.
std::string PlainText(const std::string& text);

// The question whether to bring back what a log has, with its changes listed.
std::string RestoreQuestion(const LeftLog& log);
// What is told of a log that does not fit; `why` is WhyUnfit's.
std::string UnfitNotice(const LeftLog& log, const std::string& why);

// What restoring asks of the windows; app/ fills it in.
class RestoringWindows {
public:
    RestoringWindows() = default;
    RestoringWindows(const RestoringWindows&) = delete;
    RestoringWindows& operator=(const RestoringWindows&) = delete;
    virtual ~RestoringWindows() = default;

    // Loads the finest elevations of a file; false when the user was told why not.
    virtual bool LoadHeights(ElevationKind kind, const std::string& path) = 0;
    // Shows what `work` does to the papers when it is done.
    virtual void ShowOnce(const std::function<void()>& work) { work(); }
    // All that came back is in the program's own log by now, and is to be on the disk
    // before the log of the ended run goes.
    virtual void KeepRestored() = 0;
};

// Asks about what an ended run has left of the theater that is open, and brings it back.
// Whatever cannot be read, asked or moved stands in nobody's way. True when something
// came back.
bool OfferLeftLogs(ProgramState& state, const std::string& folder, Dialogs& dialogs,
                   RestoringWindows& windows);

// Whether the papers, as they were opened, already are what a log leads to: the program
// was killed when a save had put them on the disk and before it could say so.
bool IsOnDisk(const ProgramState& state, const LeftLog& log);

// Carries the changes of a log out, each a change of the program's own log that can be
// taken back; the log is one of the theater that is open, and fits. Each file of heights
// is loaded before its own changes; one that was put aside for another and has been
// changed since is left out. Empty when all came back; otherwise what did not, or how far
// it came and why no further, as a sentence.
std::string RestoreChanges(ProgramState& state, const LeftLog& log,
                           RestoringWindows& windows);

} // namespace vardenix
