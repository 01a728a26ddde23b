// Opens a folder as a device, whichever kind it is.
#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "device/FileTree.h"
#include "device/OpenError.h"

namespace device {

// An image has a Device.plist, a backup a Manifest.db. Throws OpenError: noSuchFolder, noDevice (neither of them),
// encrypted, damaged, or folderOfBackups with the list of the backups inside.
[[nodiscard]] std::shared_ptr<FileTree> openDevice(const std::filesystem::path &folder);

}  // namespace device
