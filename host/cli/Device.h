// What a device says about itself, as a result.
#pragma once

#include "device/Session.h"
#include "host/cli/Console.h"

namespace host::cli {

// {"name", "UUID", "iOSVersion", "freeBytes", "totalBytes", "kind": "image" or "backup"}
[[nodiscard]] Json deviceInfo(const device::Session &device);
void printDeviceInfo(const device::Session &device, Console &console);

}  // namespace host::cli
