#pragma once

#include "builder/FartileShape.h"
#include "catalogue/TextureBin.h"
#include "files/Digest.h"
#include "files/FileNames.h"
#include "pictures/ImageFiles.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace vardenix {

enum class DayOrNight : size_t { Day = 0, Night = 1 };

// What both pictures of a tile are known by.
using TileDigests = std::array<Digest, 2>;

// The pictures of tiles as they are on the disk. Used by several threads at once.
class TileFiles {
public:
    // The catalogue is borrowed; the folder of its pictures is listed once.
    explicit TileFiles(const Catalogue& catalogue);

    // The number is below the catalogue's. Error 481 with the path for a file that cannot
    // be read.
    PictureFile Read(int32_t tile, DayOrNight when) const;

    // How many tiles the catalogue has.
    size_t Count() const { return catalogue_.Lookup.size(); }

private:
    std::string PathOf(int32_t tile, DayOrNight when) const;

    const Catalogue& catalogue_;
    FolderIndex folder_; // as it was at the start of the run
};

// Of a file's bytes and of how they are read.
Digest DigestOf(const PictureFile& file);

} // namespace vardenix
