#pragma once

#include "cli/Json.h"

#include <string>
#include <string_view>

namespace vardenix {

// One line of the result, to the standard output. All that a command prints goes through
// here or through Tell: names come from files that others made, and a terminal would obey
// the control characters in them, so it is shown these as \u001b.
void Print(std::string_view line);

// What is told on the way, a line or several, to the standard error.
void Tell(std::string_view text);

void PrintJson(const Json& json);

// The values of an object, as JSON or one line a value: "posts a side: 256".
void PrintValues(const JsonObject& object, bool asJson);

// The name that a file of the program's texts has on the disk, for scripts to go on with.
std::string NameOnDisk(const std::string& path);

} // namespace vardenix
