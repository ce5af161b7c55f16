#pragma once

#include "files/BinaryReader.h"
#include "files/ByteSink.h"
#include "files/FileIdentity.h"
#include "files/FolderLock.h"
#include "files/ReadableFile.h"
#include "files/SystemFile.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

struct stat;

namespace vardenix {

// A file on the disk that goes when its owner goes, unless it was let go of before.
class UnfinishedFile {
public:
    explicit UnfinishedFile(std::filesystem::path path) : path_(std::move(path)) {}
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile();

    const std::filesystem::path& Path() const { return path_; }
    void IsMade() { present_ = true; }
    void LetGo() { present_ = false; }

private:
    std::filesystem::path path_;
    bool present_ = false;
};

// A file being rewritten: the bytes go to a file beside it with "x" behind the name, and
// Commit puts that in its place. Until then, and whenever anything fails, the old file
// stands as it was. A link is followed, so that the linked file is rewritten and the link
// stays. The staged file has the rights of the old one from its first byte on, and its
// owner and group as far as the system lets us.
//
// While it is written, and until it has its place, the staged file is locked: whoever
// finds one that is not locked has found what an ended program left, and may take it
// away. A second writer of the same file waits for the first one.
//
// Every routine throws the system's refusal (61 disk full, 70, 75, 57) with the file's
// name; 70 when another program is still writing the same file after LockPatience.
class StagedFile : public ByteSink {
public:
    explicit StagedFile(std::string_view path);
    // Drops the staged bytes unless they were committed.
    ~StagedFile() override = default;

    void Write(std::span<const std::byte> bytes) final;
    void WriteText(std::string_view text);
    void WriteInt32(int32_t value);
    // What another file holds from `offset` on, however much it is.
    void WriteRestOf(const ReadableFile& file, uint64_t offset);
    // Bytes whose CRC-32 is known.
    void Write(std::span<const std::byte> bytes, uint32_t checksum);
    // `count` bytes of another file, which has them, and their CRC-32. The system copies
    // them, or lets both files share them where it can. Error 57 when the file has become
    // shorter.
    void CopyFrom(const ReadableFile& file, uint64_t offset, uint64_t count,
                  uint32_t checksum);
    uint64_t Position() const final { return position_; }

    // For a file beside it that tells how this one can be known. All is written; size and
    // time are those that it will have in its place.
    FileIdentity Settle();
    // CRC-32 of what was written before Settle; of a file of a Transaction only, since
    // summing takes longer than writing.
    uint32_t Checksum() const { return checksum_; }

    // Of the file as it has taken its place; known once it is committed.
    const FileIdentity& Identity() const { return identity_; }

    // Not for a file of a Transaction, which commits all of its files together.
    void Commit();
    // The staged file stays as it is, nobody's, and its handle goes to the caller, who
    // gave up on it.
    SystemFile Abandon();

private:
    friend class Transaction;

    // All bytes on the disk. Nothing can be written afterwards.
    void Finish();
    // Closed, so that the last refusal of the disk is heard; still locked.
    void Close();
    // Takes the place of the old file. What the system said when it refused, else 0;
    // takes no memory.
    int TakePlace() noexcept;
    // From now on the staged file stays when this object goes, committed or not.
    void Keep() { staged_.LetGo(); }
    void Make(const struct ::stat* old);
    void Drain();
    void Buffer(std::span<const std::byte> bytes, bool summed);
    void SumBuffered();
    uint64_t CopyBySystem(const ReadableFile& file, uint64_t offset, uint64_t count);

    std::string text_;
    std::filesystem::path target_;
    FileBytes buffer_; // had before there is a file that it could fail behind
    UnfinishedFile staged_;
    SystemFile file_;
    SystemFile lock_; // the same open file once file_ is closed
    FileIdentity identity_;
    unsigned specialRights_ = 0;
    size_t buffered_ = 0;
    size_t summed_ = 0; // of what is buffered
    uint64_t position_ = 0;
    bool isSummed_ = false; // by its Transaction's wish
    uint32_t checksum_ = 0;
};

// The file that is really written to: the end of the chain where `path` is a link.
std::filesystem::path TargetOf(std::string_view path);

// Where the new bytes of a file are made.
std::filesystem::path StagedNameOf(const std::filesystem::path& target);

// Whether a plain file is there, no link to one.
bool IsPlainFile(const std::filesystem::path& path);

// Takes away what an ended program has left under a staged file's name. False when a
// program is still writing it after `patience`; the system's refusals are thrown.
bool DropStaged(const std::filesystem::path& staged, std::chrono::milliseconds patience);

// A rename is on the disk only when its folder is. False, with errno set, when the disk
// fails; what a file system cannot flush is passed over.
bool FlushFolder(const std::filesystem::path& folder);

// CRC-32, gone on with from `checksum`.
uint32_t ChecksumOf(std::span<const std::byte> bytes, uint32_t checksum = 0);

// The CRC-32 of two contents one behind the other from those of both, for any number of
// contents of one length that come second.
class ChecksumJoiner {
public:
    explicit ChecksumJoiner(uint64_t lengthOfSecond);
    uint32_t Join(uint32_t first, uint32_t second) const;

private:
    unsigned long operator_;
};

} // namespace vardenix
