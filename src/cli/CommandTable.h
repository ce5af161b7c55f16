#pragma once

#include "cli/CommandLine.h"

#include <string>
#include <vector>

namespace vardenix {

// What stands above and below the help of all commands.
std::string AboutCommands();
std::string CommandsFooter();

// Adds every command of the program.
void AddAllCommands(Command& all);

// Adds the one that the line's first word calls, as declaring a command takes time; all
// of them when it calls none, since help and faults tell of all.
void AddCommandsFor(const std::vector<std::string>& line, Command& all);

} // namespace vardenix
