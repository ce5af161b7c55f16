#pragma once

#include "files/HeldFile.h"

#include <string>

namespace vardenix {

// Scratch folders that several runs of the program use at once: each run has its own
// folder in them, all by one name. "<name>.lock" beside it in the first of them, the
// home, is held for as long as the run lives.
class RunName {
public:
    // Takes the first name that is free, a number from 1; `home` is made where it is
    // missing. The system's refusals go through.
    explicit RunName(const std::string& home);

    const std::string& Text() const { return text_; }

private:
    RunName(std::string text, HeldFile lock)
        : text_(std::move(text)), lock_(std::move(lock)) {}
    static RunName Taken(const std::string& home);

    std::string text_;
    HeldFile lock_;
};

// Deletes what is in a scratch folder but for what living runs have there, and the folder
// with it when nothing is left. A link in its place goes, and what it leads to stays. The
// system's refusals go through.
void ClearRunFolders(const std::string& folder, const std::string& home);

} // namespace vardenix
