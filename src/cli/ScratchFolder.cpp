#include "cli/ScratchFolder.h"

#include "files/FileNames.h"
#include "files/OwnFolders.h"
#include "texts/RuntimeError.h"

#include <cerrno>
#include <cstdlib>

namespace vardenix {

ScratchFolder::ScratchFolder() {
    std::string pattern = OwnTemporaryFolder() + "/vardenix-cli-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr)
        ThrowSystemError(errno, "making the folder", pattern);
    path_ = pattern + "/";
}

ScratchFolder::~ScratchFolder() {
    try {
        DeleteFolderTree(path_);
    } catch (const RuntimeError&) { // NOLINT(bugprone-empty-catch)
        // What is left lies where the system clears up.
    }
}

} // namespace vardenix
