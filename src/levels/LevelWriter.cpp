#include "levels/LevelWriter.h"

#include "texts/RuntimeError.h"

#include <limits>
#include <utility>

namespace vardenix {

LevelWriter::LevelWriter(ByteSink& fileL, std::string pathL)
    : fileL_(fileL), pathL_(std::move(pathL)) {}

void LevelWriter::Store(std::span<const TerrainPost> block, bool blank) {
    if (blank && sharedBlock_ != -1) {
        offsets_.push_back(sharedBlock_);
        return;
    }
    constexpr uint64_t Last = std::numeric_limits<int32_t>::max();
    if (fileL_.Position() > Last)
        throw RuntimeError(ErrorNumber::Overflow,
                           pathL_ + " would be longer than the offsets of its O file "
                                    "can tell; the theater is too wide");
    offsets_.push_back(static_cast<int32_t>(fileL_.Position()));
    fileL_.Write(std::as_bytes(block));
    if (blank)
        sharedBlock_ = offsets_.back();
}

void LevelWriter::WriteOffsets(ByteSink& fileO) const {
    fileO.Write(std::as_bytes(std::span(offsets_)));
}

} // namespace vardenix
