#include "host/services/RecordingContacts.h"

#include <filesystem>

#include "toolkit/services/NSFileManager.h"
#include "toolkit/views/SetAsideFile.h"

namespace host {

namespace {

// The flow has made an empty file and looks at nothing afterwards: a failed export leaves what stood there before it.
void settleExport(const NSString &path, bool isWritten) {
    namespace fs = std::filesystem;
    std::error_code ignored;
    if (SetAsideFile::isHeld(path))
        SetAsideFile::settle(path, isWritten);
    else if (const fs::path file = path.str(); !isWritten && fs::is_regular_file(fs::symlink_status(file, ignored)) && fs::is_empty(file, ignored))
        fs::remove(file, ignored);
}

}  // namespace

bool RecordingContacts::noted(bool success) {
    record_->count(success);
    if (!success)
        record_->explain(failures_.first());
    return success;
}

void RecordingContacts::getContactDataFromAddressList() {
    contacts_->getContactDataFromAddressList();
    record_->explain(failures_.first());   // a list that cannot be read is empty, and only its reason tells so
}

bool RecordingContacts::addNewContact_toGroups(const std::shared_ptr<ZpContactDataInfo> &contact, const ContactGroupList &groups) {
    record_->ask(1);
    return noted(contacts_->addNewContact_toGroups(contact, groups));
}

void RecordingContacts::addNewContacts_toGroups_progress(const ContactList &contacts, const ContactGroupList &groups,
                                                         const AddProgress &progress) {
    record_->ask(static_cast<std::int64_t>(contacts.size()));
    contacts_->addNewContacts_toGroups_progress(contacts, groups, [&](std::int64_t index, std::int64_t total, std::int32_t result) {
        if (total > 0)   // the call for an empty list tells of no item
            noted(result == 0);
        return progress ? progress(index, total, result) : 0;
    });
}

std::int64_t RecordingContacts::editContacts_onGroups(const ContactList &contacts, const ContactGroupList &groups) {
    const auto asked = static_cast<std::int64_t>(contacts.size());
    record_->ask(asked);
    const std::int64_t changed = contacts_->editContacts_onGroups(contacts, groups);
    const std::int64_t succeeded = std::min(std::max<std::int64_t>(changed, 0), asked);
    record_->count(true, succeeded);
    record_->count(false, asked - succeeded);
    if (succeeded < asked)
        record_->explain(failures_.first());
    return changed;
}

void RecordingContacts::deleteContactsOrGroups_callBack(const ContactList &contacts, const DeleteProgress &progress) {
    record_->ask(static_cast<std::int64_t>(contacts.size()));
    contacts_->deleteContactsOrGroups_callBack(
        contacts, [&](std::int64_t index, std::int64_t total, std::shared_ptr<ZpContactDataInfo> contact, bool success, bool *stop) {
            if (total > 0)
                noted(success);
            if (progress)
                progress(index, total, std::move(contact), success, stop);
        });
}

void RecordingContacts::exportContactsToVCFFile_toPath(const ContactList &contacts, const NSString &path) {
    const auto asked = static_cast<std::int64_t>(contacts.size());
    record_->ask(asked);
    contacts_->exportContactsToVCFFile_toPath(contacts, path);
    const bool stands = !failures_.first() && NSFileManager::fileExistsAtPath(path);
    settleExport(path, stands);
    record_->count(stands, asked);
    if (!stands)
        record_->explain(failures_.first());
}

void RecordingContacts::exportContactsToCSVFileFromArray_toPath_callBack(const ContactList &contacts, const NSString &path,
                                                                         const ExportFinish &finish) {
    const auto asked = static_cast<std::int64_t>(contacts.size());
    record_->ask(asked);
    contacts_->exportContactsToCSVFileFromArray_toPath_callBack(contacts, path, [&, asked](std::int32_t result, std::int64_t count) {
        const std::int64_t written = result == 0 ? std::min(count, asked) : 0;
        settleExport(path, result == 0);
        record_->count(true, written);
        record_->count(false, asked - written);
        record_->explain(failures_.first());   // of a whole file, too: what its readers may not take
        if (finish)
            finish(result, count);
    });
}

bool RecordingContacts::combineRepeatContacts_newContact_toGroup(const ContactList &contacts,
                                                                 const std::shared_ptr<ZpContactDataInfo> &merged,
                                                                 const ContactGroupList &groups) {
    record_->ask(1);
    return noted(contacts_->combineRepeatContacts_newContact_toGroup(contacts, merged, groups));
}

}  // namespace host
