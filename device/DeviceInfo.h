// What a device says about itself. Texts are valid UTF-8 and may be empty.
#pragma once

#include <cstdint>

#include "toolkit/NSString.h"

namespace device {

enum class DeviceKind { image, backup };

// As the contracts count them.
enum class CloudKind : std::int64_t { contacts = 0, bookmarks = 2, messages = 4 };

struct DeviceInfo {
    DeviceKind kind = DeviceKind::image;
    NSString name, UUID, iOSVersion, productType;
    std::int64_t totalBytes = 0;   // 0 where the device does not say
    bool willEncrypt = false;      // backups of it are encrypted
};

}  // namespace device
