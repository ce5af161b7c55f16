#include "levels/LevelLookup.h"

#include "levels/LevelBlocks.h"

#include <algorithm>
#include <utility>

namespace vardenix {

namespace {

size_t PlaceOfSegment(int32_t segments, int32_t x, int32_t y) {
    return static_cast<size_t>((y - 1) / SegmentSide) * static_cast<size_t>(segments) +
           static_cast<size_t>((x - 1) / SegmentSide);
}

bool HoldsBlock(uint64_t fileSize, int32_t offset) {
    return offset >= 0 && static_cast<uint64_t>(offset) + BlockBytes <= fileSize;
}

} // namespace

void RequireOffsets(const ReadableFile& fileO, int32_t segments) {
    const auto count = static_cast<uint64_t>(segments) * static_cast<uint64_t>(segments);
    if (fileO.Size() / sizeof(int32_t) < count)
        ReadOffsets(fileO.ReadAll().Span(), segments, fileO.Path()); // throws
}

int32_t OffsetAt(const ReadableFile& fileO, int32_t segments, int32_t x, int32_t y) {
    return ValueAt<int32_t>(fileO, PlaceOfSegment(segments, x, y) * sizeof(int32_t));
}

TerrainPost PostAt(const ReadableFile& fileL, int32_t offset, int32_t x, int32_t y) {
    if (offset < 0)
        return {};
    const int32_t place = (y - 1) % SegmentSide * SegmentSide + (x - 1) % SegmentSide;
    return ValueAt<TerrainPost>(fileL,
                                static_cast<uint64_t>(offset) +
                                    static_cast<uint64_t>(place) * sizeof(TerrainPost));
}

Level2Lookup::Level2Lookup(Terrain& terrain, DebugLog& log)
    : Level2Lookup(terrain, Level2Files(terrain, log)) {}

Level2Lookup::Level2Lookup(Terrain& terrain, Level2Files files)
    : fileL_(std::move(files.L())),
      offsets_(ReadOffsets(files.O().ReadAll().Span(), files.Width() / SegmentSide,
                           terrain.OFilename)),
      segments_(files.Width() / SegmentSide) {
    terrain.MapWidth = files.Width();
    terrain.ReadL = fileL_.Identity();
    terrain.ReadO = files.O().Identity();
    const auto missing =
        std::count_if(offsets_.begin(), offsets_.end(), [this](int32_t offset) {
            return !HoldsBlock(fileL_.Size(), offset);
        });
    terrain.Gap = {missing, static_cast<int64_t>(offsets_.size())};
}

TerrainPost Level2Lookup::At(int32_t x, int32_t y) const {
    // Posts beyond the last whole segment are in no file.
    if (std::max(x, y) > segments_ * SegmentSide)
        return {};
    return PostAt(fileL_, offsets_[PlaceOfSegment(segments_, x, y)], x, y);
}

} // namespace vardenix
