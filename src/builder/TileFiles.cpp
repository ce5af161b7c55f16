#include "builder/TileFiles.h"

#include "catalogue/PictureNames.h"
#include "pictures/ImageLayer.h"

#include <algorithm>

namespace vardenix {

namespace {

bool HasLowerInode(const KnownPicture& a, const KnownPicture& b) {
    return a.Mark.Identity.Inode < b.Mark.Identity.Inode;
}

// Of a file's bytes and of how they are read.
Digest DigestOfPicture(const PictureFile& file) {
    return DigestOf(
        {std::as_bytes(std::span(&file.Format, 1)), std::as_bytes(file.Bytes.Span())});
}

} // namespace

TileFiles::TileFiles(const Catalogue& catalogue, const std::vector<KnownPicture>& known)
    : catalogue_(catalogue), folder_(catalogue.DDSFolder), before_(known),
      known_(2 * Count()) {
    std::ranges::sort(before_, HasLowerInode);
}

TileFiles::Read TileFiles::ReadFile(int32_t tile, DayOrNight when) {
    const std::string path = PathOf(tile, when);
    // Looked at first: what is written while it is read will have another time.
    const FileMark mark = MarkOfPath(path);
    const bool settled = mark.IsSettled();
    Read read{ImageFileEx(path), {}};
    ++filesRead_;
    read.Digest = DigestOfPicture(read.File);
    if (mark.Identity.Present && settled)
        KnownOf(tile, when) = {mark, static_cast<int32_t>(read.File.Format), read.Digest};
    return read;
}

std::optional<Digest> TileFiles::Recall(int32_t tile, DayOrNight when) {
    const std::string path = PathOf(tile, when);
    const KnownPicture asked{
        MarkOfPath(path), static_cast<int32_t>(FormatFromFileName(path)), {}};
    const auto [first, last] =
        std::equal_range(before_.begin(), before_.end(), asked, HasLowerInode);
    for (auto known = first; asked.Mark.Identity.Present && known != last; ++known)
        if (known->Mark == asked.Mark && known->Format == asked.Format)
            return (KnownOf(tile, when) = *known).Digest;
    return {};
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

} // namespace vardenix
