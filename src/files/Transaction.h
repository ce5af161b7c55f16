#pragma once

#include "files/FileIdentity.h"
#include "files/Mending.h"
#include "files/StagedFile.h"
#include "texts/RuntimeError.h"

#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vardenix {

// A file that was to be replaced is another one than was read. Whoever asks the user
// about it tries again without naming what was read.
class ChangedFileError : public RuntimeError {
public:
    explicit ChangedFileError(const std::string& path);
    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

// Files that change together: each is staged beside the file it replaces, and Commit puts
// all of them in their places, in the order in which they were staged. What is not
// committed is taken away again and the old files stand. A program that ends in the
// middle of Commit leaves either the old files or a journal (TransactionJournal.h) by
// which the next opening finishes; see Mending.h.
//
// The folders of the files are locked exclusively while files take their places, not
// while they are staged. Whoever reads, changes and writes holds a FolderLock for the
// whole of it.
//
// Every routine throws the system's refusal (61 disk full, 70, 75, 57) with the file's
// name.
class Transaction {
public:
    Transaction() = default;
    // With the files that it is going to stage, where they lie in several folders: an
    // interrupted save of all of them is then finished before the first is staged.
    explicit Transaction(const std::vector<std::string>& files);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    // Lives as long as the transaction; written to by the caller, never committed by it.
    // A folder's interrupted transaction is mended first. Error 5 for a file that is
    // staged already.
    StagedFile& Stage(std::string_view path);

    // Stages a file that was read before it is replaced: ChangedFileError, here or
    // from Commit, when another file is there than `read` and that is not to be
    // overwritten. A file that has gone is no other file, and where nothing was read
    // there is nothing to compare.
    StagedFile& Stage(std::string_view path, const FileIdentity& read,
                      IfChanged ifChanged = IfChanged::Refuse);

    // All bytes on the disk, then every file in its place; once only. When it throws, the
    // old files stand, but for one case: a file that cannot take its place after another
    // one has. The error then says so, and the next opening finishes.
    void Commit();

    // What was mended on the way, for the log.
    const std::vector<std::string>& Mended() const { return mended_.Done; }

private:
    struct File {
        File(std::string_view path, const FileIdentity* read);

        std::string Path;
        StagedFile Staged;
        bool WasRead;
        FileIdentity Read;
    };

    StagedFile& Add(std::string_view path, const FileIdentity* read);
    void MendFolderOf(const std::filesystem::path& target);
    std::set<std::filesystem::path> Folders() const;
    void RequireWhatWasRead() const;
    void WriteJournals();
    void RemoveJournals();
    void TakePlaces();

    std::vector<std::unique_ptr<File>> files_;
    std::set<std::filesystem::path> mendedFolders_;
    std::vector<std::filesystem::path> journals_; // written, not yet gone
    std::vector<std::filesystem::path> announced_;
    vardenix::Mended mended_;
};

} // namespace vardenix
