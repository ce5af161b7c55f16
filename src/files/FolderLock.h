#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

namespace vardenix {

// How long a program waits for another one that is at work on the same files.
constexpr std::chrono::milliseconds LockPatience{30000};

// Keeps other copies of the program from changing the files of a folder (Shared, while
// files that belong together are read) or from reading and changing them (Exclusive,
// while they are replaced or mended). Nothing is left behind in the folder, and a program
// that ends, however, lets go.
//
// Locks of one process never wait for one another: what holds a folder may take it again,
// and whoever has it exclusively may read.
//
// A folder that may not be listed and a file system that knows no locks are gone on with
// as if nobody else were there; Held() is false then, and nothing is to be cleared away
// that might be another program's.
class FolderLock {
public:
    enum Kind { Shared, Exclusive };

    // Error 70 with its name when another program still has the folder after `patience`,
    // or when whoever watches the wait (LockWait.h) has given up. For writing, the
    // folder's owner passes over readers of other users by then. The system's refusals
    // (57, 75) when the folder cannot be opened for other reasons than rights.
    FolderLock(std::string_view folder, Kind kind,
               std::chrono::milliseconds patience = LockPatience);
    FolderLock(FolderLock&&) noexcept;
    FolderLock& operator=(FolderLock&&) noexcept;
    ~FolderLock();

    bool Held() const { return held_ != nullptr; }

private:
    struct Folder;
    static std::vector<std::weak_ptr<Folder>>& Known();
    friend std::vector<FolderLock>
    LockFoldersOf(const std::vector<std::filesystem::path>&, Kind,
                  std::chrono::milliseconds);

    explicit FolderLock(Kind kind) : kind_(kind) {}
    void Take(const std::filesystem::path& folder, std::chrono::milliseconds patience);
    void Release();

    std::shared_ptr<Folder> held_;
    Kind kind_;
};

// The folders of some files, each once, locked in an order that is the same for every
// program, so that no two wait for one another.
std::vector<FolderLock> LockFoldersOf(const std::vector<std::filesystem::path>& files,
                                      FolderLock::Kind kind,
                                      std::chrono::milliseconds patience = LockPatience);

// The folder that a file lies in; "." for a name alone.
std::filesystem::path FolderOf(const std::filesystem::path& file);

// flock on an open file, waiting up to `patience`. False when another holder still has
// it; true as well where the file system knows no locks. `operation` is LOCK_SH or
// LOCK_EX.
bool LockWithin(int handle, int operation, std::chrono::milliseconds patience);

} // namespace vardenix
