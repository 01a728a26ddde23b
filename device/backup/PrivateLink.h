// A way to a folder whose own path some commands cannot take: a link in a private folder, gone when this object ends.
// The device's programs put paths between single quotes, so a path with one in it is such a path.
#pragma once

#include <filesystem>
#include <memory>

#include "device/ScratchFolder.h"

namespace device::backup {

class PrivateLink {
public:
    // Without a single quote in it the folder is its own way. Throws AccessError where no link can be made.
    explicit PrivateLink(std::filesystem::path folder);
    [[nodiscard]] const std::filesystem::path &path() const { return path_; }

private:
    std::unique_ptr<ScratchFolder> scratch_;
    std::filesystem::path path_;
};

}  // namespace device::backup
