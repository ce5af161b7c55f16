#pragma once

#include <string>

namespace vardenix {

// A new random identifier, "{XXXXXXXX-XXXX-4XXX-XXXX-XXXXXXXXXXXX}" in upper-case
// hexadecimal digits.
std::string NewGuid();

} // namespace vardenix
