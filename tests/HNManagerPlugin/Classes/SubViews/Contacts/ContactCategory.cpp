#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ContactCategory.h"

#include "toolkit/services/NSBundle.h"
#include "toolkit/services/UserFolders.h"
#include "toolkit/views/NSSavePanel.h"
#include "toolkit/views/Presenter.h"

namespace {

class PanelNotes : public Presenter {
public:
    std::string text;
    void panelDidOpen(NSSavePanel &panel) override {
        for (const NSString &type : panel.allowedFileTypes)
            text += type.str() + " ";
        text += panel.directoryURL.str();
        for (const char c :
             panel.nameFieldStringValue.isEmpty() ? std::string() : " " + panel.nameFieldStringValue.str())
            text += c >= '0' && c <= '9' ? '0' : c;
        dispatch::async(dispatch::main(), [p = panel.shared_from_this()] { static_cast<NSSavePanel &>(*p).cancel(); });
    }
};

class OneInterface : public DeviceContext {
public:
    std::shared_ptr<CContactManagerImpl> contacts;
    std::shared_ptr<CContactManagerImpl> contactInterface() override { return contacts; }
};

std::shared_ptr<DeviceContext> contextOf(std::shared_ptr<CContactManagerImpl> contacts) {
    auto context = make<OneInterface>();
    context->contacts = std::move(contacts);
    return context;
}

}   // namespace

void MemoryContacts::getContactDataFromAddressList() {
    log.add("read");
    read_ = stored;
}

std::int64_t MemoryContacts::isDeviceiCloudOpen(std::int64_t kind) { return kind == 0 ? cloud : 0; }

bool MemoryContacts::addNewContact_toGroups(const std::shared_ptr<ZpContactDataInfo> &contact,
                                            const ContactGroupList &into) {
    for (const auto &group : into)
        log.add("into " + group->groupName.str());
    if (std::ranges::find(refused, contact->first_name()) != refused.end())
        return false;
    stored.push_back(contact);
    return true;
}

void MemoryContacts::addNewContacts_toGroups_progress(const ContactList &contacts, const ContactGroupList &groups,
                                                      const AddProgress &progress) {
    log.add("add " + std::to_string(contacts.size()));
    const auto total = static_cast<std::int64_t>(contacts.size());
    for (std::int64_t i = 0; i < total; ++i) {
        const auto &contact = contacts[static_cast<std::size_t>(i)];
        if (secondsPerContact > 0)
            dispatch::sleepFor(std::chrono::seconds(secondsPerContact));
        const bool fails = std::ranges::find(refused, contact->last_name()) != refused.end();
        if (!fails)
            (void)addNewContact_toGroups(contact, groups);
        if (progress(i, total, fails ? 5 : 0) == 1)
            return;
    }
}

void MemoryContacts::deleteContactsOrGroups_callBack(const ContactList &contacts, const DeleteProgress &progress) {
    log.add("delete " + std::to_string(contacts.size()));
    const auto total = static_cast<std::int64_t>(contacts.size());
    bool stop = false;
    for (std::int64_t i = 0; i < total && !stop; ++i) {
        const auto &contact = contacts[static_cast<std::size_t>(i)];
        if (secondsPerContact > 0)
            dispatch::sleepFor(std::chrono::seconds(secondsPerContact));
        const bool fails = std::ranges::find(refused, contact->completeName()) != refused.end();
        if (!fails)
            std::erase(stored, contact);
        progress(i, total, contact, !fails, &stop);
    }
}

std::int64_t MemoryContacts::editContacts_onGroups(const ContactList &contacts, const ContactGroupList &into) {
    log.add("edit " + contacts.front()->pKey().str() + " groups " + std::to_string(into.size()));
    return std::ranges::find(refused, contacts.front()->first_name()) == refused.end() ? 1 : 0;
}

void MemoryContacts::exportContactsToVCFFile_toPath(const ContactList &contacts, const NSString &path) {
    log.add("cards " + std::to_string(contacts.size()) + " " + path.lastPathComponent().str());
}

void MemoryContacts::exportContactsToCSVFileFromArray_toPath_callBack(const ContactList &contacts, const NSString &path,
                                                                      const ExportFinish &finish) {
    log.add("table " + std::to_string(contacts.size()) + " " + path.lastPathComponent().str());
    finish(0, static_cast<std::int64_t>(contacts.size()));
    finish(0, static_cast<std::int64_t>(contacts.size()) - 1);   // the last call counts
}

bool MemoryContacts::combineRepeatContacts_newContact_toGroup(const ContactList &contacts,
                                                              const std::shared_ptr<ZpContactDataInfo> &merged,
                                                              const ContactGroupList &into) {
    std::string text = "merge";
    for (const auto &contact : contacts)
        text += " " + contact->pKey().str();
    text += " into " + merged->pKey().str();
    for (const auto &group : into)
        text += " of " + group->groupName.str();
    log.add(text);
    if (secondsPerContact > 0)
        dispatch::sleepFor(std::chrono::seconds(secondsPerContact));
    if (std::ranges::find(refused, merged->completeName()) != refused.end())
        return false;
    for (const auto &contact : contacts)
        if (contact != merged)
            std::erase(stored, contact);
    return true;
}

ContactCategory::ContactCategory() : device_(make<MemoryContacts>()), fake_(contextOf(device_)) {}

ContactCategory::~ContactCategory() {
    if (window_)
        window_->close();
    window_ = nullptr;
    manager_ = nullptr;
    model_ = nullptr;
    table_ = nullptr;
    controller_ = nullptr;
    world_.settle();
}

void ContactCategory::open() {
    controller_ = alloc<HNMbaseViewController>();
    controller_->initWithNibName_bundle("HNMContactViewController", NSBundle::bundleForClass());
    window_ = make<NSWindow>(NSRect(0, 0, 1000, 660));
    window_->setContentView(controller_->view());
    manager_ = std::dynamic_pointer_cast<HNMContactViewManager>(controller_->viewManager.lock());
    model_ = manager_->contactViewModel.lock();
    table_ = manager_->tableView.lock();
}

std::shared_ptr<ZpContactDataInfo> ContactCategory::add(const NSString &name, std::string_view more) {
    auto contact = contactOf(more);
    contact->setCompleteName(name);
    contact->setPKey(NSString(std::to_string(device_->stored.size() + 1)));
    device_->stored.push_back(contact);
    return contact;
}

std::shared_ptr<ContactGroupInfo> ContactCategory::group(const char *name, std::vector<NSString> keys) {
    auto group = make<ContactGroupInfo>();
    group->groupName = name;
    group->ContactKey = std::move(keys);
    device_->groups.push_back(group);
    return group;
}

void ContactCategory::openWith(const std::vector<NSString> &names) {
    for (const NSString &name : names)
        add(name);
    open();
    world_.settle();
    device_->log.take();
}

std::string ContactCategory::rows(const NSMutableArray &list) const {
    std::string text;
    for (const id &row : list.snapshot()) {
        const NSString name = static_cast<ZpContactDataInfo &>(*row).completeName();
        text += (text.empty() ? "" : " ") + (name.isEmpty() ? std::string("-") : name.str());
    }
    return text;
}

std::string ContactCategory::details() const {
    std::string text;
    for (const id &row : model_->selectedEntity->detailInfoArray->snapshot()) {
        const auto &info = static_cast<HNContactInfo &>(*row);
        text += (info.type ? info.type.str() : "~") + ": " + (info.info ? info.info.str() : "~") + "\n";
    }
    return text;
}

bool ContactCategory::search(const NSString &text) {
    const auto box = manager_->searchField.lock();
    box->setStringValue(text);
    box->sendAction();
    return isTableShown();
}

void ContactCategory::click(const char *identifier) {
    const auto button = std::dynamic_pointer_cast<NSButton>(controller_->view()->viewWithIdentifier(identifier));
    ASSERT_TRUE(button) << identifier;
    button->performClick();
}

void ContactCategory::press(const char *identifier) {
    click(identifier);
    world_.settle();
}

void ContactCategory::select(std::vector<std::size_t> rows) {
    NSMutableIndexSet set;
    for (const std::size_t row : rows)
        set.addIndex(row);
    table_->selectRowIndexes_byExtendingSelection(set, false);
}

std::string ContactCategory::panelAsks(const std::function<void()> &press) {
    UserFolders folders;
    folders.home = "/home/ann";
    setUserFolders(folders);
    const auto notes = std::make_shared<PanelNotes>();
    Presenter::install(notes);
    press();
    Presenter::install(nullptr);
    return notes->text;
}
