#include "files/FileStatus.h"

#include "texts/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <memory>
#include <utility>

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

ListedKind KindOf(unsigned char type) {
    if (type == DT_REG)
        return ListedKind::File;
    return type == DT_LNK || type == DT_UNKNOWN ? ListedKind::Unknown
                                                : ListedKind::NoFile;
}

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
    std::vector<std::pair<std::string, ListedKind>> listed;
    errno = 0;
    while (const dirent* entry = ::readdir(open.get())) { // NOLINT(concurrency-mt-unsafe)
        listed.emplace_back(entry->d_name, KindOf(entry->d_type));
        errno = 0;
    }
    found.Refusal = errno;
    std::sort(listed.begin(), listed.end());
    for (auto& [name, kind] : listed) {
        found.Names.push_back(std::move(name));
        found.Kinds.push_back(kind);
    }
    return found;
}

bool MayBeEntered(const fs::path& folder) {
    struct stat status {};
    return ::stat((folder / ".").c_str(), &status) == 0;
}

} // namespace vardenix
