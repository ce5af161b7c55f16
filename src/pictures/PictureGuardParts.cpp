#include "pictures/PictureGuardParts.h"

#include "texts/RuntimeError.h"

namespace vardenix::guard {

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

} // namespace vardenix::guard
