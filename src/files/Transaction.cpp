#include "files/Transaction.h"

#include "files/FileNames.h"
#include "files/TransactionJournal.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

// A file that refuses to take its place is asked again, since others have theirs already.
constexpr int Tries = 3;
constexpr std::chrono::milliseconds PauseBetweenTries{20};

fs::path CanonicalFolder(const fs::path& folder) {
    std::error_code error;
    fs::path real = fs::canonical(folder, error);
    if (error)
        ThrowSystemError(error.value(), "looking at the folder", folder.string());
    return real;
}

std::string NameSeenFrom(const fs::path& folder, const fs::path& target) {
    return (CanonicalFolder(FolderOf(target))
                .lexically_relative(CanonicalFolder(folder)) /
            target.filename())
        .lexically_normal()
        .string();
}

void WriteAll(int handle, const std::string& text, const std::string& path) {
    size_t done = 0;
    while (done < text.size()) {
        const ssize_t put = ::write(handle, text.data() + done, text.size() - done);
        if (put < 0 && errno == EINTR)
            continue;
        if (put <= 0)
            ThrowSystemError(put < 0 ? errno : ENOSPC, "writing", path);
        done += static_cast<size_t>(put);
    }
}

} // namespace

ChangedFileError::ChangedFileError(const std::string& path)
    : RuntimeError(ErrorNumber::PathFileAccess,
                   "The file was changed by another program since it was opened",
                   path + " was left as it is"),
      path_(path) {}

Transaction::File::File(std::string_view path, const FileIdentity* read)
    : Path(path), Staged(path), WasRead(read != nullptr),
      Read(read != nullptr ? *read : FileIdentity{}) {
    Staged.isSummed_ = true;
}

Transaction::Transaction(const std::vector<std::string>& files) {
    for (const std::string& file : files)
        announced_.push_back(TargetOf(file));
}

StagedFile& Transaction::Stage(std::string_view path) { return Add(path, nullptr); }

StagedFile& Transaction::Stage(std::string_view path, const FileIdentity& read,
                               IfChanged ifChanged) {
    return Add(path, ifChanged == IfChanged::Refuse && read.Present ? &read : nullptr);
}

StagedFile& Transaction::Add(std::string_view path, const FileIdentity* read) {
    const fs::path target = TargetOf(path);
    for (const auto& file : files_)
        if (file->Staged.target_ == target)
            throw RuntimeError(ErrorNumber::InvalidCall,
                               std::string(path) + " cannot be written twice at once");
    MendFolderOf(target);
    files_.reserve(files_.size() + 1);
    files_.push_back(std::make_unique<File>(path, read));
    RequireWhatWasRead();
    return files_.back()->Staged;
}

// Before anything is staged: what an interrupted transaction has staged may be wanted to
// finish it.
void Transaction::MendFolderOf(const fs::path& target) {
    const fs::path folder = FolderOf(target);
    if (!mendedFolders_.insert(folder).second || !IsPlainFile(JournalOf(folder)))
        return;
    std::vector<fs::path> targets = announced_;
    targets.push_back(target);
    for (const auto& file : files_)
        targets.push_back(file->Staged.target_);
    const auto locks = LockFoldersOf(targets, FolderLock::Exclusive);
    MendJournals(targets, mended_);
}

std::set<fs::path> Transaction::Folders() const {
    std::set<fs::path> folders;
    for (const auto& file : files_)
        folders.insert(FolderOf(file->Staged.target_));
    return folders;
}

void Transaction::RequireWhatWasRead() const {
    for (const auto& file : files_) {
        if (!file->WasRead)
            continue;
        const FileIdentity there = IdentityOfRealPath(file->Staged.target_);
        if (there.Present && there != file->Read)
            throw ChangedFileError(ShownPath(file->Path));
    }
}

void Transaction::Commit() {
    std::vector<fs::path> targets;
    for (const auto& file : files_) {
        file->Staged.Finish();
        targets.push_back(file->Staged.target_);
    }
    const auto locks = LockFoldersOf(targets, FolderLock::Exclusive);
    MendJournals(targets, mended_);
    RequireWhatWasRead();
    for (const auto& file : files_)
        file->Staged.Close();
    try {
        // One file takes its place in one step.
        if (files_.size() > 1)
            WriteJournals();
        TakePlaces();
    } catch (...) {
        RemoveJournals();
        throw;
    }
    for (const fs::path& folder : Folders())
        FlushFolder(folder);
    RemoveJournals();
}

void Transaction::WriteJournals() {
    const auto folders = Folders();
    journals_.reserve(folders.size());
    for (const fs::path& folder : folders) {
        std::vector<JournalEntry> entries;
        for (const auto& file : files_)
            entries.push_back({NameSeenFrom(folder, file->Staged.target_),
                               file->Staged.Position(), file->Staged.Checksum(),
                               IdentityOfRealPath(file->Staged.target_)});
        const std::string text = JournalText(entries);
        const fs::path path = JournalOf(folder);
        fs::path made = path;
        SystemFile journal(::open(
            path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
        if (!journal.IsOpen())
            ThrowSystemError(errno, "making", path.string());
        journals_.push_back(std::move(made));
        // Whoever may read the files may see what is to be finished, on a file system
        // that knows rights.
        struct stat first {};
        const bool opened =
            ::fstat(files_.front()->Staged.lock_.Handle(), &first) == 0 &&
            ::fchmod(journal.Handle(), (first.st_mode & 0666) | 0600) == 0;
        static_cast<void>(opened);
        WriteAll(journal.Handle(), text, path.string());
        if (::fsync(journal.Handle()) != 0 || !journal.Close() || !FlushFolder(folder))
            ThrowSystemError(errno, "flushing", path.string());
    }
}

// What cannot go now is found by the next opening, which proves that nothing is left to
// do.
void Transaction::RemoveJournals() {
    for (const fs::path& journal : journals_)
        ::unlink(journal.c_str());
    journals_.clear();
}

void Transaction::TakePlaces() {
    size_t next = 0;
    int refusal = 0;
    for (int tries = 1; next < files_.size(); ++tries) {
        refusal = files_[next]->Staged.TakePlace();
        if (refusal == 0) {
            ++next;
            tries = 0;
        } else if (next == 0 || tries == Tries) {
            break;
        } else {
            std::this_thread::sleep_for(PauseBetweenTries);
        }
    }
    if (refusal == 0)
        return;
    if (next > 0) {
        // The rest is whole on the disk, and the journal knows it.
        for (const auto& file : files_)
            file->Staged.Keep();
        journals_.clear();
    }
    const std::string hint =
        next == 0 ? ""
                  : "; " + files_.front()->Path +
                        " has been replaced already, and the next opening of these "
                        "files finishes the save; until then leave them as they are";
    ThrowSystemError(refusal, "replacing", files_[next]->Path + hint);
}

} // namespace vardenix
