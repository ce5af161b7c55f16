#pragma once

#include "pictures/GuardedPicture.h"
#include "pictures/PictureFormat.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace vardenix {

// Stands before the image library, which trusts the headers of DDS, Targa and BMP files:
// cut ones give garbage pixels, and made-up sides make it write outside its memory. Takes
// `bytes`, a file's, by the format told, whatever the bytes look like, and gives them
// back made safe: what the library would read beside the top picture (mip maps,
// thumbnails, notes of cameras) is not in them, Targa runs are unpacked, and a BMP comes
// as the plainest one of the same picture, without alpha. Error 481 with `path` and the
// reason for what is no such picture, is cut, has a side outside 1 to PictureLargestSide,
// or is of another kind than Bmp, Jpeg, Targa and Dds.
GuardedPicture GuardPicture(PictureFormat format, FileBytes bytes, std::string_view path);

// Guards a DDS file of `length` bytes of which only the header is there.
// Nothing for a picture that is not of DXT1 blocks, which GuardPicture has to look at.
std::optional<Dxt1Layout> GuardDxt1(const FileBytes& header, uint64_t length,
                                    std::string_view path);

} // namespace vardenix
