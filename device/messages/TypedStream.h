// The text inside a message's attributedBody: an archive of the kind that begins with "streamtyped", version 4.
//
// Format   values follow the type encodings that announce them. Integers take one byte, or 0x81 with two, or 0x82 with four,
//          little endian. 0x84 begins a new string, class or object, 0x85 is none, 0x86 ends an object, everything from
//          0x92 on points back into one of two tables: strings, and all of objects, classes and C strings.
// Input    may be hostile: nothing is read past the end, nesting and tables are bounded.
// Result   the text of the attributed string that the archive holds, bytes as stored; nullopt where there is none. What
//          stands behind the text (the attributes) is not looked at, so that damage there costs nothing.
// Threads  any; the result points into `archive`.
#pragma once

#include <optional>
#include <string_view>

namespace device::messages {

[[nodiscard]] std::optional<std::string_view> textOfTypedStream(std::string_view archive);

}  // namespace device::messages
