#pragma once

#include "catalogue/TextureBin.h"
#include "files/ListedFiles.h"

#include <string>

namespace vardenix {

// Which day pictures are there, with one look at the folder for all of them.
class PictureFolder {
public:
    explicit PictureFolder(const std::string& ddsFolder);

    // `file` is bytes as the catalogue has them; matched without regard to case.
    bool Has(const std::string& file) const;

private:
    std::string ddsFolder_;
    std::string folder_;
    ListedFiles files_;
};

// What TileLookup holds of a tile of that set, with no use counted yet; without a folder
// no picture is looked for, and HasImage is 0.
TileInfo InfoOfTile(const TileRecord& tile, const TileSet& set);
TileInfo InfoOfTile(const TileRecord& tile, const TileSet& set,
                    const PictureFolder& pictures);

} // namespace vardenix
