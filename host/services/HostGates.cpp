#include "host/services/HostGates.h"

#include <filesystem>

#include "HNManagerPlugin/contracts/RVFoundation/NSStringFormats.h"
#include "toolkit/services/UserFolders.h"

namespace host {

using Kind = device::AccessError::Kind;

namespace {

// A path that does not stand yet lies where its nearest folder does.
std::int64_t roomAt(std::filesystem::path path) {
    std::error_code error;
    while (!path.empty() && !std::filesystem::exists(path, error) && path != path.parent_path())
        path = path.parent_path();
    const auto space = std::filesystem::space(path.empty() ? "." : path, error);
    return error ? 0 : static_cast<std::int64_t>(space.available);
}

std::string needs(std::int64_t bytes, std::int64_t room) {
    return byteDecFormatFromInteger(bytes).str() + " of room are needed, " + byteDecFormatFromInteger(room).str() + " are free";
}

}  // namespace

bool HostGates::actionRequestDiskSize(std::int64_t bytes) {
    return actionRequestDiskSize_withPath(bytes, userFolders().applicationSupport);
}

bool HostGates::actionRequestDiskSize_withPath(std::int64_t bytes, const NSString &path) {
    const std::int64_t room = roomAt(path.str());
    if (room >= bytes)
        return true;
    refused_(Kind::noSpace, path.str() + ": " + needs(bytes, room));
    return false;
}

bool HostGates::actionRequestDeviceSize(std::int64_t bytes) {
    const auto session = layer_->session();
    if (!session || !session->isConnected()) {
        refused_(Kind::gone, "no device is connected");
        return false;
    }
    try {
        const device::WriterLock lock = session->tree()->lockForWriting();
    } catch (const device::AccessError &error) {
        refused_(error.kind(), error.what());
        return false;
    }
    session->refreshAvailableSize();
    if (session->dataFreeSize() >= bytes)
        return true;
    refused_(Kind::noSpace, session->name().str() + ": " + needs(bytes, session->dataFreeSize()));
    return false;
}

}  // namespace host
