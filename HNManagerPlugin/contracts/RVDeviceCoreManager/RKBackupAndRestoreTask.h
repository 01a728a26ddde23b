// The device backup: taking one, parsing one, the password of the device's backups.
//
// Threads    operations may be called on any thread. Callbacks come on a thread of the layer, one after the other, never
//            two at a time, never inside the call that started the work.
// Delegates  are held weakly and read anew for each callback; one that has gone or was detached hears nothing.
// Ends       a backup that was started ends with exactly one `backupOver...`, unless a later start supersedes it: then it
//            ends without one. A parse always ends with one `parseAllOver`.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MessageBackupChat.h"

// All callbacks are optional.
class RKBackupAndRestoreTaskDelegate {
public:
    virtual ~RKBackupAndRestoreTaskDelegate() = default;
    // Percent of the bytes, 0 to 100, at least every 100 ms while a backup runs.
    virtual void backupProgress(double) {}
    // `path` is the folder that the backup made, absent where there is none. `backupRes`: 0 done, 111 ended by
    // `stopBackup` or a lost device, 1 a full disk or a read error. The flag says nothing that anybody needs.
    virtual void backupOverWithcSeccussFlag_path_backupRes(std::uint32_t, NSString, std::uint32_t) {}
    // One parsed object; type 2 is a MessageBackupChat. `progress` is a fraction, 0 to 1.
    virtual void parseOneOver_type_progress(std::shared_ptr<NSObject>, std::uint32_t, float) {}
    virtual void parseAllOver() {}
};

class RKBackupAndRestoreTask : public NSObject {
public:
    static constexpr std::uint32_t kMessages = 8;    // the flag of a backup of messages alone
    static constexpr std::uint32_t kStopped = 111;   // result code of a backup that was stopped
    static constexpr std::uint32_t kChat = 2;        // type of a parsed MessageBackupChat
    using Factory = std::function<std::shared_ptr<RKBackupAndRestoreTask>()>;

    // The task that all share; it takes the backups.
    [[nodiscard]] static std::shared_ptr<RKBackupAndRestoreTask> sharedInstance();
    // A task of one's own, for parsing.
    [[nodiscard]] static std::shared_ptr<RKBackupAndRestoreTask> newTask();
    // What makes tasks from now on, the shared one included (on its next use). Null: tasks that fail every backup.
    static void install(Factory factory);
    // Null: made anew by the factory on its next use.
    static void setSharedInstance(std::shared_ptr<RKBackupAndRestoreTask> task);

    // An empty pointer detaches.
    virtual void setManagerDelegate(std::weak_ptr<RKBackupAndRestoreTaskDelegate> delegate);
    // Returns at once. `isIncrement` 0 is a full backup; it is made below `path`. The default fails at once with code 1.
    virtual void startBackup_flag_isIncrement(const NSString &path, std::uint32_t flag, std::uint32_t isIncrement);
    // Predicted bytes.
    [[nodiscard]] virtual std::int64_t localSpaceToBackup(std::uint32_t) { return 0; }
    // 0 not encrypted, 1 encrypted, 2 or more: the query failed. Blocks.
    [[nodiscard]] virtual std::uint32_t isDeviceBackupEncrypted() { return 0; }
    // 0 on success, another value for a wrong password. Both block.
    virtual std::int32_t removeDeviceBackupPassword(const NSString &) { return 1; }
    virtual std::int32_t setDeviceBackupPassword(const NSString &) { return 1; }
    [[nodiscard]] virtual bool isBackuping() { return false; }
    virtual void stopBackup() {}
    // Makes a parse task ready for another file.
    virtual void clearData() {}
    // Returns at once. The default finds nothing and is over at once.
    virtual void startParseBackupFile(const std::shared_ptr<BackupFileInfo> &file);
    // Throttles the running backup to a tenth of its pace, or lifts that. Without a backup nothing happens.
    virtual void enterSpeedLimitBackup() {}
    virtual void exitSpeedLimitBackup() {}

protected:
    // The delegate of this moment; null where there is none.
    [[nodiscard]] std::shared_ptr<RKBackupAndRestoreTaskDelegate> delegate() const;

private:
    mutable std::mutex delegateGuard_;
    std::weak_ptr<RKBackupAndRestoreTaskDelegate> delegate_;
};
