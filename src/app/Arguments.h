#pragma once

#include <QStringList>

#include <string>

namespace vardenix {

// What the editor was started with.
struct Arguments {
    std::string Theater; // absolute path of what is to be opened; empty: the user chooses
    // When not empty nothing is opened: this is printed, and the program ends.
    std::string Told;
    bool Wrong = false; // Told is a complaint: standard error, exit code 2
};

// Whether the user only asks about the program, for which no display is needed.
bool OnlyAsks(int argc, char** argv);

// `words` begins with the program's own name; options of the toolkit are gone already.
// Needs a QCoreApplication.
Arguments ReadArguments(const QStringList& words);

// Prints what is told; the exit code.
int TellOf(const Arguments& arguments);

} // namespace vardenix
