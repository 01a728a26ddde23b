#include "HNManagerPlugin/Classes/PublicProgressWindow/Dialogs.h"

#include "HNManagerPlugin/Classes/PublicProgressWindow/HNXDeleteWindowController.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVFileManageCommon.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVLoger.h"
#include "HNManagerPlugin/contracts/RVUIKit/MessageDialog.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/services/NSFileManager.h"
#include "toolkit/services/NSUserDefaults.h"
#include "toolkit/views/NSApplication.h"

namespace dialogs {

std::shared_ptr<NSImage> icon(const NSString &name) {
    return NSBundle::bundleForClass()->imageForResource_ofType(name, "png");
}

std::int64_t run(const NSString &title, const NSString &message, const NSString &iconName, const NSString &leftTitle,
                 const NSString &rightTitle, std::int64_t windowType) {
    const auto dialog = RUIDialogWindowController::dialog(title, message, icon(iconName), leftTitle, rightTitle, windowType);
    return NSApp()->runModalForWindow(dialog->window());
}

void tellWithExclamation(const NSString &title, const NSString &message) {
    run(title, message, "icon_exclamation", localized("OK"), localized("OK"), RUIDialogWindowController::kOneButton);
}

bool confirmDelete(const NSString &title, const NSString &message) {
    return run(title, message, "icon_help", localized("FileManager_Cancel"), localized("FileManager_Delete"),
               RUIDialogWindowController::kLeftIsOne) == 0;
}

CompleteDelete confirmCompleteDelete(const NSString &message, const NSString &title) {
    const auto question = HNXDeleteWindowController::standardDeleteCompleteWindow_Title(message, title);
    if (NSApp()->runModalForWindow(question->window()) != HNXDeleteWindowController::kConfirmed)
        return {};
    const bool fromDeviceToo = NSUserDefaults::standardUserDefaults().boolForKey(HNXDeleteWindowController::kCompleteKey);
    NSUserDefaults::standardUserDefaults().setBool_forKey(false, HNXDeleteWindowController::kCompleteKey);
    return {true, fromDeviceToo};
}

std::shared_ptr<RUIDialogWindowController> cancelQuestion() {
    return RUIDialogWindowController::dialog("", localized("ExportPhotoToPC_Want_To_Cancel"), icon("icon_help"),
                                             localized("FileManager_OK"), localized("FileManager_Cancel"),
                                             RUIDialogWindowController::kLeftIsOne);
}

bool runCancelQuestion(const std::shared_ptr<RUIDialogWindowController> &question) {
    return NSApp()->runModalForWindow(question->window()) == 1;
}

bool runCancelQuestionWhileConnected(const std::shared_ptr<RUIDialogWindowController> &question, bool logsPasses) {
    const std::shared_ptr<NSApplication> application = NSApp();
    const NSModalSession session = application->beginModalSessionForWindow(question->window());
    std::int64_t result = kModalContinues;
    while ((result = application->runModalSession(session)) == kModalContinues) {
        if (logsPasses)
            RVLog("runModalSession");
        if (MobileDeviceManager::defaultManager().isDeviceConnected())
            continue;
        question->close();
        application->stopModal();
        break;
    }
    application->endModalSession(session);
    return result == 1;
}

bool isWritableTarget(const NSString &path) {
    if (NSFileManager::isWritableFileAtPath(path))
        return true;
    MessageDialog::runWithString_defaultButton_icon(localized("HomeView_ExportPhoto_Not_Write_Disk"), localized("Button_Title_OK"), 3);
    return false;
}

bool hasRoomOnComputer(std::int64_t bytes, const NSString &title, const NSString &logLine) {
    if (RVSystemInfoManager::availableMemory() >= bytes)
        return true;
    RVLog(logLine);
    tellWithExclamation(title, localized("save_to_pc"));
    return false;
}

bool hasRoomOnDevice(std::int64_t bytes) {
    const std::shared_ptr<MobileDevice> device = MobileDeviceManager::defaultManager().currentDevice();
    if (device)
        device->syncRefreshAvailableSize(1);
    return (device ? device->dataFreeSize() : 0) >= bytes;
}

void tellNoRoomOnDevice() {
    tellWithExclamation(localized("Tips"), localized("save_to_idevice"));
}

}  // namespace dialogs
