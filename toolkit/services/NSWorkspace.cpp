#include "toolkit/services/NSWorkspace.h"

NSWorkspace &NSWorkspace::sharedWorkspace() {
    static auto *workspace = new NSWorkspace;
    return *workspace;
}

void NSWorkspace::install(std::shared_ptr<WorkspaceService> service) {
    const std::scoped_lock lock(mutex_);
    service_ = std::move(service);
}

std::shared_ptr<WorkspaceService> NSWorkspace::service() {
    const std::scoped_lock lock(mutex_);
    return service_;
}

bool NSWorkspace::openFile(const NSString &path) {
    const auto opener = service();
    return opener && !path.isEmpty() && opener->openFile(path);
}

bool NSWorkspace::openURL(const NSString &address) {
    const auto opener = service();
    return opener && !address.isEmpty() && opener->openURL(address);
}

void NSWorkspace::openMedia(const NSString &path) { openFile(path); }
