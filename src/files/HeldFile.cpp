#include "files/HeldFile.h"

#include "files/FileNames.h"
#include "texts/RuntimeError.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

constexpr mode_t ReadAndWrittenByItsUser = 0600;

bool LockAtOnce(int handle) {
    while (::flock(handle, LOCK_EX | LOCK_NB) != 0)
        if (errno != EINTR)
            return false;
    return true;
}

// Whoever clears away what is nobody's may have come between the making and the lock.
bool StillHasItsName(int handle, const fs::path& path) {
    struct stat held {};
    struct stat named {};
    return ::fstat(handle, &held) == 0 && ::lstat(path.c_str(), &named) == 0 &&
           held.st_dev == named.st_dev && held.st_ino == named.st_ino;
}

} // namespace

std::optional<HeldFile> HeldFile::Make(const fs::path& path) {
    while (true) {
        SystemFile file(::open(path.c_str(),
                               O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW,
                               ReadAndWrittenByItsUser));
        if (!file.IsOpen()) {
            if (errno == EEXIST)
                return std::nullopt;
            ThrowSystemError(errno, "making", TextOfPath(path));
        }
        if (!LockAtOnce(file.Handle()) && errno == EWOULDBLOCK)
            continue; // it is being cleared away
        if (StillHasItsName(file.Handle(), path))
            return HeldFile(path, std::move(file));
    }
}

std::optional<HeldFile> HeldFile::Take(const fs::path& path) {
    SystemFile file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    struct stat status {};
    if (!file.IsOpen() || ::fstat(file.Handle(), &status) != 0 ||
        !S_ISREG(status.st_mode) || status.st_uid != ::geteuid() ||
        !LockAtOnce(file.Handle()) || !StillHasItsName(file.Handle(), path))
        return std::nullopt;
    return HeldFile(path, std::move(file));
}

void HeldFile::Delete() const { ::unlink(path_.c_str()); }

} // namespace vardenix
