#include "platform/FileStatus.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <memory>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

bool MeansAbsence(int systemError) {
    return systemError == ENOENT || systemError == ENOTDIR;
}

std::optional<struct stat> Look(int (*look)(const char*, struct stat*),
                                const fs::path& path) {
    struct stat status {};
    if (look(path.c_str(), &status) == 0)
        return status;
    if (!MeansAbsence(errno))
        ThrowSystemError(errno, "looking at", path.string());
    return std::nullopt;
}

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

} // namespace

std::optional<struct stat> StatusOf(const fs::path& path) { return Look(::stat, path); }

std::optional<struct stat> StatusOfLink(const fs::path& path) {
    return Look(::lstat, path);
}

bool IsFile(const std::optional<struct stat>& status) {
    return status && S_ISREG(status->st_mode);
}

bool IsFolder(const std::optional<struct stat>& status) {
    return status && S_ISDIR(status->st_mode);
}

FolderNames NamesIn(const fs::path& folder) {
    FolderNames found;
    const std::unique_ptr<DIR, CloseFolder> open(
        ::opendir(folder.empty() ? "." : folder.c_str()));
    if (!open) {
        found.Refusal = MeansAbsence(errno) ? 0 : errno;
        return found;
    }
    errno = 0;
    while (const dirent* entry = ::readdir(open.get())) { // NOLINT(concurrency-mt-unsafe)
        found.Names.emplace_back(entry->d_name);
        errno = 0;
    }
    found.Refusal = errno;
    std::sort(found.Names.begin(), found.Names.end());
    return found;
}

} // namespace vardenix
