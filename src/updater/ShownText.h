#pragma once

#include <string>

namespace vardenix {

// A text file, Windows-1252, as UTF-8 with a line feed behind each line. Error 53 and the
// like when it cannot be read, 7 beyond 4 MiB.
std::string ReadShownText(const std::string& path);

} // namespace vardenix
