#include "builder/LevelWriter.h"

#include "texts/RuntimeError.h"

#include <limits>

namespace vardenix {

namespace {

std::optional<FileIdentity> Read(const LevelReader* old,
                                 const FileIdentity& (LevelReader::*identity)() const) {
    if (old == nullptr)
        return std::nullopt;
    return (old->*identity)();
}

} // namespace

LevelWriter::LevelWriter(RebuildFiles& files, const LevelPair& pair,
                         const LevelReader* old)
    : files_(files), pair_(pair), old_(old),
      fileL_(files, pair.L, Read(old, &LevelReader::IdentityL)) {}

void LevelWriter::Store(std::span<const TerrainPost> block, bool blank) {
    if (blank && sharedBlock_ != -1) {
        offsets_.push_back(sharedBlock_);
        return;
    }
    Write(block);
    if (blank)
        sharedBlock_ = offsets_.back();
}

void LevelWriter::Write(std::span<const TerrainPost> block) {
    constexpr uint64_t Last = std::numeric_limits<int32_t>::max();
    if (fileL_.Position() > Last)
        throw RuntimeError(ErrorNumber::Overflow,
                           pair_.L + " would be longer than the offsets of its O file "
                                     "can tell; the theater is too wide");
    offsets_.push_back(static_cast<int32_t>(fileL_.Position()));
    fileL_.Write(std::as_bytes(block));
}

void LevelWriter::Finish() {
    fileL_.Finish();
    RewrittenFile fileO(files_, pair_.O, Read(old_, &LevelReader::IdentityO));
    fileO.Write(std::as_bytes(std::span(offsets_)));
    if (old_ != nullptr)
        fileO.Write(old_->BehindEntries());
    fileO.Finish();
}

} // namespace vardenix
