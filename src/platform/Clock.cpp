#include "platform/Clock.h"

#include <array>
#include <ctime>
#include <string_view>

namespace vardenix {

namespace {

constexpr std::array<std::string_view, 12> MonthNames{
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<std::string_view, 7> WeekdayNames{
    "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

std::string TwoDigits(int value) {
    return (value < 10 ? "0" : "") + std::to_string(value);
}

std::string MonthName(const LocalTime& time) {
    return std::string(MonthNames.at(static_cast<size_t>(time.Month - 1)));
}

} // namespace

LocalTime SystemClock::Now() const {
    return LocalTimeOf(std::chrono::system_clock::now());
}

LocalTime LocalTimeOf(std::chrono::system_clock::time_point time) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm parts{};
    localtime_r(&seconds, &parts);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_wday,
            parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

std::string LongDate(const LocalTime& time) {
    return std::string(WeekdayNames.at(static_cast<size_t>(time.Weekday))) + ", " +
           MonthName(time) + " " + TwoDigits(time.Day) + ", " + std::to_string(time.Year);
}

std::string ShortMonthDate(const LocalTime& time) {
    return TwoDigits(time.Day) + " " + MonthName(time).substr(0, 3) + " " +
           std::to_string(time.Year);
}

std::string HoursMinutes(const LocalTime& time) {
    return TwoDigits(time.Hour) + ":" + TwoDigits(time.Minute);
}

std::string HoursMinutesSeconds(const LocalTime& time) {
    return HoursMinutes(time) + ":" + TwoDigits(time.Second);
}

} // namespace vardenix
