#include "texts/TextLines.h"

namespace vardenix {

bool NextLine(std::string_view& rest, std::string_view& line) {
    if (rest.empty())
        return false;
    const size_t end = rest.find_first_of("\r\n");
    line = rest.substr(0, end);
    if (end == std::string_view::npos) {
        rest = {};
        return true;
    }
    const bool pair = rest.substr(end, 2) == "\r\n";
    rest.remove_prefix(end + (pair ? 2 : 1));
    return true;
}

} // namespace vardenix
