#pragma once

#include "files/FolderLock.h"

#include <filesystem>
#include <string>
#include <vector>

namespace vardenix {

// What mending has done, a sentence for each thing. What was set aside is among Done and
// is to be told to the user as well.
struct Mended {
    std::vector<std::string> Done;
    std::vector<std::string> SetAside;
};

// Puts right what programs that ended in the middle of a transaction have left, in the
// folders of the files named and beside the files themselves; a path that ends in a slash
// names a folder alone.
// - A journal whose every file is proved, staged whole with the file that it replaces
//   still there, or already in its place, is finished.
// - Any other journal goes, and so does what it can prove to have staged. What stands in
//   the files' places stays.
// - A journal that names anything but files of ours in the folders named (JournalReach.h)
//   moves nothing and is set aside, and so is one that somebody else has put into a
//   folder for all.
// - A staged file of one of the files named, without a journal, goes, unless a program is
//   writing it.
// Error 70, with everything left as it is: when a save that is half done cannot be
// finished, because the folder may not be written, another program holds it, or it is
// another user's; and for a journal that names more files of the same theater than were
// named here. The system's refusals to look at something are errors as well; whatever
// does not stand between a reader and whole files is passed over.
Mended MendAll(const std::vector<std::string>& paths);

// The sentences alone, for the log.
std::vector<std::string> MendFiles(const std::vector<std::string>& paths);

// The same for the journals of the folders of some real files, by a holder of the
// folders' exclusive locks.
void MendJournals(const std::vector<std::filesystem::path>& targets, Mended& mended);

// Files that are read together: mended, then held still by a shared lock on their folders
// until the object goes.
class ReadingLock {
public:
    explicit ReadingLock(const std::vector<std::string>& paths);

    // For the log.
    const std::vector<std::string>& Mended() const { return mended_.Done; }
    // For the user, too.
    const std::vector<std::string>& SetAside() const { return mended_.SetAside; }

private:
    vardenix::Mended mended_;
    std::vector<FolderLock> locks_;
};

} // namespace vardenix
