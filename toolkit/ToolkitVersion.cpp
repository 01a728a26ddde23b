#include "toolkit/ToolkitVersion.h"

#include <atomic>

namespace {

std::atomic<double> toolkitVersion{1561};
std::atomic<NSOperatingSystemVersion> systemVersion{NSOperatingSystemVersion{10, 14, 0}};

}  // namespace

double NSAppKitVersionNumber() { return toolkitVersion; }
void setAppKitVersionNumber(double version) { toolkitVersion = version; }
NSOperatingSystemVersion operatingSystemVersion() { return systemVersion; }
void setOperatingSystemVersion(NSOperatingSystemVersion version) { systemVersion = version; }
