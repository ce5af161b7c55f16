#include "cli/ScratchFolder.h"

#include "files/FileNames.h"
#include "files/FileStatus.h"
#include "files/FolderLock.h"
#include "files/OwnFolders.h"
#include "texts/RuntimeError.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>

namespace vardenix {

namespace {

constexpr std::string_view Prefix = "vardenix-cli-";

SystemFile OpenFolder(const std::string& path) {
    return SystemFile(
        ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

// A file system without locks says no to all.
bool Lock(const SystemFile& folder) {
    return folder.IsOpen() && ::flock(folder.Handle(), LOCK_EX | LOCK_NB) == 0;
}

void Delete(const std::string& path) {
    try {
        DeleteFolderTree(path);
    } catch (const RuntimeError&) { // NOLINT(bugprone-empty-catch)
        // What is left lies where the system clears up.
    }
}

// What killed commands have left.
void DeleteLeftovers(const std::string& folder) {
    for (const std::string& name : NamesIn(folder).Names) {
        if (!name.starts_with(Prefix))
            continue;
        std::string path = folder;
        path.append("/").append(name);
        if (Lock(OpenFolder(path)))
            Delete(path);
    }
}

} // namespace

ScratchFolder::ScratchFolder() {
    const std::string folder = OwnTemporaryFolder();
    // Until it is locked, a folder looks like a leftover.
    const FolderLock making(folder, FolderLock::Exclusive);
    if (making.Held())
        DeleteLeftovers(folder);
    std::string pattern = folder + "/" + std::string(Prefix) + "XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr)
        ThrowSystemError(errno, "making the folder", pattern);
    path_ = pattern + "/";
    lock_ = OpenFolder(pattern);
    Lock(lock_);
}

ScratchFolder::~ScratchFolder() { Delete(path_); }

} // namespace vardenix
