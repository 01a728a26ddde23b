// Texts of messages: what all threads do alike to them. Threads: any.
#pragma once

#include <string_view>

#include "toolkit/NSString.h"
#include "toolkit/dispatch/Clock.h"

namespace messageTexts {

// "" for an absent text.
[[nodiscard]] NSString filterNSNull(const NSString &text);
// Without white space and line ends at both ends.
[[nodiscard]] NSString deleteEnterChar(const NSString &text);
// "yyyy-MM-dd HH:mm:ss", UTC: texts of two moments sort as the moments do.
[[nodiscard]] NSString stringFromDate(dispatch::Time date);
// Seconds from the second moment to the first.
[[nodiscard]] double timeIntervalBetween_and(dispatch::Time date, dispatch::Time earlier);
// True where the text, in lower case, contains the part as it stands.
[[nodiscard]] bool isString_containString(const NSString &text, std::string_view part);
// Without U+00A0 and "-", as numbers of the address book are compared.
[[nodiscard]] NSString bareNumber(const NSString &number);

}   // namespace messageTexts
