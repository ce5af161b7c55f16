#pragma once

#include "pictures/PictureFormat.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vardenix {

// Cluster looks for the best end colours of each block and is what a tile that somebody
// looks at deserves; Range is some forty times faster and a few decibels worse.
enum class Dxt1Fit { Cluster, Range };

// OneBit makes pixels with an alpha of 127 and below transparent; Opaque never looks at
// alpha.
enum class Dxt1Alpha { Opaque, OneBit };

struct Dxt1Options {
    Dxt1Fit Fit = Dxt1Fit::Cluster;
    Dxt1Alpha Alpha = Dxt1Alpha::Opaque;
};

constexpr std::size_t Dxt1BlockBytes = 8;
constexpr int32_t Dxt1LargestSide = 32768;

// 8-byte blocks of 4 by 4 pixels, row by row from the top left. `rgba` holds width *
// height pixels of 4 bytes, rows from the top down, without padding. Where a side is no
// multiple of 4 the last pixel is repeated to fill its block, so that a reader which
// filters across the border finds no stray colour. A block's bytes depend on its own 16
// pixels alone. Throws RuntimeError 5 for a side outside 1 to Dxt1LargestSide and for too
// few bytes.
std::vector<uint8_t> CompressDxt1(std::span<const uint8_t> rgba, int32_t width,
                                  int32_t height, Dxt1Options options = {});

// "DDS " and the header of a picture of one level, without mip maps.
// Throws RuntimeError 5 for a side outside 1 to Dxt1LargestSide.
std::array<uint8_t, DdsHeaderBytes> Dxt1FileHeader(int32_t width, int32_t height);

// The bytes of a whole file: header and blocks. Arguments and errors as CompressDxt1.
std::vector<uint8_t> Dxt1File(std::span<const uint8_t> rgba, int32_t width,
                              int32_t height, Dxt1Options options = {});

} // namespace vardenix
