#pragma once

#include "files/FileIdentity.h"
#include "files/SystemFile.h"
#include "levels/TerrainPost.h"
#include "platform/ZeroPages.h"

#include <cstdint>
#include <span>
#include <string>

namespace vardenix {

// A block of storage is 16 by 16 posts.
constexpr int32_t SegmentSide = 16;
constexpr int32_t PostsPerSegment = SegmentSide * SegmentSide;
constexpr int32_t BlockBytes =
    PostsPerSegment * static_cast<int32_t>(sizeof(TerrainPost));

// The widest grid that is opened: beyond it the offsets of an L file without shared
// blocks would leave 31 bits, and a garbage O file of a few megabytes could take all
// memory.
constexpr int32_t MaxGridWidth = 15360;

// Values of one size under indices from 1, all zero at first. Memory that nobody has
// written to is not really taken.
template <typename Value>
class SerialArray {
public:
    SerialArray() = default;
    // Error 7 when there is no memory.
    explicit SerialArray(int64_t upperBound);

    // 0 when empty.
    int32_t UpperBound() const { return upperBound_; }
    // Error 9 outside 1 to UpperBound.
    Value& operator()(int64_t index);
    const Value& operator()(int64_t index) const;
    // All values in order of their indices, for loops that stay inside by themselves:
    // element 0 is index 1.
    std::span<Value> Values() { return {First(), Size()}; }
    std::span<const Value> Values() const { return {First(), Size()}; }

private:
    size_t Size() const { return static_cast<size_t>(upperBound_); }
    void RequireInside(int64_t index) const;
    Value* First() const { return static_cast<Value*>(pages_.Data()); }

    ZeroPages pages_;
    int32_t upperBound_ = 0;
};

extern template class SerialArray<TerrainPost>;
extern template class SerialArray<int16_t>;

using PostArray = SerialArray<TerrainPost>;
using HeightArray = SerialArray<int16_t>; // feet

// Segments that the files of a level do not hold, of those that there should be.
struct SegmentGap {
    int64_t Missing = 0;
    int64_t All = 0;
    bool MayStay = false; // the user knows, and saves all the same
};

// The two kinds of file that the finest elevations come from.
enum class ElevationKind : int16_t { None = 0, L0 = 1, Elv = 2 };

// The finest elevations, four by four to a post of level 2; there only while a L0 or .elv
// file is loaded for editing.
struct ElevationLayer {
    ElevationKind Kind = ElevationKind::None;
    std::string Path;
    std::string OffsetPath; // the O0 file of a L0 file
    FileIdentity Read;      // the files as they were read or last saved
    FileIdentity ReadO;
    int32_t EMapWidth = 0; // 4 * MapWidth once loaded
    HeightArray L0ElvArr;  // in serial order of EMapWidth

    int16_t& At(int32_t x, int32_t y);
    int16_t At(int32_t x, int32_t y) const;

    // A save that met a L0 file of the wrong width leaves its "x" file behind, empty and
    // open.
    SystemFile AbandonedXFile;
};

// What the program knows of the terrain, from the opening of a theater to the end of the
// run. LxArr holds level 2 and only level 2.
struct Terrain {
    // The real paths, as the theater was opened.
    std::string LFilename;
    std::string OFilename;
    FileIdentity ReadL; // the two files as they were read or last saved
    FileIdentity ReadO;
    SegmentGap Gap;       // what they lacked; none once they have been saved
    int32_t MapWidth = 0; // posts per side; 0 while no theater is open
    PostArray LxArr;      // by serial, (Y - 1) * MapWidth + X
    ElevationLayer Elevations;
};

} // namespace vardenix
