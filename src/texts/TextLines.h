#pragma once

#include <string_view>

namespace vardenix {

// Takes the next line off the beginning of `rest`; false when nothing is left. CR LF, LF
// and CR all end a line and belong to none; a last line needs no end. Both views borrow
// the text.
bool NextLine(std::string_view& rest, std::string_view& line);

} // namespace vardenix
