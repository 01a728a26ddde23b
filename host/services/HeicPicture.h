// Pixels of HEIC and HEIF pictures (ISO/IEC 23008-12), which neither the window's nor any page's own readers know.
//
// Result   the file's main picture, upright: its rotation, mirror and crop are applied. Eight bits a channel.
// Refused  bytes that are no such file, are cut short or damaged, or hold more than kMaxPixels: absent.
// Threads  any; no state between calls.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace host {

struct HeicPicture {
    static constexpr std::int64_t kMaxPixels = 100'000'000;   // twice the largest phone camera

    int width = 0, height = 0;
    std::vector<std::uint8_t> rgba;   // row after row from the top, straight alpha

    [[nodiscard]] static std::optional<HeicPicture> decode(std::string_view bytes);
};

}  // namespace host
