// Base64 (RFC 4648, the standard alphabet) to bytes: what the layer adds to the data type.
//
// Ignored  blanks, tabs, CR and LF, wherever they stand.
// Taken    a last group without its padding, or cut short: it gives the whole bytes that it holds, since a picture may
//          have been folded at any character. An empty text gives an empty data object.
// Refused  any other character outside the alphabet, "=" anywhere but at the end, more than two of them, padding
//          that does not fill its group: the result is absent (null).
// Threads  any.
#pragma once

#include <string_view>

#include "toolkit/NSData.h"

[[nodiscard]] NSDataRef jk_dataWithBase64EncodedString(std::string_view text);
