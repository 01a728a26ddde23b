#include "host/import/Dates.h"

#include <chrono>
#include <cstdio>
#include <optional>
#include <vector>

#include "host/import/ForeignContact.h"

namespace host::foreign {

namespace {

struct Numbers {
    std::vector<std::string_view> digits;   // the first three runs of digits
    char between = '\0';                    // the first character behind the first run
};

Numbers numbersOf(std::string_view text) {
    Numbers numbers;
    for (std::size_t at = 0; at < text.size() && numbers.digits.size() < 3;) {
        const std::size_t start = text.find_first_of("0123456789", at);
        if (start == std::string_view::npos)
            break;
        at = std::min(text.find_first_not_of("0123456789", start), text.size());
        numbers.digits.push_back(text.substr(start, at - start));
        if (numbers.digits.size() == 1 && at < text.size())
            numbers.between = text[at];
    }
    return numbers;
}

int numberOf(std::string_view digits) {
    int number = 0;
    for (const char c : digits.substr(0, 6))
        number = number * 10 + (c - '0');
    return number;
}

std::optional<std::string> dayOf(int y, int m, int d) {
    const std::chrono::year_month_day day{std::chrono::year{y}, std::chrono::month{static_cast<unsigned>(m)},
                                          std::chrono::day{static_cast<unsigned>(d)}};
    if (y < 1 || y > 9999 || !day.ok())
        return std::nullopt;
    char text[16];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", y, m, d);
    return text;
}

std::optional<std::string> dayOf(const Numbers &numbers, DayOrder order) {
    const auto &digits = numbers.digits;
    if (!digits.empty() && digits[0].size() == 8)   // 19800322, whatever follows
        return dayOf(numberOf(digits[0].substr(0, 4)), numberOf(digits[0].substr(4, 2)), numberOf(digits[0].substr(6)));
    if (digits.size() < 3)
        return std::nullopt;
    const int first = numberOf(digits[0]), second = numberOf(digits[1]), third = numberOf(digits[2]);
    if (digits[0].size() == 4)
        return dayOf(first, second, third);
    if (digits[2].size() != 4)
        return std::nullopt;
    const bool isDayFirst = numbers.between == '.' || first > 12 || (second <= 12 && order == DayOrder::dayFirst);
    return isDayFirst ? dayOf(third, second, first) : dayOf(third, first, second);
}

}  // namespace

std::string plainDate(std::string_view text, DayOrder order) {
    text = trimmed(text);
    constexpr std::size_t kMostBytes = 64;
    if (text.empty() || text.size() > kMostBytes || text.front() < '0' || text.front() > '9')
        return std::string(text);
    return dayOf(numbersOf(text), order).value_or(std::string(text));
}

}  // namespace host::foreign
