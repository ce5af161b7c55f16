#pragma once

#include "platform/BinaryReader.h"
#include "platform/SystemFile.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace vardenix {

// A file being rewritten: the bytes go to a file beside it with "x" behind the name, and
// Commit puts that in its place. Until then, and whenever anything fails, the old file
// stands as it was. A link is followed, so that the linked file is rewritten and the link
// stays; rights and, where the system lets us, owner of the old file are kept.
//
// Every routine throws the system's refusal (61 disk full, 70, 75, 57) with the file's
// name.
class StagedFile {
public:
    explicit StagedFile(std::string_view path);
    StagedFile(const StagedFile&) = delete;
    StagedFile& operator=(const StagedFile&) = delete;
    // Drops the staged bytes unless they were committed.
    ~StagedFile();

    void Write(std::span<const std::byte> bytes);
    void WriteText(std::string_view text);
    void WriteInt32(int32_t value);
    // Bytes written so far.
    uint64_t Position() const { return position_; }

    // All bytes on the disk, the file closed. Nothing can be written afterwards.
    void Finish();
    // Finish, then take the place of the old file.
    void Commit();
    // The staged file stays as it is and its handle goes to the caller, who gave up on
    // it.
    SystemFile Abandon();
    // From now on the staged file stays when this object goes, committed or not.
    void Keep() { present_ = false; }

private:
    void Drain();
    void KeepRightsOfOldFile();

    std::string text_;
    std::filesystem::path target_;
    std::filesystem::path staged_;
    SystemFile file_;
    FileBytes buffer_;
    size_t buffered_ = 0;
    uint64_t position_ = 0;
    bool present_ = false; // the staged file is ours to drop
};

// Two files that must agree, the L file and its O file. Both are staged and flushed, then
// the L file takes its place, then the O file. A kill at any moment leaves one of the
// states that RecoverPair mends.
class StagedPair {
public:
    // Mends what an earlier save may have left, then begins.
    StagedPair(std::string_view pathL, std::string_view pathO);

    StagedFile L;
    StagedFile O;

    void Commit();
};

enum class PairRecovery { Nothing, Finished, Dropped };

// To be called before a pair is read or written. A staged O file without its staged L
// file is the second half of a save: it takes its place (Finished). Any other staged file
// is an unfinished save and is deleted (Dropped); the old pair stands.
PairRecovery RecoverPair(std::string_view pathL, std::string_view pathO);

} // namespace vardenix
