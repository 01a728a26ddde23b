// The device backup. So far what the category tree asks of it: the speed limit of a backup that runs.
#pragma once

#include <memory>

#include "toolkit/NSObject.h"

class RKBackupAndRestoreTask : public NSObject {
public:
    // The shared task; the one that does nothing until a device layer sets its own.
    [[nodiscard]] static std::shared_ptr<RKBackupAndRestoreTask> sharedInstance();
    // Null goes back to the one that does nothing.
    static void setSharedInstance(std::shared_ptr<RKBackupAndRestoreTask> task);

    // Throttles the running backup to a tenth of its pace, or lifts that. Without a backup nothing happens. Any thread.
    virtual void enterSpeedLimitBackup() {}
    virtual void exitSpeedLimitBackup() {}
};
