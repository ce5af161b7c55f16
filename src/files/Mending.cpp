#include "files/Mending.h"

#include "files/BinaryReader.h"
#include "files/FileNames.h"
#include "files/ReadableFile.h"
#include "files/StagedFile.h"
#include "files/TransactionJournal.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

using std::chrono::milliseconds;

constexpr uint64_t LargestJournal = uint64_t{1} << 20;
constexpr size_t PartBytes = size_t{1} << 20;

// A name that is not there as it stands can only be found by listing its folder; where
// that is forbidden nobody knows of a leftover beside it.
std::vector<fs::path> TargetsOf(const std::vector<std::string>& paths) {
    std::vector<fs::path> targets;
    targets.reserve(paths.size());
    for (const std::string& path : paths)
        try {
            targets.push_back(TargetOf(path));
        } catch (const RuntimeError& error) {
            if (error.Number() != ErrorNumber::PermissionDenied)
                throw;
        }
    return targets;
}

std::set<fs::path> FoldersOf(const std::vector<fs::path>& targets) {
    std::set<fs::path> folders;
    for (const fs::path& target : targets)
        folders.insert(FolderOf(target));
    return folders;
}

// Where anybody may put files but may not take away those of others, only what is ours
// counts: anywhere else, whoever can write a journal can write the files as well.
bool IsTrusted(const fs::path& file) {
    struct stat folder {};
    struct stat status {};
    if (::stat(FolderOf(file).c_str(), &folder) != 0 ||
        ::lstat(file.c_str(), &status) != 0)
        return false;
    return (folder.st_mode & S_ISVTX) == 0 || status.st_uid == ::geteuid() ||
           status.st_uid == folder.st_uid;
}

uint32_t ChecksumOfFile(const ReadableFile& file) {
    FileBytes part(PartBytes);
    uint32_t checksum = 0;
    for (uint64_t at = 0;;) {
        const size_t got = file.ReadAt(at, {part.data(), part.size()});
        if (got == 0)
            return checksum;
        checksum = ChecksumOf(part.Span().first(got), checksum);
        at += got;
    }
}

bool Holds(const fs::path& path, const JournalEntry& entry) {
    const FileIdentity there = IdentityOfRealPath(path);
    if (!IsPlainFile(path) || there.Size != entry.Size || !IsTrusted(path))
        return false;
    return ChecksumOfFile(ReadableFile(TextOfPath(path))) == entry.Checksum;
}

// The file itself, or a faithful copy of it: a theater that was moved to another disk in
// the middle of a save is finished there.
bool IsTheReplaced(const FileIdentity& there, const FileIdentity& replaced) {
    return there.Present == replaced.Present && there.Size == replaced.Size &&
           there.Seconds == replaced.Seconds && there.Nanoseconds == replaced.Nanoseconds;
}

// What a journal has to say about one file, looked up on the disk.
struct FoundFile {
    enum { Staged, InPlace, Unproved } Stand = Unproved;
    fs::path Target;
    fs::path StagedPath;
    bool StagedProved = false;
};

FoundFile LookAt(const fs::path& folder, const JournalEntry& entry) {
    FoundFile file;
    file.Target = folder / entry.Name;
    file.StagedPath = StagedNameOf(file.Target);
    file.StagedProved = Holds(file.StagedPath, entry);
    if (file.StagedProved) {
        if (IsTheReplaced(IdentityOfRealPath(file.Target), entry.Replaced))
            file.Stand = FoundFile::Staged;
    } else if (!IsPlainFile(file.StagedPath) && Holds(file.Target, entry)) {
        file.Stand = FoundFile::InPlace;
    }
    return file;
}

std::vector<FoundFile> LookAtAll(const fs::path& folder) {
    const auto entries =
        ParseJournal(ReadWholeFile(TextOfPath(JournalOf(folder)), LargestJournal).Span());
    std::vector<FoundFile> files;
    if (entries)
        for (const JournalEntry& entry : *entries)
            files.push_back(LookAt(folder, entry));
    return files;
}

bool IsProved(const std::vector<FoundFile>& files) {
    return !files.empty() && std::none_of(files.begin(), files.end(), [](const auto& f) {
        return f.Stand == FoundFile::Unproved;
    });
}

bool IsHalfDone(const std::vector<FoundFile>& files) {
    const auto has = [&files](auto stand) {
        return std::any_of(files.begin(), files.end(),
                           [stand](const auto& f) { return f.Stand == stand; });
    };
    return has(FoundFile::Staged) && has(FoundFile::InPlace);
}

// A journal that cannot go is found again by the next opening, which then proves that
// there is nothing left to do.
void RemoveJournals(const std::vector<FoundFile>& files, const fs::path& folder) {
    std::set<fs::path> folders{folder};
    for (const FoundFile& file : files)
        folders.insert(FolderOf(file.Target));
    for (const fs::path& each : folders) {
        FlushFolder(each);
        ::unlink(JournalOf(each).c_str());
    }
}

void PutInPlace(const FoundFile& file) {
    if (::rename(file.StagedPath.c_str(), file.Target.c_str()) != 0)
        ThrowSystemError(errno, "finishing the interrupted save of",
                         file.Target.string());
}

void Finish(const std::vector<FoundFile>& files, const fs::path& folder) {
    for (const FoundFile& file : files)
        if (file.Stand == FoundFile::Staged)
            PutInPlace(file);
    RemoveJournals(files, folder);
}

// What is not proved to be ours stays, whatever its name: a journal is easily forged.
void Drop(const std::vector<FoundFile>& files, const fs::path& folder) {
    for (const FoundFile& file : files)
        if (file.StagedProved)
            DropStaged(file.StagedPath, milliseconds{0});
    const fs::path journal = JournalOf(folder);
    if (::unlink(journal.c_str()) != 0 && errno != ENOENT)
        ThrowSystemError(errno, "deleting the unfinished", journal.string());
}

bool IsMendable(const fs::path& journal) {
    return IsPlainFile(journal) && IsTrusted(journal) &&
           IdentityOfRealPath(journal).Size <= LargestJournal;
}

} // namespace

void MendJournal(const fs::path& folder, std::vector<std::string>& done) {
    const fs::path journal = JournalOf(folder);
    if (!IsMendable(journal))
        return;
    const std::vector<FoundFile> files = LookAtAll(folder);
    std::vector<fs::path> targets;
    targets.reserve(files.size());
    for (const FoundFile& file : files)
        targets.push_back(file.Target);
    const std::string name = files.empty()
                                 ? journal.string()
                                 : files.front().Target.lexically_normal().string();
    if (IsProved(files)) {
        try {
            const auto locks = LockFoldersOf(targets, FolderLock::Exclusive);
            Finish(files, folder);
        } catch (const RuntimeError&) {
            // Old files all, or new ones all, can be read as they are.
            if (IsHalfDone(LookAtAll(folder)))
                throw;
            return;
        }
        done.push_back("Finished the interrupted save of " + name);
        return;
    }
    try {
        Drop(files, folder);
        done.push_back("Dropped the unfinished save of " + name);
    } catch (const RuntimeError&) {
        return; // it is in nobody's way
    }
}

std::vector<std::string> MendFiles(const std::vector<std::string>& paths) {
    const std::vector<fs::path> targets = TargetsOf(paths);
    std::vector<std::string> done;
    for (const fs::path& folder : FoldersOf(targets))
        if (IsMendable(JournalOf(folder))) {
            const auto locks = LockFoldersOf({JournalOf(folder)}, FolderLock::Exclusive);
            MendJournal(folder, done);
        }
    for (const fs::path& target : targets) {
        const fs::path staged = StagedNameOf(target);
        if (!IsPlainFile(staged))
            continue;
        try {
            // Nobody waits for a leftover; the next opening finds it again.
            const auto locks =
                LockFoldersOf({staged}, FolderLock::Exclusive, milliseconds{0});
            if (locks.front().Held() && DropStaged(staged, milliseconds{0}))
                done.push_back("Dropped the unfinished save of " + target.string());
        } catch (const RuntimeError&) {
            continue;
        }
    }
    return done;
}

ReadingLock::ReadingLock(const std::vector<std::string>& paths)
    : mended_(MendFiles(paths)) {
    // Between the mending and the lock another program may have saved, or ended in the
    // middle of it.
    const std::vector<fs::path> targets = TargetsOf(paths);
    const std::set<fs::path> folders = FoldersOf(targets);
    while (true) {
        locks_ = LockFoldersOf(targets, FolderLock::Shared);
        const bool journal =
            std::any_of(folders.begin(), folders.end(), [](const fs::path& folder) {
                return IsMendable(JournalOf(folder));
            });
        if (!journal || locks_.empty() || !locks_.front().Held())
            return;
        locks_.clear();
        const auto more = MendFiles(paths);
        if (more.empty()) {
            locks_ = LockFoldersOf(targets, FolderLock::Shared);
            return;
        }
        mended_.insert(mended_.end(), more.begin(), more.end());
    }
}

} // namespace vardenix
