// SHA-256 (FIPS 180-4) in Base64, as a content security policy names an inline script or style. For short texts.
#pragma once

#include <string>
#include <string_view>

[[nodiscard]] std::string sha256Base64(std::string_view text);
