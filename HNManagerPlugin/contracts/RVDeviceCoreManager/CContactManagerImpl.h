// The device's address book as the plug-in uses it.
//
// Threads   every operation blocks until done and may be called on any queue; callbacks come on the calling thread or a
//           thread of the layer, one after the other, never two at a time.
// Failure   an item that fails is told by its callback and the rest goes on; nothing throws. A lost device ends a call
//           early, its remaining items fail.
// Lists     `contactArray` is ordered as the device stores them; both lists stay those of the last read.
#pragma once

#include <cstdint>
#include <functional>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

class CContactManagerImpl : public NSObject {
public:
    // One contact was tried. `index` counts from 0; `result` 0 is success. A return value of 1 asks to stop: what is
    // committed by then still brings its callbacks. The last call has index + 1 equal to total, unless it was stopped;
    // after a stop was asked for, at least one further call comes where the asking call was not the last.
    // An empty list brings one call with 0, 0, -1.
    using AddProgress = std::function<std::int32_t(std::int64_t index, std::int64_t total, std::int32_t result)>;
    // `*stop` set to true asks to stop after this contact.
    using DeleteProgress = std::function<void(std::int64_t index, std::int64_t total, std::shared_ptr<ZpContactDataInfo> contact,
                                              bool success, bool *stop)>;
    // Called once, when the file stands or has failed; `count` is the number of contacts written.
    using ExportFinish = std::function<void(std::int32_t result, std::int64_t count)>;

    // Reads contacts and groups anew from the device into `contactArray` and `groupArray`.
    virtual void getContactDataFromAddressList() = 0;
    // Drops what was read.
    virtual void freeAddressBookInfo() = 0;
    [[nodiscard]] virtual ContactList contactArray() = 0;
    [[nodiscard]] virtual ContactGroupList groupArray() = 0;
    // Not 0 while this kind of data (0 contacts, 2 bookmarks, 4 messages) is kept in the cloud and not on the device.
    [[nodiscard]] virtual std::int64_t isDeviceiCloudOpen(std::int64_t kind) = 0;

    virtual bool addNewContact_toGroups(const std::shared_ptr<ZpContactDataInfo> &contact, const ContactGroupList &groups) = 0;
    virtual void addNewContacts_toGroups_progress(const ContactList &contacts, const ContactGroupList &groups,
                                                  const AddProgress &progress) = 0;
    // The number of contacts changed; 0 or less on failure.
    virtual std::int64_t editContacts_onGroups(const ContactList &contacts, const ContactGroupList &groups) = 0;
    virtual void deleteContactsOrGroups_callBack(const ContactList &contacts, const DeleteProgress &progress) = 0;
    virtual void exportContactsToVCFFile_toPath(const ContactList &contacts, const NSString &path) = 0;
    virtual void exportContactsToCSVFileFromArray_toPath_callBack(const ContactList &contacts, const NSString &path,
                                                                  const ExportFinish &finish) = 0;
    // Writes the survivor `merged` (one of `contacts`), removes the others of `contacts` and moves their group
    // memberships to it, all or nothing.
    virtual bool combineRepeatContacts_newContact_toGroup(const ContactList &contacts, const std::shared_ptr<ZpContactDataInfo> &merged,
                                                          const ContactGroupList &groups) = 0;
};
