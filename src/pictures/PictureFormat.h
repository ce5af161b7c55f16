#pragma once

#include <cstdint>

namespace vardenix {

// The image library's own numbers; any of them may be cast into this type. Only Bmp,
// Jpeg, Targa and Dds are read, since only their headers are checked beforehand; whatever
// the library can write may be saved.
enum class PictureFormat : int32_t {
    Unknown = -1,
    Bmp = 0,
    Jpeg = 2,
    Png = 13,
    Targa = 17,
    Dds = 24,
};

// Bytes before the pixels of a DDS file.
constexpr uint64_t DdsHeaderBytes = 128;

} // namespace vardenix
