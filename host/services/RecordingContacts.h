// The address book as the plug-in gets it: passes everything on and notes in an OperationRecord what each item became. A
// failed export leaves the file that stood there, or none.
// Threads  as the address book itself.
#pragma once

#include <memory>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/CContactManagerImpl.h"
#include "device/FailureLog.h"
#include "host/services/OperationRecord.h"

namespace host {

class RecordingContacts : public CContactManagerImpl {
public:
    // `failures` is the log of `contacts`.
    RecordingContacts(std::shared_ptr<CContactManagerImpl> contacts, device::FailureLog &failures, std::shared_ptr<OperationRecord> record)
        : contacts_(std::move(contacts)), failures_(failures), record_(std::move(record)) {}

    void getContactDataFromAddressList() override;
    void freeAddressBookInfo() override { contacts_->freeAddressBookInfo(); }
    [[nodiscard]] ContactList contactArray() override { return contacts_->contactArray(); }
    [[nodiscard]] ContactGroupList groupArray() override { return contacts_->groupArray(); }
    [[nodiscard]] std::int64_t isDeviceiCloudOpen(std::int64_t kind) override { return contacts_->isDeviceiCloudOpen(kind); }
    bool addNewContact_toGroups(const std::shared_ptr<ZpContactDataInfo> &contact, const ContactGroupList &groups) override;
    void addNewContacts_toGroups_progress(const ContactList &contacts, const ContactGroupList &groups,
                                          const AddProgress &progress) override;
    std::int64_t editContacts_onGroups(const ContactList &contacts, const ContactGroupList &groups) override;
    void deleteContactsOrGroups_callBack(const ContactList &contacts, const DeleteProgress &progress) override;
    void exportContactsToVCFFile_toPath(const ContactList &contacts, const NSString &path) override;
    void exportContactsToCSVFileFromArray_toPath_callBack(const ContactList &contacts, const NSString &path,
                                                          const ExportFinish &finish) override;
    bool combineRepeatContacts_newContact_toGroup(const ContactList &contacts, const std::shared_ptr<ZpContactDataInfo> &merged,
                                                  const ContactGroupList &groups) override;

private:
    // One item or one whole call that gives a plain answer.
    bool noted(bool success);
    std::shared_ptr<CContactManagerImpl> contacts_;
    device::FailureLog &failures_;
    std::shared_ptr<OperationRecord> record_;
};

}  // namespace host
