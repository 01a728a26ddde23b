// The export of the selected contacts to a file.
#include <fcntl.h>
#include <unistd.h>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewManager/HNMContactViewManager.h"
#include "HNManagerPlugin/contracts/RVCoreHelper/RVProductWebLogHelper.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVMFileManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"
#include "HNManagerPlugin/contracts/RVUIKit/MessageDialog.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindowController.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/services/NSFileManager.h"
#include "toolkit/services/NSWorkspace.h"
#include "toolkit/services/UserFolders.h"
#include "toolkit/views/NSMenu.h"

namespace {

constexpr const char *kFolderKey = "ContactExportPathKey";
constexpr std::int64_t kWarningIcon = 3;

void createEmptyFile(const NSString &path) {
    const int file = ::open(path.UTF8String(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    if (file >= 0)
        ::close(file);
}

}   // namespace

void HNMContactViewManager::onExportButton(const id &sender) {
    const auto button = std::dynamic_pointer_cast<NSView>(sender);
    if (!button)
        return;
    const auto menu = make<NSMenu>();
    const auto add = [&](const NSString &title, const char *selector) {
        menu->addItemWithTitle_action_keyEquivalent(title, selector)->target = selfOf(this);
    };
    add(toVcardTitle, "exportTovCardFile:");
    add(toCSVTitle, "exportToCSVFile:");
    const auto event = NSEvent::mouse(NSEventType::leftMouseDown, button->convertPoint_toView({0, 0}, nullptr));
    NSMenu::popUpContextMenu_withEvent_forView(menu, *event, button);
}

// The panel itself sees to the extension; a path that comes without it is written as it is.
NSString HNMContactViewManager::chooseExportFile(const NSString &type) const {
    const NSString last = RVProductConfig::valueForKey(kFolderKey);
    const NSString folder = last.isEmpty() ? NSString::stringWithFormat("%@/Documents", userFolders().home) : last;
    const NSString path = RVMFileManager::savePanelWithDirectory_defaultName_andFileType(
        folder, NSString::stringWithFormat("Contacts_%@", getCurrentTimes()), type);
    if (!path.isEmpty())
        RVProductConfig::setValue_forKey(path.stringByDeletingLastPathComponent(), kFolderKey);
    return path;
}

void HNMContactViewManager::exportTovCardFile(const id &) {
    JOIN_POINT(HNMContactViewManager, "exportTovCardFile:");
    const NSString path = chooseExportFile("vcf");
    if (path.isEmpty())
        return;
    // A file that stands there already is not tested.
    if (!NSFileManager::fileExistsAtPath(path)) {
        createEmptyFile(path);
        if (!NSFileManager::isWritableFileAtPath(path)) {
            MessageDialog::runWithString_defaultButton_icon(localized("HomeView_ExportPhoto_Not_Write_Disk"),
                                                            localized("Button_Title_OK"), kWarningIcon);
            return;
        }
    }
    const ContactList contacts = HNMContactViewModel::contactsOf(selectedRows());
    if (contacts.empty())
        return;   // the empty file stays
    tell(contactViewModel, [&](HNMContactViewModel &model) { model.exportContactsToVCFToPath_exportContacts(path, contacts); });
    openExportResultWindow_Count(path, static_cast<std::int64_t>(contacts.size()));
}

void HNMContactViewManager::exportToCSVFile(const id &) {
    JOIN_POINT(HNMContactViewManager, "exportToCSVFile:");
    const NSString path = chooseExportFile("csv");
    if (path.isEmpty())
        return;
    if (!NSFileManager::fileExistsAtPath(path))
        createEmptyFile(path);
    const ContactList contacts = HNMContactViewModel::contactsOf(selectedRows());
    if (contacts.empty())
        return;
    dispatch::async(dispatch::global(), [weak = weakOf(this), model = contactViewModel, path, contacts] {
        const auto written = std::make_shared<Shared<std::int64_t>>();
        tell(model, [&](HNMContactViewModel &m) {
            m.exportContactsToPath_exportContacts_callBack(
                path, contacts, [written](std::int32_t, std::int64_t count) { *written = count; });
        });
        dispatch::async(dispatch::main(), [weak, path, written] {
            tell(weak, [&](HNMContactViewManager &self) {
                self.progressWindows().closeProgressWindow();
                self.openExportResultWindow_Count(path, *written);
            });
        });
    });
}

void HNMContactViewManager::openExportResultWindow_Count(const NSString &path, std::int64_t count) {
    const NSString text = NSString::stringWithFormat(
        localized(count >= 2 ? "ContactView_successExport(s)" : "ContactView_successExport"), count);
    const std::int64_t answer = openWindow({.title = "ContactView_ExportWindowTitle",
                                            .icon = "icon_ok",
                                            .leftButton = "FileManager_OK",
                                            .rightButton = "FileManager_OpenFolder",
                                            .type = RUIDialogWindowController::kRightIsOne},
                                           text);
    if (answer == 1)
        NSWorkspace::sharedWorkspace().openFile(path.stringByDeletingLastPathComponent());
}
