#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace vardenix::tests {

struct ProgramResult {
    int ExitCode = -1; // -1 when a signal ended it
    std::string Output;
    std::string Errors;
};

// Runs a program to its end, with no display and nothing on its standard input.
// `environment` adds to the test's own: "NAME=value".
ProgramResult RunProgram(const std::vector<std::string>& arguments,
                         const std::vector<std::string>& environment = {});

// Runs a program whose words nobody hears and kills it after that time. False when it
// had ended by itself before.
bool RunAndKill(const std::vector<std::string>& arguments,
                std::chrono::microseconds after);

} // namespace vardenix::tests
