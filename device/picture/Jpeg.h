// Pictures on their way to a device, which shows JPEG alone.
// Threads  any.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace device::picture {

// Rows of red, green, blue, one byte each, from the top.
struct Pixels {
    int width = 0, height = 0;
    std::vector<std::uint8_t> rgb;
};

constexpr std::int64_t kMaxPixels = 120'000'000;

[[nodiscard]] inline bool isJpeg(std::string_view bytes) { return bytes.starts_with("\xFF\xD8\xFF"); }
// Nothing where no decoder takes the bytes (HEIF and PNG are taken) or they are damaged.
[[nodiscard]] std::optional<std::string> convertedToJpeg(std::string_view bytes);
[[nodiscard]] std::optional<std::string> encodedAsJpeg(const Pixels &pixels, int quality = 90);
[[nodiscard]] std::optional<Pixels> decodedHeif(std::string_view bytes);

}  // namespace device::picture
