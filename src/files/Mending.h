#pragma once

#include "files/FolderLock.h"

#include <filesystem>
#include <string>
#include <vector>

namespace vardenix {

// Puts right what programs that ended in the middle of a transaction have left, in the
// folders of the files named and beside the files themselves:
// - A journal whose every file is proved, staged whole with the file that it replaces
//   still there, or already in its place, is finished.
// - Any other journal goes, and so does what it can prove to have staged. What stands in
//   the files' places stays.
// - A staged file of one of the files named, without a journal, goes, unless a program is
//   writing it.
// Returns a sentence for the log about each thing done. Error 70 when a save that is half
// done cannot be finished, because the folder may not be written or another program
// holds it; whatever does not stand between a reader and whole files is passed over.
std::vector<std::string> MendFiles(const std::vector<std::string>& paths);

// MendFiles for the journals of one folder, by a holder of its exclusive lock.
void MendJournal(const std::filesystem::path& folder, std::vector<std::string>& done);

// Files that are read together: mended, then held still by a shared lock on their folders
// until the object goes.
class ReadingLock {
public:
    explicit ReadingLock(const std::vector<std::string>& paths);

    // For the log.
    const std::vector<std::string>& Mended() const { return mended_; }

private:
    std::vector<std::string> mended_;
    std::vector<FolderLock> locks_;
};

} // namespace vardenix
