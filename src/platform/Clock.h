#pragma once

#include <chrono>
#include <string>

namespace vardenix {

// A moment of local time.
struct LocalTime {
    int Year = 2000;
    int Month = 1;   // 1 to 12
    int Day = 1;     // 1 to 31
    int Weekday = 0; // 0 is Sunday
    int Hour = 0;
    int Minute = 0;
    int Second = 0;
};

// Of the machine's time zone.
LocalTime LocalTimeOf(std::chrono::system_clock::time_point time);

class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    virtual LocalTime Now() const = 0;
};

class SystemClock : public Clock {
public:
    LocalTime Now() const override;
};

// Dates of logs are English, whatever the locale.
std::string LongDate(const LocalTime& time);            // Saturday, November 21, 2026
std::string ShortMonthDate(const LocalTime& time);      // 21 Nov 2026
std::string HoursMinutes(const LocalTime& time);        // 09:05
std::string HoursMinutesSeconds(const LocalTime& time); // 09:05:07

} // namespace vardenix
