#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RKBackupAndRestoreTask.h"

#include "toolkit/dispatch/Queue.h"

namespace {

struct Installed {
    std::mutex mutex;
    RKBackupAndRestoreTask::Factory factory;
    std::shared_ptr<RKBackupAndRestoreTask> shared;
};

Installed &installed() {
    static auto *holder = new Installed;
    return *holder;
}

std::shared_ptr<RKBackupAndRestoreTask> makeBy(const RKBackupAndRestoreTask::Factory &factory) {
    return factory ? factory() : make<RKBackupAndRestoreTask>();
}

}  // namespace

std::shared_ptr<RKBackupAndRestoreTask> RKBackupAndRestoreTask::sharedInstance() {
    const std::scoped_lock lock(installed().mutex);
    if (!installed().shared)
        installed().shared = makeBy(installed().factory);
    return installed().shared;
}

std::shared_ptr<RKBackupAndRestoreTask> RKBackupAndRestoreTask::newTask() {
    Factory factory;
    {
        const std::scoped_lock lock(installed().mutex);
        factory = installed().factory;
    }
    return makeBy(factory);
}

void RKBackupAndRestoreTask::install(Factory factory) {
    std::shared_ptr<RKBackupAndRestoreTask> old;   // ends outside the lock
    const std::scoped_lock lock(installed().mutex);
    installed().factory.swap(factory);
    old.swap(installed().shared);
}

void RKBackupAndRestoreTask::setSharedInstance(std::shared_ptr<RKBackupAndRestoreTask> task) {
    const std::scoped_lock lock(installed().mutex);
    installed().shared.swap(task);
}

void RKBackupAndRestoreTask::setManagerDelegate(std::weak_ptr<RKBackupAndRestoreTaskDelegate> delegate) {
    const std::scoped_lock lock(delegateGuard_);
    delegate_ = std::move(delegate);
}

std::shared_ptr<RKBackupAndRestoreTaskDelegate> RKBackupAndRestoreTask::delegate() const {
    const std::scoped_lock lock(delegateGuard_);
    return delegate_.lock();
}

void RKBackupAndRestoreTask::startBackup_flag_isIncrement(const NSString &, std::uint32_t, std::uint32_t) {
    dispatch::async(dispatch::global(), [self = std::static_pointer_cast<RKBackupAndRestoreTask>(shared_from_this())] {
        if (const auto delegate = self->delegate())
            delegate->backupOverWithcSeccussFlag_path_backupRes(0, NSString(), 1);
    });
}

void RKBackupAndRestoreTask::startParseBackupFile(const std::shared_ptr<BackupFileInfo> &) {
    dispatch::async(dispatch::global(), [self = std::static_pointer_cast<RKBackupAndRestoreTask>(shared_from_this())] {
        if (const auto delegate = self->delegate())
            delegate->parseAllOver();
    });
}
