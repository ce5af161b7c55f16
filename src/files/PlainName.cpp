#include "files/PlainName.h"

#include <algorithm>

namespace vardenix {

namespace {

constexpr size_t LongestName = 255; // bytes; what file systems take
constexpr size_t LongestShown = 100;

bool IsControl(unsigned char letter) { return letter < ' ' || letter == 127; }

} // namespace

std::string WhyNotPlain(std::string_view name) {
    if (name.empty())
        return "is empty";
    if (name.size() > LongestName)
        return "is too long";
    if (std::ranges::any_of(name, IsControl))
        return "holds a control character";
    if (name.find_first_of("/\\") != std::string_view::npos)
        return "holds a slash";
    if (name.find(':') != std::string_view::npos)
        return "holds a colon";
    if (name.find("..") != std::string_view::npos)
        return "holds \"..\"";
    if (name == ".")
        return "is a folder's";
    return {};
}

std::string ShownName(std::string_view name) {
    std::string shown(name.substr(0, LongestShown));
    std::ranges::replace_if(shown, IsControl, '?');
    return shown;
}

} // namespace vardenix
