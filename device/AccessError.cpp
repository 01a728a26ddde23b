#include "device/AccessError.h"

#include <cerrno>
#include <cstring>

namespace device {

AccessError::AccessError(Kind kind, const std::string &path, const std::string &reason)
    : std::runtime_error(path.empty() ? reason : path + ": " + reason), kind_(kind) {}

AccessError::~AccessError() = default;

AccessError AccessError::ofSystem(int error, const std::string &path) {
    const auto kind = [error] {
        switch (error) {
        case EACCES:
        case EPERM:
        case EROFS: return Kind::readOnly;
        case ENOENT:
        case ENOTDIR: return Kind::missing;
        case ENOSPC:
        case EDQUOT:
        case EFBIG: return Kind::noSpace;
        default: return Kind::failed;
        }
    };
    return {kind(), path, std::strerror(error)};
}

}  // namespace device
