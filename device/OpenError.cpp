#include "device/OpenError.h"

namespace device {

OpenError::OpenError(Kind kind, std::filesystem::path path, const std::string &reason, std::vector<std::filesystem::path> backups)
    : std::runtime_error(path.string() + ": " + reason), kind_(kind), path_(std::move(path)), backups_(std::move(backups)) {}

OpenError::~OpenError() = default;

}  // namespace device
