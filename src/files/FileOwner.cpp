#include "files/FileOwner.h"

#include "files/FileStatus.h"

#include <unistd.h>

namespace vardenix {

bool BelongsHere(const struct stat& file, const std::filesystem::path& folder) {
    if (file.st_uid == ::geteuid())
        return true;
    const auto status = StatusOf(folder);
    return status && file.st_uid == status->st_uid;
}

} // namespace vardenix
