#pragma once

#include "cli/Json.h"

#include <chrono>
#include <string>
#include <string_view>

namespace vardenix {

// One line of the result, to the standard output. All that a command prints goes through
// here or through Tell: names come from files that others made, and a terminal would obey
// the control characters in them.
void Print(std::string_view line);

// What is told on the way, a line or several, to the standard error.
void Tell(std::string_view text);

void PrintJson(const Json& json);

// The values of an object, as JSON or one line a value: "posts a side: 256".
void PrintValues(const JsonObject& object, bool asJson);

// The rows of a list: each is printed as a sentence when it comes, or all at the end as
// one array of JSON.
class Listing {
public:
    explicit Listing(bool asJson) : asJson_(asJson) {}

    void Add(JsonObject row, const std::string& sentence);
    void End();

private:
    bool asJson_;
    JsonArray rows_;
};

// "21 Nov 2026 09:05:07"
std::string FullTime(std::chrono::system_clock::time_point time);

// Ends the result: the system's refusal (61, 75) unless all of it has got where the
// standard output leads. Called once, before the exit code is given.
void FinishPrinting();

// Where the shell closed a standard stream, the next file opened would take its number,
// and words meant for nobody would be written into it. Called first of all.
void HoldStandardStreams();

// A text as a terminal is shown it: control characters as \u001b, and bytes that are no
// UTF-8, which some terminals take for such, as \x9b. Line ends and tabs stay.
std::string ForTerminal(std::string_view text);

// The name that a file of the program's texts has on the disk, for scripts to go on with.
std::string NameOnDisk(const std::string& path);

} // namespace vardenix
