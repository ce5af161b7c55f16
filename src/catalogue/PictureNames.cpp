#include "catalogue/PictureNames.h"

#include "texts/Windows1252.h"

#include <algorithm>

namespace vardenix {

std::string TileFileName(const std::string& tileName, bool night) {
    const size_t cut = std::min<size_t>(tileName.size(), 4);
    return tileName.substr(0, tileName.size() - cut) + (night ? "N.dds" : ".dds");
}

std::string TilePicturePath(const std::string& ddsFolder, const std::string& file) {
    return ddsFolder + Utf8FromBytes(file);
}

} // namespace vardenix
