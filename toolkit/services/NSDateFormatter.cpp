#include "toolkit/services/NSDateFormatter.h"

#include <cstdio>
#include <ctime>

namespace {

// The Sunday-to-Saturday week of the day decides: where it holds 1 January of the next year, it is that year's first.
int weekBasedYear(const std::tm &day) {
    const int year = day.tm_year + 1900;
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    const int daysLeft = (leap ? 365 : 364) - day.tm_yday;   // until 31 December
    return day.tm_wday + daysLeft < 6 ? year + 1 : year;
}

std::string digits(int value, std::size_t width) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%0*d", static_cast<int>(width), value);
    return buffer;
}

}  // namespace

NSString stringFromDate(dispatch::Time date, std::string_view pattern, NSTimeZone zone) {
    const std::time_t seconds = std::chrono::floor<std::chrono::seconds>(date).time_since_epoch().count();
    std::tm day{};
    if (zone == NSTimeZone::utc)
        gmtime_r(&seconds, &day);
    else
        localtime_r(&seconds, &day);
    std::string out;
    for (std::size_t at = 0; at < pattern.size();) {
        const char letter = pattern[at];
        std::size_t run = 1;
        while (at + run < pattern.size() && pattern[at + run] == letter)
            ++run;
        switch (letter) {
        case 'y': out += digits(day.tm_year + 1900, run); break;
        case 'Y': out += digits(weekBasedYear(day), run); break;
        case 'M': out += digits(day.tm_mon + 1, run); break;
        case 'd': out += digits(day.tm_mday, run); break;
        case 'H': out += digits(day.tm_hour, run); break;
        case 'm': out += digits(day.tm_min, run); break;
        case 's': out += digits(day.tm_sec, run); break;
        default: out.append(run, letter); break;
        }
        at += run;
    }
    return NSString(out);
}
