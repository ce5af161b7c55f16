#include "texts/Cutting.h"

#include <algorithm>

namespace vardenix {

namespace {

char UpperLetter(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

} // namespace

std::string UpperCase(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), UpperLetter);
    return result;
}

std::string ReplaceAll(std::string text, std::string_view from, std::string_view to) {
    for (size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

std::string_view TrimBlanks(std::string_view text) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace vardenix
