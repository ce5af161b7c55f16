#pragma once

#include "services/Raster.h"

#include <string>

namespace vardenix {

// Saves a picture as PNG, BMP or JPEG by the extension of its name, and prints the name
// of the file.
void SavePicture(Raster& picture, const std::string& path);

} // namespace vardenix
