// Sizes and times as people read them.
#pragma once

#include <cstdint>

#include "toolkit/NSString.h"

// A count of bytes in decimal units with one decimal ("1.5 MB"); below 1 it is "0 KB".
[[nodiscard]] NSString byteDecFormatFromInteger(std::int64_t bytes);
// Whole seconds as "02:05", from an hour on "01:00:00"; below 0 as 0.
[[nodiscard]] NSString timeFormatFromInteger(std::int64_t seconds);
