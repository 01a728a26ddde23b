#include "host/import/Pictures.h"

#include <algorithm>

namespace host::foreign {

bool isPicture(std::string_view bytes) {
    constexpr std::string_view kStarts[] = {"\xFF\xD8\xFF", "\x89PNG\r\n\x1A\n", "GIF8", "BM", std::string_view("II*\0", 4),
                                            std::string_view("MM\0*", 4)};
    if (std::ranges::any_of(kStarts, [&](std::string_view start) { return bytes.starts_with(start); }))
        return true;
    return bytes.size() > 12 && ((bytes.starts_with("RIFF") && bytes.substr(8, 4) == "WEBP") ||
                                 (bytes.substr(4, 4) == "ftyp" && (bytes.substr(8, 3) == "hei" || bytes.substr(8, 3) == "mif")));
}

}  // namespace host::foreign
