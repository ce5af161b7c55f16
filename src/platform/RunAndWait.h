#pragma once

#include <string>
#include <vector>

namespace vardenix {

// Runs a program with its arguments as they stand, past any shell, and waits for its end;
// what it prints is lost. The program is looked for on the search path unless its name
// holds a slash. Its exit code; -1 when there is no such program or it was killed. The
// system's other refusals are errors.
int RunAndWait(std::vector<std::string> arguments);

} // namespace vardenix
