// New contacts and changes to one, by the editor.
#include "HNManagerPlugin/Classes/SubViews/Contacts/NewContactWindow/NewContactDialogWindow.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewManager/HNMContactViewManager.h"
#include "HNManagerPlugin/contracts/RVCoreHelper/RVProductWebLogHelper.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindowController.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/views/NSApplication.h"

namespace {

ContactGroupList tickedOf(const NSArray &groups) {
    ContactGroupList ticked;
    for (const id &object : groups)
        if (auto group = std::dynamic_pointer_cast<ContactGroupInfo>(object); group && group->isSelected)
            ticked.push_back(std::move(group));
    return ticked;
}

}   // namespace

std::pair<std::shared_ptr<ZpContactDataInfo>, ContactGroupList>
HNMContactViewManager::runEditor(const std::shared_ptr<ZpContactDataInfo> &contact) {
    const auto model = contactViewModel.lock();
    if (!model)
        return {};
    const auto editor = make<NewContactDialogWindow>();
    editor->initWithWindowNibName_contact_contactGroup("NewContactDialogWindow", contact, nullptr);
    editor->setGroupInfo(model->contactGroup);
    editor->window()->setTitle(localized("ContactView_button_NewContact"));
    const std::int64_t answer = NSApp()->runModalForWindow(editor->window());
    ContactGroupList groups = tickedOf(model->contactGroup->snapshot());
    deSelectAllContactGroup();
    if (answer != NewContactDialogWindow::kSave)
        return {};
    return {editor->contact, std::move(groups)};
}

void HNMContactViewManager::onNewButton(const id &) {
    JOIN_POINT(HNMContactViewManager, "onNewButton:");
    const auto [contact, groups] = runEditor(nullptr);
    if (!contact)
        return;
    dispatch::async(dispatch::global(), [weak = weakOf(this), model = contactViewModel, contact = contact, groups = groups] {
        bool isAdded = false;
        tell(model, [&](HNMContactViewModel &m) { isAdded = m.addContactToDevice_addToGroup(contact, groups); });
        dispatch::async(dispatch::main(), [weak, isAdded] {
            tell(weak, [isAdded](HNMContactViewManager &self) {
                self.openAddNewContactResultWindow(isAdded);
                if (isAdded)
                    self.refreshContactFunc();
            });
        });
    });
}

// The title is the import's.
void HNMContactViewManager::openAddNewContactResultWindow(bool success) {
    (void)openWindow({.title = "ContactView_ImportWindowTitle",
                      .icon = success ? "icon_ok" : "icon_exclamation",
                      .leftButton = nullptr,
                      .rightButton = "FileManager_OK",
                      .type = RUIDialogWindowController::kOneButton},
                     localized(success ? "ContactView_AddNewContactSuccess" : "ContactView_AddNewContactFailed"));
}

void HNMContactViewManager::editMenuClick(const id &) {
    JOIN_POINT(HNMContactViewManager, "editMenuClick:");
    const auto table = tableView.lock();
    const auto model = contactViewModel.lock();
    const std::int64_t row = table ? table->selectedRow() : -1;
    if (!model || row < 0 || row == static_cast<std::int64_t>(NSNotFound))
        return;
    const auto edited = model->contents->at<ZpContactDataInfo>(static_cast<std::size_t>(row));
    const auto contact = edited ? runEditor(edited).first : nullptr;
    if (!contact)
        return;
    dispatch::async(dispatch::global(), [weak = weakOf(this), link = contactViewModel, contact] {
        std::int64_t changed = 0;
        tell(link, [&](HNMContactViewModel &m) { changed = m.editContactsFromArray({contact}); });
        if (changed > 0)
            dispatch::async(dispatch::main(), [weak] {
                tell(weak, [](HNMContactViewManager &self) { self.refreshContactFunc(); });
            });
    });
}
