#pragma once

#include "pictures/Raster.h"

#include <string>

namespace vardenix {

// Pictures of 24 bits written from a surface's own rows, with no bitmap made of them; the
// file is staged, and the old one stands until the new one is whole. The system's
// refusals (61, 70, 75) and error 5 for a picture without pixels.

// As the image library writes it.
void WriteBmp(const std::string& path, const RasterView& picture);

// Unfiltered and with little search: several times as fast as a small file, and larger by
// about a fifth.
void WriteFastPng(const std::string& path, const RasterView& picture);

} // namespace vardenix
