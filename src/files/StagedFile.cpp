#include "files/StagedFile.h"

#include "files/FileNames.h"
#include "files/FileStatus.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>
#include <zlib.h>

namespace fs = std::filesystem;

namespace vardenix {

namespace {

constexpr size_t BufferSize = size_t{1} << 20;
// Less is copied by way of the buffer. More at a time would not let the disk begin.
constexpr uint64_t WorthACall = uint64_t{1} << 16;
constexpr uint64_t MostOfACall = uint64_t{1} << 25;

bool IsAbsence(int systemError) {
    return systemError == ENOENT || systemError == ENOTDIR;
}

bool IsStillAt(const fs::path& path, const SystemFile& file) {
    struct stat opened {};
    if (::fstat(file.Handle(), &opened) != 0)
        ThrowSystemError(errno, "looking at", path.string());
    const auto there = StatusOfLink(path);
    return there && there->st_dev == opened.st_dev && there->st_ino == opened.st_ino;
}

void KeepOwner(int handle, const struct stat& old) {
    struct stat made {};
    if (::fstat(handle, &made) == 0 && made.st_uid == old.st_uid &&
        made.st_gid == old.st_gid)
        return;
    // Only the superuser may give files away, and some file systems have no owners; the
    // group of a shared theater can often be kept all the same. Neither costs the save.
    if (::fchown(handle, old.st_uid, old.st_gid) != 0 &&
        ::fchown(handle, static_cast<uid_t>(-1), old.st_gid) != 0)
        return;
}

[[noreturn]] void TellBusy(const std::string& text) {
    throw RuntimeError(ErrorNumber::PermissionDenied,
                       "writing " + text +
                           ": another program is writing it; try again when it is done");
}

} // namespace

bool SystemFile::Close() {
    const int handle = std::exchange(handle_, -1);
    return handle < 0 || ::close(handle) == 0;
}

UnfinishedFile::~UnfinishedFile() {
    if (present_)
        ::unlink(path_.c_str());
}

fs::path TargetOf(std::string_view path) { return FollowLinks(RealPath(path)); }

fs::path StagedNameOf(const fs::path& target) { return target.native() + "x"; }

bool IsPlainFile(const fs::path& path) { return IsFile(StatusOfLink(path)); }

bool DropStaged(const fs::path& staged, std::chrono::milliseconds patience) {
    while (IsPlainFile(staged)) {
        const SystemFile found(
            ::open(staged.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        // One that may not be read is not ours and nobody's lock can be asked for.
        if (!found.IsOpen() && errno != EACCES && !IsAbsence(errno))
            ThrowSystemError(errno, "opening the unfinished", staged.string());
        if (found.IsOpen()) {
            if (!LockWithin(found.Handle(), LOCK_EX, patience))
                return false;
            // The program that we waited for may have ended and the next one begun.
            if (!IsStillAt(staged, found))
                continue;
        }
        if (::unlink(staged.c_str()) != 0 && !IsAbsence(errno))
            ThrowSystemError(errno, "deleting the unfinished", staged.string());
        return true;
    }
    return true;
}

bool FlushFolder(const fs::path& folder) {
    const SystemFile handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return !handle.IsOpen() || ::fsync(handle.Handle()) == 0 ||
           (errno != EIO && errno != ENOSPC && errno != EDQUOT);
}

uint32_t ChecksumOf(std::span<const std::byte> bytes, uint32_t checksum) {
    return static_cast<uint32_t>(
        ::crc32_z(checksum, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

ChecksumJoiner::ChecksumJoiner(uint64_t lengthOfSecond)
    : operator_(::crc32_combine_gen(static_cast<z_off_t>(lengthOfSecond))) {}

uint32_t ChecksumJoiner::Join(uint32_t first, uint32_t second) const {
    return static_cast<uint32_t>(::crc32_combine_op(first, second, operator_));
}

StagedFile::StagedFile(std::string_view path)
    : text_(ShownPath(path)), target_(TargetOf(path)), buffer_(BufferSize),
      staged_(StagedNameOf(target_)) {
    const auto old = StatusOf(target_);
    if (old && S_ISDIR(old->st_mode))
        ThrowSystemError(EISDIR, "writing", text_);
    if (old && !S_ISREG(old->st_mode))
        throw RuntimeError(ErrorNumber::PathFileAccess, text_ + " is not a file");
    // A file that may not be written is not replaced either, although its folder would
    // let us.
    if (old && ::faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS) != 0)
        ThrowSystemError(errno, "writing", text_);
    Make(old ? &*old : nullptr);
}

void StagedFile::Make(const struct ::stat* old) {
    const unsigned rights = old == nullptr ? 0666 : old->st_mode & 0700;
    const fs::path& staged = staged_.Path();
    while (true) {
        if (!DropStaged(staged, LockPatience))
            TellBusy(text_);
        file_ = SystemFile(::open(staged.c_str(),
                                  O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                  rights));
        if (!file_.IsOpen() && errno == EEXIST && IsPlainFile(staged))
            continue; // somebody was quicker
        if (!file_.IsOpen() && errno == ENOENT)
            throw RuntimeError(ErrorNumber::PathNotFound,
                               "writing " + text_ + ": its folder is not there");
        if (!file_.IsOpen())
            ThrowSystemError(errno, "writing", text_);
        staged_.IsMade();
        if (!LockWithin(file_.Handle(), LOCK_EX, LockPatience))
            TellBusy(text_);
        // Until the lock was ours it looked like what an ended program had left.
        if (IsStillAt(staged, file_))
            break;
        staged_.LetGo();
    }
    if (old == nullptr)
        return;
    KeepOwner(file_.Handle(), *old);
    if (::fchmod(file_.Handle(), old->st_mode & 0777) != 0)
        return; // a file system without rights
    specialRights_ = old->st_mode & 07000;
}

void StagedFile::Write(std::span<const std::byte> bytes) { Buffer(bytes, false); }

void StagedFile::Write(std::span<const std::byte> bytes, uint32_t checksum) {
    SumBuffered();
    Buffer(bytes, true);
    checksum_ = ChecksumJoiner(bytes.size()).Join(checksum_, checksum);
}

void StagedFile::Buffer(std::span<const std::byte> bytes, bool summed) {
    position_ += bytes.size();
    while (!bytes.empty()) {
        const size_t part = std::min(bytes.size(), BufferSize - buffered_);
        std::memcpy(buffer_.data() + buffered_, bytes.data(), part);
        buffered_ += part;
        if (summed)
            summed_ = buffered_;
        bytes = bytes.subspan(part);
        if (buffered_ == BufferSize)
            Drain();
    }
}

// Sharing is by whole pages of both files, so the middle of what lies alike in both is
// copied apart. What the system does not copy is read and written.
void StagedFile::CopyFrom(const ReadableFile& file, uint64_t offset, uint64_t count,
                          uint32_t checksum) {
    constexpr uint64_t Page = 4096;
    SumBuffered();
    checksum_ = ChecksumJoiner(count).Join(checksum_, checksum);
    std::vector<std::byte> piece;
    while (count > 0) {
        uint64_t part = count;
        uint64_t copied = 0;
        const bool alike = offset % Page == position_ % Page;
        if (count >= WorthACall) {
            if (alike && offset % Page != 0)
                part = Page - offset % Page;
            else if (alike)
                part -= count % Page;
            if (part >= WorthACall)
                copied = CopyBySystem(file, offset, part);
        }
        if (copied == 0) {
            part = std::min<uint64_t>(part, BufferSize);
            piece.resize(part);
            if (file.ReadAt(offset, piece) < part)
                throw RuntimeError(ErrorNumber::DeviceIo,
                                   file.Path() +
                                       " became shorter while it was copied from");
            Buffer(piece, true);
            copied = part;
        }
        offset += copied;
        count -= copied;
    }
}

// How much of it the system has copied; 0 where it does not do such a thing, which the
// way by memory finds out with its reason.
uint64_t StagedFile::CopyBySystem(const ReadableFile& file, uint64_t offset,
                                  uint64_t count) {
    Drain();
    auto from = static_cast<off_t>(offset);
    const ssize_t copied = ::copy_file_range(file.Handle(), &from, file_.Handle(),
                                             nullptr, std::min(count, MostOfACall), 0);
    if (copied <= 0)
        return 0;
    position_ += static_cast<uint64_t>(copied);
    ::sync_file_range(file_.Handle(), 0, 0, SYNC_FILE_RANGE_WRITE);
    return static_cast<uint64_t>(copied);
}

void StagedFile::SumBuffered() {
    if (isSummed_)
        checksum_ =
            ChecksumOf(buffer_.Span().first(buffered_).subspan(summed_), checksum_);
    summed_ = buffered_;
}

void StagedFile::WriteText(std::string_view text) {
    Write(std::as_bytes(std::span(text)));
}

void StagedFile::WriteInt32(int32_t value) { Write(std::as_bytes(std::span(&value, 1))); }

void StagedFile::WriteRestOf(const ReadableFile& file, uint64_t offset) {
    while (true) {
        if (buffered_ == BufferSize)
            Drain();
        const size_t got =
            file.ReadAt(offset, {buffer_.data() + buffered_, BufferSize - buffered_});
        if (got == 0)
            return;
        buffered_ += got;
        position_ += got;
        offset += got;
    }
}

void StagedFile::Drain() {
    SumBuffered();
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
    // The disk begins while more is made, so that the flush has less to wait for. A wish:
    // a file system that knows no such thing flushes all at the end.
    if (buffered_ == BufferSize)
        ::sync_file_range(file_.Handle(), 0, 0, SYNC_FILE_RANGE_WRITE);
    buffered_ = 0;
    summed_ = 0;
}

FileIdentity StagedFile::Settle() {
    Drain();
    struct stat made {};
    if (::fstat(file_.Handle(), &made) != 0)
        ThrowSystemError(errno, "looking at", text_);
    return IdentityOfStatus(made);
}

void StagedFile::Finish() {
    Drain();
    // Writing has taken them away.
    if (specialRights_ != 0) {
        struct stat made {};
        if (::fstat(file_.Handle(), &made) == 0 &&
            ::fchmod(file_.Handle(), (made.st_mode & 0777) | specialRights_) != 0)
            specialRights_ = 0;
    }
    if (::fsync(file_.Handle()) != 0)
        ThrowSystemError(errno, "flushing", text_);
}

void StagedFile::Close() {
    struct stat made {};
    if (::fstat(file_.Handle(), &made) != 0)
        ThrowSystemError(errno, "looking at", text_);
    identity_ = IdentityOfStatus(made);
    lock_ = SystemFile(::fcntl(file_.Handle(), F_DUPFD_CLOEXEC, 0));
    if (!lock_.IsOpen() || !file_.Close())
        ThrowSystemError(errno, "closing", text_);
}

int StagedFile::TakePlace() noexcept {
    if (::rename(staged_.Path().c_str(), target_.c_str()) != 0) {
        const int refusal = errno;
        // Where there are no locks another program may have mended what it found.
        struct stat ours {};
        struct stat there {};
        if (!IsAbsence(refusal) || ::fstat(lock_.Handle(), &ours) != 0 ||
            ::stat(target_.c_str(), &there) != 0 || there.st_dev != ours.st_dev ||
            there.st_ino != ours.st_ino)
            return refusal;
    }
    staged_.LetGo();
    lock_.Close();
    return 0;
}

void StagedFile::Commit() {
    Finish();
    Close();
    if (const int refusal = TakePlace(); refusal != 0)
        ThrowSystemError(refusal, "replacing", text_);
    FlushFolder(FolderOf(target_));
}

SystemFile StagedFile::Abandon() {
    Keep();
    ::flock(file_.Handle(), LOCK_UN);
    return std::move(file_);
}

} // namespace vardenix
