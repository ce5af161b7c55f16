#pragma once

#include "files/BinaryReader.h"
#include "pictures/PictureFormat.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

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

// Stands before the image library, which trusts the headers of DDS, Targa and BMP files:
// cut ones give garbage pixels, and made-up sides make it write outside its memory. Takes
// `bytes`, a file's, by the format told, whatever the bytes look like, and gives them
// back made safe: what the library would read beside the top picture (mip maps,
// thumbnails, notes of cameras) is not in them, Targa runs are unpacked, and a BMP comes
// as the plainest one of the same picture, without alpha. Error 481 with `path` and the
// reason for what is no such picture, is cut, has a side outside 1 to PictureLargestSide,
// or is of another kind than Bmp, Jpeg, Targa and Dds.
GuardedPicture GuardPicture(PictureFormat format, FileBytes bytes, std::string_view path);

// A DXT1 picture that is all there: its rows of blocks, the last ones padded to whole
// blocks, follow the header without gaps.
struct Dxt1Layout {
    int32_t Width = 0;
    int32_t Height = 0;
};

// The same guard for a DDS file of `length` bytes of which only the header is there.
// Nothing for a picture that is not of DXT1 blocks, which GuardPicture has to look at.
std::optional<Dxt1Layout> GuardDxt1(const FileBytes& header, uint64_t length,
                                    std::string_view path);

} // namespace vardenix
