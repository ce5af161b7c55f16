#pragma once

#include "platform/SystemFile.h"
#include "platform/Transaction.h"

#include <cstddef>
#include <cstdint>
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

// The files of one run.
struct RebuildFiles {
    vardenix::Transaction Transaction;
    Rewriting How = Rewriting::Always;
    std::vector<RebuiltFile> Made;
};

// A file that a run writes anew, inside its transaction. With OnlyChanged the bytes are
// first held against those of the old file, and nothing is staged as long as they agree.
class RewrittenFile {
public:
    // The files are borrowed; their transaction commits what is written here.
    RewrittenFile(RebuildFiles& files, std::string_view path);
    RewrittenFile(const RewrittenFile&) = delete;
    RewrittenFile& operator=(const RewrittenFile&) = delete;

    void Write(std::span<const std::byte> bytes);
    void WriteInt32(int32_t value);
    // Bytes written so far.
    uint64_t Position() const { return position_; }

    // All is written; the file counts among those made.
    void Finish();

private:
    bool AgreesWithOld(std::span<const std::byte> bytes);
    void StageWhatAgreed();

    RebuildFiles& files_;
    std::string path_;
    StagedFile* staged_ = nullptr;
    SystemFile old_;
    std::vector<std::byte> buffer_;
    uint64_t position_ = 0;
};

} // namespace vardenix
