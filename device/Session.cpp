#include "device/Session.h"

#include "device/OpenError.h"

namespace device {

Session::Session(std::shared_ptr<FileTree> tree) : tree_(std::move(tree)) {
    try {
        info_ = tree_->info();
    } catch (const AccessError &error) {
        throw OpenError(OpenError::Kind::damaged, tree_->root(), error.what());
    }
    refreshAvailableSize();
}

void Session::refreshAvailableSize() { freeBytes_ = tree_->freeBytes(); }

std::int64_t Session::totalBytes() const { return info_.totalBytes ? info_.totalBytes : tree_->usedBytes() + freeBytes_; }

}  // namespace device
