#pragma once

#include <string>

namespace vardenix {

// The picture file of a tile: its name less the last four characters, whatever they are,
// plus ".dds", or "N.dds" for the night. A shorter name leaves just the suffix.
std::string TileFileName(const std::string& tileName, bool night);

// The path of a picture in the folder of tile pictures; `file` is bytes as the catalogue
// has them.
std::string TilePicturePath(const std::string& ddsFolder, const std::string& file);

} // namespace vardenix
