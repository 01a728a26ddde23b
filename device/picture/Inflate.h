// Decompression of zlib data (RFC 1950, RFC 1951).
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace device::picture {

// Nothing where the data is damaged, cut short, or gives more than `maxBytes`. The check sum is not looked at: a picture
// with a wrong one is still a picture.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> inflated(std::string_view zlib, std::size_t maxBytes);

}  // namespace device::picture
