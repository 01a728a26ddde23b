// Threads: any.
#pragma once

#include <string_view>

namespace host::foreign {

// The bytes begin as a JPEG, PNG, GIF, BMP, TIFF, WebP or HEIC file does.
[[nodiscard]] bool isPicture(std::string_view bytes);

}  // namespace host::foreign
