#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vardenix {

// The edge of a picture, in pixels, from the text of the box of that name: 1 to 32767.
// Error 6 for a larger one, 13 for an empty text and for 0; both with the box's name.
int16_t PictureSizeOf(const std::string& box, std::string_view text);

} // namespace vardenix
