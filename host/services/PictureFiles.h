// Picture files for pages: HEIC to JPEG. Threads: any.
#pragma once

#include <functional>
#include <string>

namespace host {

// Installs the converter of the contracts; `warn` hears of each picture that cannot be decoded, by its name. Empty: no
// converter any more.
void installPictureConverter(std::function<void(const std::string &)> warn);

}  // namespace host
