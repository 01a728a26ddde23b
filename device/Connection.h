// Watches whether a device is still there, for a host that asks on a timer and posts the notice of its going.
// Threads  one.
#pragma once

#include <memory>

#include "device/FileTree.h"

namespace device {

class Connection {
public:
    explicit Connection(std::shared_ptr<const FileTree> tree) : tree_(std::move(tree)), isThere_(tree_->isThere()) {}

    // True once for each time that the device went away, at the first call after it.
    [[nodiscard]] bool checkConnection();
    // As of the last check.
    [[nodiscard]] bool isConnected() const { return isThere_; }

private:
    std::shared_ptr<const FileTree> tree_;
    bool isThere_;
};

}  // namespace device
