#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vardenix {

struct ProgramOutput {
    int ExitCode = -1; // as of RunAndWait
    std::string Text;
    bool Whole = true; // false when it was too much, and the program was ended
};

// Like RunAndWait, with what the program prints on its standard output, at most `most`
// bytes of it.
ProgramOutput RunAndRead(std::vector<std::string> arguments, size_t most);

} // namespace vardenix
