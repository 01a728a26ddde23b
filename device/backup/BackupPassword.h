// The password of a device's backups as an image keeps it: a salt and a PBKDF2-HMAC-SHA256 of the password, never the text.
#pragma once

#include <string>
#include <string_view>

namespace device::backup {

// The bytes to keep, with a new salt. Throws AccessError where the system gives no random bytes.
[[nodiscard]] std::string sealedPassword(std::string_view password);
// False for bytes that no `sealedPassword` made.
[[nodiscard]] bool isPassword(std::string_view password, std::string_view sealed);

}  // namespace device::backup
