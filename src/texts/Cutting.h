#pragma once

#include <string>
#include <string_view>

namespace vardenix {

// Letters A to Z only: other letters are matched as they stand, so they are left as they
// stand.
std::string UpperCase(std::string_view text);

// Every occurrence, with the exact case.
std::string ReplaceAll(std::string text, std::string_view from, std::string_view to);

// Blanks only, both ends; a tab is not a blank.
std::string_view TrimBlanks(std::string_view text);

} // namespace vardenix
