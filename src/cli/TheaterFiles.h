#pragma once

#include "cli/CommandLine.h"
#include "platform/Platform.h"
#include "platform/Progress.h"
#include "theater/DebugLog.h"
#include "theater/ProgramState.h"
#include "theater/TheaterOpening.h"

#include <string>

namespace vardenix {

// The options that say which theater a command works on: a folder that holds terrain/ and
// texture/, or the four paths one by one.
class TheaterFiles {
public:
    // Adds the options to a command, and their check.
    explicit TheaterFiles(Command& command);
    TheaterFiles(const TheaterFiles&) = delete;
    TheaterFiles& operator=(const TheaterFiles&) = delete;

    // Opens the theater: level 2, the catalogue, theater.map. Missing tile pictures are
    // told on the standard error. Error 53 for a file that is not there, and what the
    // readers throw.
    void Open(ProgramState& state, Progress& progress, const Platform& platform,
              DebugLog& log) const;

private:
    TheaterPaths Paths() const;

    std::string folder_;
    std::string l2_;
    std::string bin_;
    std::string map_;
    std::string dds_;
};

} // namespace vardenix
