#include "world/Degrees.h"

#include "texts/Numbers.h"

#include <array>
#include <cmath>
#include <vector>

namespace vardenix {

namespace {

constexpr int DecimalsShown = 4;
constexpr std::string_view NumberLetters = "0123456789.+-";

std::string OneOf(double degrees, const char* positive, const char* negative) {
    return FormatFixed(std::abs(degrees), DecimalsShown) + " " +
           (degrees < 0 ? negative : positive);
}

// Numbers, and every other letter by itself.
std::vector<std::string_view> DegreeWordsIn(std::string_view text) {
    std::vector<std::string_view> words;
    size_t at = 0;
    while (at < text.size()) {
        if (text[at] == ' ' || text[at] == ',') {
            ++at;
            continue;
        }
        size_t end = text.find_first_not_of(NumberLetters, at);
        if (end == at)
            end = at + 1;
        words.push_back(text.substr(at, end - at));
        at += words.back().size();
    }
    return words;
}

// A number is a sign, digits and a point with digits behind it.
std::optional<double> NumberOf(std::string_view word) {
    const bool sign = word.starts_with('+') || word.starts_with('-');
    const std::string_view digits = word.substr(sign ? 1 : 0);
    if (digits.find_first_of("0123456789") == std::string_view::npos ||
        digits.find_first_not_of("0123456789.") != std::string_view::npos ||
        digits.find('.') != digits.rfind('.'))
        return std::nullopt;
    return Val(word);
}

} // namespace

std::string DegreesWords(const GeographicPoint& point) {
    return OneOf(point.Latitude, "N", "S") + ", " + OneOf(point.Longitude, "E", "W");
}

std::optional<GeographicPoint> DegreesOf(std::string_view text) {
    const std::vector<std::string_view> words = DegreeWordsIn(text);
    constexpr std::array<std::string_view, 2> positive{"Nn", "Ee"};
    constexpr std::array<std::string_view, 2> negative{"Ss", "Ww"};
    std::array<double, 2> numbers{};
    auto word = words.begin();
    for (size_t i = 0; i < numbers.size(); ++i) {
        const auto number = word == words.end() ? std::nullopt : NumberOf(*word++);
        if (!number)
            return std::nullopt;
        numbers.at(i) = *number;
        if (word == words.end() || word->size() != 1)
            continue;
        const bool south = negative.at(i).find(word->front()) != std::string_view::npos;
        if (!south && positive.at(i).find(word->front()) == std::string_view::npos)
            continue;
        if (south)
            numbers.at(i) = -numbers.at(i);
        ++word;
    }
    if (word != words.end() || std::abs(numbers[0]) > 90 || std::abs(numbers[1]) > 180)
        return std::nullopt;
    return GeographicPoint{numbers[1], numbers[0]};
}

} // namespace vardenix
