#pragma once

#include <string>

namespace vardenix::tests {

// A journal as its format says, made by code of the tests' own.
class JournalMaker {
public:
    // `staged` is what the file is staged with; `replaced` is looked at now.
    void Add(const std::string& name, const std::string& staged,
             const std::string& replaced);
    std::string Text() const;

private:
    std::string lines_ = "Vardenix journal 1\n";
};

} // namespace vardenix::tests
