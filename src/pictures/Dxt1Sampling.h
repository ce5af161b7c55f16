#pragma once

#include "pictures/PictureGuard.h"
#include "pictures/Raster.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace vardenix {

// The pixels that a DXT1 picture, decoded by the image library and stretched whole
// without smoothing, would leave on all of `target`, transparent ones black; only the
// blocks that are seen are unpacked. Relies on the library's making each pixel of its
// block alone, in whole numbers, and on such a stretch's choosing pixels and mixing none.
// `blocks` are those of the whole picture, as the guard found them.
void SampleDxt1(const Dxt1Layout& layout, std::span<const std::byte> blocks,
                const RasterView& target);

// SampleDxt1 of a DDS file, of which only what is seen is read; nothing where its picture
// is of another kind. Both sides 0 stand for the picture's own. Error 481 for a broken
// one, and what the system refuses.
std::optional<Raster> LoadDxt1(std::string_view path, int32_t width, int32_t height);

} // namespace vardenix
