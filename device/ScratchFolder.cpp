#include "device/ScratchFolder.h"

#include <cerrno>
#include <cstdlib>

#include "device/AccessError.h"

namespace device {

namespace {
std::filesystem::path &parent() {
    static std::filesystem::path folder;
    return folder;
}
}  // namespace

ScratchFolder::ScratchFolder() : ScratchFolder(parent().empty() ? std::filesystem::temp_directory_path() : parent()) {}

ScratchFolder::ScratchFolder(const std::filesystem::path &inside) {
    std::string pattern = (inside / "hnmanager-XXXXXX").string();
    if (!mkdtemp(pattern.data()))   // mode 0700
        throw AccessError::ofSystem(errno, pattern);
    path_ = pattern;
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void ScratchFolder::setParent(std::filesystem::path folder) { parent() = std::move(folder); }

}  // namespace device
