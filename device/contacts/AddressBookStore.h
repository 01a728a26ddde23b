// The address book of a device image or a backup folder.
//
// Reading  every version of the database; an image is read as it stands, a backup is never changed.
// Writing  one WriterLock per operation. A list goes in groups of up to 200 contacts or 100 ms, each group one
//          transaction over contacts and pictures, each contact a savepoint; a contact's callback comes after its
//          group's commit, on the calling thread. Killed at any moment, the device holds each contact whole or not.
// Lost     once the device has gone, the group at work and all that follow fail; each still brings its callback.
// Reasons  `failures` tells why; the contract itself only counts.
// Threads  any; a second writing operation at the same time is refused, not queued.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/CContactManagerImpl.h"
#include "device/FailureLog.h"
#include "device/FileTree.h"
#include "device/contacts/PictureSource.h"

namespace device::contacts {

class AddressBookWriter;

class AddressBookStore : public CContactManagerImpl {
public:
    struct GroupLimits {
        std::int64_t contacts = 200;
        std::chrono::milliseconds time{100};
        std::function<std::chrono::steady_clock::time_point()> now = std::chrono::steady_clock::now;
    };

    // Made by `open`.
    explicit AddressBookStore(std::shared_ptr<FileTree> tree);
    [[nodiscard]] static std::shared_ptr<AddressBookStore> open(std::shared_ptr<FileTree> tree);

    // A device without an address book gives empty lists. One that cannot be read (damaged, locked, no address book)
    // gives empty lists and a failure.
    void getContactDataFromAddressList() override;
    void freeAddressBookInfo() override;
    [[nodiscard]] ContactList contactArray() override;
    [[nodiscard]] ContactGroupList groupArray() override;
    [[nodiscard]] std::int64_t isDeviceiCloudOpen(std::int64_t kind) override;

    bool addNewContact_toGroups(const std::shared_ptr<ZpContactDataInfo> &contact, const ContactGroupList &groups) override;
    // An item's result is 0, or -1 where it failed.
    void addNewContacts_toGroups_progress(const ContactList &contacts, const ContactGroupList &groups,
                                          const AddProgress &progress) override;
    // A contact that stands on the device as it should counts as changed. Membership of groups that are passed is added.
    std::int64_t editContacts_onGroups(const ContactList &contacts, const ContactGroupList &groups) override;
    void deleteContactsOrGroups_callBack(const ContactList &contacts, const DeleteProgress &progress) override;
    bool combineRepeatContacts_newContact_toGroup(const ContactList &contacts, const std::shared_ptr<ZpContactDataInfo> &merged,
                                                  const ContactGroupList &groups) override;
    // See CardText.h and TableText.h. The target is replaced whole or stays as it was; one without write permission stays.
    void exportContactsToVCFFile_toPath(const ContactList &contacts, const NSString &path) override;
    void exportContactsToCSVFileFromArray_toPath_callBack(const ContactList &contacts, const NSString &path,
                                                          const ExportFinish &finish) override;

    // Why the last operation failed, in whole or in part.
    [[nodiscard]] FailureLog &failures() { return failures_; }
    // For tests, and before the first operation.
    void setGroupLimits(GroupLimits limits) { limits_ = std::move(limits); }

private:
    // One item inside its savepoint; throws where it fails.
    using Work = std::function<void(AddressBookWriter &, std::int64_t index)>;
    // An item's outcome; true asks to stop.
    using Tell = std::function<bool(std::int64_t index, bool success)>;
    struct Task {
        std::int64_t total = 0;
        bool writesPictures = false;      // the picture database is made where it is missing
        bool needsPictures = true;        // opened where it is there
        std::function<void(AddressBookWriter &)> prepare = {};
        Work work;
        Tell tell;
    };

    void inGroups(const Task &task);
    // Writes one group from `first` on and gives each contact's outcome; throws where the whole group is lost.
    [[nodiscard]] std::vector<bool> writeGroup(sqlite::Database &database, AddressBookWriter &writer, const Task &task, std::int64_t first);
    // Runs `work` with a database that is open for writing.
    void withDatabase(const Task &task, const std::function<void(sqlite::Database &, AddressBookWriter &)> &work);
    // False where the pictures cannot be had; contacts without one are written all the same.
    bool attachPictures(const WriterLock &lock, sqlite::Database &database, const Task &task);
    void noteFailure(const std::exception &error, const std::string &record = "");

    std::shared_ptr<FileTree> tree_;
    std::shared_ptr<PictureSource> pictures_;
    FailureLog failures_;
    GroupLimits limits_;
    std::mutex guard_;   // of the two lists
    ContactList contacts_;
    ContactGroupList groups_;
};

}  // namespace device::contacts
