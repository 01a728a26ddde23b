// One opened device: who it is and what room it has. The host makes one per device and keeps it while that is current.
// Threads  any; name, UUID and version are those at the opening.
#pragma once

#include <atomic>
#include <memory>

#include "device/FileTree.h"

namespace device {

class Session {
public:
    // Throws OpenError where the device's description cannot be read.
    explicit Session(std::shared_ptr<FileTree> tree);

    [[nodiscard]] const std::shared_ptr<FileTree> &tree() const { return tree_; }
    [[nodiscard]] const NSString &name() const { return info_.name; }
    [[nodiscard]] const NSString &UUID() const { return info_.UUID; }
    [[nodiscard]] const NSString &iOSVersion() const { return info_.iOSVersion; }
    [[nodiscard]] const NSString &productType() const { return info_.productType; }
    [[nodiscard]] DeviceKind kind() const { return info_.kind; }
    [[nodiscard]] bool willEncrypt() const { return info_.willEncrypt; }

    // Asked anew each time.
    [[nodiscard]] bool isConnected() const { return tree_->isThere(); }
    [[nodiscard]] bool isInCloud(CloudKind kind) const { return tree_->isInCloud(kind); }

    // Counts the device's files again.
    void refreshAvailableSize();
    // Bytes, as of the last refresh (the opening counts as one). A backup has no room.
    [[nodiscard]] std::int64_t dataFreeSize() const { return freeBytes_; }
    // Bytes; where the device does not say, what its files take and what is free.
    [[nodiscard]] std::int64_t totalBytes() const;

private:
    std::shared_ptr<FileTree> tree_;
    DeviceInfo info_;
    std::atomic<std::int64_t> freeBytes_ = 0;
};

}  // namespace device
