// The device backup of the contract, on images and backup folders.
//
// Device   the one that is current when a call comes; a backup that runs keeps the one that it began with. A device that is
//          itself a backup is not copied: its own folder is the result, through a private link where its path holds a
//          single quote.
// Threads  work and callbacks run on one serial queue of the process, so that a parse and a backup wait for each other.
// Reasons  every failure of a backup, a parse or a password is told to `failed`, on the thread that met it.
#pragma once

#include <atomic>
#include <map>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RKBackupAndRestoreTask.h"
#include "device/FailureLog.h"
#include "device/FileTree.h"
#include "device/backup/BackupWriter.h"
#include "device/backup/PrivateLink.h"
#include "device/plist/PropertyList.h"

namespace device::backup {

class BackupTask : public RKBackupAndRestoreTask {
public:
    struct Environment {
        std::function<std::shared_ptr<FileTree>()> device;   // the current one, or null
        std::function<void(const Failure &)> failed;
        std::function<std::chrono::steady_clock::time_point()> now = std::chrono::steady_clock::now;
    };

    explicit BackupTask(Environment environment) : environment_(std::move(environment)) {}

    void startBackup_flag_isIncrement(const NSString &path, std::uint32_t flag, std::uint32_t isIncrement) override;
    [[nodiscard]] std::int64_t localSpaceToBackup(std::uint32_t flag) override;
    // 2 without a device, and where its description cannot be read.
    [[nodiscard]] std::uint32_t isDeviceBackupEncrypted() override;
    // 1 for a wrong password, where there is none to take off, and where the image cannot be written.
    std::int32_t removeDeviceBackupPassword(const NSString &password) override;
    // 1 where backups are encrypted already, for an empty password, and where the image cannot be written.
    std::int32_t setDeviceBackupPassword(const NSString &password) override;
    [[nodiscard]] bool isBackuping() override;
    void stopBackup() override;
    // Ends a parse that runs or waits; its `parseAllOver` still comes.
    void clearData() override { ++parses_; }
    void startParseBackupFile(const std::shared_ptr<BackupFileInfo> &file) override;
    void enterSpeedLimitBackup() override;
    void exitSpeedLimitBackup() override { isSlow_ = false; }

private:
    struct Job {
        std::uint64_t number = 0;
        std::filesystem::path parent;
        std::uint32_t flag = 0;
        std::shared_ptr<FileTree> device;
    };
    struct Result {
        std::filesystem::path path;   // empty where there is none
        std::uint32_t code = 0;
    };
    enum class Fate { goesOn, stopped, superseded };

    void runBackup(const Job &job);
    [[nodiscard]] Result take(const Job &job);
    [[nodiscard]] std::filesystem::path takeCopy(const Job &job);
    [[nodiscard]] Fate fateOf(const Job &job) const;
    // Its folder was removed below the running backup: whoever did that is about to start another or to stop this one.
    void waitForOrders(const Job &job) const;
    void runParse(const NSString &path, std::uint64_t number);
    void report(double percent) const;
    void fail(const std::exception &error) const;
    [[nodiscard]] std::int32_t changePassword(const std::function<void(PropertyList &)> &change) const;

    Environment environment_;
    mutable std::mutex guard_;   // of the three below
    std::uint64_t started_ = 0, stopped_ = 0, ended_ = 0;   // numbers of the latest such backup
    std::map<std::filesystem::path, PrivateLink> links_;    // only on the queue
    std::atomic<bool> isSlow_ = false;
    std::atomic<std::uint64_t> parses_ = 0;
};

}  // namespace device::backup
