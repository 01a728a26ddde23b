// Birthdays and dates of an address book: stored as seconds since 2001-01-01 00:00 UTC, shown as "yyyy-MM-dd" in UTC.
#pragma once

#include "toolkit/NSString.h"

namespace device::contacts {

// A text that is no number, or a number outside the years 1 to 9999, is given as it stands; a number with a blank behind it
// without the blank. Absent stays absent.
[[nodiscard]] NSString dateOfStored(const NSString &stored);
// The other way round; a text that is no date "yyyy-MM-dd" of the calendar is stored as it stands, a number
// with a blank behind it.
[[nodiscard]] NSString storedOfDate(const NSString &date);

}  // namespace device::contacts
