#include "pictures/PictureGuard.h"

#include "pictures/PictureGuardParts.h"
#include "texts/RuntimeError.h"

#include <utility>

namespace vardenix {

namespace guard {

void Refuse(std::string_view path, const std::string& reason) {
    throw RuntimeError(ErrorNumber::InvalidPicture, std::string(path) + ": " + reason);
}

void CheckSides(uint32_t width, uint32_t height, std::string_view path) {
    constexpr auto largest = static_cast<uint32_t>(PictureLargestSide);
    if (width < 1 || height < 1 || width > largest || height > largest)
        Refuse(path, "sides from 1 to " + std::to_string(largest) + " expected, found " +
                         std::to_string(width) + " by " + std::to_string(height));
}

void CheckLength(uint64_t length, uint64_t needed, std::string_view path) {
    if (length < needed)
        Refuse(path, "the file is cut: " + std::to_string(needed) +
                         " bytes expected, found " + std::to_string(length));
}

} // namespace guard

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
