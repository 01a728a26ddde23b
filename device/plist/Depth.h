// How deep a property list nests, found without recursion into it and before any library reads it.
#pragma once

#include <string_view>

namespace device::plist {

[[nodiscard]] inline bool isBinary(std::string_view bytes) { return bytes.starts_with("bplist0"); }

// False where arrays and dictionaries nest deeper than `maxDepth`, or where a binary list does not hold together.
[[nodiscard]] bool isShallow(std::string_view bytes, int maxDepth);

}  // namespace device::plist
