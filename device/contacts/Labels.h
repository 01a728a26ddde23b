// Labels of numbers, addresses and the like. The device marks its own words ("_$!<Home>!$_"), a person's own words stand
// plain; records carry the word alone.
#pragma once

#include <string_view>

#include "toolkit/NSString.h"

namespace device::contacts {

inline constexpr std::string_view kNoLabel = "other";

// From the stored text, valid UTF-8; an absent one is "other".
[[nodiscard]] NSString typeOfLabel(const NSString &label);
// To the stored text: a word of the device's in any case gets its own spelling and the marks. Absent stays absent.
[[nodiscard]] NSString labelOfType(const NSString &type);

}  // namespace device::contacts
