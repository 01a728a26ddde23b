#include "device/backup/PrivateLink.h"

#include "device/AccessError.h"

namespace device::backup {

namespace fs = std::filesystem;

namespace {

bool hasQuote(const fs::path &path) { return path.native().find('\'') != std::string::npos; }

}  // namespace

PrivateLink::PrivateLink(fs::path folder) : path_(std::move(folder)) {
    if (!hasQuote(path_))
        return;
    scratch_ = std::make_unique<ScratchFolder>();
    if (hasQuote(scratch_->path()))   // the user's own folders lie below such a path
        scratch_ = std::make_unique<ScratchFolder>(fs::path("/tmp"));
    const fs::path link = scratch_->path() / "backup";
    std::error_code error;
    fs::create_directory_symlink(path_, link, error);
    if (error)
        throw AccessError::ofSystem(error.value(), link.string());
    path_ = link;
}

}  // namespace device::backup
