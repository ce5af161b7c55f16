#pragma once

#include "cli/CommandLine.h"
#include "pictures/Raster.h"

#include <string>

namespace vardenix {

// A usage error of OUT unless the name ends in the extension of a picture.
void RequirePictureName(const std::string& path);

// Declares --small.
void AddSmall(Command& command, bool& small);

// Saves a picture in the format of its name, and prints the name of the file. A PNG file
// is made quickly, or `small`, which takes several times as long.
void SavePicture(const RasterView& picture, const std::string& path, bool small);

} // namespace vardenix
