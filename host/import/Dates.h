// Dates as other programs write them. Threads: any.
#pragma once

#include <string>
#include <string_view>

namespace host::foreign {

// How a date of slashes reads where both of its first numbers could be a month.
enum class DayOrder { monthFirst, dayFirst };

// "1980-03-22" from 19800322, 1980-03-22T10:00Z, 22.3.1980, 3/22/1980, 1980/3/22, 1980年3月22日 and the like. What is no day of
// the calendar, a date without a year too, stays as it stands.
[[nodiscard]] std::string plainDate(std::string_view text, DayOrder order = DayOrder::monthFirst);

}  // namespace host::foreign
