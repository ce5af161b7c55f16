#pragma once

#include "files/ByteSink.h"
#include "files/FileIdentity.h"
#include "files/FolderLock.h"
#include "files/ReadableFile.h"
#include "files/Transaction.h"
#include "platform/DebugLog.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vardenix {

// With OnlyChanged a file that comes out the same is left alone.
enum class Rewriting { Always, OnlyChanged };

// What a run has made of one file.
struct RebuiltFile {
    std::string Path;
    uint64_t Bytes = 0;
    bool Unchanged = false; // the old one came out the same and stays
};

// Far tiles of a run: those that were drawn, and those taken over from the containers
// that were there.
struct FartileCounts {
    int32_t Made = 0;
    int32_t Copied = 0;
    int32_t PicturesRead = 0; // tile pictures, by day and by night
};

// The files of one run.
struct RebuildFiles {
    // Keeps other copies of the program from the folders of the files named, and puts
    // right what interrupted runs have left there, with a line in the log; a path that
    // ends in a slash is a folder that is put right alone. The files
    // need not be there. Error 70 when another copy holds a folder.
    void Hold(const std::vector<std::string>& paths, DebugLog& log);
    // Puts all files in their places.
    void Commit(DebugLog& log);

    std::vector<FolderLock> Locks;
    vardenix::Transaction Transaction;
    Rewriting How = Rewriting::Always;
    vardenix::IfChanged IfChanged = vardenix::IfChanged::Refuse;
    std::vector<RebuiltFile> Made;
    FartileCounts Fartiles;
};

// A file that a run writes anew, inside its transaction. With OnlyChanged the bytes are
// first held against those of the old file, and nothing is staged as long as they agree.
class RewrittenFile : public ByteSink {
public:
    // The files are borrowed; their transaction commits what is written here. `read` is
    // the old file that the new one is made from, where there is one: the run ends when
    // another is in its place by then, unless that is to be overwritten.
    RewrittenFile(RebuildFiles& files, std::string_view path,
                  std::optional<FileIdentity> read = {});

    void Write(std::span<const std::byte> bytes) final;
    void WriteInt32(int32_t value);
    uint64_t Position() const final { return position_; }

    // All is written; the file counts among those made.
    void Finish();

private:
    bool AgreesWithOld(std::span<const std::byte> bytes);
    void StageWhatAgreed();
    void Stage();

    RebuildFiles& files_;
    std::string path_;
    std::optional<FileIdentity> read_;
    StagedFile* staged_ = nullptr;
    std::optional<ReadableFile> old_;
    std::vector<std::byte> buffer_;
    uint64_t position_ = 0;
    uint32_t agreed_ = 0; // CRC-32 of what agrees with the old file
};

} // namespace vardenix
