#include "files/CopyFile.h"

#include "files/BinaryReader.h"
#include "files/FileNames.h"
#include "files/ReadableFile.h"
#include "files/StagedFile.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace vardenix {

namespace {

constexpr size_t BlockSize = 1 << 20;
constexpr mode_t PlainRights = 0777;

void WriteAll(int handle, std::span<const std::byte> bytes, const std::string& shown) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(handle, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            ThrowSystemError(errno, "writing", shown);
        bytes = bytes.subspan(static_cast<size_t>(count));
    }
}

} // namespace

void CopyFile(const std::filesystem::path& from, const std::filesystem::path& to,
              mode_t mode) {
    const ReadableFile source(TextOfPath(from));
    FileBytes block(BlockSize);
    const std::string shown = TextOfPath(to);
    UnfinishedFile made(to);
    SystemFile file(
        ::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!file.IsOpen())
        ThrowSystemError(errno, "making", shown);
    made.IsMade();
    for (uint64_t at = 0; at < source.Size();) {
        const size_t count = source.ReadAt(at, {block.data(), block.size()});
        if (count == 0)
            throw RuntimeError(ErrorNumber::InputPastEnd,
                               TextOfPath(from) + " has become shorter");
        WriteAll(file.Handle(), {block.data(), count}, shown);
        at += count;
    }
    if (::fchmod(file.Handle(), mode & PlainRights) != 0 || ::fsync(file.Handle()) != 0 ||
        !file.Close())
        ThrowSystemError(errno, "writing", shown);
    made.LetGo();
}

} // namespace vardenix
