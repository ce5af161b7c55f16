#include "platform/StagedFile.h"

#include "platform/FileNames.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

constexpr size_t BufferSize = size_t{1} << 20;

// The file that is really written to: the end of the chain where `path` is a link.
fs::path TargetOf(std::string_view path) {
    fs::path target = RealPath(path);
    std::error_code error;
    for (int hops = 0; hops < 40 && fs::is_symlink(target, error); ++hops) {
        const fs::path next = fs::read_symlink(target, error);
        if (error)
            break;
        target = next.is_absolute() ? next : target.parent_path() / next;
    }
    return target;
}

fs::path StagedNameOf(const fs::path& target) {
    return target.native() + "x";
}

// The place of a staged file whose save is to be finished. A file that was never there
// before has no name on the disk yet but that of its staged file.
fs::path PlaceOf(const fs::path& staged, const fs::path& target) {
    std::error_code error;
    if (fs::exists(target, error))
        return target;
    return staged.native().substr(0, staged.native().size() - 1);
}

// A rename is on the disk only when its folder is.
void FlushFolderOf(const fs::path& path) {
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    const SystemFile handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some file systems cannot flush a folder; the rename itself has succeeded.
    if (handle.IsOpen())
        ::fsync(handle.Handle());
}

void RenameOver(const fs::path& from, const fs::path& to, const std::string& text) {
    if (::rename(from.c_str(), to.c_str()) != 0)
        ThrowSystemError(errno, "replacing", text);
    FlushFolderOf(to);
}

// A staged name is ours when it is a plain file.
bool IsStaged(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(fs::symlink_status(path, error));
}

void DropStaged(const fs::path& path) {
    if (::unlink(path.c_str()) != 0 && errno != ENOENT)
        ThrowSystemError(errno, "deleting the unfinished", path.string());
}

} // namespace

bool SystemFile::Close() {
    const int handle = std::exchange(handle_, -1);
    return handle < 0 || ::close(handle) == 0;
}

StagedFile::StagedFile(std::string_view path)
    : text_(path), target_(TargetOf(path)), staged_(StagedNameOf(target_)) {
    std::error_code error;
    if (fs::is_directory(target_, error))
        ThrowSystemError(EISDIR, "writing", text_);
    // A file that may not be written is not replaced either, although its folder would
    // let us.
    if (fs::exists(target_, error) &&
        ::faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS) != 0)
        ThrowSystemError(errno, "writing", text_);
    if (IsStaged(staged_))
        DropStaged(staged_);
    file_ = SystemFile(
        ::open(staged_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!file_.IsOpen() && errno == ENOENT)
        throw RuntimeError(ErrorNumber::PathNotFound,
                           "writing " + text_ + ": its folder is not there");
    if (!file_.IsOpen())
        ThrowSystemError(errno, "writing", text_);
    present_ = true;
    buffer_ = FileBytes(BufferSize);
}

StagedFile::~StagedFile() {
    if (present_)
        ::unlink(staged_.c_str());
}

void StagedFile::Write(std::span<const std::byte> bytes) {
    position_ += bytes.size();
    while (!bytes.empty()) {
        const size_t part = std::min(bytes.size(), BufferSize - buffered_);
        std::memcpy(buffer_.data() + buffered_, bytes.data(), part);
        buffered_ += part;
        bytes = bytes.subspan(part);
        if (buffered_ == BufferSize)
            Drain();
    }
}

void StagedFile::WriteText(std::string_view text) {
    Write(std::as_bytes(std::span(text)));
}

void StagedFile::WriteInt32(int32_t value) { Write(std::as_bytes(std::span(&value, 1))); }

void StagedFile::Drain() {
    size_t done = 0;
    while (done < buffered_) {
        const ssize_t put =
            ::write(file_.Handle(), buffer_.data() + done, buffered_ - done);
        if (put < 0 && errno == EINTR)
            continue;
        if (put < 0)
            ThrowSystemError(errno, "writing", text_);
        if (put == 0)
            ThrowSystemError(ENOSPC, "writing", text_);
        done += static_cast<size_t>(put);
    }
    buffered_ = 0;
}

void StagedFile::KeepRightsOfOldFile() {
    struct stat old {};
    if (::stat(target_.c_str(), &old) != 0)
        return;
    // Only the superuser may give files away; for others the file is theirs already.
    if (::fchown(file_.Handle(), old.st_uid, old.st_gid) != 0 && errno != EPERM)
        ThrowSystemError(errno, "keeping the owner of", text_);
    if (::fchmod(file_.Handle(), old.st_mode & 07777) != 0 && errno != EPERM)
        ThrowSystemError(errno, "keeping the rights of", text_);
}

void StagedFile::Finish() {
    if (!file_.IsOpen())
        return;
    Drain();
    KeepRightsOfOldFile();
    if (::fsync(file_.Handle()) != 0)
        ThrowSystemError(errno, "flushing", text_);
    if (!file_.Close())
        ThrowSystemError(errno, "closing", text_);
}

void StagedFile::Commit() {
    Finish();
    RenameOver(staged_, target_, text_);
    present_ = false;
}

SystemFile StagedFile::Abandon() {
    Keep();
    return std::move(file_);
}

namespace {

std::string_view Recovered(std::string_view pathL, std::string_view pathO) {
    RecoverPair(pathL, pathO);
    return pathL;
}

} // namespace

StagedPair::StagedPair(std::string_view pathL, std::string_view pathO)
    : L(Recovered(pathL, pathO)), O(pathO) {}

void StagedPair::Commit() {
    L.Finish();
    O.Finish();
    L.Commit();
    // From here on the pair is the new one: should the second half fail, the staged O
    // file must stay for the next open to finish with.
    O.Keep();
    O.Commit();
}

PairRecovery RecoverPair(std::string_view pathL, std::string_view pathO) {
    const fs::path stagedL = StagedNameOf(TargetOf(pathL));
    const fs::path targetO = TargetOf(pathO);
    const fs::path stagedO = StagedNameOf(targetO);
    const bool hasL = IsStaged(stagedL);
    const bool hasO = IsStaged(stagedO);
    if (hasO && !hasL) {
        RenameOver(stagedO, PlaceOf(stagedO, targetO), std::string(pathO));
        return PairRecovery::Finished;
    }
    // The O file goes first, so that a kill in between never leaves it alone.
    if (hasO)
        DropStaged(stagedO);
    if (hasL)
        DropStaged(stagedL);
    return hasL ? PairRecovery::Dropped : PairRecovery::Nothing;
}

} // namespace vardenix
