#include "files/FolderLock.h"

#include "files/FileIdentity.h"
#include "files/FileNames.h"
#include "files/LockWait.h"
#include "files/SystemFile.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

using std::chrono::milliseconds;

enum class Attempt { Got, Busy, Unknown };

Attempt TryLock(int handle, int operation) {
    while (::flock(handle, operation | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK)
            return Attempt::Busy;
        if (errno != EINTR)
            return Attempt::Unknown; // ENOLCK, EOPNOTSUPP, on some networks EBADF
    }
    return Attempt::Got;
}

using std::chrono::steady_clock;

// A wait that is over sooner is nobody's business.
constexpr milliseconds Moment{300};
constexpr milliseconds BetweenLooks{50};

LockWatcher* watcher = nullptr;

// The system has no wait that ends by itself, so it is asked again and again, at first
// within a moment: a reading of a small theater is over in less. `look` says whether to
// go on.
template <typename Look>
Attempt KeepTrying(int handle, int operation, milliseconds patience, Look look) {
    const auto start = steady_clock::now();
    auto nextLook = start + Moment;
    milliseconds pause{1};
    Attempt attempt = TryLock(handle, operation);
    while (attempt == Attempt::Busy && steady_clock::now() < start + patience) {
        if (steady_clock::now() >= nextLook) {
            if (!look())
                break;
            nextLook = steady_clock::now() + BetweenLooks;
        }
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, milliseconds{5});
        attempt = TryLock(handle, operation);
    }
    return attempt;
}

Attempt KeepTrying(int handle, int operation, milliseconds patience) {
    return KeepTrying(handle, operation, patience, [] { return true; });
}

// A wait for a folder, as it is shown to whoever watches.
class ShownWait {
public:
    ShownWait(int handle, const fs::path& folder, bool forWriting)
        : handle_(handle), forWriting_(forWriting), wait_{folder, {}, false} {}
    ShownWait(const ShownWait&) = delete;
    ShownWait& operator=(const ShownWait&) = delete;
    ~ShownWait() {
        if (shown_ != nullptr)
            shown_->WaitIsOver();
    }

    // False when the wait is to end, by giving up or by passing over.
    bool Look() {
        if (watcher == nullptr)
            return true;
        FindHolders();
        shown_ = watcher;
        answer_ = watcher->Waiting(wait_);
        return answer_ == WaitAnswer::GoOn ||
               (answer_ == WaitAnswer::PassOver && !wait_.MayPassOver);
    }
    bool GaveUp() const { return answer_ == WaitAnswer::GiveUp; }

    const LockWait& FindHolders() {
        struct stat folder {};
        wait_.Holders = HoldersOf(handle_);
        wait_.MayPassOver =
            forWriting_ && !wait_.Holders.empty() && ::fstat(handle_, &folder) == 0 &&
            folder.st_uid == ::geteuid() &&
            std::ranges::all_of(wait_.Holders, [&](const LockHolder& holder) {
                return !holder.Writes && holder.UserId != folder.st_uid;
            });
        return wait_;
    }

private:
    int handle_;
    bool forWriting_;
    LockWait wait_;
    LockWatcher* shown_ = nullptr;
    WaitAnswer answer_ = WaitAnswer::GoOn;
};

} // namespace

// A folder that this process holds, with how many of its locks are of either kind.
struct FolderLock::Folder {
    SystemFile Handle;
    uint64_t Device = 0;
    uint64_t Inode = 0;
    int Readers = 0;
    int Writers = 0;
};

std::vector<std::weak_ptr<FolderLock::Folder>>& FolderLock::Known() {
    static std::vector<std::weak_ptr<Folder>> known;
    std::erase_if(known, [](const auto& folder) { return folder.expired(); });
    return known;
}

FolderLock::FolderLock(std::string_view folder, Kind kind, milliseconds patience)
    : FolderLock(kind) {
    Take(folder.empty() ? fs::path(".") : RealPath(folder), patience);
}

void FolderLock::Take(const fs::path& path, milliseconds patience) {
    const FileIdentity identity = IdentityOfRealPath(path);
    std::shared_ptr<Folder> wanted;
    for (const auto& known : Known())
        if (const auto held = known.lock();
            held && held->Device == identity.Device && held->Inode == identity.Inode)
            wanted = held;
    if (!wanted) {
        wanted = std::make_shared<Folder>();
        wanted->Handle =
            SystemFile(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (!wanted->Handle.IsOpen()) {
            // Whoever reads or writes a file there is told by that.
            if (errno == EACCES || errno == EPERM || errno == ENOENT || errno == ENOTDIR)
                return;
            ThrowSystemError(errno, "locking the folder", path.string());
        }
        wanted->Device = identity.Device;
        wanted->Inode = identity.Inode;
        Known().push_back(wanted);
    }
    const bool enough = wanted->Writers > 0 || (kind_ == Shared && wanted->Readers > 0);
    if (!enough) {
        const int operation = kind_ == Shared ? LOCK_SH : LOCK_EX;
        ShownWait wait(wanted->Handle.Handle(), path, kind_ == Exclusive);
        Attempt attempt = KeepTrying(wanted->Handle.Handle(), operation, patience,
                                     [&wait] { return wait.Look(); });
        // Readers of other users cannot keep the owner from saving. A reader's lock keeps
        // off other writers, who would have to wait for it.
        if (attempt == Attempt::Busy && !wait.GaveUp() && wait.FindHolders().MayPassOver)
            attempt = TryLock(wanted->Handle.Handle(), LOCK_SH);
        // Asking for more may have cost the reader's lock.
        if (attempt != Attempt::Got && wanted->Readers > 0)
            KeepTrying(wanted->Handle.Handle(), LOCK_SH, patience);
        if (attempt == Attempt::Busy)
            throw RuntimeError(
                ErrorNumber::PermissionDenied,
                path.string() + ": " + TextOfHolders(wait.FindHolders().Holders) +
                    " is reading or saving the files of this folder; try again when it "
                    "is done");
        if (attempt == Attempt::Unknown)
            return;
    }
    ++(kind_ == Shared ? wanted->Readers : wanted->Writers);
    held_ = std::move(wanted);
}

FolderLock::FolderLock(FolderLock&& other) noexcept
    : held_(std::exchange(other.held_, nullptr)), kind_(other.kind_) {}

FolderLock& FolderLock::operator=(FolderLock&& other) noexcept {
    if (this != &other) {
        Release();
        held_ = std::exchange(other.held_, nullptr);
        kind_ = other.kind_;
    }
    return *this;
}

FolderLock::~FolderLock() { Release(); }

void FolderLock::Release() {
    if (!held_)
        return;
    --(kind_ == Shared ? held_->Readers : held_->Writers);
    // The last writer of a folder that is still read goes back to reading; the last of
    // all closes the handle, and the lock goes with it.
    if (kind_ == Exclusive && held_->Writers == 0 && held_->Readers > 0)
        TryLock(held_->Handle.Handle(), LOCK_SH);
    held_.reset();
}

std::vector<FolderLock> LockFoldersOf(const std::vector<fs::path>& files,
                                      FolderLock::Kind kind, milliseconds patience) {
    std::vector<fs::path> folders;
    folders.reserve(files.size());
    for (const fs::path& file : files)
        folders.push_back(FolderOf(file));
    // By what the disk calls them: one folder may go by several names.
    const auto key = [](const fs::path& folder) {
        const FileIdentity identity = IdentityOfRealPath(folder);
        return std::pair(identity.Device, identity.Inode);
    };
    std::sort(folders.begin(), folders.end(),
              [&key](const fs::path& a, const fs::path& b) { return key(a) < key(b); });
    folders.erase(std::unique(folders.begin(), folders.end()), folders.end());
    std::vector<FolderLock> locks;
    locks.reserve(folders.size());
    for (const fs::path& folder : folders) {
        FolderLock lock(kind);
        lock.Take(folder, patience);
        locks.push_back(std::move(lock));
    }
    return locks;
}

LockWatcher* WatchLocks(LockWatcher* next) { return std::exchange(watcher, next); }

std::string TextOfWait(const LockWait& wait) {
    return "Waiting for " + TextOfHolders(wait.Holders) +
           ", which reads or saves the files of " + ShownPath(wait.Folder.string());
}

fs::path FolderOf(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

bool LockWithin(int handle, int operation, milliseconds patience) {
    return KeepTrying(handle, operation, patience) != Attempt::Busy;
}

} // namespace vardenix
