#pragma once

#include <string>
#include <vector>

namespace vardenix::tests {

struct ProgramResult {
    int ExitCode = -1; // -1 when a signal ended it
    std::string Output;
    std::string Errors;
};

// Runs a program to its end, with no display and nothing on its standard input.
ProgramResult RunProgram(const std::vector<std::string>& arguments);

} // namespace vardenix::tests
