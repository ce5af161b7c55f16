#pragma once

#include "files/BinaryReader.h"

#include <cstddef>
#include <cstdint>

namespace vardenix {

// Pixels along the longest side of a picture that is read.
constexpr int32_t PictureLargestSide = 8192;

// Longest picture file that is read: a DDS of the largest sides with its mip maps, and to
// spare.
constexpr uint64_t PictureLargestFile = uint64_t{512} << 20;

// What the image library may be given without danger: the first Length of Bytes, for a
// picture of Width by Height pixels. The library's picture may be larger (blocks of 4 by
// 4 are whole there); the picture proper is its top left part.
struct GuardedPicture {
    FileBytes Bytes;
    size_t Length = 0;
    int32_t Width = 0;
    int32_t Height = 0;
};

// A DXT1 picture that is all there: its rows of blocks, the last ones padded to whole
// blocks, follow the header without gaps.
struct Dxt1Layout {
    int32_t Width = 0;
    int32_t Height = 0;
};

} // namespace vardenix
