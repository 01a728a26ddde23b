// A contact category on a small device in memory, with its view in a window.
#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "HNManagerPlugin/Classes/SubItemViewController/HNMbaseViewController.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewManager/HNMContactViewManager.h"
#include "tests/support/ContactText.h"
#include "tests/support/FakeDevice.h"
#include "tests/support/PluginWorld.h"

// Says in its log what it was asked for. Adding keeps the order; adding contacts whose last name, and deleting those
// whose display name stands in `refused` fails.
class MemoryContacts : public CContactManagerImpl {
public:
    ContactList stored;
    ContactGroupList groups;
    std::int64_t cloud = 0;
    std::vector<NSString> refused;
    int secondsPerContact = 0;   // of the test's clock, before each
    EventLog log;

    void getContactDataFromAddressList() override;
    void freeAddressBookInfo() override {}
    ContactList contactArray() override { return read_; }
    ContactGroupList groupArray() override { return groups; }
    std::int64_t isDeviceiCloudOpen(std::int64_t kind) override;
    bool addNewContact_toGroups(const std::shared_ptr<ZpContactDataInfo> &, const ContactGroupList &) override;
    void addNewContacts_toGroups_progress(const ContactList &contacts, const ContactGroupList &groups,
                                          const AddProgress &progress) override;
    std::int64_t editContacts_onGroups(const ContactList &contacts, const ContactGroupList &groups) override;
    void deleteContactsOrGroups_callBack(const ContactList &contacts, const DeleteProgress &progress) override;
    // Both only say so; the second claims one contact fewer than it was given.
    void exportContactsToVCFFile_toPath(const ContactList &contacts, const NSString &path) override;
    void exportContactsToCSVFileFromArray_toPath_callBack(const ContactList &contacts, const NSString &path,
                                                          const ExportFinish &finish) override;
    // Refuses a survivor whose display name stands in `refused`.
    bool combineRepeatContacts_newContact_toGroup(const ContactList &, const std::shared_ptr<ZpContactDataInfo> &,
                                                  const ContactGroupList &) override;

private:
    ContactList read_;
};

class ContactCategory : public testing::Test {
protected:
    ContactCategory();
    ~ContactCategory() override;
    // Makes the view; the load begins.
    void open();
    // open and settle, with contacts of these names; their being read goes out of the log.
    void openWith(const std::vector<NSString> &names);
    void press(const char *identifier);   // click and settle
    // "Ann Bob"; "-" for an empty name.
    [[nodiscard]] std::string rows(const NSMutableArray &list) const;
    [[nodiscard]] std::string rows() const { return rows(*model_->contents); }
    [[nodiscard]] std::string details() const;   // "type: info" a line
    bool search(const NSString &text);   // whether the table shows
    [[nodiscard]] bool isTableShown() const { return !table_->isHidden(); }
    void click(const char *identifier);
    void select(std::vector<std::size_t> rows);
    // `more` as in ContactText.h.
    std::shared_ptr<ZpContactDataInfo> add(const NSString &name, std::string_view more = {});
    std::shared_ptr<ContactGroupInfo> group(const char *name, std::vector<NSString> keys = {});
    // What the panel that `press` opens asks for, of a person at home in /home/ann: types, folder and name, its digits as 0.
    // The panel is cancelled.
    [[nodiscard]] static std::string panelAsks(const std::function<void()> &press);

    PluginWorld world_;
    std::shared_ptr<MemoryContacts> device_;
    FakeDevice fake_;
    std::shared_ptr<HNMbaseViewController> controller_;
    std::shared_ptr<NSWindow> window_;
    std::shared_ptr<HNMContactViewManager> manager_;
    std::shared_ptr<HNMContactViewModel> model_;
    std::shared_ptr<RUIMenuTableView> table_;
};
