// Dates as texts, by a pattern of Unicode TR 35 letters: yyyy (calendar year), YYYY (week-based year of en_US: weeks
// begin on Sunday, the week with 1 January belongs to the new year), MM, dd, HH, mm, ss. Other characters stand for
// themselves. Threads: any.
#pragma once

#include "toolkit/NSString.h"
#include "toolkit/dispatch/Clock.h"

enum class NSTimeZone { local, utc };

[[nodiscard]] NSString stringFromDate(dispatch::Time date, std::string_view pattern, NSTimeZone zone);
