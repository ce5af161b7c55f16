#include "builder/ReadAt.h"

#include "platform/FileNames.h"
#include "platform/RuntimeError.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace vardenix {

SystemFile OpenToRead(const std::string& path) {
    SystemFile file(::open(RealPath(path).c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.IsOpen())
        ThrowSystemError(errno, "opening", path);
    return file;
}

size_t ReadAt(const SystemFile& file, uint64_t position, std::span<std::byte> bytes,
              const std::string& path) {
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got =
            ::pread(file.Handle(), bytes.data() + done, bytes.size() - done,
                    static_cast<off_t>(position + done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            ThrowSystemError(errno, "reading", path);
        if (got == 0)
            break;
        done += static_cast<size_t>(got);
    }
    return done;
}

} // namespace vardenix
