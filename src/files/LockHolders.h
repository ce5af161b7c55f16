#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace vardenix {

// Another process that holds a lock.
struct LockHolder {
    pid_t Process = 0;
    std::string Program; // "vardenix-cli"; empty where the system does not tell
    uid_t UserId = 0;
    std::string User; // by name, else by number
    bool Writes = false;
};

// Who else has a lock on an open file or folder, as far as the system tells: not on all
// file systems, and not of processes of other machines. This process is not among them.
std::vector<LockHolder> HoldersOf(int handle);

// "vardenix (process 123 of max) and 2 more"; "another program" for none.
std::string TextOfHolders(const std::vector<LockHolder>& holders);

} // namespace vardenix
