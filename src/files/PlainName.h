#pragma once

#include <string>
#include <string_view>

namespace vardenix {

// Names that strangers give to files of the program's folder. Empty for one that can only
// mean a file of the folder itself; else why it is refused, as the end of a sentence:
// "holds a slash". Slashes of either kind, a drive's colon, "..", control characters
// and "." are refused, and so is a name that is empty or longer than a disk takes.
std::string WhyNotPlain(std::string_view name);

// A name as a message or a line of a log may show it: at most 100 letters, and "?" for
// what no terminal should see.
std::string ShownName(std::string_view name);

} // namespace vardenix
