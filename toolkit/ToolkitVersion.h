// Which toolkit and which system the plug-in believes to run on. A host or a test sets them before the plug-in loads.
// Any thread.
#pragma once

#include <compare>

struct NSOperatingSystemVersion {
    int majorVersion = 0, minorVersion = 0, patchVersion = 0;
    auto operator<=>(const NSOperatingSystemVersion &) const = default;
};

// 1561 unless set.
[[nodiscard]] double NSAppKitVersionNumber();
void setAppKitVersionNumber(double version);
// 10.14.0 unless set.
[[nodiscard]] NSOperatingSystemVersion operatingSystemVersion();
void setOperatingSystemVersion(NSOperatingSystemVersion version);
