#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace vardenix {

struct ProgramOutput {
    int ExitCode = -1; // as of RunAndWait
    std::string Text;
    bool Whole = true;    // false when it was too much, and the program was ended
    bool Stopped = false; // by `goOn`
};

// Like RunAndWait, with what the program prints on its standard output, at most `most`
// bytes of it. `goOn` is asked twenty times a second while nothing is printed, and throws
// nothing; false ends the program.
ProgramOutput RunAndRead(std::vector<std::string> arguments, size_t most,
                         const std::function<bool()>& goOn = {});

} // namespace vardenix
