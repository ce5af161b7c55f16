#include "files/Mending.h"

#include "files/BinaryReader.h"
#include "files/FileNames.h"
#include "files/FileStatus.h"
#include "files/JournalReach.h"
#include "files/ReadableFile.h"
#include "files/StagedFile.h"
#include "files/TransactionJournal.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

using std::chrono::milliseconds;

constexpr size_t PartBytes = size_t{1} << 20;

bool NamesAFolder(const std::string& path) {
    return path.ends_with('/') || path.ends_with('\\');
}

// A name that is not there as it stands can only be found by listing its folder; where
// that is forbidden nobody knows of a leftover beside it, but the folder's journal still
// counts.
std::vector<fs::path> TargetsOf(const std::vector<std::string>& paths) {
    std::vector<fs::path> targets;
    targets.reserve(paths.size());
    for (const std::string& path : paths)
        try {
            // With nothing behind its slash, a folder is that of no file.
            targets.push_back(NamesAFolder(path) ? RealPath(path, PathKind::Folder) / ""
                                                 : TargetOf(path));
        } catch (const RuntimeError& error) {
            if (error.Number() != ErrorNumber::PermissionDenied)
                throw;
            targets.push_back(FolderOf(PathAsItStands(path)) / "");
        }
    return targets;
}

std::set<fs::path> FoldersOf(const std::vector<fs::path>& targets) {
    std::set<fs::path> folders;
    for (const fs::path& target : targets)
        folders.insert(FolderOf(target));
    return folders;
}

// In a folder for all only what is ours, or its owner's, counts. A group that shares a
// folder may replace each other's files anyway.
bool IsTrusted(const fs::path& file) {
    const auto folder = StatusOf(FolderOf(file));
    const auto status = StatusOfLink(file);
    if (!folder || !status)
        return false;
    return (folder->st_mode & (S_ISVTX | S_IWOTH)) == 0 ||
           status->st_uid == ::geteuid() || status->st_uid == folder->st_uid;
}

// Files that may be acted on, or of anybody, to tell what they are.
enum class Whose { Ours, Anybodys };

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

bool Holds(const fs::path& path, const JournalEntry& entry, Whose whose) {
    const FileIdentity there = IdentityOfRealPath(path);
    if (!IsPlainFile(path) || there.Size != entry.Size ||
        (whose == Whose::Ours && !IsTrusted(path)))
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

FoundFile LookAt(const fs::path& folder, const JournalEntry& entry, Whose whose) {
    FoundFile file;
    file.Target = folder / entry.Name;
    file.StagedPath = StagedNameOf(file.Target);
    file.StagedProved = Holds(file.StagedPath, entry, whose);
    if (file.StagedProved) {
        if (IsTheReplaced(IdentityOfRealPath(file.Target), entry.Replaced))
            file.Stand = FoundFile::Staged;
    } else if (!IsPlainFile(file.StagedPath) && Holds(file.Target, entry, whose)) {
        file.Stand = FoundFile::InPlace;
    }
    return file;
}

using Entries = std::vector<JournalEntry>;

Entries EntriesOf(const fs::path& journal) {
    return ParseJournal(ReadWholeFile(TextOfPath(journal), LargestJournal).Span())
        .value_or(Entries());
}

std::vector<FoundFile> LookAtAll(const fs::path& folder, const Entries& entries,
                                 Whose whose) {
    std::vector<FoundFile> files;
    for (const JournalEntry& entry : entries)
        files.push_back(LookAt(folder, entry, whose));
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

bool IsJournal(const fs::path& journal) {
    return IsPlainFile(journal) && IdentityOfRealPath(journal).Size <= LargestJournal;
}

std::string ShownFile(const fs::path& folder, const JournalEntry& entry) {
    return (folder / entry.Name).lexically_normal().string();
}

void SetAside(const fs::path& journal, const std::string& why, Mended& mended) {
    const fs::path aside = AsideOf(journal);
    const bool moved = ::rename(journal.c_str(), aside.c_str()) == 0;
    const std::string sentence =
        journal.string() + " " + why + "; nothing that it names was touched, and it " +
        (moved ? "was set aside as " + aside.filename().string()
               : std::string("could not be set aside")) +
        ". Delete it when you know of no save that it belongs to.";
    mended.Done.push_back(sentence);
    mended.SetAside.push_back(sentence);
}

[[noreturn]] void TellWiderJournal(const fs::path& folder, const Entries& entries) {
    std::string names;
    for (const JournalEntry& entry : entries)
        names += (names.empty() ? "" : ", ") + ShownFile(folder, entry);
    throw RuntimeError(
        ErrorNumber::PermissionDenied,
        JournalOf(folder).string() + ": an interrupted save of " + names +
            " waits to be finished, and not all of these files were named here. Open the "
            "whole theater, in the editor or by \"vardenix-cli info --theater\" with its "
            "folder: that finishes the save. Until then leave the files as they are");
}

[[noreturn]] void TellSaveOfAnother(const fs::path& folder, const Entries& entries) {
    const auto status = StatusOfLink(JournalOf(folder));
    throw RuntimeError(
        ErrorNumber::PermissionDenied,
        ShownFile(folder, entries.front()) + ": the save of another user" +
            (status ? " (number " + std::to_string(status->st_uid) + ")"
                    : std::string()) +
            " was interrupted, and some of its files have not got their places yet. Let "
            "that user open the theater, which finishes the save; until then leave the "
            "files as they are");
}

// A journal that somebody else has put into a folder for all: nothing is done by it, and
// a mixture that it tells of is not read.
void PassOver(const fs::path& folder, const Entries& entries, JournalReach reach,
              Mended& mended) {
    const auto files = reach == JournalReach::Foreign
                           ? std::vector<FoundFile>()
                           : LookAtAll(folder, entries, Whose::Anybodys);
    const bool waits = IsProved(files) &&
                       std::any_of(files.begin(), files.end(), [](const FoundFile& file) {
                           return file.Stand == FoundFile::Staged;
                       });
    if (waits)
        TellSaveOfAnother(folder, entries);
    SetAside(JournalOf(folder), "is another user's, in a folder for all", mended);
}

void MendJournal(const fs::path& folder, const ToldFiles& told, Mended& mended) {
    const fs::path journal = JournalOf(folder);
    if (!IsJournal(journal))
        return;
    const Entries entries = EntriesOf(journal);
    const JournalReach reach = told.ReachOf(folder, entries);
    if (!IsTrusted(journal))
        return PassOver(folder, entries, reach, mended);
    if (reach == JournalReach::Foreign)
        return SetAside(journal, "names files that are none of this theater's", mended);
    if (reach == JournalReach::Wider)
        TellWiderJournal(folder, entries);
    const std::vector<FoundFile> files = LookAtAll(folder, entries, Whose::Ours);
    std::vector<fs::path> targets;
    targets.reserve(files.size());
    for (const FoundFile& file : files)
        targets.push_back(file.Target);
    const std::string name =
        entries.empty() ? journal.string() : ShownFile(folder, entries.front());
    if (IsProved(files)) {
        try {
            const auto locks = LockFoldersOf(targets, FolderLock::Exclusive);
            Finish(files, folder);
        } catch (const RuntimeError&) {
            // Old files all, or new ones all, can be read as they are.
            if (IsHalfDone(LookAtAll(folder, entries, Whose::Ours)))
                throw;
            return;
        }
        mended.Done.push_back("Finished the interrupted save of " + name);
        return;
    }
    try {
        Drop(files, folder);
        mended.Done.push_back("Dropped the unfinished save of " + name);
    } catch (const RuntimeError&) {
        return; // it is in nobody's way
    }
}

// What a journal is still there for is its own.
void DropLeftover(const fs::path& target, Mended& mended) {
    try {
        const fs::path staged = StagedNameOf(target);
        if (!target.has_filename() || !IsPlainFile(staged) ||
            IsPlainFile(JournalOf(FolderOf(target))))
            return;
        // Nobody waits for a leftover; the next opening finds it again.
        const auto locks =
            LockFoldersOf({staged}, FolderLock::Exclusive, milliseconds{0});
        if (locks.front().Held() && DropStaged(staged, milliseconds{0}))
            mended.Done.push_back("Dropped the unfinished save of " + target.string());
    } catch (const RuntimeError&) {
        return;
    }
}

} // namespace

void MendJournals(const std::vector<fs::path>& targets, Mended& mended) {
    const std::set<fs::path> folders = FoldersOf(targets);
    std::optional<ToldFiles> told;
    for (const fs::path& folder : folders)
        if (IsJournal(JournalOf(folder)))
            MendJournal(folder, told ? *told : told.emplace(folders, targets), mended);
}

Mended MendAll(const std::vector<std::string>& paths) {
    const std::vector<fs::path> targets = TargetsOf(paths);
    const std::set<fs::path> folders = FoldersOf(targets);
    Mended mended;
    for (const fs::path& folder : folders)
        if (IsJournal(JournalOf(folder))) {
            const auto locks = LockFoldersOf({JournalOf(folder)}, FolderLock::Exclusive);
            MendJournal(folder, ToldFiles(folders, targets), mended);
        }
    for (const fs::path& target : targets)
        DropLeftover(target, mended);
    return mended;
}

std::vector<std::string> MendFiles(const std::vector<std::string>& paths) {
    return MendAll(paths).Done;
}

ReadingLock::ReadingLock(const std::vector<std::string>& paths)
    : mended_(MendAll(paths)) {
    // Between the mending and the lock another program may have saved, or ended in the
    // middle of it.
    const std::vector<fs::path> targets = TargetsOf(paths);
    const std::set<fs::path> folders = FoldersOf(targets);
    while (true) {
        locks_ = LockFoldersOf(targets, FolderLock::Shared);
        const bool journal =
            std::any_of(folders.begin(), folders.end(), [](const fs::path& folder) {
                return IsJournal(JournalOf(folder));
            });
        const bool held = std::any_of(locks_.begin(), locks_.end(),
                                      [](const FolderLock& lock) { return lock.Held(); });
        if (!journal || !held)
            return;
        locks_.clear();
        const vardenix::Mended more = MendAll(paths);
        if (more.Done.empty()) {
            locks_ = LockFoldersOf(targets, FolderLock::Shared);
            return;
        }
        // One that cannot be set aside stays, and is told once.
        if (more.SetAside == mended_.SetAside && !more.SetAside.empty()) {
            locks_ = LockFoldersOf(targets, FolderLock::Shared);
            return;
        }
        mended_.Done.insert(mended_.Done.end(), more.Done.begin(), more.Done.end());
        mended_.SetAside.insert(mended_.SetAside.end(), more.SetAside.begin(),
                                more.SetAside.end());
    }
}

} // namespace vardenix
