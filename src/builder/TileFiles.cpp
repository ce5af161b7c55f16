#include "builder/TileFiles.h"

#include "catalogue/PictureNames.h"

namespace vardenix {

TileFiles::TileFiles(const Catalogue& catalogue)
    : catalogue_(catalogue), folder_(catalogue.DDSFolder) {}

PictureFile TileFiles::Read(int32_t tile, DayOrNight when) const {
    return ImageFileEx(PathOf(tile, when));
}

// Asking the disk for thousands of names in another case would list the folder each time.
std::string TileFiles::PathOf(int32_t tile, DayOrNight when) const {
    const TileInfo& info = catalogue_.Lookup[static_cast<size_t>(tile)];
    std::string path = TilePicturePath(
        catalogue_.DDSFolder, when == DayOrNight::Day ? info.DayFile : info.NightFile);
    const std::string name = AfterLastSlash(path);
    if (path.size() - name.size() != catalogue_.DDSFolder.size())
        return path;
    const auto found = folder_.Find(name);
    return found ? TextOfPath(*found) : path;
}

Digest DigestOf(const PictureFile& file) {
    return DigestOf(
        {std::as_bytes(std::span(&file.Format, 1)), std::as_bytes(file.Bytes.Span())});
}

} // namespace vardenix
