#include "bineditor/PictureSize.h"

#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <limits>

namespace vardenix {

int16_t PictureSizeOf(const std::string& box, std::string_view text) {
    if (text.empty())
        throw RuntimeError(ErrorNumber::TypeMismatch, box + " is empty: type a size");
    const double size = Val(text);
    if (size > std::numeric_limits<int16_t>::max())
        throw RuntimeError(ErrorNumber::Overflow,
                           box + ": " + std::string(text) +
                               " does not fit; the largest is " +
                               std::to_string(std::numeric_limits<int16_t>::max()));
    if (size < 1)
        throw RuntimeError(ErrorNumber::TypeMismatch,
                           box + ": a picture has one pixel at least");
    return ToInt16(size);
}

} // namespace vardenix
