#pragma once

#include "files/FileIdentity.h"

#include <cstdint>
#include <string_view>

struct stat;

namespace vardenix {

// What a file is known by to a later run of the program: its identity, and when anything
// of it was changed last, which no program can set. As long as both are the same, so are
// its bytes.
struct FileMark {
    FileIdentity Identity;
    int64_t ChangedSeconds = 0;     // since 1970
    int64_t ChangedNanoseconds = 0; // 0 to 999,999,999

    bool operator==(const FileMark&) const = default;

    // Not later than the other one, by the clock of the file system.
    bool ChangedNoLaterThan(const FileMark& other) const;
    // Changed so long ago that a change from now on will have another time: those of a
    // file system come in ticks.
    bool IsSettled() const;
};

FileMark MarkOfStatus(const struct ::stat& status);
// Links are followed. Not present for what is not there or refused.
FileMark MarkOfPath(std::string_view path);

// Returns when what is changed from now on will have another time than what was changed
// before, some milliseconds.
void LetTickPass();

} // namespace vardenix
