#include "device/contacts/Dates.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <optional>

namespace device::contacts {

namespace {

using namespace std::chrono;

constexpr sys_days kEpoch = year{2001} / 1 / 1;
constexpr double kSecondsPerDay = 86400;

std::optional<double> wholeNumber(std::string_view text) {
    if (text.starts_with('+'))
        text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

// Exactly `count` digits at `at`.
std::optional<int> digits(std::string_view text, std::size_t at, std::size_t count) {
    int value = 0;
    for (const char c : text.substr(at, count)) {
        if (c < '0' || c > '9')
            return std::nullopt;
        value = value * 10 + (c - '0');
    }
    return value;
}

std::optional<year_month_day> calendarDate(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    const auto y = digits(text, 0, 4), m = digits(text, 5, 2), d = digits(text, 8, 2);
    if (!y || !m || !d)
        return std::nullopt;
    const year_month_day date{year{*y}, month{static_cast<unsigned>(*m)}, day{static_cast<unsigned>(*d)}};
    return *y > 0 && date.ok() ? std::optional(date) : std::nullopt;
}

}  // namespace

// A blank behind a number makes it a text.
NSString dateOfStored(const NSString &stored) {
    if (const std::string_view text = stored.view(); text.ends_with(' ') && wholeNumber(text.substr(0, text.size() - 1)))
        return text.substr(0, text.size() - 1);
    const std::optional<double> seconds = wholeNumber(stored.view());
    constexpr double kMostDays = 5'000'000;   // far beyond the years below, and no overflow
    if (!seconds || std::abs(*seconds / kSecondsPerDay) > kMostDays)
        return stored;
    const year_month_day date{kEpoch + days(static_cast<int>(std::floor(*seconds / kSecondsPerDay)))};
    const int y = static_cast<int>(date.year());
    if (y < 1 || y > 9999)
        return stored;
    char text[16];
    const int size = std::snprintf(text, sizeof text, "%04d-%02u-%02u", y, static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return std::string_view(text, static_cast<std::size_t>(size));
}

NSString storedOfDate(const NSString &date) {
    const std::optional<year_month_day> day = calendarDate(date.view());
    if (!day)   // a year alone must not come back as a second of 2001
        return wholeNumber(date.view()) ? NSString(std::string(date.view()) + " ") : date;
    const auto seconds = duration_cast<std::chrono::seconds>(sys_days(*day) - kEpoch).count();
    return std::to_string(seconds) + ".0";   // the device writes a real number
}

}  // namespace device::contacts
