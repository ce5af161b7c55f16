#include "pictures/PictureGuard.h"

#include "pictures/PictureGuardParts.h"

#include <utility>

namespace vardenix {

GuardedPicture GuardPicture(PictureFormat format, FileBytes bytes,
                            std::string_view path) {
    switch (format) {
    case PictureFormat::Dds:
        return guard::GuardDds(std::move(bytes), path);
    case PictureFormat::Targa:
        return guard::GuardTarga(std::move(bytes), path);
    case PictureFormat::Jpeg:
        return guard::GuardJpeg(std::move(bytes), path);
    case PictureFormat::Bmp:
        return guard::GuardBmp(std::move(bytes), path);
    default:
        guard::Refuse(path, "pictures of this kind are not read");
    }
}

std::optional<Dxt1Layout> GuardDxt1(const FileBytes& header, uint64_t length,
                                    std::string_view path) {
    if (length > PictureLargestFile)
        guard::Refuse(path, "the file is too long for a picture");
    return guard::FindDxt1(header, length, path);
}

} // namespace vardenix
