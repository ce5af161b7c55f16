#pragma once

#include "program/ProgramState.h"

#include <string>

namespace vardenix {

// What the report of an error says of the program: its version, the theater, and the
// changes that were made last, oldest first, a line each.
std::string ReportDetails(const ProgramState& state);

} // namespace vardenix
