#include "catalogue/PictureFolder.h"

#include "catalogue/PictureNames.h"
#include "texts/Cutting.h"

namespace vardenix {

PictureFolder::PictureFolder(const std::string& ddsFolder)
    : ddsFolder_(ddsFolder), folder_(UpToLastSlash(ddsFolder)), files_(folder_) {}

bool PictureFolder::Has(const std::string& file) const {
    const std::string path = TilePicturePath(ddsFolder_, file);
    return UpToLastSlash(path) == folder_ ? files_.Has(AfterLastSlash(path))
                                          : FileExists(path);
}

TileInfo InfoOfTile(const TileRecord& tile, const TileSet& set) {
    TileInfo info;
    info.Name = TrimBlanks(tile.TileName);
    info.DayFile = TileFileName(info.Name, false);
    info.NightFile = TileFileName(info.Name, true);
    info.Terrain = set.Terrain;
    info.UseCount = 0;
    info.HasImage = 0;
    return info;
}

TileInfo InfoOfTile(const TileRecord& tile, const TileSet& set,
                    const PictureFolder& pictures) {
    TileInfo info = InfoOfTile(tile, set);
    info.HasImage = pictures.Has(info.DayFile) ? 1 : 0;
    return info;
}

} // namespace vardenix
