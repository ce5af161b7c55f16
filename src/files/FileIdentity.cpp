#include "files/FileIdentity.h"

#include "files/FileStatus.h"

namespace vardenix {

FileIdentity IdentityOfStatus(const struct stat& status) {
    return {true,
            status.st_dev,
            status.st_ino,
            static_cast<uint64_t>(status.st_size),
            status.st_mtim.tv_sec,
            status.st_mtim.tv_nsec};
}

FileIdentity IdentityOfRealPath(const std::filesystem::path& path) {
    const auto status = StatusOf(path);
    return status ? IdentityOfStatus(*status) : FileIdentity{};
}

} // namespace vardenix
