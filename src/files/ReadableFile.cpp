#include "files/ReadableFile.h"

#include "files/FileNames.h"
#include "texts/RuntimeError.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vardenix {

ReadableFile::ReadableFile(std::string_view path)
    : path_(TextOfPath(RealPath(path, PathKind::File))),
      // Not blocking: a pipe in place of a file would wait for ever at the opening.
      file_(::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
    if (!file_.IsOpen())
        ThrowSystemError(errno, "opening", path_);
    struct stat status {};
    if (::fstat(file_.Handle(), &status) != 0)
        ThrowSystemError(errno, "measuring", path_);
    if (!S_ISREG(status.st_mode))
        throw RuntimeError(ErrorNumber::PathFileAccess, path_ + " is not a file");
    mark_ = MarkOfStatus(status);
}

size_t ReadableFile::ReadAt(uint64_t offset, std::span<std::byte> into) const {
    size_t done = 0;
    while (done < into.size()) {
        const ssize_t got =
            ::pread(file_.Handle(), into.data() + done, into.size() - done,
                    static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            ThrowSystemError(errno, "reading", path_);
        if (got == 0)
            break;
        done += static_cast<size_t>(got);
    }
    return done;
}

void ReadableFile::ReadMeasured(uint64_t offset, std::span<std::byte> into) const {
    if (ReadAt(offset, into) < into.size())
        throw RuntimeError(ErrorNumber::InputPastEnd,
                           path_ + " became shorter while it was read");
}

FileBytes ReadableFile::ReadAll() const {
    FileBytes bytes(static_cast<size_t>(Size()));
    ReadMeasured(0, {bytes.data(), bytes.size()});
    return bytes;
}

void RequireAtMost(const ReadableFile& file, uint64_t most) {
    if (file.Size() > most)
        throw RuntimeError(ErrorNumber::OutOfMemory,
                           file.Path() + ": " + std::to_string(file.Size()) +
                               " bytes; at most " + std::to_string(most) +
                               " can be opened");
}

FileBytes ReadWholeFile(std::string_view path, uint64_t most) {
    const ReadableFile file(path);
    RequireAtMost(file, most);
    return file.ReadAll();
}

} // namespace vardenix
