#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RKBackupAndRestoreTask.h"

#include <mutex>

namespace {

struct Shared {
    std::mutex mutex;
    std::shared_ptr<RKBackupAndRestoreTask> task;
};

Shared &shared() {
    static auto *holder = new Shared;
    return *holder;
}

}  // namespace

std::shared_ptr<RKBackupAndRestoreTask> RKBackupAndRestoreTask::sharedInstance() {
    const std::scoped_lock lock(shared().mutex);
    if (!shared().task)
        shared().task = make<RKBackupAndRestoreTask>();
    return shared().task;
}

void RKBackupAndRestoreTask::setSharedInstance(std::shared_ptr<RKBackupAndRestoreTask> task) {
    const std::scoped_lock lock(shared().mutex);
    shared().task.swap(task);
}
