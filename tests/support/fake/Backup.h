// A device backup that a test drives by hand, and an address book; both say in one log what they were asked for.
#pragma once

#include <deque>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/CContactManagerImpl.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RKBackupAndRestoreTask.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "tests/support/EventLog.h"
#include "toolkit/Property.h"

// One task; the shared one and the parsing one log under their names. Nothing is called back by itself: `call` runs on the
// layer's own queue.
class FakeBackupTask : public RKBackupAndRestoreTask {
public:
    std::string name;
    std::shared_ptr<EventLog> log;
    std::deque<std::uint32_t> encrypted;   // answers of the query, the last one for ever; none is 0
    NSString password;   // of the device's backups
    std::int32_t setResult = 0;
    int secondsPerCheck = 0;   // of the test's clock, per password
    Shared<bool> running;
    std::vector<std::shared_ptr<NSObject>> parsed;   // what startParseBackupFile delivers, as type 2
    std::function<void()> whenStarted;

    // The delegate of the moment hears it.
    void call(std::function<void(RKBackupAndRestoreTaskDelegate &)> what);
    // Ends the running backup.
    void over(NSString path, std::uint32_t result);

    void setManagerDelegate(std::weak_ptr<RKBackupAndRestoreTaskDelegate> delegate) override;
    void startBackup_flag_isIncrement(const NSString &path, std::uint32_t flag, std::uint32_t isIncrement) override;
    std::int64_t localSpaceToBackup(std::uint32_t flag) override { return 1000 + flag; }
    std::uint32_t isDeviceBackupEncrypted() override;
    std::int32_t removeDeviceBackupPassword(const NSString &given) override;
    std::int32_t setDeviceBackupPassword(const NSString &given) override;
    bool isBackuping() override { return running; }
    void stopBackup() override { say("stop"); }
    void clearData() override { say("clear"); }
    void startParseBackupFile(const std::shared_ptr<BackupFileInfo> &file) override;
    void enterSpeedLimitBackup() override { say("slow"); }
    void exitSpeedLimitBackup() override { say("fast"); }

private:
    void say(const std::string &what) { log->add(name + " " + what); }
};

class FakeAddressBook : public CContactManagerImpl {
public:
    std::shared_ptr<EventLog> log;
    ContactList stored;
    std::int64_t cloud = 0;   // of messages
    int secondsToList = 0;   // of the test's clock, per call of contactArray

    void add(const NSString &completeName, std::vector<NSString> numbers);

    void getContactDataFromAddressList() override { log->add("contacts read"); }
    void freeAddressBookInfo() override { log->add("contacts free"); }
    ContactList contactArray() override;
    ContactGroupList groupArray() override { return {}; }
    std::int64_t isDeviceiCloudOpen(std::int64_t kind) override { return kind == 4 ? cloud : 0; }
    bool addNewContact_toGroups(const std::shared_ptr<ZpContactDataInfo> &, const ContactGroupList &) override { return false; }
    void addNewContacts_toGroups_progress(const ContactList &, const ContactGroupList &, const AddProgress &) override {}
    std::int64_t editContacts_onGroups(const ContactList &, const ContactGroupList &) override { return 0; }
    void deleteContactsOrGroups_callBack(const ContactList &, const DeleteProgress &) override {}
    void exportContactsToVCFFile_toPath(const ContactList &, const NSString &) override {}
    void exportContactsToCSVFileFromArray_toPath_callBack(const ContactList &, const NSString &, const ExportFinish &) override {}
    bool combineRepeatContacts_newContact_toGroup(const ContactList &, const std::shared_ptr<ZpContactDataInfo> &,
                                                  const ContactGroupList &) override {
        return false;
    }
};

// A device with this address book alone.
[[nodiscard]] std::shared_ptr<DeviceContext> contextWith(std::shared_ptr<CContactManagerImpl> contacts);

// A chat made of plain messages, for tests to change.
struct FakeMessage {
    NSString content;
    std::int64_t second = 0;   // since 2024-01-01 00:00:00 UTC
    bool isSend = false, isFailed = false, isAttachment = false;
    NSString type = {}, fileName = {}, personSend = {}, callerID = {};
};
[[nodiscard]] std::shared_ptr<MessageBackupChat> chatOf(std::uint64_t id, std::vector<NSString> persons, const std::vector<FakeMessage> &messages);
