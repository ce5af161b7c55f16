#include "texts/Numbers.h"

#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace vardenix {

namespace {

template <typename Field>
Field Narrow(double value) {
    const double rounded = RoundHalfEven(value);
    if (!(rounded >= static_cast<double>(std::numeric_limits<Field>::min()) &&
          rounded <= static_cast<double>(std::numeric_limits<Field>::max())))
        throw RuntimeError(ErrorNumber::Overflow, Format0(value) + " does not fit");
    return static_cast<Field>(rounded);
}

template <typename Field>
Field Clamp(double value) {
    if (std::isnan(value))
        return 0;
    const auto low = static_cast<double>(std::numeric_limits<Field>::min());
    const auto high = static_cast<double>(std::numeric_limits<Field>::max());
    return static_cast<Field>(std::clamp(RoundHalfEven(value), low, high));
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The exponent's whole text ("e-5") at the front of `text`, or nothing where no digit
// follows.
std::string_view ExponentOf(std::string_view text) {
    if (text.empty() || std::string_view("eEdD").find(text[0]) == std::string_view::npos)
        return {};
    size_t end = 1;
    if (end < text.size() && (text[end] == '+' || text[end] == '-'))
        ++end;
    const size_t firstDigit = end;
    while (end < text.size() && IsDigit(text[end]))
        ++end;
    return end == firstDigit ? std::string_view{} : text.substr(0, end);
}

// Of a number that no double holds: whether it is too small rather than too great.
bool IsTiny(std::string_view number) {
    const size_t mark = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, mark);
    const auto point =
        static_cast<int64_t>(std::min(mantissa.find('.'), mantissa.size()));
    // There is one: 0 is held.
    const auto first = static_cast<int64_t>(mantissa.find_first_not_of("0."));
    const int64_t power = first < point ? point - first - 1 : point - first;
    std::string_view text = number.substr(std::min(mark + 1, number.size()));
    if (text.starts_with('+'))
        text.remove_prefix(1);
    int64_t exponent = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), exponent);
    if (result.ec == std::errc::result_out_of_range)
        return text.starts_with('-');
    return power + exponent < 0;
}

template <typename Number>
std::string ShortestOf(Number value) {
    std::array<char, 32> buffer{};
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), result.ptr};
}

} // namespace

double RoundHalfEven(double value) {
    const double floor = std::floor(value);
    const double fraction = value - floor;
    if (fraction < 0.5)
        return floor;
    if (fraction > 0.5)
        return floor + 1;
    return std::fmod(floor, 2) == 0 ? floor : floor + 1;
}

uint8_t ToByte(double value) { return Narrow<uint8_t>(value); }
int16_t ToInt16(double value) { return Narrow<int16_t>(value); }
int32_t ToInt32(double value) { return Narrow<int32_t>(value); }
int16_t ClampToInt16(double value) { return Clamp<int16_t>(value); }
int32_t ClampToInt32(double value) { return Clamp<int32_t>(value); }

int Percent(int64_t part, int64_t whole) {
    if (whole == 0)
        return 0;
    return ClampToInt32(static_cast<double>(part) * 100 / static_cast<double>(whole));
}

double Val(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+'))
        text.remove_prefix(1);

    size_t end = 0;
    bool point = false;
    bool digits = false;
    while (end < text.size() && (IsDigit(text[end]) || (text[end] == '.' && !point))) {
        point = point || text[end] == '.';
        digits = digits || IsDigit(text[end]);
        ++end;
    }
    if (!digits)
        return 0;
    std::string number(text.substr(0, end));
    number += ExponentOf(text.substr(end));
    std::replace_if(
        number.begin(), number.end(), [](char c) { return c == 'd' || c == 'D'; }, 'e');

    double value = 0;
    const auto result =
        std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        value = IsTiny(number) ? 0 : std::numeric_limits<double>::infinity();
    return negative ? -value : value;
}

std::string Format0(double value) { return FormatFixed(RoundHalfEven(value), 0); }

std::string FormatFixed(double value, int decimals) {
    std::array<char, 400> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    std::string text(buffer.data(), result.ptr);
    // "-0" and "-0.00" read as a mistake.
    if (text.front() == '-' && text.find_first_not_of("-0.") == std::string::npos)
        text.erase(0, 1);
    return text;
}

std::string ShortestText(float value) { return ShortestOf(value); }

std::string ShortestText(double value) { return ShortestOf(value); }

} // namespace vardenix
