#include "platform/FileIdentity.h"

#include "platform/FileNames.h"
#include "platform/RuntimeError.h"

#include <cerrno>
#include <sys/stat.h>

namespace vardenix {

FileIdentity IdentityOfRealPath(const std::filesystem::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        if (errno == ENOENT || errno == ENOTDIR)
            return {};
        ThrowSystemError(errno, "looking at", path.string());
    }
    return {true,
            status.st_dev,
            status.st_ino,
            static_cast<uint64_t>(status.st_size),
            status.st_mtim.tv_sec,
            status.st_mtim.tv_nsec};
}

FileIdentity IdentityOf(std::string_view path) {
    return IdentityOfRealPath(RealPath(path));
}

} // namespace vardenix
