#pragma once

#include <string>

namespace vardenix {

struct PutBack {
    // The files are the old ones; the program that runs may be one that has gone.
    bool Done = false;
    // What else the user is to know, as sentences; empty when nothing.
    std::string Told;
};

// Puts back what an update has left half done, unless a program is still at it. What
// happens is written into Update.log. The system's refusals go through.
PutBack PutBackInterrupted(const std::string& programFolder);

// That an update was put back is for the user to know, who sees only the program that is
// started next: it takes the notice that whoever put the files back has left for it in
// the environment. Empty, and never twice, when there is none.
void LeaveNotice();
std::string TakeNotice();

} // namespace vardenix
