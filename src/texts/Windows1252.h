#pragma once

#include <string>
#include <string_view>

namespace vardenix {

// Texts in the theater's files are single bytes, Windows-1252, and are kept as bytes.
// They become UTF-8 where they are shown or name a file. The five bytes without a letter
// stand for the control characters of the same number, so that every text survives both
// ways.
std::string Utf8FromBytes(std::string_view bytes);

// The reverse; what Windows-1252 has no byte for, and what is no UTF-8, becomes "?".
std::string BytesFromUtf8(std::string_view text);

} // namespace vardenix
