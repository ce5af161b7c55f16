#pragma once

#include "services/Raster.h"

#include <string>

namespace vardenix {

// A usage error of OUT unless the name ends in the extension of a picture.
void RequirePictureName(const std::string& path);

// Saves a picture in the format of its name, and prints the name of the file.
void SavePicture(Raster& picture, const std::string& path);

} // namespace vardenix
