#pragma once

#include "files/TransactionJournal.h"

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace vardenix {

// How far a journal's names reach, seen from the files that a program was told of. A
// journal comes with whatever folder somebody hands on, so it may move no file but those
// of the theater that is opened.
enum class JournalReach {
    Told,    // files that were told, or in a told file's folder by a name of such files
    Wider,   // more files of the same theater, in folders that were not told
    Foreign, // anything else: an absolute name, another place, another kind of name
};

// The files, and by a path that ends in a slash the folders, that a program was told of.
class ToldFiles {
public:
    explicit ToldFiles(const std::set<std::filesystem::path>& folders,
                       const std::vector<std::filesystem::path>& files);

    // Of the journal in `folder`. The system's refusals are thrown.
    JournalReach ReachOf(const std::filesystem::path& folder,
                         const std::vector<JournalEntry>& entries) const;

private:
    JournalReach ReachOf(const std::filesystem::path& folder,
                         const JournalEntry& entry) const;

    std::set<std::filesystem::path> folders_; // real ones
    std::set<std::filesystem::path> files_;   // in real folders
};

// Whether files that change together are called so: levels, heights, catalogue,
// theater.map, pictures, far tiles, features, and a restore point.
bool IsNameOfOurs(const std::string& name);

} // namespace vardenix
